// What the matches of a regular expression can begin with.
//
// A pattern is read once into a small automaton that takes every beginning which
// some match has, and some more: look-around, word boundaries and back references
// are passed over. So "no" is certain and costs a few steps, where the regex engine
// would need a call. Used by Regex; no other code needs it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "core/text/search_index.hpp"

namespace core::text {

class PrefixAutomaton {
 public:
  // Nothing for a pattern that may match an empty text, that is too large, or that
  // uses what is not understood here.
  static std::unique_ptr<const PrefixAutomaton> of(std::u32string_view pattern);

  // False: no match begins at offset `at` of the text.
  bool may_begin(std::u32string_view text, std::size_t at) const;

  // The first offset from `from` on where a match may begin; the length of the
  // text if there is none.
  std::size_t next(std::u32string_view text, std::size_t from) const;
  // The same with the index of `text`, only where the first character is of one of
  // the kinds `where`.
  std::size_t next(std::u32string_view text, const SearchIndex& index, std::size_t from,
                   SearchIndex::Kinds where) const;

 private:
  friend class PrefixAutomatonBuilder;
  using State = std::uint16_t;
  static constexpr State DEAD = 0;
  static constexpr State MAYBE = 1;
  static constexpr State START = 2;
  static constexpr std::size_t PAGE = 256;
  static constexpr std::size_t PAGES = 256;  // of the Basic Multilingual Plane

  std::size_t class_of(char32_t c) const;
  bool begins(char32_t c) const {
    return c < PAGE * PAGES ? begins_[pages_[c / PAGE]][c % PAGE] : class_begins_[class_of(c)];
  }
  std::size_t next_first_one(std::u32string_view text, const SearchIndex& index, std::size_t from,
                             SearchIndex::Kinds kinds) const;

  // The characters fall into classes that no part of the pattern tells apart.
  std::array<std::uint8_t, PAGES> pages_{};  // which page of classes_
  std::vector<std::array<std::uint8_t, PAGE>> classes_;
  std::vector<std::pair<char32_t, std::uint8_t>> astral_;  // first character, class; sorted
  std::size_t class_count_ = 0;
  std::vector<State> next_;                     // [state * class_count_ + class]
  std::vector<std::array<bool, PAGE>> begins_;  // as classes_: whether a match may begin so
  std::vector<bool> class_begins_;              // whether a match may begin with the class
  // A match is looked for by the character so far behind its first that is the
  // rarest, and by the kinds that it can be of.
  std::size_t anchor_ = 0;
  SearchIndex::Kinds anchor_kinds_ = SearchIndex::ALL;
  SearchIndex::Kinds first_kinds_ = SearchIndex::ALL;  // of the first character
  bool is_frequent_ = true;                            // the anchor stands everywhere
};

}  // namespace core::text
