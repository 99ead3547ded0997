// Facts about code points, and the small string operations built on them.
//
// Text is UTF-32: an index is a code point. Every function accepts any 32-bit
// values, also surrogates and values above U+10FFFF; such a value is neither
// white space nor a digit nor an ideograph, and folds to itself.
//
// May be called from any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace core::text {

// What a search in a text answers if it finds nothing.
inline constexpr std::size_t NPOS = std::u32string_view::npos;

// White space: the Unicode property White_Space, and U+180E. This is the one
// definition in the program; `\s` of Regex matches the same set.
bool is_space(char32_t c);

// A CJK ideograph of the basic block, U+4E00..U+9FFF. Extension blocks are not
// included: the rules are written for this range.
constexpr bool is_ideograph(char32_t c) { return c >= 0x4E00 && c <= 0x9FFF; }
bool contains_ideograph(std::u32string_view text);

// Numeric type Digit or Decimal: "5", "５", "²". `\d` of Regex is narrower
// (general category Nd), which leaves "²" out.
bool is_digit(char32_t c);

// General category Nd, what `\d` of Regex matches: "5", "５", not "²".
bool is_decimal_digit(char32_t c);

// A letter (general category L) or a character with a numeric value: "a", "五", "½".
bool is_letter_or_number(char32_t c);

// General category Cc or Cf: what steers a terminal or the direction of writing.
bool is_control(char32_t c);

// How many columns of a terminal it takes: 2 for wide and full-width characters,
// 0 for combining ones, else 1.
std::size_t display_width(char32_t c);

constexpr bool is_ascii_alpha(char32_t c) {
  return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z');
}
constexpr bool is_ascii_digit(char32_t c) { return c >= U'0' && c <= U'9'; }
constexpr bool is_ascii_alnum(char32_t c) { return is_ascii_alpha(c) || is_ascii_digit(c); }

// The part of `text` from `start` to `end`, with negative offsets taken as 0,
// offsets beyond the end as the end, and an inverted pair as empty.
// Returns a view into `text`.
std::u32string_view slice(std::u32string_view text, std::ptrdiff_t start, std::ptrdiff_t end);

// Without white space at both ends. Returns a view into `text`.
std::u32string_view strip(std::u32string_view text);

// Without any white space.
std::u32string remove_space(std::u32string_view text);

// Every "（" as "(" and every "）" as ")".
std::u32string fold_parentheses(std::u32string_view text);

// Full Unicode case folding ("ß" and "SS" both give "ss").
std::u32string case_fold(std::u32string_view text);

// The simple folding of one code point: the form in which two code points are
// equal for a case-insensitive pattern.
char32_t case_fold_simple(char32_t c);

// Full lower-casing without regard to any language.
std::u32string to_lower(std::u32string_view text);

// Every occurrence of `from` (not empty) replaced, left to right without overlap.
std::u32string replace_all(std::u32string_view text, std::u32string_view from,
                           std::u32string_view to);

}  // namespace core::text
