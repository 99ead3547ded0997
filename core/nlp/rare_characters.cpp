#include "core/nlp/rare_characters.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace core::nlp {
namespace {

// Four characters, or the answers for them: all bits set for yes. A compiler makes one
// instruction of an operation on all four, which it does not find in a plain loop.
using Lanes [[gnu::vector_size(16)]] = std::uint32_t;
constexpr std::size_t LANES = sizeof(Lanes) / sizeof(char32_t);
constexpr std::size_t BLOCK = 4 * LANES;

Lanes load(const char32_t* from) {
  Lanes out{};
  std::memcpy(&out, from, sizeof out);
  return out;
}

Lanes all(char32_t c) {
  const Lanes out = {c, c, c, c};
  return out;
}

Lanes equal(Lanes a, Lanes b) { return reinterpret_cast<Lanes>(a == b); }

bool any(Lanes answers) { return (answers[0] | answers[1] | answers[2] | answers[3]) != 0; }

}  // namespace

std::size_t find_rare(std::u32string_view text, std::size_t from, char32_t wanted) {
  const Lanes one = all(wanted);
  for (; from + BLOCK <= text.size(); from += BLOCK) {
    Lanes found{};
    for (std::size_t i = 0; i < BLOCK; i += LANES) {
      found |= equal(load(text.data() + from + i), one);
    }
    if (any(found)) break;
  }
  while (from < text.size() && text[from] != wanted) ++from;
  return from;
}

std::size_t find_rare(std::u32string_view text, std::size_t from,
                      const std::array<char32_t, 4>& wanted) {
  const Lanes first = all(wanted[0]);
  const Lanes second = all(wanted[1]);
  const Lanes third = all(wanted[2]);
  const Lanes fourth = all(wanted[3]);
  for (; from + BLOCK <= text.size(); from += BLOCK) {
    Lanes found{};
    for (std::size_t i = 0; i < BLOCK; i += LANES) {
      const Lanes some = load(text.data() + from + i);
      found |= equal(some, first) | equal(some, second) | equal(some, third) | equal(some, fourth);
    }
    if (any(found)) break;
  }
  while (from < text.size() &&
         std::find(wanted.begin(), wanted.end(), text[from]) == wanted.end()) {
    ++from;
  }
  return from;
}

}  // namespace core::nlp
