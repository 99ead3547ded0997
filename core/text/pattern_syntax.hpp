// The syntax tree of a regular expression, as far as it tells what a match can
// consist of. Made for PrefixAutomaton and PatternScan.
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace core::text {

// Characters as ranges, both ends included, sorted and apart from each other.
using CharacterSet = std::vector<std::pair<char32_t, char32_t>>;
inline constexpr char32_t GREATEST_CHARACTER = 0xFFFFFFFF;  // any 32-bit value may stand in a text

struct PatternNode {
  enum class Kind : std::uint8_t {
    EMPTY,       // takes no character: an assertion
    AHEAD,       // takes none either; its only part matches from here on
    BEHIND,      // takes none; its only part matches up to here
    NOT_BEHIND,  // takes none; its only part does not
    SET,         // takes one character of `set`
    SEQUENCE,    // its parts one after the other
    CHOICE,      // one of its parts
    REPEAT,      // its only part, `min` to `max` times
    UNKNOWN      // anything
  };
  static constexpr unsigned UNLIMITED = ~0U;

  Kind kind = Kind::EMPTY;
  unsigned min = 0;
  unsigned max = 0;
  CharacterSet set = {};    // what it takes at most
  CharacterSet least = {};  // and some of what it takes for certain
  std::vector<PatternNode> parts = {};
};

// Reads a pattern in the syntax of Regex that compiles there. A set holds at least
// the characters that the pattern takes. Nothing for a pattern with verbs.
std::optional<PatternNode> read_pattern(std::u32string_view pattern);

// The characters in any order and overlapping, as a CharacterSet.
CharacterSet tidied(CharacterSet set);

// All other characters.
CharacterSet complement(const CharacterSet& set);

}  // namespace core::text
