#include "core/anonymization/analyzer/language.hpp"

#include <gtest/gtest.h>

#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

TEST(InferLanguage, ReadsLabelsThenEmailFieldsThenTheShareOfChinese) {
  struct Case {
    const char* why;
    const char* text;
    const char* language;
  };
  constexpr Case cases[] = {
      {"nothing to go by", "", "en"},
      {"只有空白", " \u3000\n", "en"},
      {"有汉字且有字段标签", "Agreement between the parties below, all in English. 甲方：Acme",
       "zh"},
      {"没有汉字的标签不算", "Party A: Acme", "en"},
      {"全角冒号的邮箱字段", "E-mail：x", "zh"},
      {"空白在标签里不算", " E - mail：someone@example.com", "zh"},
      {"半角冒号不算", "E-mail: someone@example.com", "en"},
      {"没有连字符不算", "Email：someone@example.com", "en"},
      {"E-mail address 去空白后不再匹配", "E-mail address：someone@example.com", "en"},
      {"只取第一个冒号前", "Send to：E-mail：someone@example.com", "en"},
      {"全角标点占全部", "，。；：", "zh"},
      {"ASCII 引号计入", "\"'\"'", "zh"},
      {"扩展区汉字不计入", "𠀀𠀁𠀂", "en"},
      {"a single ideograph in a long text", "The parties agree on 价 as the price of the goods.",
       "en"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(infer_language_from_text(test::u32(c.text)), c.language);
  }
}

TEST(ResolveLanguage, KnowsItsSpellingsAndInfersTheRest) {
  struct Case {
    const char* requested;
    const char* text;
    const char* language;
  };
  constexpr Case cases[] = {
      {" ZH ", "english", "zh"},  {"Chinese", "english", "zh"}, {"中文", "english", "zh"},
      {"cn", "english", "zh"},    {"EN", "甲方：公司", "en"},   {"英文", "甲方：公司", "en"},
      {"fr", "甲方：公司", "zh"}, {"", "甲方：公司", "zh"},     {"auto", "plain", "en"},
      {"zh-CN", "plain", "en"},   {"\xFF", "甲方：公司", "zh"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.requested);
    EXPECT_EQ(resolve_analyze_language(c.requested, test::u32(c.text)), c.language);
  }
}

}  // namespace
}  // namespace core::anonymization
