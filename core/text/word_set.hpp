// Small sets of words that are built by the compiler.
//
//   constexpr auto CONNECTIVES = text::words({U"与", U"及", U"和"});
//   CONNECTIVES.contains(U"与")  ->  true
//
// A word that stands twice does not compile.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string_view>

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
  }

  constexpr bool contains(std::basic_string_view<Char> word) const {
    return std::binary_search(words_.begin(), words_.end(), word);
  }

  // In code-point order.
  constexpr auto begin() const { return words_.begin(); }
  constexpr auto end() const { return words_.end(); }
  constexpr std::size_t size() const { return N; }

 private:
  std::array<std::basic_string_view<Char>, N> words_{};
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
