// Facts about single characters that the name finders share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "core/text/unicode.hpp"

namespace core::nlp {

// A letter of the Latin script, also with diacritics (é, Ø, ễ).
constexpr bool is_latin_letter(char32_t c) {
  if (c < 0x80) return text::is_ascii_alpha(c);
  if (c > 0x1EFF) return false;
  return (c >= 0xC0 && c <= 0x24F && c != 0xD7 && c != 0xF7) || c >= 0x1E00 ||
         (c >= 0x300 && c <= 0x36F);
}

inline char32_t lower(char32_t c) {
  if (c < 0x80) return c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c;
  return c < 0x2000 ? text::case_fold_simple(c) : c;
}

inline std::u32string lowered(std::u32string_view s) {
  std::u32string out(s);
  for (char32_t& c : out) c = lower(c);
  return out;
}

inline bool is_upper(char32_t c) { return is_latin_letter(c) && lower(c) != c; }
inline bool is_lower(char32_t c) { return is_latin_letter(c) && lower(c) == c; }

// Ends a line, a table cell or a paragraph.
constexpr bool is_cell_end(char32_t c) {
  if (c <= U'\r') return c == U'\n' || c == U'\r' || c == U'\t';
  return c == 0xE000 || c == 0xE001;
}

// Parts the names of minorities and transliterated ones: 阿依努尔·买买提
constexpr bool is_dot(char32_t c) { return c == U'·' || c == U'•' || c == U'・' || c == 0x2027; }

// What the rules take for a character of a Chinese word.
constexpr bool is_han(char32_t c) {
  if (c < 0x3400) return false;
  return text::is_ideograph(c) || c <= 0x4DBF || (c >= 0x20000 && c <= 0x3FFFF);
}

// The first offset from `from` on where one of the characters stands; the length of the
// text if there is none. Four places are looked at together: for what is rare in a text.
template <char32_t... Characters>
std::size_t find_rare(std::u32string_view text, std::size_t from) {
  using Lanes [[gnu::vector_size(16)]] = std::uint32_t;
  constexpr std::size_t BLOCK = 16;
  constexpr std::size_t LANES = sizeof(Lanes) / sizeof(char32_t);
  constexpr std::uint32_t WANTED[] = {Characters...};
  for (; from + BLOCK <= text.size(); from += BLOCK) {
    Lanes found{};
    for (std::size_t i = from; i < from + BLOCK; i += LANES) {
      Lanes some{};
      std::memcpy(&some, text.data() + i, sizeof some);
      for (const std::uint32_t c : WANTED) found |= static_cast<Lanes>(some == Lanes{} + c);
    }
    if ((found[0] | found[1] | found[2] | found[3]) != 0) break;
  }
  while (from < text.size() && ((text[from] != Characters) && ...)) ++from;
  return from;
}

}  // namespace core::nlp
