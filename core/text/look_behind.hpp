// What a regular expression says of the character before its matches. Made for
// PrefixAutomaton and PatternScan.
#pragma once

#include <string_view>

#include "core/text/pattern_syntax.hpp"
#include "core/text/search_index.hpp"

namespace core::text {

// What may stand before a match, apart from the start of the text, at most: of
// (?<![A-Z]) and (?<=in |- ) the last characters.
CharacterSet characters_before(const PatternNode& tree);

// The kinds that the first character of a match can be of, as far as the look-behind at
// the front of the pattern tells: (?<![A-Za-z0-9]), (?<![\d.,]).
SearchIndex::Kinds kinds_by_look_behind(std::u32string_view pattern, const PatternNode& tree);

}  // namespace core::text
