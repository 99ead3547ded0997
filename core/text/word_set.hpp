// Small sets of words that are built by the compiler.
//
//   constexpr auto CONNECTIVES = text::words({U"与", U"及", U"和"});
//   CONNECTIVES.contains(U"与")  ->  true
//
// A word that stands twice does not compile.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <type_traits>

namespace core::text {

template <class Char, std::size_t N>
class WordSet {
 public:
  consteval explicit WordSet(const std::basic_string_view<Char> (&words)[N]) {
    std::copy(std::begin(words), std::end(words), words_.begin());
    std::sort(words_.begin(), words_.end());
    if (std::adjacent_find(words_.begin(), words_.end()) != words_.end()) {
      throw std::logic_error("a word stands twice");
    }
    for (std::size_t i = 0; i < N; ++i) {
      std::size_t slot = first_slot(words_[i]);
      while (slots_[slot] != FREE) slot = (slot + 1) % SLOTS;
      slots_[slot] = static_cast<std::uint16_t>(i);
    }
  }

  constexpr bool contains(std::basic_string_view<Char> word) const {
    for (std::size_t slot = first_slot(word); slots_[slot] != FREE; slot = (slot + 1) % SLOTS) {
      if (words_[slots_[slot]] == word) return true;
    }
    return false;
  }

  // In code-point order.
  constexpr auto begin() const { return words_.begin(); }
  constexpr auto end() const { return words_.end(); }
  constexpr std::size_t size() const { return N; }

 private:
  static_assert(N < 0xFFFF);
  static constexpr std::uint16_t FREE = 0xFFFF;
  static constexpr std::size_t SLOTS = std::bit_ceil(4 * N);

  static constexpr std::uint64_t number_of(Char c) {
    return static_cast<std::make_unsigned_t<Char>>(c);
  }

  // Sets are asked for words of any length: the hash reads only the ends, which tell the
  // words of such sets well apart.
  static constexpr std::size_t first_slot(std::basic_string_view<Char> word) {
    if (word.empty()) return 0;
    constexpr std::uint64_t MULTIPLIER = 0x9E3779B97F4A7C15;
    const auto second = number_of(word[word.size() > 1 ? 1 : 0]);
    const auto ends = (number_of(word.front()) << 32U) ^ (second << 16U) ^ number_of(word.back());
    return static_cast<std::size_t>(((ends + word.size()) * MULTIPLIER) >> 32U) % SLOTS;
  }

  static constexpr std::array<std::uint16_t, SLOTS> free_slots() {
    std::array<std::uint16_t, SLOTS> slots{};
    slots.fill(FREE);
    return slots;
  }

  std::array<std::basic_string_view<Char>, N> words_{};
  std::array<std::uint16_t, SLOTS> slots_ = free_slots();  // into words_, with linear probing
};

template <std::size_t N>
consteval WordSet<char32_t, N> words(const std::u32string_view (&list)[N]) {
  return WordSet<char32_t, N>(list);
}

template <std::size_t N>
consteval WordSet<char, N> type_names(const std::string_view (&list)[N]) {
  return WordSet<char, N>(list);
}

}  // namespace core::text
