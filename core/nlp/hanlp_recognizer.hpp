// The names in Chinese texts that the NLP engine found.
#pragma once

#include "core/recognition/entity_recognizer.hpp"

namespace core::nlp {

// Stands where SpacyRecognizer stands for other languages.
class HanlpRecognizer : public recognition::EntityRecognizer {
 public:
  HanlpRecognizer(std::string supported_language, std::vector<std::string> supported_entities);
  std::vector<recognition::RecognizerResult> analyze(
      const recognition::NlpArtifacts& artifacts) const override;
};

}  // namespace core::nlp
