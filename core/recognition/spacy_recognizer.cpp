#include "core/recognition/spacy_recognizer.hpp"

#include <algorithm>
#include <utility>

namespace core::recognition {
namespace {

struct LabelKind {
  std::string_view label;
  std::string_view kind;
};

constexpr LabelKind LABEL_KINDS[] = {
    // of the published models
    {"DATE", "DATE_TIME"},
    {"FAC", "LOCATION"},
    {"GPE", "LOCATION"},
    {"LOC", "LOCATION"},
    {"MONEY", "MONEY"},
    {"NORP", "NRP"},
    {"ORG", "ORGANIZATION"},
    {"PER", "PERSON"},
    {"PERSON", "PERSON"},
    {"TIME", "DATE_TIME"},
    // of models trained with our names
    {"DATE_TIME", "DATE_TIME"},
    {"LOCATION", "LOCATION"},
    {"NRP", "NRP"},
    {"ORGANIZATION", "ORGANIZATION"},
};

}  // namespace

std::optional<std::string_view> spacy_entity_type(std::string_view label) {
  for (const auto& known : LABEL_KINDS) {
    if (known.label == label) return known.kind;
  }
  return std::nullopt;
}

bool NlpEntityRecognizer::reports(const RecognizerResult& result) const {
  const auto& kinds = supported_entities();
  return std::find(kinds.begin(), kinds.end(), result.entity_type) != kinds.end();
}

std::vector<RecognizerResult> NlpEntityRecognizer::analyze(const NlpArtifacts& artifacts) const {
  std::vector<RecognizerResult> results;
  for (const auto& entity : artifacts.entities) {
    if (reports(entity.result)) results.push_back(entity.result);
  }
  return results;
}

std::vector<ExplainedResult> NlpEntityRecognizer::explain(const NlpArtifacts& artifacts) const {
  std::vector<ExplainedResult> results;
  for (const auto& entity : artifacts.entities) {
    if (!reports(entity.result)) continue;
    results.push_back(
        {entity.result,
         {name(), std::string(entity.finder), entity.result.score, entity.result.score}});
  }
  return results;
}

SpacyRecognizer::SpacyRecognizer(std::string supported_language,
                                 std::vector<std::string> supported_entities)
    : NlpEntityRecognizer("SpacyRecognizer", std::move(supported_entities),
                          std::move(supported_language)) {}

}  // namespace core::recognition
