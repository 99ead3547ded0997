#include "core/text/unicode.hpp"

#include <algorithm>

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace core::text {
namespace {

constexpr char32_t MAX_CODE_POINT = 0x10FFFF;

// Nothing between the end of the Kangxi radicals and U+A000, and no ideograph
// of the planes above, changes with case: the short cut for Chinese text.
constexpr bool is_caseless_cjk(char32_t c) {
  return (c >= 0x2E80 && c < 0xA000) || (c >= 0xAC00 && c < 0xD800);
}

constexpr char32_t ascii_lower(char32_t c) { return c >= U'A' && c <= U'Z' ? c + 32 : c; }

void append_utf16(std::u32string& out, const icu::UnicodeString& s) {
  for (int32_t i = 0; i < s.length(); i = s.moveIndex32(i, 1)) {
    out.push_back(static_cast<char32_t>(s.char32At(i)));
  }
}

void append_folded(std::u32string& out, char32_t c) {
  if (c < 0x80) {
    out.push_back(ascii_lower(c));
  } else if (is_caseless_cjk(c) || c > MAX_CODE_POINT ||
             !u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_CASED)) {
    out.push_back(c);
  } else {
    append_utf16(out, icu::UnicodeString(static_cast<UChar32>(c)).foldCase());
  }
}

}  // namespace

bool is_space(char32_t c) {
  if (c < 0x80) return c == U' ' || (c >= U'\t' && c <= U'\r');
  if (c < 0x1680) return c == 0x85 || c == 0xA0;
  if (c >= 0x3001) return false;
  return c == 0x1680 || c == 0x180E || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 ||
         c == 0x202F || c == 0x205F || c == 0x3000;
}

bool contains_ideograph(std::u32string_view text) {
  return std::any_of(text.begin(), text.end(), is_ideograph);
}

bool is_digit(char32_t c) {
  if (c < 0x80) return is_ascii_digit(c);
  if (c > MAX_CODE_POINT || is_ideograph(c)) return false;
  const auto type = u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_NUMERIC_TYPE);
  return type == U_NT_DECIMAL || type == U_NT_DIGIT;
}

bool is_decimal_digit(char32_t c) {
  if (c < 0x80) return is_ascii_digit(c);
  if (c > MAX_CODE_POINT || is_ideograph(c)) return false;
  return u_charType(static_cast<UChar32>(c)) == U_DECIMAL_DIGIT_NUMBER;
}

bool is_letter_or_number(char32_t c) {
  if (c < 0x80) return is_ascii_alnum(c);
  if (c > MAX_CODE_POINT) return false;
  const auto character = static_cast<UChar32>(c);
  return u_isalpha(character) != 0 ||
         u_getIntPropertyValue(character, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

bool is_control(char32_t c) {
  if (c > MAX_CODE_POINT) return false;
  const auto type = u_charType(static_cast<UChar32>(c));
  return type == U_CONTROL_CHAR || type == U_FORMAT_CHAR;
}

std::size_t display_width(char32_t c) {
  if (c < 0x80) return 1;
  if (c > MAX_CODE_POINT) return 1;
  const auto character = static_cast<UChar32>(c);
  const auto type = u_charType(character);
  if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK) return 0;
  const auto width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
  return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

std::u32string_view slice(std::u32string_view text, std::ptrdiff_t start, std::ptrdiff_t end) {
  const auto size = static_cast<std::ptrdiff_t>(text.size());
  const auto from = std::clamp<std::ptrdiff_t>(start, 0, size);
  const auto to = std::clamp<std::ptrdiff_t>(end, from, size);
  return text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
}

std::u32string_view strip(std::u32string_view text) {
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
  return text;
}

std::u32string remove_space(std::u32string_view text) {
  std::u32string out;
  out.reserve(text.size());
  std::copy_if(text.begin(), text.end(), std::back_inserter(out),
               [](char32_t c) { return !is_space(c); });
  return out;
}

std::u32string fold_parentheses(std::u32string_view text) {
  std::u32string out(text);
  std::replace(out.begin(), out.end(), U'（', U'(');
  std::replace(out.begin(), out.end(), U'）', U')');
  return out;
}

std::u32string case_fold(std::u32string_view text) {
  std::u32string out;
  out.reserve(text.size());
  for (const char32_t c : text) append_folded(out, c);
  return out;
}

char32_t case_fold_simple(char32_t c) {
  if (c < 0x80) return ascii_lower(c);
  if (is_caseless_cjk(c) || c > MAX_CODE_POINT) return c;
  return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
}

std::u32string to_lower(std::u32string_view text) {
  const auto source = icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(text.data()),
                                                    static_cast<int32_t>(text.size()));
  std::u32string out;
  append_utf16(out, icu::UnicodeString(source).toLower(icu::Locale::getRoot()));
  return out;
}

std::u32string replace_all(std::u32string_view text, std::u32string_view from,
                           std::u32string_view to) {
  std::u32string out;
  out.reserve(text.size());
  std::size_t last = 0;
  for (auto at = text.find(from); at != std::u32string_view::npos; at = text.find(from, last)) {
    out.append(text, last, at - last);
    out.append(to);
    last = at + from.size();
  }
  out.append(text, last);
  return out;
}

}  // namespace core::text
