// Persons in Latin letters wherever they stand: by what the large lists say of each word,
// by what stands around a name, and by the other mentions in the text.
#pragma once

#include <cstddef>
#include <vector>

#include "core/recognition/entity_recognizer.hpp"

namespace core::nlp {

// What other rules know before.
struct PersonEvidence {
  std::vector<recognition::RecognizerResult> found;  // names by labels, titles, roles
  std::vector<std::size_t> expected;                 // where a label or a title expects a name
};

// The further persons of the text. In order of position, some may overlap those found.
std::vector<recognition::RecognizerResult> latin_prose_persons(
    const recognition::NlpArtifacts& artifacts, const PersonEvidence& evidence);

}  // namespace core::nlp
