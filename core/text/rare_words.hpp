// Search for many words that are rare in a text.
#pragma once

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <span>
#include <string_view>

#include "core/text/multi_pattern.hpp"

namespace core::text {

// Finds what MultiPattern finds, and reads only the stretches of the text closely in which
// one of the words may stand: where the first two characters of some word do.
class RareWords {
 public:
  explicit RareWords(std::span<const std::u32string_view> words) : words_(words) {
    for (const auto word : words) {
      longest_ = std::max(longest_, word.size());
      has_single_ = has_single_ || word.size() == 1;
      if (word.size() > 1) beginnings_.set(place_of(word[0], word[1]));
    }
  }

  // As MultiPattern::scan.
  template <class Visit, class Map>
  void scan(std::u32string_view text, Visit visit, Map map) const {
    for (auto from = next_beginning(text, 0, map); from < text.size();) {
      // As far as words reach that begin at `from` or within what is read because of it.
      auto to = std::min(from + longest_, text.size());
      auto next = next_beginning(text, from + 1, map);
      for (; next < to; next = next_beginning(text, next + 1, map)) {
        to = std::min(next + longest_, text.size());
      }
      const auto shifted = [&](const MultiPattern::Hit& hit) {
        visit(MultiPattern::Hit{hit.pattern, from + hit.start, from + hit.end});
      };
      words_.scan(text.substr(from, to - from), shifted, map);
      from = next;
    }
  }

  template <class Visit>
  void scan(std::u32string_view text, Visit visit) const {
    scan(text, visit, [](char32_t c) { return c; });
  }

 private:
  static std::size_t place_of(char32_t first, char32_t second) {
    return (first * 0x9E5U + second) % BEGINNINGS;
  }

  // Where the next word may begin, or the size of the text.
  template <class Map>
  std::size_t next_beginning(std::u32string_view text, std::size_t from, Map map) const {
    if (from >= text.size()) return text.size();
    if (has_single_) return from;  // of one character, which may be any
    char32_t first = map(text[from]);
    for (std::size_t i = from + 1; i < text.size(); ++i) {
      const char32_t second = map(text[i]);
      if (beginnings_.test(place_of(first, second))) return i - 1;
      first = second;
    }
    return text.size();
  }

  static constexpr std::size_t BEGINNINGS = 65536;

  MultiPattern words_;
  std::bitset<BEGINNINGS> beginnings_;  // by two characters, of which some fall together
  bool has_single_ = false;
  std::size_t longest_ = 0;
};

}  // namespace core::text
