#include "documents/joiner_escapes.hpp"

#include <algorithm>
#include <set>
#include <utility>

namespace documents {
namespace {

constexpr char32_t OPENING = 0xE000;
constexpr char32_t CLOSING = 0xE001;
constexpr char32_t PRIVATE_PLANE = 0xF0000;
constexpr char32_t PRIVATE_PLANE_END = 0xFFFFD;

std::u32string replaced(std::u32string text, char32_t from, char32_t to, char32_t from_other,
                        char32_t to_other) {
  // Without a branch, for the compiler to take several characters at a time.
  for (char32_t& c : text) c = c == from ? to : c == from_other ? to_other : c;
  return text;
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

std::u32string JoinerEscapes::escape(std::u32string text) const {
  return replaced(std::move(text), OPENING, opening_, CLOSING, closing_);
}

std::u32string JoinerEscapes::restore(std::u32string text) const {
  return replaced(std::move(text), opening_, OPENING, closing_, CLOSING);
}

}  // namespace documents
