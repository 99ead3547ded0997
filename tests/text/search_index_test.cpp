#include "core/text/search_index.hpp"

#include <random>

#include <gtest/gtest.h>

namespace core::text {
namespace {

using Index = SearchIndex;

TEST(SearchIndex, TellsWhatACharacterIsAtItsPlace) {
  const std::u32string text = U"甲A1 12b\U00020000。Z-é９";
  const Index index(text);
  const Index::Kinds expected[] = {0,
                                   Index::UPPER_FIRST,
                                   Index::DIGIT_AFTER_LETTER,
                                   Index::SPACE,
                                   Index::DIGIT_FIRST,
                                   Index::DIGIT_AFTER_DIGIT,
                                   Index::LOWER_INSIDE,
                                   Index::OTHER,
                                   Index::MARK,
                                   Index::UPPER_FIRST,
                                   Index::SIGN,
                                   Index::OTHER,
                                   Index::MARK};
  for (std::size_t i = 1; i < text.size(); ++i) EXPECT_EQ(index.at(i), expected[i]) << i;
  EXPECT_NE(index.at(0) & Index::IDEOGRAPH, 0);
  EXPECT_EQ(index.first_ones(), (std::vector<std::uint32_t>{1, 4, 9}));
}

TEST(SearchIndex, FindsTheNextOfSomeKinds) {
  std::mt19937 random(3);
  const std::u32string letters = U"aZ19 .。甲乙丙丁é\U0001F600";
  for (int round = 0; round < 50; ++round) {
    std::u32string text;
    const char32_t usual = letters[random() % letters.size()];
    for (std::size_t i = 0; i < 70 + random() % 200; ++i) {
      text.push_back(random() % 20 == 0 ? letters[random() % letters.size()] : usual);
    }
    const Index index(text);
    const auto kinds = static_cast<Index::Kinds>(random());
    for (std::size_t from = 0; from <= text.size(); ++from) {
      std::size_t expected = from;
      while (expected < text.size() && (index.at(expected) & kinds) == 0) ++expected;
      ASSERT_EQ(index.next(kinds, from), expected);
    }
  }
}

TEST(SearchIndex, KnowsTheKindsOfARangeOfCharacters) {
  std::mt19937 random(4);
  for (int round = 0; round < 300; ++round) {
    const auto low = static_cast<char32_t>(random() % 0x11000);
    const auto high = static_cast<char32_t>(low + random() % (round % 2 == 0 ? 40 : 9000));
    const auto kinds = Index::kinds_between(low, high);
    for (char32_t c = low; c <= high; ++c) {
      for (const std::u32string& text :
           {std::u32string{c}, U"a" + std::u32string{c}, U"1" + std::u32string{c}}) {
        ASSERT_NE(Index(text).at(text.size() - 1) & kinds, 0) << static_cast<unsigned>(c);
      }
    }
  }
}

}  // namespace
}  // namespace core::text
