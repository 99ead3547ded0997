#include "core/text/search_index.hpp"

#include <algorithm>
#include <array>
#include <cstring>

#include "core/text/unicode.hpp"

namespace core::text {
namespace {

using Kinds = SearchIndex::Kinds;

constexpr char32_t ASCII_END = 0x80;

// What a character is by itself. Letters and digits of ASCII are given as "first".
constexpr Kinds ascii_kind(char32_t c) {
  if (is_ascii_digit(c)) return SearchIndex::DIGIT_FIRST;
  if (c >= U'A' && c <= U'Z') return SearchIndex::UPPER_FIRST;
  if (c >= U'a' && c <= U'z') return SearchIndex::LOWER_FIRST;
  if (c == U' ' || (c >= U'\t' && c <= U'\r')) return SearchIndex::SPACE;
  return SearchIndex::SIGN;
}

constexpr auto ASCII_KINDS = [] {
  std::array<Kinds, ASCII_END> table{};
  for (char32_t c = 0; c < ASCII_END; ++c) table[c] = ascii_kind(c);
  return table;
}();

constexpr Kinds ideograph_kind(char32_t c) {
  constexpr char32_t SCATTER = 40503;  // neighbours in the code charts are alike in meaning
  return static_cast<Kinds>(
      1U << (SearchIndex::IDEOGRAPH_BIT + (c * SCATTER >> 7U) % SearchIndex::IDEOGRAPH_KINDS));
}

constexpr bool is_mark(char32_t c) {
  return (c >= 0x2000 && c <= 0x206F) || (c >= 0x3000 && c <= 0x303F) ||
         (c >= 0xFF00 && c <= 0xFFEF);
}

constexpr Kinds other_kind(char32_t c) {
  if (is_ideograph(c)) return ideograph_kind(c);
  return is_mark(c) ? SearchIndex::MARK : SearchIndex::OTHER;
}

// `first` as it is behind an ASCII letter or digit.
constexpr Kinds inside(Kinds first, bool after_digit) {
  if (first == SearchIndex::DIGIT_FIRST) {
    return after_digit ? SearchIndex::DIGIT_AFTER_DIGIT : SearchIndex::DIGIT_AFTER_LETTER;
  }
  return first == SearchIndex::UPPER_FIRST ? SearchIndex::UPPER_INSIDE : SearchIndex::LOWER_INSIDE;
}

constexpr Kinds anywhere(Kinds first) {
  switch (first) {
    case SearchIndex::DIGIT_FIRST:
      return first | SearchIndex::DIGIT_AFTER_LETTER | SearchIndex::DIGIT_AFTER_DIGIT;
    case SearchIndex::UPPER_FIRST:
      return first | SearchIndex::UPPER_INSIDE;
    case SearchIndex::LOWER_FIRST:
      return first | SearchIndex::LOWER_INSIDE;
    default:
      return first;
  }
}

}  // namespace

SearchIndex::SearchIndex(std::u32string_view text)
    : kinds_(text.size()), blocks_((text.size() + BLOCK - 1) / BLOCK) {
  enum class Before : std::uint8_t { NONE, LETTER, DIGIT } before = Before::NONE;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char32_t c = text[i];
    Kinds kind = c < ASCII_END ? ASCII_KINDS[c] : other_kind(c);
    if ((kind & FIRST) == 0) {
      before = Before::NONE;
    } else {
      const bool is_digit = kind == DIGIT_FIRST;
      if (before == Before::NONE) {
        first_ones_.push_back(static_cast<std::uint32_t>(i));
      } else {
        kind = inside(kind, before == Before::DIGIT);
      }
      before = is_digit ? Before::DIGIT : Before::LETTER;
    }
    kinds_[i] = kind;
    blocks_[i / BLOCK] = static_cast<Kinds>(blocks_[i / BLOCK] | kind);
  }
}

std::size_t SearchIndex::next(Kinds kinds, std::size_t from) const {
  const std::size_t size = kinds_.size();
  while (from < size) {
    const std::size_t block = from / BLOCK;
    if ((blocks_[block] & kinds) != 0) {
      const std::size_t end = std::min(size, (block + 1) * BLOCK);
      from = next_in_block(kinds, from, end);
      if (from < end) return from;
    }
    std::size_t next_block = block + 1;
    while (next_block < blocks_.size() && (blocks_[next_block] & kinds) == 0) ++next_block;
    from = next_block * BLOCK;
  }
  return size;
}

// Four characters at a time.
std::size_t SearchIndex::next_in_block(Kinds kinds, std::size_t from, std::size_t end) const {
  constexpr std::size_t STEP = sizeof(std::uint64_t) / sizeof(Kinds);
  constexpr std::uint64_t EACH = 0x0001000100010001U;
  const std::uint64_t wanted = EACH * kinds;
  for (; from + STEP <= end; from += STEP) {
    std::uint64_t four;
    std::memcpy(&four, kinds_.data() + from, sizeof four);
    if ((four & wanted) != 0) break;
  }
  while (from < end && (kinds_[from] & kinds) == 0) ++from;
  return from;
}

SearchIndex::Kinds SearchIndex::kinds_between(char32_t low, char32_t high) {
  constexpr char32_t FEW = 64;
  constexpr char32_t FIRST_IDEOGRAPH = 0x4E00;
  constexpr char32_t LAST_IDEOGRAPH = 0x9FFF;
  Kinds out = 0;
  for (; low < ASCII_END && low <= high; ++low) {
    out = static_cast<Kinds>(out | anywhere(ASCII_KINDS[low]));
  }
  if (low > high) return out;
  if (high - low < FEW) {
    for (char32_t c = low; c <= high; ++c) out = static_cast<Kinds>(out | other_kind(c));
    return out;
  }
  out = static_cast<Kinds>(out | MARK | OTHER);
  if (low <= LAST_IDEOGRAPH && high >= FIRST_IDEOGRAPH) out = static_cast<Kinds>(out | IDEOGRAPH);
  return out;
}

}  // namespace core::text
