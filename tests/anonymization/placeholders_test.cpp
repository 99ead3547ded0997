#include "core/anonymization/placeholders.hpp"

#include <limits>

#include <gtest/gtest.h>

#include "core/errors.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

using test::u32;
using test::u8;

TEST(Placeholders, FormatAndParseAreInverse) {
  constexpr std::int64_t MAX = std::numeric_limits<std::int64_t>::max();
  struct {
    const char* why;
    std::string tag;
    std::int64_t number;
    std::string locale;
    std::string written;
  } const rows[] = {
      {"机构的中文写法", "ORG", 1, "zh", "[机构1]"},
      {"地址的中文写法", "ADDRESS", 20, "zh", "[地址20]"},
      {"other tags read alike", "DATE", 3, "zh", "[DATE3]"},
      {"the tag itself", "ORG", 1, "en", "[ORG1]"},
      {"any other locale too", "ADDRESS", 7, "fr", "[ADDRESS7]"},
      {"the largest number", "NAME", MAX, "zh", "[NAME9223372036854775807]"},
      {"自定义的中文标签", "合同编号", 2, "zh", "[合同编号2]"},
      // Tags that would run into the number.
      {"a digit at the end", "CARD_LAST4", 2, "zh", "[CARD_LAST4_2]"},
      {"a digit and an underscore", "CARD_LAST4_", 2, "zh", "[CARD_LAST4__2]"},
      {"an underscore alone is part of the tag", "MY_", 2, "zh", "[MY_2]"},
      {"a tag of digits", "7", 7, "zh", "[7_7]"},
      {"a sign at the end", "A-", 1, "zh", "[A-_1]"},
      {"与中文写法同名的标签", "机构", 1, "zh", "[机构_1]"},
      {"同名而带下划线的标签", "机构_", 1, "en", "[机构__1]"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    const auto written = format_numbered_placeholder(row.tag, row.number, row.locale);
    EXPECT_EQ(u8(written), row.written);
    EXPECT_EQ(parse_numbered_placeholder(written), (NumberedPlaceholder{row.tag, row.number}));
    EXPECT_TRUE(is_numbered_placeholder_of(written, row.tag));
    EXPECT_FALSE(is_numbered_placeholder_of(written, row.tag + "X"));
  }
  EXPECT_THROW(format_numbered_placeholder("\xFF", 1), ValueError);
}

TEST(Placeholders, ParsesEveryKindOfBracketAndNothingElse) {
  for (const char* good : {"[机构12]", "［机构12］", "【机构12】", "[ORG12]", "【ORG12】"}) {
    EXPECT_EQ(parse_numbered_placeholder(u32(good)), (NumberedPlaceholder{"ORG", 12})) << good;
  }
  for (const char* bad : {"",
                          "[",
                          "[]",
                          "[]]",
                          "机构1",
                          "[机构]",
                          "[12]",
                          "[_]",
                          "[机构0]",
                          "[机构01]",
                          "[机构-1]",
                          "[机构+1]",
                          "[机构 1]",
                          "[ 机构1]",
                          " [机构1]",
                          "[机构1] ",
                          "[机构1]元",
                          "[[机构1]]",
                          "[机构1】",
                          "［机构1]",
                          "(机构1)",
                          "[机构１]",
                          "[机构1][机构2]",
                          "[CARD_****1234]",
                          "[NAME9223372036854775808]",
                          "[NAME99999999999999999999]"}) {
    EXPECT_EQ(parse_numbered_placeholder(u32(bad)), std::nullopt) << bad;
    EXPECT_FALSE(is_numbered_placeholder_of(u32(bad), "ORG")) << bad;
  }
  EXPECT_EQ(parse_numbered_placeholder(U"[\xD800"
                                       U"1]"),
            std::nullopt)
      << "a surrogate";
  EXPECT_FALSE(is_numbered_placeholder_of(U"[机构_1]", "ORG"));
}

TEST(Placeholders, FindsThoseInAText) {
  const std::u32string text = U"[[机构1]与［地址2］，[注][DATE3】[DATE4";
  std::string found;
  for (const auto& [start, end] : find_numbered_placeholders(text)) {
    found += u8(std::u32string_view(text).substr(static_cast<std::size_t>(start),
                                                 static_cast<std::size_t>(end - start))) +
             " ";
  }
  EXPECT_EQ(found, "[机构1] ［地址2］ ");
}

TEST(Placeholders, AsciiBracketsGoToThePlaceholderOnly) {
  struct {
    const char* why;
    const char* in;
    const char* out;
  } const rows[] = {
      {"全角括号", "［机构1］", "[机构1]"},
      {"金额措辞中的占位符", "人民币【MONEY2】元", "人民币[MONEY2]元"},
      {"合同自己的括号保留", "【注】[MONEY1]［大写］", "【注】[MONEY1]［大写］"},
      {"外层括号保留", "【［MONEY1］】", "【[MONEY1]】"},
      {"一串多个", "［NAME1］、【NAME2】", "[NAME1]、[NAME2]"},
      {"卡号占位符", "见【CARD_****1234】", "见[CARD_****1234]"},
      {"整串只是一对括号", "【甲方】", "[甲方]"},
      {"整串之内另有括号", "【甲[方】", "【甲[方】"},
      {"左右不成对", "［机构1】", "［机构1】"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(u8(ensure_ascii_placeholder_brackets(u32(row.in))), row.out);
  }
}

TEST(Placeholders, CardShowsItsLastFourDigits) {
  for (const char* surface : {"1234", " 12 34\t", "１２３４", "尾号1234", "6222 **** 1234"}) {
    EXPECT_EQ(u8(format_card_last4_placeholder(u32(surface))), "[CARD_****1234]") << surface;
  }
  EXPECT_EQ(u8(format_card_last4_placeholder(U"")), "[CARD_****]");
}

TEST(Placeholders, AbsorbsOneDirectPairOfBrackets) {
  struct {
    const char* why;
    const char* in;
    const char* out;
  } const rows[] = {
      {"方括号", "位于[{X|北京}]市", "位于{X|[北京]}市"},
      {"只取一层", "【［{X|北京}］】", "【{X|［北京］}】"},
      {"圆括号不取", "（{X|100}）元", "（{X|100}）元"},
      {"不成对", "[{X|北京}】", "[{X|北京}】"},
      {"中间隔着空格", "[ {X|北京}]", "[ {X|北京}]"},
      {"文首文末", "{X|北京}", "{X|北京}"},
      {"只有左括号", "[{X|北京}", "[{X|北京}"},
      {"空段", "[{X|}]", "[{X|}]"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    auto doc = test::parse(row.in);
    auto& span = doc.results.front();
    std::tie(span.start, span.end) =
        expand_span_to_absorb_wrapping_brackets(doc.text, span.start, span.end);
    EXPECT_EQ(test::render(doc), row.out);
  }
  using Span = std::pair<Offset, Offset>;
  EXPECT_EQ(expand_span_to_absorb_wrapping_brackets(U"[北]", 2, 1), Span(2, 1));
  EXPECT_EQ(expand_span_to_absorb_wrapping_brackets(U"[北]", -1, 99), Span(-1, 99));
}

}  // namespace
}  // namespace core::anonymization
