// The stages one by one, on hits as any analyzer might make them.
#include "core/nlp/refinements.hpp"

#include <limits>
#include <span>

#include <gtest/gtest.h>

#include "core/anonymization/rules/helpers.hpp"
#include "core/errors.hpp"
#include "core/nlp/other_scripts.hpp"
#include "core/nlp/refining_analyzer.hpp"
#include "core/nlp/vocabulary.hpp"
#include "tests/support/notation.hpp"

namespace core::nlp {
namespace {

using Results = std::vector<RecognizerResult>;
using Stage = Results (*)(const NlpArtifacts&, Results);

std::string after(Stage stage, const test::Marked& doc) {
  static const auto engine = make_embedded_nlp_engine();
  auto out = stage(engine->process_text(doc.text, "zh"), doc.results);
  return test::render({doc.text, recognition::remove_duplicates(std::move(out))});
}

struct Row {
  const char* why;
  const char* in;
  const char* out;
};

void expect_after(Stage stage, std::span<const Row> rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(after(stage, test::parse(row.in)), row.out);
  }
}

TEST(MakeUsable, TakesAnyHits) {
  constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
  constexpr double INFINITE = std::numeric_limits<double>::infinity();
  constexpr auto LEAST = std::numeric_limits<std::ptrdiff_t>::min();
  constexpr auto MOST = std::numeric_limits<std::ptrdiff_t>::max();
  const std::u32string text = U"𠮷 甲公司\n乙公司 ";
  NlpArtifacts artifacts;
  artifacts.text = text;
  const Results in = {{"A", 1, 5, NOT_A_NUMBER},
                      {"B", 6, MOST, INFINITE},
                      {"C", LEAST, 1, 7},
                      {"D", 5, 2, 1},
                      {"E", 3, 3, 1},
                      {"F", 2, 5, 0},
                      {"G", 2, 5, -INFINITE},
                      {"H", 90, 99, 1},
                      {"I", 2, 9, 0.5}};
  const Results expected = {
      {"A", 2, 5, 0.01}, {"B", 6, 9, 1}, {"C", 0, 1, 1}, {"I", 2, 5, 0.5}, {"I", 6, 9, 0.5}};
  EXPECT_EQ(make_usable(artifacts, in), expected);
}

TEST(MakeUsable, CutsHitsAtJoiners) {
  for (const auto joiner : anonymization::DOCX_PARA_JOINER_SEQUENCES) {
    const auto text = U"甲公司" + std::u32string(joiner) + U"乙公司";
    NlpArtifacts artifacts;
    artifacts.text = text;
    EXPECT_EQ(make_usable(artifacts, {{"A", 0, 9, 1}}), (Results{{"A", 0, 3, 1}, {"A", 6, 9, 1}}));
  }
}

TEST(ApplyShields, DropHitsWithinThem) {
  const auto doc =
      test::parse("{ORGANIZATION|银行}和{ORGANIZATION|江澜银行}用{GENERIC_INSTITUTION_NOUN|银行}");
  auto results = doc.results;
  results.push_back({"IT_PROTOCOL", 0, 2, 0.1});
  results.push_back({"PERSON", 8, 9, 1});
  const auto kept = apply_shields({}, results);
  ASSERT_EQ(kept.size(), 3U);
  EXPECT_EQ(kept[0], doc.results[1]);
  EXPECT_EQ(kept[1].entity_type, "GENERIC_INSTITUTION_NOUN");
  EXPECT_EQ(kept[2].entity_type, "IT_PROTOCOL");
}

TEST(TrimNames, LeavesTheNameAlone) {
  constexpr Row ROWS[] = {
      {"label", "{LOCATION|地址：北京市海淀区}", "地址：{LOCATION|北京市海淀区}"},
      {"label in between", "{ORGANIZATION|甲公司 联系人：李四}",
       "{ORGANIZATION|甲公司} 联系人：{ORGANIZATION|李四}"},
      {"quotes", "{ORGANIZATION|“华信科技”}、{PERSON|'Ann Lee'}",
       "“{ORGANIZATION|华信科技}”、'{PERSON|Ann Lee}'"},
      {"brackets without their other half", "{ORGANIZATION|（华信}，{ORGANIZATION|华信（中国）}",
       "（{ORGANIZATION|华信}，{ORGANIZATION|华信（中国）}"},
      {"role before the name", "{ORGANIZATION|甲方北京华信科技有限公司}",
       "甲方{ORGANIZATION|北京华信科技有限公司}"},
      {"particles", "{ORGANIZATION|华信有限公司与}乙，{PERSON|张三的}，{ORGANIZATION|Acme's} and",
       "{ORGANIZATION|华信有限公司}与乙，{PERSON|张三}的，{ORGANIZATION|Acme}'s and"},
      {"the names of 王献之 and 永和 end so", "{PERSON|王献之}，{ORGANIZATION|永和}",
       "{PERSON|王献之}，{ORGANIZATION|永和}"},
      {"small words", "between {ORGANIZATION|and Acme Ltd of}",
       "between and {ORGANIZATION|Acme Ltd} of"},
      {"sentence", "{ORGANIZATION|Acme Holdings Inc. The Company} pays",
       "{ORGANIZATION|Acme Holdings Inc.} The Company pays"},
      {"part of a word", "Ms. {PERSON|Wolan}ski", "Ms. {PERSON|Wolanski}"},
      {"roles and labels",
       "{LOCATION|地址}{ORGANIZATION|甲方}，{ORGANIZATION|Party A}, {ORGANIZATION|the Company}, "
       "{PERSON|such Seller}, {ORGANIZATION|BUYER}",
       "地址甲方，Party A, the Company, such Seller, BUYER"},
      {"other kinds", "{MONEY|“5元”}", "{MONEY|“5元”}"},
  };
  expect_after(trim_names, ROWS);
}

TEST(JoinAddresses, JoinFragmentsOfOne) {
  constexpr Row ROWS[] = {
      {"levels", "{LOCATION|江苏省}{GPE|苏州市}{LOCATION|吴中区} {LOCATION|茅蓬路517号3栋}",
       "{LOCATION|江苏省苏州市吴中区 茅蓬路517号3栋}"},
      {"house number behind the street",
       "{LOCATION|上海市}，{LOCATION|张杨路5号}、{LOCATION|人民路}88号3栋1205室内",
       "{LOCATION|上海市，张杨路5号}、{LOCATION|人民路88号3栋1205室}内"},
      {"list of places", "{LOCATION|北京}、{LOCATION|上海}，{LOCATION|江苏省}{LOCATION|浙江省}",
       "{LOCATION|北京}、{LOCATION|上海}，{LOCATION|江苏省}{LOCATION|浙江省}"},
      {"English", "{LOCATION|12 Main Street}, {GPE|London}, {GPE|United Kingdom}, {GPE|London}",
       "{LOCATION|12 Main Street, London, United Kingdom}, {GPE|London}"},
      {"English list", "{GPE|London}, {GPE|Paris}; {LOCATION|1 High Road}, {LOCATION|2 Low Road}",
       "{GPE|London}, {GPE|Paris}; {LOCATION|1 High Road}, {LOCATION|2 Low Road}"},
  };
  expect_after(join_addresses, ROWS);
}

TEST(SplitAmounts, OneHitForEachFigure) {
  constexpr Row ROWS[] = {
      {"signs", "{MONEY|100元-200元}，{MONEY|$1,000–$2,000}",
       "{MONEY|100元}-{MONEY|200元}，{MONEY|$1,000}–{MONEY|$2,000}"},
      {"words", "{MONEY|人民币100万元至200万元}，{MONEY|USD 1,000 to USD 2,000}",
       "{MONEY|人民币100万元}至{MONEY|200万元}，{MONEY|USD 1,000} to {MONEY|USD 2,000}"},
      {"one unit", "{MONEY|5～8万元}", "{MONEY|5}～{MONEY|8万元}"},
      {"numbers in characters", "{MONEY|一百元至二百元}", "{MONEY|一百元}至{MONEY|二百元}"},
      {"three", "{MONEY|1元-2元-3元}", "{MONEY|1元}-{MONEY|2元}-{MONEY|3元}"},
      {"smaller unit and remark", "{MONEY|100元5角}，{MONEY|USD 900 (EUR 800)}",
       "{MONEY|100元}{MONEY|5角}，{MONEY|USD 900} {MONEY|(EUR 800)}"},
      {"smaller units behind the hit", "{MONEY|100元}5角2分，{MONEY|100元}5分之一",
       "{MONEY|100元}{MONEY|5角}{MONEY|2分}，{MONEY|100元}5分之一"},
      {"one amount", "{MONEY|-5元}，{MONEY|1 000 000.50元}，{MONEY|壹拾万元（100,000元）}",
       "{MONEY|-5元}，{MONEY|1 000 000.50元}，{MONEY|壹拾万元（100,000元）}"},
  };
  expect_after(split_amounts, ROWS);
}

TEST(AddFurtherMentions, InAnySpellingOfTheName) {
  constexpr Row ROWS[] = {
      {"spacing, width and case",
       "{ORGANIZATION|阿里（中国）有限公司}，阿里(中国) 有限公司；{ORGANIZATION|Acme Holdings Inc}, ACME  holdings inc",
       "{ORGANIZATION|阿里（中国）有限公司}，{ORGANIZATION|阿里(中国) 有限公司}；{ORGANIZATION|Acme Holdings Inc}, {ORGANIZATION|ACME  holdings inc}"},
      {"edges of words", "{ORGANIZATION|Acme Foo}, Acme Foot, MyAcme Foo, AcmeFoo",
       "{ORGANIZATION|Acme Foo}, Acme Foot, MyAcme Foo, {ORGANIZATION|AcmeFoo}"},
      {"no word is torn apart", "{ORGANIZATION|Nowhere Ltd}, now here Ltd",
       "{ORGANIZATION|Nowhere Ltd}, now here Ltd"},
      {"line end",
       "{PERSON|Katarzyna Wolanski}. {PERSON|Katarzyna}\n{PERSON|Wolanski}\n\nKatarzyna\n\nWolanski",
       "{PERSON|Katarzyna Wolanski}. {PERSON|Katarzyna\nWolanski}\n\n{PERSON|Katarzyna}\n\n{PERSON|Wolanski}"},
      {"no cell ends inside", "{PERSON|王建国}\t王\t建国", "{PERSON|王建国}\t王\t建国"},
      {"longer word", "{PERSON|王建国}，王建国际公司，王 建 国签字",
       "{PERSON|王建国}，王建国际公司，{PERSON|王 建 国}签字"},
      {"words of the dictionary", "{PERSON|国强}，中国强调；{PERSON|王建国}，王建国家里",
       "{PERSON|国强}，中国强调；{PERSON|王建国}，{PERSON|王建国}家里"},
      {"legal form", "{ORGANIZATION|Kest Soft Pte. Ltd.}; Kest Soft Pte Ltd, Kest Soft Corp.",
       "{ORGANIZATION|Kest Soft Pte. Ltd.}; {ORGANIZATION|Kest Soft Pte Ltd}, "
       "{ORGANIZATION|Kest Soft Corp.}"},
      {"middle initial",
       "{PERSON|Ann M. Leeward}, Ann Leeward; {PERSON|Blackmantle}, Theodora Blackmantle",
       "{PERSON|Ann M. Leeward}, {PERSON|Ann Leeward}; {PERSON|Blackmantle}, {PERSON|Theodora Blackmantle}"},
      {"longest first", "{ORGANIZATION|华信}，{ORGANIZATION|华信有限公司}；华信有限公司",
       "{ORGANIZATION|华信}，{ORGANIZATION|华信有限公司}；{ORGANIZATION|华信有限公司}"},
      {"rare ideographs and emoji", "😀{PERSON|𠮷建国}，𠮷建国",
       "😀{PERSON|𠮷建国}，{PERSON|𠮷建国}"},
      {"other scripts", "{PERSON|Иван Петров}, ИВАН ПЕТРОВ, Иван Петрович",
       "{PERSON|Иван Петров}, {PERSON|ИВАН ПЕТРОВ}, Иван Петрович"},
  };
  expect_after(add_further_mentions, ROWS);
}

TEST(DropMisplaced, NamesInsideNames) {
  const auto check = [](const char* text, Results in, const char* out) {
    SCOPED_TRACE(text);
    EXPECT_EQ(after(drop_misplaced, {test::u32(text), std::move(in)}), out);
  };
  check("张三律师事务所", {{"PERSON", 0, 2, 0.9}, {"ORGANIZATION", 0, 7, 0.5}},
        "{ORGANIZATION|张三律师事务所}");
  check("张三律师事务所", {{"PERSON", 0, 2, 0.9}}, "{ORGANIZATION|张三律师事务所}");
  check("王建国", {{"PERSON", 0, 2, 0.9}, {"PERSON", 0, 3, 0.5}}, "{PERSON|王建国}");
  check("Ann Lee Ltd", {{"LOCATION", 4, 5, 0.9}, {"ORGANIZATION", 0, 11, 0.5}},
        "{ORGANIZATION|Ann Lee Ltd}");
}

TEST(NamesInOtherScripts, AreJoinedWithWhatCanBeMasked) {
  constexpr Row ROWS[] = {
      {"labels", "联系人：Иванов，Contact: Νίκος Παππάς. 담당자：김민수; 地址：ул. Ленина, 5",
       "联系人：{PERSON|Иванов}，Contact: {PERSON|Νίκος Παππάς}. 담당자：{PERSON|김민수}; 地址：{LOCATION|ул. Ленина, 5}"},
      {"titles", "Mr. Иванов and たなか様、担当：たなか 様",
       "{PERSON|Mr. Иванов} and {PERSON|たなか様}、担当：{PERSON|たなか 様}"},
      {"companies", "ООО «Ромашка» Co., Ltd.与株式会社トヨタ自動車、Ромашка有限公司、(주)한빛",
       "{ORGANIZATION|ООО «Ромашка» Co., Ltd.}与{ORGANIZATION|株式会社トヨタ自動車}、{ORGANIZATION|Ромашка有限公司}、{ORGANIZATION|(주)한빛}"},
      {"the same name in brackets", "{PERSON|Ivan Petrov} (Иван Петров)",
       "{PERSON|Ivan Petrov (Иван Петров)}"},
      {"capitals", "signed by И. И. Иванов and ジョン・スミス",
       "signed by {PERSON|И. И. Иванов} and {PERSON|ジョン・スミス}"},
      {"Arabic and rare ideographs", "联系人：محمد علي。联系人：𠮷𠀋。",
       "联系人：{PERSON|محمد علي}。联系人：{PERSON|𠮷𠀋}。"},
      {"no names", "α + β = Δt, договор, これは契約です, Ω",
       "α + β = Δt, договор, これは契約です, Ω"},
  };
  expect_after(add_names_in_other_scripts, ROWS);

  const auto doc =
      test::parse("{PERSON|Иванов}{PERSON|Mr. Иванов}{BLANK|____}{PERSON|김１}{PERSON|𠮷}");
  EXPECT_EQ(unmaskable_names(doc.text, doc.results), (Results{doc.results[0], doc.results[4]}));
}

TEST(RefiningAnalyzer, RefinesTheHitsOfAnother) {
  auto doc = test::parse(
      "{ORGANIZATION|甲方：中化集团有限公司}（{ORGANIZATION|甲方}），地址：{LOCATION|北京市}{LOCATION|海淀区}"
      "{LOCATION|中关村大街}27号。\n中化 集团有限公司付{MONEY|100元-200元}，{IT_PROTOCOL|HTTP}");
  doc.results.push_back(doc.results.front());
  doc.results.push_back({"PERSON", 999, 2, 0.5});
  const auto inside = std::make_shared<test::ScriptedAnalyzer>(doc.results);
  const RefiningAnalyzer analyzer(inside);
  EXPECT_EQ(
      test::render({doc.text, analyzer.analyze(doc.text, "zh")}),
      "甲方：{ORGANIZATION|中化集团有限公司}（甲方），地址：{LOCATION|北京市海淀区中关村大街27号}。\n"
      "{ORGANIZATION|中化 集团有限公司}付{MONEY|100元}-{MONEY|200元}，HTTP");
  EXPECT_EQ(inside->last_language, "zh");
  EXPECT_THROW(RefiningAnalyzer(nullptr), ValueError);
}

// Quadratic work would not come to an end here.
TEST(RefiningAnalyzer, EndsOnManyHits) {
  constexpr std::ptrdiff_t SIZE = 120'000;
  std::u32string text;
  while (text.size() < SIZE) text += U"甲：1元-Ив (";
  Results hits;
  for (std::ptrdiff_t i = 0; i < SIZE; i += 3) {
    for (const char* type : {"PERSON", "ORGANIZATION", "LOCATION", "MONEY"}) {
      hits.push_back({type, i, i + 5, 0.5});
    }
  }
  hits.push_back({"MONEY", 0, SIZE, 0.5});
  hits.push_back({"LOCATION", 0, SIZE, 0.5});
  const RefiningAnalyzer analyzer(std::make_shared<test::ScriptedAnalyzer>(hits));
  EXPECT_FALSE(analyzer.analyze(text, "en").empty());
}

}  // namespace
}  // namespace core::nlp
