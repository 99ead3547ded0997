// Where in a text each of many patterns may begin, found in one pass over it.
//
// Of every pattern it knows which characters can stand before a match, and first,
// second, ... in it. The sets of all patterns lie side by side as bits, so that a step for all of them
// costs about what one pattern's own search would. Used by SearchIndex and Regex.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "core/text/search_index.hpp"

namespace core::text {

class PatternScan {
 public:
  struct Item {
    std::uint32_t id = 0;
    std::u32string_view pattern;
    // Only matches whose first character is of these kinds are asked for.
    SearchIndex::Kinds where = SearchIndex::ALL;
  };

  // A pattern that may match an empty text, or that is not understood, is left out, and so
  // are those that have no room: each takes one of CAPACITY places, or one for each of its
  // few alternatives.
  explicit PatternScan(const std::vector<Item>& items);

  PatternPlaces scan(std::u32string_view text, const SearchIndex& index) const;

  static constexpr std::size_t CAPACITY = 384;

 private:
  friend class PatternScanBuilder;
  static constexpr std::size_t WORD = 64;
  static constexpr std::size_t DEPTH = 6;  // characters of a match that are looked at
  static constexpr std::size_t PAGE = 256;
  static constexpr std::size_t PAGES = 256;                 // of the Basic Multilingual Plane
  using Bits = std::array<std::uint64_t, CAPACITY / WORD>;  // one for each alternative
  struct Row {                                              // which patterns take a character
    Bits before;                                            // before a match
    std::array<Bits, DEPTH> inside;                         // in it, by its depth
    auto operator<=>(const Row&) const = default;
  };
  using Class = std::uint16_t;  // of characters that no pattern tells apart
  class Run;

  Class class_of(char32_t c) const;

  std::array<std::uint16_t, PAGES> pages_{};  // which page of classes_
  std::vector<std::array<Class, PAGE>> classes_;
  std::vector<std::pair<char32_t, Class>> astral_;  // first character, class; sorted
  std::vector<Row> rows_;                           // by class
  Row start_{};                                     // before the start of the text
  Row end_{};                                       // behind its end
  std::array<Bits, SearchIndex::COUNT> kinds_{};    // by the kind of the first character
  std::vector<std::uint32_t> ids_;                  // by item
  std::vector<std::uint16_t> item_of_bit_;
};

}  // namespace core::text
