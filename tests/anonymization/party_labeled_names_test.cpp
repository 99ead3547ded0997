#include "core/anonymization/party_labeled_names.hpp"

#include <gtest/gtest.h>

#include "core/anonymization/identity/org_identity.hpp"
#include "tests/support/notation.hpp"

namespace {

using core::anonymization::_collect_party_labeled_org_names;
using core::anonymization::_expand_party_org_mentions;
using core::anonymization::_organization_identity_key;

std::string names_in(std::string_view text) {
  std::string out;
  for (const auto& name : _collect_party_labeled_org_names(test::u32(text))) {
    out += (out.empty() ? "" : "|") + test::u8(name);
  }
  return out;
}

struct NameCase {
  const char* why;
  const char* text;
  const char* names;
};

void expect_names(const NameCase& c) {
  SCOPED_TRACE(c.why);
  EXPECT_EQ(names_in(c.text), c.names);
}

TEST(CollectPartyLabeledOrgNames, ReadsLabels) {
  constexpr NameCase cases[] = {
      {"角色加括号", "甲方（委托方）：北京华信科技有限公司", "北京华信科技有限公司"},
      {"两个括号", "出租方（甲方）（盖章）：北京华信科技有限公司", "北京华信科技有限公司"},
      {"英文附注", "出租方 (Lessor): 华信科技有限公司", "华信科技有限公司"},
      {"双语标签", "甲方 / Party A: 华信科技有限公司", "华信科技有限公司"},
      {"英文在前", "Licensee / 被许可方：华信科技有限公司", "华信科技有限公司"},
      {"字间空白", "乙　方 ：　华信科技有限公司", "华信科技有限公司"},
      {"带编号", "保证人一：华信科技有限公司", "华信科技有限公司"},
      {"条款编号之后", "2.1 承运人:华信科技有限公司", "华信科技有限公司"},
      {"下划线", "甲方：__华信科技有限公司__", "华信科技有限公司"},
      {"标签之后还有一个标签", "账户：户名华信科技有限公司，", "华信科技有限公司"},
      {"英文标签", "Party A: Acme Inc.\nSUPPLIER: Beta LLC\nAccount name: Gamma AG",
       "Acme Inc.|Beta LLC|Gamma AG"},
      {"an English label with a remark", "Borrower (the \"Company\"): Acme Inc.", "Acme Inc."},
      {"不是当事人的标签", "地址：华信科技有限公司\n注：华信科技有限公司", ""},
      {"冒号之后换行", "甲方：\n华信科技有限公司", ""}};
  for (const auto& c : cases) expect_names(c);
}

TEST(CollectPartyLabeledOrgNames, ReadsCompanyNamesToTheirEnd) {
  constexpr NameCase cases[] = {
      {"括号里的地名", "乙方：晋泓国际（香港）有限公司（下称", "晋泓国际（香港）有限公司"},
      {"合伙企业的形式", "乙方：叠嶂投资合伙企业（有限合伙），", "叠嶂投资合伙企业（有限合伙）"},
      {"分公司是另一家", "乙方：华信科技有限公司上海分公司。", "华信科技有限公司上海分公司"},
      {"连词之后是另一家", "甲方：华信有限公司与博远有限公司", "华信有限公司"},
      {"名称中的空格照原样", "甲方：苏州精密机械 有限公司　", "苏州精密机械 有限公司"},
      {"同一行的两个标签", "甲方（章）：华信公司　乙方（章）：博远集团", "华信公司|博远集团"},
      {"制表符和拼接符",
       "甲方：华信有限公司\t乙方：博远有限公司\uE000¶\uE001丙方：中和股份有限公司",
       "华信有限公司|博远有限公司|中和股份有限公司"},
      {"后面是别的字段", "甲方：华信有限公司法定代表人：张三", "华信有限公司"},
      {"后面的话连着", "甲方：华信有限公司负责运输", ""},
      {"不是名称",
       "甲方：本公司\n乙方：目标公司与项目公司\n丙方：应当向本公司支付\n丁方：受托的北京运输公司",
       ""},
      {"commas of the form", "Client: Home Décor, LLC, 12 Road\nSeller: Yunque Cloud Co., Ltd. (",
       "Home Décor, LLC|Yunque Cloud Co., Ltd."},
      {"forms in capitals", "LICENSOR: KESTRELWAY SOFTWARE PTE. LTD.",
       "KESTRELWAY SOFTWARE PTE. LTD."},
      {"forms of other countries",
       "Seller: Hollow B.V.\nBuyer: Skager Service A/S\nAgent: Elb GmbH & Co. KG, Hamburg",
       "Hollow B.V.|Skager Service A/S|Elb GmbH & Co. KG"},
      {"a place in parentheses", "Client: Greywether Partners (Hong Kong) Limited（",
       "Greywether Partners (Hong Kong) Limited"},
      {"a person, a role, a sentence",
       "Buyer: John Smith, director\nSeller: The Company Secretary\nAgent: as agreed with Acme",
       ""}};
  for (const auto& c : cases) expect_names(c);
}

TEST(CollectPartyLabeledOrgNames, ReadsInstitutionNamesToTheirEnd) {
  constexpr NameCase cases[] = {
      {"银行的支行", "开户银行：江澜银行股份有限公司苏州吴中支行，账号",
       "江澜银行股份有限公司苏州吴中支行"},
      {"连词也是地名的头一字", "开户行：华信银行和平支行", "华信银行和平支行"},
      {"各种机构",
       "受托方：渭川电子科技大学\n使用单位：黑河市中心医院\n代理人：浙江元律师事务所\n"
       "甲方：海悦湾小区业主委员会（章）\n招标人：青岛市自然资源局",
       "渭川电子科技大学|黑河市中心医院|浙江元律师事务所|海悦湾小区业主委员会|青岛市自然资源局"},
      {"不是名称", "开户银行：该银行\n甲方：医院", ""},
      {"English",
       "Bank: Hangang Exchange Bank, SWIFT\nLicensor: University of Leeds\nTo: The Bank SWIFT",
       "Hangang Exchange Bank|University of Leeds"},
      {"重复的只取一次", "甲方：渭川大学\n乙方：博远公司\n甲方：渭川大学", "渭川大学|博远公司"}};
  for (const auto& c : cases) expect_names(c);
}

// Expands mentions in a text with replacements marked; each labelled name in
// `numbered` has its place in the list as number.
std::string expand(std::string_view marked, const std::vector<std::string>& numbered,
                   std::string_view locale = "zh") {
  auto doc = test::parse_replacements(marked);
  std::unordered_map<std::u32string, std::int64_t> numbers;
  for (const auto& name : numbered) {
    const auto wide = test::u32(name);
    const auto key =
        _organization_identity_key(wide, 0, static_cast<core::anonymization::Offset>(wide.size()));
    numbers.emplace(key, static_cast<std::int64_t>(numbers.size()) + 1);
  }
  auto out = _expand_party_org_mentions({.text = doc.text,
                                         .replacements = doc.replacements,
                                         .org_num_by_key = numbers,
                                         .org_counter = 7,
                                         .placeholder_locale = locale});
  EXPECT_EQ(out.org_counter, 7);
  EXPECT_GE(out.replacements.size(), doc.replacements.size());
  doc.replacements = std::move(out.replacements);
  std::stable_sort(doc.replacements.begin(), doc.replacements.end(),
                   [](const auto& a, const auto& b) { return a.start < b.start; });
  return test::render(doc);
}

TEST(ExpandPartyOrgMentions, MasksFurtherMentionsWithTheNumberOfTheParty) {
  const std::vector<std::string> parties = {"华信集团", "北京华信有限公司", "Acme Ltd", "渭川大学",
                                            "渭川大学医院"};
  const struct {
    const char* why;
    const char* text;  // behind a head that labels the parties
    const char* expected;
  } cases[] = {
      {"再次提到", "由华信集团承担", "由{[机构1]|华信集团}承担"},
      {"最长的名称优先", "渭川大学医院", "{[机构5]|渭川大学医院}"},
      {"地名", "华信集团大厦、华信集团东路、渭川大学站", "华信集团大厦、华信集团东路、渭川大学站"},
      {"不是地名", "华信集团道歉，渭川大学站在", "{[机构1]|华信集团}道歉，{[机构4]|渭川大学}站在"},
      {"分公司是另一家", "北京华信有限公司上海分公司", "北京华信有限公司上海分公司"},
      {"设立分公司的是本公司", "北京华信有限公司设立上海分公司",
       "{[机构2]|北京华信有限公司}设立上海分公司"},
      {"更长的名称", "华信集团股份有限公司、渭川大学第一医院",
       "华信集团股份有限公司、渭川大学第一医院"},
      {"后面的词不是名称", "渭川大学第一条、北京华信有限公司股份",
       "{[机构4]|渭川大学}第一条、{[机构2]|北京华信有限公司}股份"},
      {"Latin words end at their edges",
       "Acme Ltdx, XAcme Ltd, Sino-Acme Ltd, acme ltd, 与Acme Ltd签",
       "Acme Ltdx, XAcme Ltd, Sino-Acme Ltd, acme ltd, 与{[机构3]|Acme Ltd}签"},
      {"a place, a branch, a longer name", "Acme Ltd Tower, Acme Ltd Leeds Branch",
       "Acme Ltd Tower, Acme Ltd Leeds Branch"},
      {"a new sentence", "by Acme Ltd. The Company", "by {[机构3]|Acme Ltd}. The Company"},
      {"已经替换的不动", "{[机构9]|华信集团}、{[地址1]|北京}华信有限公司、华信集团",
       "{[机构9]|华信集团}、{[地址1]|北京}华信有限公司、{[机构1]|华信集团}"}};
  const std::string head =
      "甲方：{[机构1]|华信集团}\n乙方：{[机构2]|北京华信有限公司}\nParty C: {[机构3]|Acme Ltd}\n"
      "丁方：{[机构4]|渭川大学}\n戊方：{[机构5]|渭川大学医院}\n";
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(expand(head + c.text, parties), head + c.expected);
  }
}

TEST(ExpandPartyOrgMentions, GivesNoNumberToANameThatHasNone) {
  EXPECT_EQ(expand("甲方：华信集团\n华信集团", {}), "甲方：华信集团\n华信集团");
  EXPECT_EQ(expand("甲方：华信集团\n华信集团", {"博远集团"}), "甲方：华信集团\n华信集团");
  EXPECT_EQ(expand("华信集团", {"华信集团"}), "华信集团") << "a name that no label introduces";
}

TEST(ExpandPartyOrgMentions, WritesTheLabelOfTheLocale) {
  EXPECT_EQ(expand("Party A: Acme Ltd", {"Acme Ltd"}, "en"), "Party A: {[ORG1]|Acme Ltd}");
}

TEST(ExpandPartyOrgMentions, ReadsAnySpansAndKeepsThem) {
  const auto text = test::u32("甲方：华信集团，华信集团");
  const std::unordered_map<std::u32string, std::int64_t> numbers = {{U"华信集团", 1}};
  // An empty span inside a mention touches it, and each mention has one.
  const std::vector<core::anonymization::Replacement> spans = {
      {9, 9, U"x"}, {4, 4, U"y"}, {12, 3, U"z"}, {-5, 3, U"a"}, {40, 50, U"b"}};
  const auto out =
      _expand_party_org_mentions({.text = text, .replacements = spans, .org_num_by_key = numbers});
  ASSERT_EQ(out.replacements.size(), spans.size());
  EXPECT_TRUE(std::equal(spans.begin(), spans.end(), out.replacements.begin()));
}

TEST(PartyLabeledNames, EndOnLongText) {
  const std::unordered_map<std::u32string, std::int64_t> numbers = {{U"华信公司", 1},
                                                                    {U"acmeinc", 2}};
  for (const char* piece :
       {"：", "甲", "甲方：", "甲方：华信公司", "（以下简称：", "Party A: Acme Inc ",
        "a: A A A A A A A A A A A ", "人（人）：北京（上海）", "华信公司北京"}) {
    SCOPED_TRACE(piece);
    std::u32string text = U"甲方：华信公司\n";
    while (text.size() < 1'000'000) text += test::u32(piece);
    const auto out =
        _expand_party_org_mentions({.text = text, .replacements = {}, .org_num_by_key = numbers});
    EXPECT_GE(out.replacements.size(), 1U);
  }
}

}  // namespace
