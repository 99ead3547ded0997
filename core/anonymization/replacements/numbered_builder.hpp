// Turns an analyzer's hits into numbered replacements.
//
// Offsets count code points.
#pragma once

#include <string_view>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "core/anonymization/result.hpp"

namespace core::anonymization {

// Analyses the text, cleans the hits up, and gives every entity of a kind one
// number, counted from 1 in order of first appearance; a later mention of the
// same entity shares it. Sorted by start. Throws what the analyzer throws, and
// ValueError for an unknown profile or a score that is NaN.
std::vector<Replacement> build_numbered_replacements(
    std::u32string_view text, const Analyzer& analyzer, std::string_view language = "en",
    std::string_view strategy_profile = "contract_default");

}  // namespace core::anonymization
