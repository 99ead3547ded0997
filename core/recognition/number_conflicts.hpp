// Which of several overlapping hits of numbers and codes stays.
#pragma once

#include <vector>

#include "core/recognition/nlp_artifacts.hpp"

namespace core::recognition {

// Drops the hit of a number that overlaps a better one: web and mail addresses
// come before what stands in them, then a right check digit, then the longer
// hit, then the higher score. A run of digits may be an account, a licence and an
// identity number by its shape; the core would choose by kind, without looking at
// the proof. Drops names and places within a number, too: they would win over a
// web address and leave the rest of it readable. A mere guess within a longer name
// or address is dropped instead.
std::vector<anonymization::RecognizerResult> settle_number_conflicts(
    const NlpArtifacts& artifacts, std::vector<anonymization::RecognizerResult> results);

}  // namespace core::recognition
