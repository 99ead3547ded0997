#include "core/recognition/spacy_recognizer.hpp"

#include <algorithm>
#include <utility>

namespace core::recognition {

std::vector<RecognizerResult> entities_for(const EntityRecognizer& recognizer,
                                           const NlpArtifacts& artifacts) {
  const auto& kinds = recognizer.supported_entities();
  std::vector<RecognizerResult> results;
  for (const auto& entity : artifacts.entities) {
    if (std::find(kinds.begin(), kinds.end(), entity.result.entity_type) != kinds.end()) {
      results.push_back(entity.result);
    }
  }
  return results;
}

SpacyRecognizer::SpacyRecognizer(std::string supported_language,
                                 std::vector<std::string> supported_entities)
    : EntityRecognizer("SpacyRecognizer", std::move(supported_entities),
                       std::move(supported_language)) {}

std::vector<RecognizerResult> SpacyRecognizer::analyze(const NlpArtifacts& artifacts) const {
  return entities_for(*this, artifacts);
}

}  // namespace core::recognition
