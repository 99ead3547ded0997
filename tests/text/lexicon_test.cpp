#include "core/text/lexicon.hpp"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace core::text
