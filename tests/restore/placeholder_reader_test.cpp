// How placeholders are spelled after somebody has edited a text.
#include "core/restore/placeholder_reader.hpp"

#include <gtest/gtest.h>

#include "tests/support/notation.hpp"

namespace {

using core::restore::find_written_placeholders;

// "<key>" for each placeholder, between the rest of the text.
std::string read(std::string_view text) {
  const auto wide = test::u32(text);
  std::u32string out;
  std::size_t at = 0;
  for (const auto& found : find_written_placeholders(wide)) {
    out += wide.substr(at, found.start - at) + U"<" + found.key + U">";
    at = found.end;
  }
  return test::u8(out + wide.substr(at));
}

TEST(PlaceholderReader, SpellingsOfOnePlaceholder) {
  struct Case {
    const char* why;
    const char* text;
    const char* read;
  };
  const Case cases[] = {
      {"原样", "甲方：[机构1]。", "甲方：<org#1>。"},
      {"全角括号", "【机构1】［机构1］〔机构1〕", "<org#1><org#1><org#1>"},
      {"左右括号不同", "[机构1］", "<org#1>"},
      {"全角数字和字母", "［机构１］【ＤＡＴＥ３】", "<org#1><date#3>"},
      {"inner spaces and line breaks", "[ 机构 1 ] [ORG\n1]", "<org#1> <org#1>"},
      {"invisible characters", "[ORG\u200B1]", "<org#1>"},
      {"letter case", "[org1] [Org1]", "<org#1> <org#1>"},
      {"separators", "[ORG-1] [ORG_1] [ORG #1]", "<org#1> <org#1> <org#1>"},
      {"译成另一种语言", "[機構1] [Organization 1] [日期3] [姓名2]",
       "<org#1> <org#1> <date#3> <name#2>"},
      {"Markdown escapes brackets", R"(see \[ORG1\].)", "see <org#1>."},
      {"one backslash is the document's", R"(C:\[ORG1])", R"(C:\<org#1>)"},
      {"Markdown around it", "**[ORG1]** `[ORG1]` [[ORG1]]", "**<org#1>** `<org#1>` [<org#1>]"},
      {"cards", R"([CARD_****0012] [CARD\_\*\*\*\*0012] [CARD_****])",
       "<card#0012> <card#0012> <card#>"},
      {"a tag that is set off from its number", "[CARD_LAST4_2] [CARD_LAST42]",
       "<card_last4#2> <card_last#42>"},
      // What is none.
      {"没有编号", "[机构] 【注】 [] [1]", "[机构] 【注】 [] [1]"},
      {"parentheses", "(ORG1) {ORG1}", "(ORG1) {ORG1}"},
      {"no brackets", "ORG1 机构1", "ORG1 机构1"},
      {"a bracket that does not close", "[ORG1 [ORG2]", "[ORG1 <org#2>"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(read(c.text), c.read);
  }
}

TEST(PlaceholderReader, ASentenceInBracketsIsNone) {
  const std::string sentence(200, 'x');
  EXPECT_EQ(read("[" + sentence + "1]"), "[" + sentence + "1]");
}

}  // namespace
