// Shorter forms of the Chinese names of a text that nobody defines: 沐恒创投 of
// 沐恒创业投资有限公司, 渭川电科大 of 渭川电子科技大学.
#pragma once

#include <vector>

#include "core/nlp/short_forms.hpp"

namespace core::nlp {

// Adds what stands in the text, outside of the names, and is made of characters of
// one of the organizations in their order, from the brand on. Linear in the text.
void add_abbreviations(const recognition::NlpArtifacts& artifacts,
                       const std::vector<recognition::RecognizerResult>& results,
                       std::vector<ShortForm>& out);

}  // namespace core::nlp
