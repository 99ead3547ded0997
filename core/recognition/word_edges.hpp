// Where a value ends in a text: at the edges of words and of cells.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/text/unicode.hpp"

namespace core::recognition {

// Ends a line, a cell of a table or a paragraph. No hit crosses it.
constexpr bool is_cell_end(char32_t c) {
  return c == U'\n' || c == U'\r' || c == U'\t' || c == 0xE000 || c == 0xE001;
}

// A letter of a script that puts blanks between words (Latin, Greek, Cyrillic),
// or an ASCII digit.
constexpr bool is_spaced_letter(char32_t c) {
  return text::is_ascii_alnum(c) || (c >= 0xC0 && c <= 0x24F && c != 0xD7 && c != 0xF7) ||
         (c >= 0x370 && c <= 0x52F);
}

// Whether text[start, end), which is not empty, is no part of a longer word, with each
// character as `map` makes it. Chinese is written without blanks: an ideograph is an edge
// everywhere.
template <class Map>
constexpr bool stands_alone(std::u32string_view text, std::size_t start, std::size_t end, Map map) {
  const auto joined = [&](std::size_t i) {
    return is_spaced_letter(map(text[i - 1])) && is_spaced_letter(map(text[i]));
  };
  return !(start > 0 && joined(start)) && !(end < text.size() && joined(end));
}
constexpr bool stands_alone(std::u32string_view text, std::size_t start, std::size_t end) {
  return stands_alone(text, start, end, [](char32_t c) { return c; });
}

// The letter in the form in which letters of either case and width are equal.
inline char32_t fold_letter(char32_t c) {
  if (text::is_ideograph(c)) return c;
  if (c >= 0xFF01 && c <= 0xFF5E) c = c - 0xFF01 + U'!';
  if (c < 0x80) return c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c;
  return c == 0x3000 ? U' ' : text::case_fold_simple(c);
}

}  // namespace core::recognition
