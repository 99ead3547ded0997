#include "core/anonymization/constants.hpp"

#include <map>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/notation.hpp"

namespace {

using core::anonymization::ENTITY_TO_TAG;
using core::anonymization::tag_of_entity_type;

TEST(EntityToTag, GivesTheTagsThatDecideNumbering) {
  const struct {
    const char* type;
    const char* tag;
  } cases[] = {{"ORGANIZATION", "ORG"}, {"LOCATION", "ADDRESS"}, {"GPE", "ADDRESS"},
               {"ADDRESS", "ADDRESS"},  {"DATE_TIME", "DATE"},   {"DATE", "DATE"},
               {"YEAR", "DATE"},        {"PERSON", "NAME"},      {"MONEY", "MONEY"},
               {"机构", "ORG"},         {"地址", "ADDRESS"},     {"US_PASSPORT", "PASSPORT"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.type);
    EXPECT_EQ(ENTITY_TO_TAG.find(c.type), c.tag);
    EXPECT_EQ(tag_of_entity_type(c.type), c.tag);
  }
}

TEST(EntityToTag, ATypeThatIsNotInTheTableIsItsOwnTag) {
  const struct {
    const char* why;
    const char* type;
    const char* tag;
  } cases[] = {{"every blank becomes an underscore", "MY OWN  TYPE", "MY_OWN__TYPE"},
               {"letter case decides", "person", "person"},
               {"before the first row", "AAA", "AAA"},
               {"a type in Chinese", "合同编号", "合同编号"},
               {"the empty type", "", ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(ENTITY_TO_TAG.find(c.type), "");
    EXPECT_EQ(tag_of_entity_type(c.type), c.tag);
  }
}

TEST(EntityToTag, OnlyOrganizationsAreOrgAndOnlyPlacesAreAddresses) {
  std::map<std::string_view, std::set<std::string_view>> types;
  for (const auto& row : ENTITY_TO_TAG) types[row.tag].insert(row.entity_type);
  EXPECT_EQ(types["ORG"], (std::set<std::string_view>{"ORGANIZATION", "机构"}));
  EXPECT_EQ(types["ADDRESS"], (std::set<std::string_view>{"LOCATION", "GPE", "ADDRESS", "地址"}));
  EXPECT_EQ(types["NAME"].size(), 1U);
  EXPECT_EQ(types["MONEY"].size(), 1U);
}

// Calls check(text) for each of the texts, which bars part.
template <class Check>
void for_each_of(std::string_view texts, Check check) {
  std::istringstream in{std::string(texts)};
  for (std::string text; std::getline(in, text, '|');) {
    SCOPED_TRACE(text);
    check(test::u32(text));
  }
}

TEST(ZhContractFieldLabel, FindsLabelsOfContractFields) {
  const auto is_label = [](std::u32string_view text) {
    EXPECT_TRUE(core::anonymization::RE_ZH_CONTRACT_FIELD_LABEL.search(text));
  };
  for_each_of("甲方：|乙　方（卖方）：|委托方（甲方）（盖章）:|发包人 (Employer):|保证人二：",
              is_label);
  for_each_of("招 标 人：|法定代表人:|供应商：|甲方 / Party A:|Registered address / 注册地址:",
              is_label);
  for_each_of("地　址：|开 户 行：|户名 Account name：|见2.1 联系人:张|信用代码 :|身份证号码：",
              is_label);
}

TEST(ZhContractFieldLabel, LeavesOtherWordsBeforeAColon) {
  const auto is_no_label = [](std::u32string_view text) {
    EXPECT_FALSE(core::anonymization::RE_ZH_CONTRACT_FIELD_LABEL.search(text));
  };
  for_each_of("说明：|如下：|其中：|双方：|他人：|Party A:|Address: 上海|甲方|地址在上海",
              is_no_label);
  for_each_of("“许可专利”指：|甲方应付：", is_no_label);
  is_no_label(U"甲方\n：");
}

TEST(ResearchCenterNarrative, TellsTalkOfCentresFromNames) {
  const auto is = core::anonymization::_is_cn_generic_research_center_narrative;
  for_each_of(
      "研究中心|各类研究中心|该研究中心|国家级工程技术研究中心|设立联合研发中心|一家研究开发中心",
      [&](std::u32string_view text) { EXPECT_TRUE(is(text)); });
  for_each_of("某某研究中心建设|北京量子研究中心的人员|我国最大的研究中心",
              [&](std::u32string_view text) { EXPECT_TRUE(is(text)); });
  for_each_of(
      "北京量子研究中心|某某研究中心|本田研究中心|工程技术研究中心有限公司|中心医院|各类公司",
      [&](std::u32string_view text) { EXPECT_FALSE(is(text)); });
  EXPECT_FALSE(is(U"")) << "an empty surface";
}

// A pattern that goes back over what it has read would not come to an end here,
// and ctest would stop it.
TEST(LabelPatterns, EndOnLongText) {
  constexpr std::size_t SIZE = 1'000'000;
  for (const char* piece : {"方", "人（", "甲方：", "甲方 Party A ", "公司", "名称 / A", "To: A ",
                            "Party A: Acme ", "户名：北京（", "研究中心"}) {
    SCOPED_TRACE(piece);
    std::u32string text;
    while (text.size() < SIZE) text += test::u32(piece);
    core::anonymization::RE_ZH_CONTRACT_FIELD_LABEL.find_all(text);
    core::anonymization::RE_PARTY_LABELED_COMPANY.find_all(text);
    core::anonymization::RE_PARTY_LABELED_INSTITUTION.find_all(text);
    core::anonymization::_is_cn_generic_research_center_narrative(text);
  }
}

// A label ends in the colon only if what is asked before the search does not deny it.
TEST(MayEndPartyLabel, DeniesNoLabel) {
  const std::u32string befores[] = {U"",          U"甲",     U"单", U"Party A / ",
                                    U"Lender/甲", U"股东（", U"账"};
  const std::u32string behinds[] = {U"", U"一", U"  ", U"12", U"）", U" Party A", U"(s)"};
  for (char32_t c = 0x4E00; c <= 0x9FFF; ++c) {
    for (const auto& before : befores) {
      const auto label = before + c + behinds[c % std::size(behinds)];
      if (core::anonymization::may_end_party_label(label)) continue;
      ASSERT_FALSE(core::anonymization::RE_PARTY_LABEL.search(label + U"：")) << test::u8(label);
    }
  }
  for (const auto* label : {U"地址", U"联系电话", U"甲方 / 签订日期", U"如下"}) {
    const bool stroke = std::u32string_view(label).find(U'/') != std::u32string_view::npos;
    EXPECT_EQ(core::anonymization::may_end_party_label(label), stroke) << test::u8(label);
  }
}

}  // namespace
