#include "documents/joiner_escapes.hpp"

#include <algorithm>
#include <set>

namespace documents {
namespace {

constexpr char32_t OPENING = 0xE000;
constexpr char32_t CLOSING = 0xE001;
constexpr char32_t PRIVATE_PLANE = 0xF0000;
constexpr char32_t PRIVATE_PLANE_END = 0xFFFFD;

std::u32string replaced(std::u32string_view text, char32_t from, char32_t to, char32_t from_other,
                        char32_t to_other) {
  std::u32string out(text);
  for (char32_t& c : out) {
    if (c == from) {
      c = to;
    } else if (c == from_other) {
      c = to_other;
    }
  }
  return out;
}

}  // namespace

JoinerEscapes JoinerEscapes::of(std::u32string_view text) {
  std::set<char32_t> taken;
  for (const char32_t c : text) {
    if (c >= PRIVATE_PLANE && c <= PRIVATE_PLANE_END) taken.insert(c);
  }
  JoinerEscapes out;
  char32_t next = PRIVATE_PLANE;
  const auto free = [&] {
    while (taken.contains(next)) ++next;
    return next++;
  };
  out.opening_ = free();
  out.closing_ = free();
  return out;
}

std::u32string JoinerEscapes::escape(std::u32string_view text) const {
  return replaced(text, OPENING, opening_, CLOSING, closing_);
}

std::u32string JoinerEscapes::restore(std::u32string_view text) const {
  return replaced(text, opening_, OPENING, closing_, CLOSING);
}

}  // namespace documents
