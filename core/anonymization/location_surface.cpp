#include "core/anonymization/location_surface.hpp"

#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

constexpr std::u32string_view IGNORED_PUNCTUATION = U"，,。；;、";

}  // namespace

std::u32string _normalize_location_surface(std::u32string_view surface) {
  std::u32string out;
  out.reserve(surface.size());
  for (const char32_t c : surface) {
    if (text::is_space(c) || IGNORED_PUNCTUATION.find(c) != std::u32string_view::npos) continue;
    out += c == U'（' ? U'(' : c == U'）' ? U')' : c;
  }
  if (out == U"格鲁吉亚") out += U'国';
  return out;
}

}  // namespace core::anonymization
