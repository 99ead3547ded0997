#include "core/anonymization/analyzer/analyzer_construction.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "core/anonymization/country_names.hpp"
#include "core/anonymization/recognizers/country_recognizer.hpp"
#include "core/errors.hpp"
#include "core/nlp/cpu_throttle.hpp"
#include "core/nlp/hanlp_recognizer.hpp"
#include "core/nlp/hybrid_routing_nlp_engine.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/recognition/spacy_recognizer.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

using nlp::HanlpRecognizer;
using nlp::HybridRoutingNlpEngine;
using recognition::RecognizerRegistry;
using recognition::SpacyRecognizer;

using Names = std::vector<std::string>;

// "SpacyRecognizer/en" for each recognizer, in order.
Names names_of(const RecognizerRegistry& registry) {
  Names out;
  for (const auto& r : registry.recognizers()) {
    out.push_back(r->name() + "/" + r->supported_language());
  }
  return out;
}

// Without hits inside the one before.
std::string analyzed(const Analyzer& analyzer, const char* text, const char* language) {
  test::Marked doc{test::u32(text), {}};
  for (auto& hit : analyzer.analyze(doc.text, language)) {
    if (doc.results.empty() || hit.start >= doc.results.back().end) {
      doc.results.push_back(std::move(hit));
    }
  }
  return test::render(doc);
}

TEST(SwapZhSpacyRecognizer, TakesThePlaceOfTheChineseOne) {
  RecognizerRegistry registry;
  registry.add_recognizer(std::make_shared<SpacyRecognizer>("zh", Names{"A"}));
  registry.add_recognizer(std::make_shared<SpacyRecognizer>("en", Names{"A"}));
  _swap_zh_spacy_recognizer_for_hanlp(registry, {"PERSON"});
  EXPECT_EQ(names_of(registry), (Names{"HanlpRecognizer/zh", "SpacyRecognizer/en"}));
  EXPECT_EQ(registry.recognizers().front()->supported_entities(), Names{"PERSON"});

  // Of no effect on a HanlpRecognizer: one more is added.
  _swap_zh_spacy_recognizer_for_hanlp(registry, {"LOCATION"});
  EXPECT_EQ(names_of(registry),
            (Names{"HanlpRecognizer/zh", "SpacyRecognizer/en", "HanlpRecognizer/zh"}));
}

TEST(BuildAnalyzer, HasOneRecognizerOfNamesForEachLanguage) {
  const auto analyzer = build_analyzer();
  EXPECT_EQ(analyzer->supported_languages(), (Names{"en", "zh"}));
  EXPECT_NE(nlp::zh_nlp_thread_limit(), 0U);
  Names of_names;
  for (const auto& name : names_of(analyzer->registry())) {
    if (!name.ends_with('/')) of_names.push_back(name);
  }
  EXPECT_EQ(of_names, (Names{"SpacyRecognizer/en", "HanlpRecognizer/zh"}));
  for (const auto& recognizer : analyzer->registry().recognizers()) {
    if (recognizer->name() == "HanlpRecognizer") {
      EXPECT_EQ(recognizer->supported_entities(),
                analyzer->nlp_engine().get_supported_entities("zh"));
    }
  }
  auto with = names_of(analyzer->registry());
  const auto without = names_of(build_analyzer(false)->registry());
  with.pop_back();
  EXPECT_EQ(with, without) << "the flag adds the last one";
}

TEST(BuildAnalyzer, FindsNamesOfBothLanguagesInEither) {
  const auto analyzer = build_analyzer();
  constexpr auto MIXED =
      "{ORGANIZATION|苏州澜迅精密机械有限公司}, contact Mr. {PERSON|Tobias Okonkwo-Hale}, "
      "身份证号：{CHINA_ID_CARD|331003199306177181}";
  const auto text = test::u8(test::parse(MIXED).text);
  EXPECT_EQ(analyzed(*analyzer, text.c_str(), "zh"), MIXED);
  EXPECT_EQ(analyzed(*analyzer, text.c_str(), "en"), MIXED);

  // The registry decides what is found.
  analyzer->registry().remove_recognizer("HanlpRecognizer");
  EXPECT_EQ(analyzed(*analyzer, "苏州澜迅精密机械有限公司", "zh"), "苏州澜迅精密机械有限公司");
  EXPECT_EQ(analyzed(*analyzer, "苏州澜迅精密机械有限公司", "en"),
            "{ORGANIZATION|苏州澜迅精密机械有限公司}");
}

TEST(HybridRoutingNlpEngine, RefusesWhatItCannotRun) {
  const auto message_of = [](const std::string& model) -> std::string {
    try {
      HybridRoutingNlpEngine(model).load();
      return "";
    } catch (const ValueError& e) {
      return e.what();
    }
  };
  const auto folder = std::filesystem::path(testing::TempDir()) / "en_model";
  std::filesystem::create_directories(folder);
  EXPECT_EQ(message_of("en_core_web_lg"), "");
  EXPECT_EQ(message_of(folder),
            "spaCy model " + (folder / "meta.json").string() + ": No such file or directory");
  EXPECT_EQ(message_of("en_core_web_sm"),
            "unknown NLP model en_core_web_sm: neither en_core_web_lg, which stands for what is "
            "built in, nor the folder of a spaCy model");

  // The environment names the model of build_analyzer.
  std::ofstream(folder / "meta.json") << "{}";
  std::ofstream(folder / "config.cfg") << "";
  ::setenv("VEILDOC_SPACY_MODEL_EN", folder.c_str(), 1);
  EXPECT_THROW(build_analyzer(), ValueError);
  ::unsetenv("VEILDOC_SPACY_MODEL_EN");
  std::filesystem::remove_all(folder);

  HybridRoutingNlpEngine engine("en_core_web_lg");
  EXPECT_THROW(engine.process_text(U"", "en"), ValueError) << "not loaded";
  engine.load();
  EXPECT_THROW(engine.process_text(U"", "fr"), ValueError);
  EXPECT_EQ(engine.get_supported_entities("zh"), (Names{"LOCATION", "ORGANIZATION", "PERSON"}));
  EXPECT_TRUE(engine.get_supported_entities("fr").empty());
}

// The recognizer alone: an analyzer has place finders that know most countries.
TEST(CountryRecognizer, FindsNamesThatTheVocabularyDoesNotKnow) {
  constexpr const char* ROWS[] = {
      "Goods from {LOCATION|Saint Pierre and Miquelon}, {LOCATION|TOKELAU}.",
      "自{LOCATION|托克劳}进口",
      "tokelau and Tokelauan",
  };
  const CountryRecognizer recognizer;
  const auto engine = nlp::make_embedded_nlp_engine();
  for (const char* row : ROWS) {
    const auto text = test::parse(row).text;
    EXPECT_EQ(test::render({text, recognizer.analyze(engine->process_text(text, "en"))}), row);
  }
}

}  // namespace
}  // namespace core::anonymization
