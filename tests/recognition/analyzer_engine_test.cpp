#include "core/recognition/analyzer_engine.hpp"

#include <gtest/gtest.h>

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

TEST(PatternRecognizer, ContextRaisesAWeakPattern) {
  const PatternRecognizerConfig config{
      "t", "CODE", {{"code", &RE_TEST_CODE, 0.2, AT_NUMBER}}, {U"代码", U"code"}};
  EXPECT_EQ(analyzed(config, "型号AB1234", "zh"), "型号AB1234");
  EXPECT_EQ(analyzed(config, "代码：AB1234", "zh"), "代码：{CODE|AB1234}");
  EXPECT_EQ(analyzed(config, "The CODE is ＡＢ１２３４.", "en"),
            "The CODE is {CODE|ＡＢ１２３４}.");
}

TEST(PatternRecognizer, ValidationAndLanguage) {
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
                                          {"A", 5, 8, 0.5}});
  const std::vector<RecognizerResult> expected = {
      {"A", 0, 6, 0.5}, {"B", 2, 4, 0.5}, {"A", 3, 5, 0.9}, {"A", 5, 8, 0.5}};
  EXPECT_EQ(results, expected);
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
