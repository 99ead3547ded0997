#include "core/anonymization/doc_alias_scan.hpp"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "core/text/unicode.hpp"
#include "tests/support/notation.hpp"

namespace {

using core::anonymization::scan_defined_alias_candidates;

struct AliasCase {
  const char* why;
  const char* marked;  // the aliases, marked in the text
};

void expect_aliases(const AliasCase& c) {
  SCOPED_TRACE(c.why);
  auto doc = test::parse(c.marked);
  doc.results = scan_defined_alias_candidates(doc.text);
  EXPECT_EQ(test::render(doc), c.marked);
}

TEST(DocAliasScan, FindsChineseDefinitions) {
  constexpr AliasCase cases[] = {
      {"括号与引号", "北京华信科技有限公司（以下简称“{ORGANIZATION|华信科技}”）与"},
      {"半角括号和直引号", "北京华信科技有限公司(下称\"{ORGANIZATION|华信}\")"},
      {"直角引号", "（简称为「{ORGANIZATION|岭湾新材}」）、（以下称『{ORGANIZATION|晋泓香港}』）"},
      {"单引号和冒号", "（以下简称：‘{ORGANIZATION|华信}’）"},
      {"没有引号", "（以下简称{ORGANIZATION|华信科技}）、（简称：{ORGANIZATION|恒筑监理}）"},
      {"没有括号", "天津清真食品有限公司，以下简称“{ORGANIZATION|穆林食品}”，"},
      {"没有括号也没有引号", "天津清真食品有限公司，以下简称{ORGANIZATION|穆林食品}，"},
      {"没有以下二字就是普通的话", "证券简称见附件一，"},
      {"多个简称", "（以下简称“{ORGANIZATION|华信}”或“{ORGANIZATION|华信科技}”）"},
      {"角色与简称并列", "（“披露方”或“{ORGANIZATION|韶光量子}”）"},
      {"没有引号的多个简称", "（以下简称{ORGANIZATION|华信}或甲方）"},
      {"只有括号和引号", "江汉出版传媒有限公司（“{ORGANIZATION|江汉出版}”）"},
      {"英文全称之后",
       "（Jintang (Wuhan) Co., Ltd.，以下称“{ORGANIZATION|瑾樘生物}”或“{ORGANIZATION|Jintang}”）"},
      {"全称、逗号、简称", "（Cangyu Wind Co., Ltd.，“{ORGANIZATION|沧屿风电}”）"},
      {"中英文简称", "（“{ORGANIZATION|Skager}”，中文简称“{ORGANIZATION|斯卡格}”）"},
      {"引号形状不配对", "（以下简称“{ORGANIZATION|华信}\"）"}};
  for (const auto& c : cases) expect_aliases(c);
}

TEST(DocAliasScan, FindsEnglishDefinitions) {
  constexpr AliasCase cases[] = {
      {"hereinafter", "Acme Inc. (hereinafter \"{ORGANIZATION|Acme}\") and"},
      {"referred to as the",
       "Acme Inc. (hereinafter referred to as the “{ORGANIZATION|Acme Group}”)"},
      {"without brackets", "Acme Inc., hereinafter called \"{ORGANIZATION|Acme}\", and"},
      {"bracket alone", "Acme Inc. (the \"{ORGANIZATION|Acme}\")"},
      {"role and name", "(the \"Supplier\" or \"{ORGANIZATION|Acme}\")"},
      {"name and role", "(\"{ORGANIZATION|Acme}\" or the \"Supplier\")"},
      {"name, role", "(\"{ORGANIZATION|Acme}\", \"Licensor\")"},
      {"abbreviation",
       "Chamber of Commerce (\"{ORGANIZATION|ICC}\"), Leeds (\"{ORGANIZATION|C&F}\")"},
      {"comma inside the quotes", "(together with its affiliates, \"{ORGANIZATION|Acme},\")"},
      {"without quotes", "Acme Inc. (hereinafter referred to as {ORGANIZATION|Acme})"},
      {"two lines are two clauses", "(the\n\"Acme\")"}};
  for (const auto& c : cases) expect_aliases(c);
}

// How many aliases are found where each of the terms, parted by bars, is defined.
void expect_found(std::string_view terms, std::size_t count) {
  std::istringstream in{std::string(terms)};
  for (std::string term; std::getline(in, term, '|');) {
    const auto text = test::u32("某某（以下简称“" + term + "”）和");
    EXPECT_EQ(scan_defined_alias_candidates(text).size(), count) << term;
  }
}

TEST(DocAliasScan, RefusesRolesAndThings) {
  expect_found("甲方|委托方|贷款人|经营者|双方|公司|本公司|合资公司|目标公司|项目公司|贷款银行", 0);
  expect_found("本合同|保密协议|公司法|许可产品|标的股权|保密信息|个人数据|授权游戏|滨江项目", 0);
  expect_found("该玄楼|本次玄武|交割日|JV公司|中国|一|甲方应当在收到货物后十日内支付全部价款并开票",
               0);
  expect_found("Company|the Buyer|Supplier|Agreement|Parties|Effective Date|JV Company|Bank", 0);
  expect_found("Confidential Information|Services|Acme Products|Receiving Party|Joint Venture", 0);
  expect_found("PRC|NDA|lantern|2024|A|One Two Six Ten Red Blue", 0);
}

TEST(DocAliasScan, KeepsNamesThatResembleRolesAndThings) {
  expect_found("东方|四方股份|云嶂数据|华信公司|渝澄银行|建设银行|人民银行|本田|中山中院", 1);
  expect_found("天池工作室|卡尔·蔡司|ABC|Acme Bank|Yunque Cloud|eBay|3M|Øresund|A.P. Moller", 1);
}

TEST(DocAliasScan, LeavesQuotesThatDefineNothing) {
  constexpr AliasCase cases[] = {
      {"引用的词", "公众号“鹭岚生活”发布"},
      {"括号里的船名", "其船舶（“雪松财富”轮，IMO 9512408）"},
      {"an example", "(if none, state \"Acme\")"},
      {"文件的简称", "《数据处理协议》（以下简称“华信”）"},
      {"a law's short title", "Information Protection Law (《保护法》, \"PIPL\")"},
      {"an agreement's short title", "this Data Agreement (\"Lantern\")"},
      {"新句中的引号", "以下简称“甲方”，“玄天”指"},
      {"an apostrophe", "the Buyer's (and Seller's) duties"},
      {"括号已经合上", "（见附件），“华信”，"},
      {"括号里另有引文", "（出具“玄证”的，“玄天”）"},
      {"没有括号和引号的长句", "以下简称本市城北旧区改造范围以内居民，"}};
  for (const auto& c : cases) expect_aliases(c);
}

TEST(DocAliasScan, TellsWhereTheDefinitionBegins) {
  const struct {
    const char* why;
    const char* text;
    const char* clause;  // from the beginning of the definition to the alias
  } cases[] = {
      {"左括号", "甲公司（以下简称“华信”）", "（以下简称“"},
      {"没有括号时是引出的词", "甲公司，以下简称“甲方”或“华信”。", "以下简称“甲方”或“"},
      {"the bracket", "Acme Inc. (the \"Supplier\" or \"Acme\")", "(the \"Supplier\" or \""},
      {"the words", "Acme Inc., hereinafter called \"Acme\"", "hereinafter called \""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto text = test::u32(c.text);
    const auto found = scan_defined_alias_candidates(text);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(test::u8(core::text::slice(text, found[0].defined_at, found[0].start)), c.clause);
    EXPECT_EQ(found[0].entity_type, "ORGANIZATION");
    EXPECT_DOUBLE_EQ(found[0].score, 0.6);
  }
}

TEST(DocAliasScan, EndsOnLongText) {
  for (const char* piece : {"（以下简称", "“", "\"a", "(\"A\" or ", "称", "（“甲", "(hereinafter ",
                            "(A, ", "以下简称“华信”或", "\"Acme\", "}) {
    SCOPED_TRACE(piece);
    std::u32string text;
    while (text.size() < 1'000'000) text += test::u32(piece);
    const auto found = scan_defined_alias_candidates(text);
    for (const auto& alias : found) {
      ASSERT_LT(alias.start, alias.end);
      ASSERT_LE(alias.defined_at, alias.start);
    }
  }
}

}  // namespace
