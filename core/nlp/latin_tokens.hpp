// Words in Latin letters, read forwards and backwards.
#pragma once

#include <string_view>

#include "core/nlp/characters.hpp"

namespace core::nlp {

struct Token {
  std::size_t start = 0;
  std::size_t end = 0;
  bool empty() const { return start == end; }
  std::u32string_view in(std::u32string_view text) const { return text.substr(start, end - start); }
};

constexpr bool is_token_character(char32_t c) {
  return is_latin_letter(c) || text::is_ascii_digit(c) || c == U'\'' || c == U'-' || c == U'.' ||
         c == U'&' || c == U'/' || c == U'#';
}

// The word that ends at `end`, or one blank before; empty if there is none.
inline Token token_before(std::u32string_view t, std::size_t end) {
  constexpr std::size_t LONGEST = 40;
  if (end > 0 && t[end - 1] == U' ') --end;
  std::size_t start = end;
  while (start > 0 && end - start < LONGEST && is_token_character(t[start - 1])) --start;
  return {start, end};
}

// The word that begins at `start`, or one blank behind; empty if there is none.
inline Token token_after(std::u32string_view t, std::size_t start) {
  constexpr std::size_t LONGEST = 40;
  if (start < t.size() && t[start] == U' ') ++start;
  std::size_t end = start;
  while (end < t.size() && end - start < LONGEST && is_token_character(t[end])) ++end;
  return {start, end};
}

// of, and, de: small words inside names.
bool is_connective(std::u32string_view word);

// The, This, Agreement, Section: capitals that belong to the sentence or the
// contract and not to a name.
bool is_contract_word(std::u32string_view word);

}  // namespace core::nlp
