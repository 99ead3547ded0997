// Which kinds of characters stand where in a text. Made once for a text, it lets the
// searches for hundreds of patterns pass over the places where none can begin.
//
//   const SearchIndex index(text);
//   index.next(SearchIndex::DIGIT_FIRST | SearchIndex::UPPER_FIRST, from)
//
// Offsets count code points. Immutable; may be used from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace core::text {

// Where patterns may begin in a text, by the numbers that Regex gives them. Made by
// PatternScan.
class PatternPlaces {
 public:
  using Offsets = std::vector<std::uint32_t>;  // sorted

  // Nothing for a pattern that was not looked for, or that may begin nearly anywhere.
  const Offsets* of(std::uint32_t id) const {
    return id < known_.size() && known_[id] ? &offsets_[id] : nullptr;
  }
  void set(std::uint32_t id, Offsets offsets) {
    if (id >= known_.size()) {
      known_.resize(id + 1);
      offsets_.resize(id + 1);
    }
    known_[id] = true;
    offsets_[id] = std::move(offsets);
  }

 private:
  std::vector<Offsets> offsets_;  // by id
  std::vector<bool> known_;
};

class SearchIndex {
 public:
  // A set of kinds; a character at its place is of one kind. "Inside" is behind an
  // ASCII letter or digit, "first" is not.
  using Kinds = std::uint16_t;
  static constexpr Kinds DIGIT_FIRST = 1U << 0U;
  static constexpr Kinds DIGIT_AFTER_LETTER = 1U << 1U;
  static constexpr Kinds DIGIT_AFTER_DIGIT = 1U << 2U;
  static constexpr Kinds UPPER_FIRST = 1U << 3U;  // of ASCII, as LOWER
  static constexpr Kinds LOWER_FIRST = 1U << 4U;
  static constexpr Kinds UPPER_INSIDE = 1U << 5U;
  static constexpr Kinds LOWER_INSIDE = 1U << 6U;
  static constexpr Kinds FIRST = DIGIT_FIRST | UPPER_FIRST | LOWER_FIRST;
  static constexpr Kinds SPACE = 1U << 7U;  // of ASCII
  static constexpr Kinds SIGN = 1U << 8U;   // of ASCII
  static constexpr Kinds MARK = 1U << 9U;   // punctuation of Chinese and of printed English
  static constexpr Kinds OTHER = 1U << 10U;
  static constexpr unsigned IDEOGRAPH_BIT = 11;  // and those behind it, by code point
  static constexpr unsigned IDEOGRAPH_KINDS = 5;
  static constexpr Kinds IDEOGRAPH = ((1U << IDEOGRAPH_KINDS) - 1U) << IDEOGRAPH_BIT;
  static constexpr Kinds ALL = 0xFFFF;
  static constexpr unsigned COUNT = 16;

  SearchIndex() = default;
  // The text is shorter than 2^32.
  explicit SearchIndex(std::u32string_view text);

  // The length of the text.
  std::size_t size() const { return kinds_.size(); }

  Kinds at(std::size_t offset) const { return kinds_[offset]; }

  // The first offset from `from` on where a character is of one of the kinds; size()
  // if there is none.
  std::size_t next(Kinds kinds, std::size_t from) const;

  const PatternPlaces& places() const { return places_; }
  void set_places(PatternPlaces places) { places_ = std::move(places); }

  // Where an ASCII letter or digit stands behind none, in their order.
  const std::vector<std::uint32_t>& first_ones() const { return first_ones_; }

  // The kinds that characters from `low` to `high` can be of.
  static Kinds kinds_between(char32_t low, char32_t high);

 private:
  static constexpr std::size_t BLOCK = 32;

  // The same up to `end`, which is the answer if there is none.
  std::size_t next_in_block(Kinds kinds, std::size_t from, std::size_t end) const;

  std::vector<Kinds> kinds_;   // of each character
  std::vector<Kinds> blocks_;  // of all characters of a block together
  std::vector<std::uint32_t> first_ones_;
  PatternPlaces places_;
};

}  // namespace core::text
