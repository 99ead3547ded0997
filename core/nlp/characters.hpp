// Facts about single characters that the name finders share.
#pragma once

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

}  // namespace core::nlp
