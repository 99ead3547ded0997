#include "tests/spacy/parity.hpp"

#include <cstdlib>
#include <fstream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "core/text/utf8.hpp"

namespace test {
namespace {

using core::nlp::spacy::SpacyAnalysis;
using nlohmann::json;

json tokens_of(const SpacyAnalysis& analysis) {
  auto out = json::array();
  for (const auto& token : analysis.tokens) out.push_back({token.start, token.end});
  return out;
}

json starts_of(const SpacyAnalysis& analysis) {
  auto out = json::array();
  for (std::size_t i = 0; i < analysis.trees.sentence_starts.size(); ++i) {
    if (analysis.trees.sentence_starts[i]) out.push_back(i);
  }
  return out;
}

json entities_of(const SpacyAnalysis& analysis) {
  auto out = json::array();
  for (const auto& e : analysis.entities) out.push_back({e.start, e.end, std::string(e.label)});
  return out;
}

}  // namespace

std::filesystem::path small_models() { return VEILDOC_TEST_MODELS; }

std::filesystem::path large_models() {
  const char* named = std::getenv("VEILDOC_SPACY_MODELS");
  const std::filesystem::path path = named != nullptr ? named : VEILDOC_LARGE_MODELS;
  std::error_code error;
  return std::filesystem::is_directory(path, error) ? path : std::filesystem::path();
}

std::string Parity::row() const {
  std::ostringstream out;
  out << texts << " texts, " << tokens << " tokens, " << sentences << " sentences, " << entities
      << " entities; texts that differ: " << token_differences << " in tokens, " << tree_differences
      << " in heads and labels, " << sentence_differences << " in sentence starts, "
      << entity_differences << " in entities";
  return out.str();
}

Parity compare(const core::nlp::spacy::SpacyPipeline& pipeline,
               const std::filesystem::path& expected) {
  Parity out;
  std::ifstream lines(expected);
  for (std::string line; std::getline(lines, line);) {
    const auto answer = json::parse(line);
    const auto text = core::text::decode_utf8(answer.at("text").get<std::string>());
    const auto analysis = pipeline.analyze(text);
    ++out.texts;
    out.tokens += analysis.tokens.size();
    out.entities += analysis.entities.size();
    const auto check = [&](const char* key, const json& actual, std::size_t& differences) {
      if (!answer.contains(key) || answer.at(key) == actual) return;
      ++differences;
      if (!out.first_difference.empty()) return;
      out.first_difference = "line " + std::to_string(out.texts) + ", " + key + ": expected " +
                             answer.at(key).dump() + "\n     actual " + actual.dump();
    };
    check("tokens", tokens_of(analysis), out.token_differences);
    if (answer.contains("sent_starts")) {
      const auto starts = starts_of(analysis);
      out.sentences += starts.size();
      const auto before = out.tree_differences;
      check("heads", json(analysis.trees.heads), out.tree_differences);
      if (out.tree_differences == before) {
        check("deps", json(analysis.trees.labels), out.tree_differences);
      }
      check("sent_starts", starts, out.sentence_differences);
    }
    check("ents", entities_of(analysis), out.entity_differences);
  }
  return out;
}

}  // namespace test
