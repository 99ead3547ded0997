#include "core/nlp/characters.hpp"
#include "core/nlp/vocabulary.hpp"

namespace core::nlp {
namespace {

bool is_chinese_stop(char32_t c) { return c == U'，' || c == U'；' || c == U'！' || c == U'？'; }

bool is_dash(char32_t c) {
  return (c >= 0x2010 && c <= 0x2015) || c == 0x2212 || c == 0x30FC || c == 0xFE58;
}

char32_t fold_one(char32_t c) {
  if (c < 0x80) return c == U'\v' || c == U'\f' ? U' ' : c;
  if (c >= 0xFF01 && c <= 0xFF5E) return is_chinese_stop(c) ? c : c - 0xFF01 + U'!';
  if (c == 0xFFE5) return U'¥';
  if (c == 0xFFE1) return U'£';
  if (is_dash(c)) return U'-';
  if (c == 0x2019 || c == 0x2018) return U'\'';
  return c != 0x85 && c != 0x2028 && c != 0x2029 && text::is_space(c) ? U' ' : c;
}

}  // namespace

std::u32string fold_width(std::u32string_view text) {
  std::u32string out(text);
  for (char32_t& c : out) c = fold_one(c);
  return out;
}

}  // namespace core::nlp
