#include "core/anonymization/replacements/numbered_builder.hpp"

#include <gtest/gtest.h>

#include "core/anonymization/rules/org_context.hpp"
#include "core/errors.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

std::string build(std::string_view marked, std::string_view profile = "contract_default") {
  auto doc = test::parse(marked);
  test::MarkedReplacements out{doc.text, {}};
  out.replacements = build_numbered_replacements(
      doc.text, test::ScriptedAnalyzer(std::move(doc.results)), "auto", profile);
  return test::render(out);
}

TEST(NumberedBuilder, NumbersEntitiesByIdentityInOrderOfAppearance) {
  struct Case {
    const char* why;
    const char* in;
    const char* out;
  };
  constexpr Case cases[] = {
      {"没有实体", "普通文字", "普通文字"},
      {"同一主体同号，先见先得",
       "{ORGANIZATION|乙公司}、{ORGANIZATION|甲 公司}、{ORGANIZATION|乙公司}、{ORGANIZATION|甲公司}",
       "{[机构1]|乙公司}、{[机构2]|甲 公司}、{[机构1]|乙公司}、{[机构2]|甲公司}"},
      {"各类各计数",
       "{PERSON|张三}{LOCATION|运城市}{DATE_TIME|2023年}{PHONE_NUMBER|138}{PERSON|李四}",
       "{[NAME1]|张三}{[地址1]|运城市}{[DATE1]|2023年}{[PHONE1]|138}{[NAME2]|李四}"},
      {"日期写法不同同号", "{DATE_TIME|2023年}{DATE_TIME|2024年}{DATE_TIME|2023}",
       "{[DATE1]|2023年}{[DATE2]|2024年}{[DATE1]|2023}"},
      {"同一标签的不同类型共用计数，不共用键",
       "{LOCATION|运城市}{GPE|运城市}{ADDRESS|甲路}{LOCATION|太原市}",
       "{[地址1]|运城市}{[地址2]|运城市}{[地址3]|甲路}{[地址4]|太原市}"},
      {"标签同族的自定义类型不占用他人号码", "{PERSON|张三}{NAME|李四}{PERSON|王五}",
       "{[NAME1]|张三}{[NAME3]|李四}{[NAME2]|王五}"},
      {"空白换成下划线", "{MY TYPE|X1}", "{[MY_TYPE1]|X1}"},
      {"金额保留措辞", "{MONEY|人民币100元}，{MONEY|100元}，{MONEY|200元}",
       "{人民币[MONEY1]元|人民币100元}，{[MONEY1]元|100元}，{[MONEY2]元|200元}"},
      {"没有内容的金额各自编号", "{MONEY|RMB}，{MONEY|RMB}", "{[MONEY1]|RMB}，{[MONEY2]|RMB}"},
      {"卡号末四位固定写法", "{CARD_LAST4|1234}{CARD_LAST4|1234}",
       "{[CARD_****1234]|1234}{[CARD_****1234]|1234}"},
      {"包住的方括号一并替换", "在【{LOCATION|运城市}】", "在{[地址1]|【运城市】}"},
      {"金额外的圆括号保留", "（{MONEY|100元}）", "（{[MONEY1]元|100元}）"},
      {"国名作组织按地址编号", "{ORGANIZATION|美国}、{LOCATION|USA}、{ORGANIZATION|美国某某公司}",
       "{[地址1]|美国}、{[地址1]|USA}、{[机构1]|美国某某公司}"},
      {"中国与他国之间", "中国和美国两国之间，{ORGANIZATION|中国}及英国两国之间",
       "{[地址1]|中国}和美国两国之间，{[地址1]|中国}及英国两国之间"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(build(c.in), c.out);
  }
}

TEST(NumberedBuilder, CoversTheFinnishCompanyForm) {
  EXPECT_EQ(build("{ORGANIZATION|Nokia} oyj, x"), "{[机构1]|Nokia oyj}, x");
  EXPECT_EQ(build("{ORGANIZATION|Nokia} Oyjx"), "{[机构1]|Nokia} Oyjx");
  EXPECT_EQ(build("{ORGANIZATION|Nokia}Oyj"), "{[机构1]|Nokia}Oyj") << "needs a blank";
  EXPECT_EQ(build("{ORGANIZATION|Nokia}      Oyj"), "{[机构1]|Nokia}      Oyj") << "out of reach";
  EXPECT_EQ(build("{ORGANIZATION|Nokia}     Oyjx"), "{[机构1]|Nokia     Oyj}x")
      << "the reach ends there";
}

TEST(NumberedBuilder, LeavesCountriesToOrganizationsWhenSwitchedOff) {
  set_mask_country_in_geo_background(false);
  EXPECT_EQ(build("{ORGANIZATION|美国}"), "{[机构1]|美国}");
  set_mask_country_in_geo_background(true);
}

TEST(NumberedBuilder, HandsTheAnalyzerBlanksForUnderscores) {
  const test::ScriptedAnalyzer analyzer({{"ORGANIZATION", 3, 9, 1}});
  const auto replacements = build_numbered_replacements(U"甲方：______", analyzer, "auto");
  EXPECT_EQ(test::u8(analyzer.last_text), "甲方：      ");
  EXPECT_EQ(analyzer.last_language, "zh");
  EXPECT_TRUE(replacements.empty()) << "the filters read the original text";
}

TEST(NumberedBuilder, RunsTheStepsOfTheProfile) {
  const char* text =
      "{PERSON|张三}付{MONEY|5元}，{PERCENT|3%}，{DATE_TIME|2023年}，{EMAIL_ADDRESS|a@b.cn}";
  EXPECT_EQ(build(text, "identity"), "{[NAME1]|张三}付5元，3%，2023年，{[EMAIL1]|a@b.cn}");
  EXPECT_EQ(build(text, "strict"), build(text));
  EXPECT_THROW(build(text, "no such profile"), ValueError);
}

TEST(NumberedBuilder, KeepsADefinedAliasOfAReportedOrganization) {
  EXPECT_EQ(build("{ORGANIZATION|北京华信科技有限公司}（以下简称“华信科技”）"),
            "{[机构1]|北京华信科技有限公司}（以下简称“{[机构2]|华信科技}”）");
  EXPECT_EQ(build("北京华信科技有限公司（以下简称“华信科技”）"),
            "北京华信科技有限公司（以下简称“华信科技”）");
}

TEST(NumberedBuilder, PassesOnWhatTheAnalyzerThrows) {
  class Failing : public Analyzer {
    std::vector<RecognizerResult> analyze(std::u32string_view, std::string_view) const override {
      throw ExternalError("the service is down");
    }
  };
  EXPECT_THROW(build_numbered_replacements(U"甲", Failing()), ExternalError);
}

}  // namespace
}  // namespace core::anonymization
