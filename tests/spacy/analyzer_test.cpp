// A spaCy model among the recognizers of an analyzer.
#include <cstdlib>
#include <thread>

#include <gtest/gtest.h>

#include "core/anonymization/analyzer/analyzer_construction.hpp"
#include "core/nlp/hybrid_routing_nlp_engine.hpp"
#include "core/recognition/spacy_recognizer.hpp"
#include "tests/spacy/parity.hpp"
#include "tests/support/notation.hpp"

namespace {

using core::nlp::HybridRoutingNlpEngine;

std::string model() { return (test::small_models() / "en_small").string(); }

constexpr auto TEXT =
    U"Cendrix Corp. paid US$ 3.5 million to Orrinde Ashgrovel on 8 May 2024. "
    U"The Term commences, inter alia, in Osaka.";

std::vector<std::string> found_by(const core::recognition::NlpEngine& engine,
                                  std::u32string_view text, std::string_view language,
                                  std::string_view finder) {
  std::vector<std::string> out;
  for (const auto& [result, by] : engine.process_text(text, language).entities) {
    if (by != finder) continue;
    out.push_back(result.entity_type + " " + std::to_string(result.start) + "-" +
                  std::to_string(result.end));
    EXPECT_EQ(result.score, HybridRoutingNlpEngine::SPACY_SCORE);
  }
  return out;
}

TEST(SpacyRecognizer, ReportsLabelsUnderOurKinds) {
  const std::pair<const char*, const char*> cases[] = {
      {"PER", "PERSON"},   {"PERSON", "PERSON"}, {"ORG", "ORGANIZATION"}, {"GPE", "LOCATION"},
      {"LOC", "LOCATION"}, {"FAC", "LOCATION"},  {"DATE", "DATE_TIME"},   {"TIME", "DATE_TIME"},
      {"NORP", "NRP"},     {"MONEY", "MONEY"},   {"CARDINAL", ""},        {"org", ""},
      {"WORK_OF_ART", ""}};
  for (const auto& [label, kind] : cases) {
    EXPECT_EQ(core::recognition::spacy_entity_type(label).value_or(""), kind) << label;
  }
}

TEST(HybridRoutingNlpEngine, RunsASpacyModelOnEnglishTexts) {
  HybridRoutingNlpEngine engine(model());
  EXPECT_TRUE(engine.get_supported_entities("en").empty()) << "not loaded";
  engine.load();
  using List = std::vector<std::string>;
  EXPECT_EQ(found_by(engine, TEXT, "en", "en_small"),
            (List{"ORGANIZATION 0-13", "MONEY 19-34", "PERSON 38-55", "DATE_TIME 59-69",
                  "LOCATION 91-101", "LOCATION 106-111"}));
  EXPECT_EQ(found_by(engine, TEXT, "zh", "en_small"), List());
  EXPECT_EQ(engine.get_supported_entities("en"),
            (List{"DATE_TIME", "LOCATION", "MONEY", "ORGANIZATION", "PERSON"}));
  EXPECT_EQ(engine.get_supported_entities("zh"), (List{"LOCATION", "ORGANIZATION", "PERSON"}));
  // Offsets count code points.
  EXPECT_EQ(found_by(engine, U"😀 𠮷 " + std::u32string(TEXT), "en", "en_small").back(),
            "LOCATION 110-115");
}

TEST(BuildAnalyzer, HasTheEntitiesOfTheModelThatTheEnvironmentNames) {
  ::setenv("VEILDOC_SPACY_MODEL_EN", (" " + test::small_models().string() + "/en_small ").c_str(),
           1);
  const auto by_environment = core::anonymization::build_analyzer();
  ::unsetenv("VEILDOC_SPACY_MODEL_EN");
  const auto by_folder = core::anonymization::build_analyzer(true, model());
  const auto embedded = core::anonymization::build_analyzer();
  const auto has_person = [](const auto& analyzer) {
    for (const auto& hit : analyzer->analyze(TEXT, "en")) {
      if (hit.entity_type == "PERSON" && hit.start == 38 && hit.end == 55) return true;
    }
    return false;
  };
  EXPECT_TRUE(has_person(by_environment));
  EXPECT_TRUE(has_person(by_folder));
  EXPECT_FALSE(has_person(embedded));
  EXPECT_EQ(by_folder->analyze(TEXT, "zh"), embedded->analyze(TEXT, "zh"));
}

// The weights are shared, and nothing else is.
TEST(SpacyPipeline, ServesManyThreads) {
  const auto pipeline = core::nlp::spacy::shared_spacy_pipeline(model());
  EXPECT_EQ(pipeline, core::nlp::spacy::shared_spacy_pipeline(model() + "/."));
  const auto expected = pipeline->analyze(TEXT).entities.size();
  std::vector<std::thread> threads;
  std::vector<std::size_t> found(4);
  threads.reserve(found.size());
  for (auto& count : found) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5; ++i) count = pipeline->analyze(TEXT).entities.size();
    });
  }
  for (auto& thread : threads) thread.join();
  for (const auto count : found) EXPECT_EQ(count, expected);
  EXPECT_TRUE(pipeline->analyze(U"").tokens.empty());
}

}  // namespace
