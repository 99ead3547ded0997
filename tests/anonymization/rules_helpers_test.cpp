#include <gtest/gtest.h>

#include "core/anonymization/replacements/span_postprocess.hpp"
#include "core/anonymization/rules/helpers.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

bool is_written_amount(std::string_view tail) {
  return RE_EN_WRITTEN_CURRENCY_IN_PARENS.full_match(test::u32(tail)).has_value();
}

TEST(WrittenCurrency, TakesAmountsInWords) {
  for (const char* tail :
       {"(twenty-four million euros)", " (US Dollars One Million Two Hundred Thousand Only)",
        "（SAY US DOLLARS FIVE HUNDRED ONLY）", "(Renminbi Ten Million Yuan)",
        "(Five Hundred Thousand Dollars and 50/100)", "\n( in words: RMB Twelve Thousand. )",
        "(SAY TOTAL U.S. DOLLARS FIVE THOUSAND ONLY.)", "(one hundred pounds and fifty pence)",
        "(One Hundred Hong Kong Dollars and 5 cents)", "(US$ one million)", "(a million euros)",
        "(One Million Two Hundred Thousand)", "(five only)", "(one and a half million yen)",
        "(ten dollars of the United States of America)"}) {
    EXPECT_TRUE(is_written_amount(tail)) << tail;
  }
}

TEST(WrittenCurrency, LeavesOtherParentheses) {
  for (const char* tail :
       {"", "()", "(excluding VAT)", "(one)", "(the Price)", "(three months)", "(US Dollars)",
        "(thousand dollars)", "(two hundred tons)", "(one thousand shares)",
        "(one dollar per unit)", "one million dollars", "(one million dollars",
        "(one million dollars) per year", "(one million dollars\nor (ten) euros)",
        "元 (one million yuan)", "[one million dollars]"}) {
    EXPECT_FALSE(is_written_amount(tail)) << tail;
  }
}

TEST(WrittenCurrency, EndsOnLongTails) {
  for (const char* unit : {"one ", "hundred", "dollars ", "twenty-", "one dollar ", "a  ", "1  ",
                           "(", " ", "in words ", "of the united states "}) {
    std::string tail = "(one dollar ";
    while (tail.size() < 100'000) tail += unit;
    EXPECT_FALSE(is_written_amount(tail)) << unit;
    EXPECT_FALSE(is_written_amount(tail + " tons)")) << unit;
  }
}

// A joiner inside a joiner could be stripped in two ways.
TEST(Joiners, AreDistinctAndFramed) {
  for (const auto& joiner : DOCX_PARA_JOINER_SEQUENCES) {
    EXPECT_EQ(joiner.front(), U'\uE000');
    EXPECT_EQ(joiner.back(), U'\uE001');
    for (const auto& other : DOCX_PARA_JOINER_SEQUENCES) {
      EXPECT_EQ(joiner.find(other) != joiner.npos, &joiner == &other);
    }
  }
}

TEST(Joiners, AreThoseOfTheApplicationWhereItHasItsOwn) {
  const std::u32string text = U"甲¤¤乙" + std::u32string(PARAGRAPH_JOINER);
  set_joiner_setting([] { return std::vector<std::u32string>{U"", U"¤¤"}; });
  EXPECT_EQ(_strip_docx_joiner_sequences(text), U"甲乙" + std::u32string(PARAGRAPH_JOINER));
  EXPECT_EQ(_clip_replacements_at_embedded_docx_joiners({{0, 4, U"[机构1]"}}, text).size(), 2U);
  set_joiner_setting({});
  EXPECT_EQ(_strip_docx_joiner_sequences(text), U"甲¤¤乙");
}

}  // namespace
}  // namespace core::anonymization
