// A regular expression as an automaton with empty moves: what its matches can begin
// with. Made for PrefixAutomaton and PatternScan.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/text/pattern_syntax.hpp"

namespace core::text {

class PatternMoves {
 public:
  using Place = std::uint32_t;
  using Places = std::vector<Place>;  // sorted
  struct At {
    const CharacterSet* set = nullptr;  // taken on the way to `next`
    Place next = 0;
    std::vector<Place> empty;
  };
  static constexpr Place END = 0;  // a match has ended, or may go on with anything
  // A match that goes on for so long is left to the regex engine.
  static constexpr unsigned DEPTH = 16;

  // Refers to the sets of `pattern`, which must live as long.
  explicit PatternMoves(const PatternNode& pattern);

  // False for a pattern that may match an empty text or that is too large: nothing is
  // told about it.
  bool is_usable() const { return takes_something_ && !too_large_; }
  const std::vector<At>& places() const { return places_; }
  // Where a match begins.
  Places first() { return closure({start_}); }
  // The places that take a character, and the end, that empty moves lead to.
  Places closure(Places places);

 private:
  Place add();
  // Adds what `node` takes between `from` and the place returned.
  Place put(const PatternNode& node, Place from);
  Place sequence(std::span<const PatternNode> parts, Place from);
  Place repeat(const PatternNode& node, Place from);

  std::vector<At> places_ = std::vector<At>(1);
  bool too_large_ = false;
  bool takes_something_ = false;
  Place start_ = 0;
  std::vector<unsigned> seen_;  // the round in which closure() saw a place
  unsigned round_ = 0;
};

}  // namespace core::text
