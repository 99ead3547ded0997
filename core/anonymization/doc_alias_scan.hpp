// Short names that a document defines for itself:
//
//   北京华信科技有限公司（以下简称“华信科技”）      Acme Holdings Inc. (hereinafter "Acme")
//
// Name-like aliases only. Roles (甲方, "Supplier", "the Company") and things
// (“合资公司”, "Closing Date", "Products") are not candidates.
#pragma once

#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

// One ORGANIZATION result a candidate, over the alias without its quotes, in
// text order; `defined_at` is where the definition clause begins (the bracket,
// or the words that introduce the alias). Linear in the text.
std::vector<RecognizerResult> scan_defined_alias_candidates(std::u32string_view text);

}  // namespace core::anonymization
