// The names that the NLP engine found, as hits of a recognizer.
#pragma once

#include "core/recognition/entity_recognizer.hpp"

namespace core::recognition {

// The engine's entities of the recognizer's kinds.
std::vector<RecognizerResult> entities_for(const EntityRecognizer& recognizer,
                                           const NlpArtifacts& artifacts);

// Reports what the engine found in a text of one language.
class SpacyRecognizer : public EntityRecognizer {
 public:
  SpacyRecognizer(std::string supported_language, std::vector<std::string> supported_entities);
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;
};

}  // namespace core::recognition
