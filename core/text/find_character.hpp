// Search for characters that are rare in a text.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/text/unicode.hpp"

namespace core::text {

// Where the first of the two characters stands, from `from` on; NPOS if neither does.
// Looks at several characters at a time, so that a text without any costs little.
inline std::size_t find_either(std::u32string_view text, char32_t a, char32_t b,
                               std::size_t from = 0) {
  constexpr std::size_t BLOCK = 16;
  std::size_t at = from;
  for (; at + BLOCK <= text.size(); at += BLOCK) {
    const char32_t* block = text.data() + at;
    unsigned found = 0;
    for (std::size_t i = 0; i < BLOCK; ++i) {
      found |= static_cast<unsigned>(block[i] == a) | static_cast<unsigned>(block[i] == b);
    }
    if (found != 0) break;
  }
  for (; at < text.size(); ++at) {
    if (text[at] == a || text[at] == b) return at;
  }
  return NPOS;
}

inline std::size_t find_character(std::u32string_view text, char32_t c, std::size_t from = 0) {
  return find_either(text, c, c, from);
}

// Where a phrase begins whose first character is rare; NPOS if nowhere, and for no phrase.
inline std::size_t find_rare(std::u32string_view text, std::u32string_view phrase,
                             std::size_t from = 0) {
  if (phrase.empty()) return NPOS;
  for (auto at = find_character(text, phrase.front(), from); at != NPOS;
       at = find_character(text, phrase.front(), at + 1)) {
    if (text.substr(at).starts_with(phrase)) return at;
  }
  return NPOS;
}

}  // namespace core::text
