#include "core/text/lexicon.hpp"

#include <gtest/gtest.h>

#include "core/text/view_map.hpp"
#include "core/text/word_set.hpp"

namespace core::text {
namespace {

TEST(Lexicon, ReadsColumnsAndSkipsCommentsAndEmptyLines) {
  const auto rows = lexicon_rows("# header\n\n美国\tUSA\tU.S.\n中国\n");
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0], (std::vector<std::u32string>{U"美国", U"USA", U"U.S."}));
  EXPECT_EQ(lexicon_words("a\tb\nc"), (std::vector<std::u32string>{U"a", U"c"}));
}

TEST(WordSet, ContainsItsWordsAndNoPrefixOfThem) {
  constexpr auto set = words({U"公司", U"有限公司", U"甲"});
  EXPECT_TRUE(set.contains(U"公司"));
  EXPECT_FALSE(set.contains(U"公"));
  EXPECT_FALSE(set.contains(U""));
}

TEST(ViewMap, KeepsAValueForEachWordInTheOrderOfTheirFirst) {
  std::u32string text;
  for (char32_t c = 0; c < 5000; ++c) text += static_cast<char32_t>(0x4E00 + c);
  ViewMap<std::size_t> map;
  for (int round = 0; round < 3; ++round) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      const auto word = std::u32string_view(text).substr(i, i % 4);
      const auto [entry, is_new] = map.add(word);
      EXPECT_EQ(is_new, round == 0 && (i < 4 || i % 4 != 0));
      EXPECT_EQ(entry.word, word);
      EXPECT_EQ(entry.value, is_new ? 0 : word.empty() ? 0 : i);
      if (!word.empty()) entry.value = i;
    }
  }
  EXPECT_EQ(map.entries().size(), 1 + 5000 / 4 * 3);
  EXPECT_EQ(map.entries()[2].word, text.substr(2, 2));
}

}  // namespace
}  // namespace core::text
