#include "core/recognition/analyzer_engine.hpp"

#include <gtest/gtest.h>

#include "core/errors.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/recognition/pattern_recognizer.hpp"
#include "tests/support/notation.hpp"

namespace core::recognition {
namespace {

const text::Regex RE_TEST_CODE("RE_TEST_CODE", UR"([A-Z]{2}\d{4})");
const text::Regex RE_TEST_LONG("RE_TEST_LONG", UR"([A-Z]{2}\d{4}-\d)");

std::optional<bool> ends_even(std::u32string_view s) { return (s.back() - U'0') % 2 == 0; }

std::string analyzed(PatternRecognizerConfig config, const char* text, const char* language) {
  RecognizerRegistry registry;
  registry.add_recognizer(std::make_shared<PatternRecognizer>(std::move(config)));
  const AnalyzerEngine engine(nlp::make_embedded_nlp_engine(), std::move(registry));
  const auto u32 = test::u32(text);
  return test::render(test::Marked{u32, engine.analyze(u32, language)});
}

TEST(AnalyzerEngine, ContextRaisesAWeakPattern) {
  const PatternRecognizerConfig config{
      "t", "CODE", {{"code", &RE_TEST_CODE, 0.2, AT_NUMBER}}, {U"代码", U"code"}};
  EXPECT_EQ(analyzed(config, "型号AB1234", "zh"), "型号AB1234");
  EXPECT_EQ(analyzed(config, "代码：AB1234", "zh"), "代码：{CODE|AB1234}");
  EXPECT_EQ(analyzed(config, "The CODE is ＡＢ１２３４.", "en"),
            "The CODE is {CODE|ＡＢ１２３４}.");
}

TEST(AnalyzerEngine, ValidationAndLanguage) {
  const PatternRecognizerConfig config{"t", "CODE",    {{"code", &RE_TEST_CODE, 0.2, {}}},
                                       {},  ends_even, "en"};
  EXPECT_EQ(analyzed(config, "AB1234 AB1235", "en"), "{CODE|AB1234} AB1235");
  EXPECT_EQ(analyzed(config, "AB1234", "zh"), "AB1234");
}

TEST(AnalyzerEngine, DropsWhatLiesWithinABetterHitOfTheType) {
  const auto results = remove_duplicates({{"A", 2, 4, 0.5},
                                          {"A", 0, 6, 0.5},
                                          {"B", 2, 4, 0.5},
                                          {"A", 3, 5, 0.9},
                                          {"A", 0, 6, 0.4},
                                          {"A", 5, 8, 0.5},
                                          {"B", 8, 9, 0}});
  const std::vector<RecognizerResult> expected = {
      {"A", 0, 6, 0.5}, {"B", 2, 4, 0.5}, {"A", 3, 5, 0.9}, {"A", 5, 8, 0.5}};
  EXPECT_EQ(results, expected);
}

// Codes of score 0.5 and names of score 0.9; "X" is a name that a refinement adds.
AnalyzerEngine small_engine() {
  RecognizerRegistry registry;
  registry.add_recognizer(std::make_shared<PatternRecognizer>(PatternRecognizerConfig{
      "codes", "CODE", {{"serial", &RE_TEST_CODE, 0.5, {}}}, {U"代码"}, ends_even}));
  registry.add_recognizer(std::make_shared<PatternRecognizer>(PatternRecognizerConfig{
      .name = "names", .entity = "NAME", .deny_list = {U"蓝鲸", U"Orca"}, .deny_list_score = 0.9}));
  registry.add_recognizer(
      std::make_shared<PatternRecognizer>(PatternRecognizerConfig{.name = "weak",
                                                                  .entity = "WEAK",
                                                                  .context = {U"水域"},
                                                                  .deny_list = {U"鱼"},
                                                                  .deny_list_score = 0.2}));
  const auto add_x = [](const NlpArtifacts& a, std::vector<RecognizerResult> results) {
    const auto at = static_cast<std::ptrdiff_t>(a.text.find(U'X'));
    if (at >= 0) results.push_back({"NAME", at, at + 1, 0.7});
    return results;
  };
  return AnalyzerEngine(nlp::make_embedded_nlp_engine(), std::move(registry), {{"the X", add_x}});
}

TEST(AnalyzerEngine, ReportsOnlyWhatTheRequestAsksFor) {
  const auto engine = small_engine();
  const auto ad_hoc = std::make_shared<PatternRecognizer>(
      PatternRecognizerConfig{.name = "a", .entity = "AD_HOC", .deny_list = {U"临时"}});
  struct Row {
    const char* why;
    const char* marked;
    AnalysisRequest request;
  };
  const Row rows[] = {
      {"everything", "{NAME|蓝鲸} {CODE|AB1234} 鱼 {NAME|X} 临时", {}},
      {"only these kinds", "蓝鲸 {CODE|AB1234} X", {.entities = {"CODE", "UNKNOWN"}}},
      {"a higher threshold", "{NAME|蓝鲸} {CODE|AB1234} X", {.score_threshold = 0.8}},
      {"a lower one", "{NAME|蓝鲸} {WEAK|鱼}", {.score_threshold = 0.1}},
      {"allowed as spelled", "蓝鲸 {NAME|ORCA} Orca", {.allow_list = {U"蓝鲸", U"Orca"}}},
      {"allowed by pattern",
       "蓝鲸 ORCA {CODE|AB1234} X",
       {.allow_list = {U"^orc", U"鲸", U"X$"}, .allow_list_match = AllowListMatch::REGEX}},
      {"for this text only", "{AD_HOC|临时} {NAME|X}", {.ad_hoc_recognizers = {ad_hoc}}},
      {"words from elsewhere", "{WEAK|鱼}", {.context = {U"水域名称"}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    test::Marked doc = test::parse(row.marked);
    auto request = row.request;
    request.text = doc.text;
    request.language = "zh";
    doc.results = engine.analyze(request).results;
    EXPECT_EQ(test::render(doc), row.marked);
  }
}

TEST(AnalyzerEngine, ExplainsEveryHit) {
  const auto text = test::u32("代码 AB1234, 蓝鲸 X");
  const auto out =
      small_engine().analyze({.text = text, .language = "zh", .return_decision_process = true});
  const std::vector<AnalysisExplanation> expected = {
      {"codes", "serial", 0.5, 1.0, "代码", true},
      {"names", "deny_list", 0.9, 0.9, "", {}},
      {"the X", "", 0.7, 0.7, "", {}},
  };
  ASSERT_EQ(out.results.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_TRUE(out.explanations[i] == expected[i]) << out.explanations[i].recognizer;
  }
}

TEST(AnalyzerEngine, RefusesRequestsThatNobodyServes) {
  const auto engine = small_engine();
  EXPECT_THROW(engine.analyze({.text = U"", .language = "fr"}), ValueError);
  EXPECT_THROW(engine.analyze({.text = U"", .language = "zh", .entities = {"NONE"}}), ValueError);
  EXPECT_THROW(engine.analyze({.text = U"", .language = "zh", .score_threshold = 1.5}), ValueError);
  EXPECT_THROW(engine.analyze({.text = U"",
                               .language = "zh",
                               .allow_list = {U"("},
                               .allow_list_match = AllowListMatch::REGEX}),
               RegexError);
}

TEST(AnalyzerEngine, RegistryListsWhatItHolds) {
  RecognizerRegistry registry;
  registry.add_recognizer(std::make_shared<PatternRecognizer>(
      PatternRecognizerConfig{"zh only", "B", {}, {}, nullptr, "zh"}));
  registry.add_recognizer(
      std::make_shared<PatternRecognizer>(PatternRecognizerConfig{"both", "A", {}}));
  EXPECT_EQ(registry.get_supported_entities("zh"), (std::vector<std::string>{"A", "B"}));
  EXPECT_EQ(registry.get_supported_entities("en"), std::vector<std::string>{"A"});
  registry.remove_recognizer("both");
  EXPECT_TRUE(registry.get_recognizers("en").empty());
}

}  // namespace
}  // namespace core::recognition
