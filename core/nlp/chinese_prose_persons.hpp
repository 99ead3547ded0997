// Chinese names of persons in running text, in lists and on lines of signatures,
// where no label or title announces them.
#pragma once

#include <vector>

#include "core/recognition/entity_recognizer.hpp"

namespace core::nlp {

// Weighs the surname, the characters of the given name, what stands on both sides
// and how often the same characters come back.
void find_prose_persons(const recognition::NlpArtifacts& artifacts,
                        std::vector<anonymization::RecognizerResult>& out);

// Names without a surname, of the elements that Tibetan, Mongol and Uyghur names are made of:
// 尼玛卓嘎, 宝音德力格尔. Not those of places and firms.
void find_minority_names(const recognition::NlpArtifacts& artifacts,
                         std::vector<anonymization::RecognizerResult>& out);

}  // namespace core::nlp
