// The names that the NLP engine found, as hits of a recognizer.
#pragma once

#include "core/recognition/entity_recognizer.hpp"

namespace core::recognition {

// Reports the engine's entities of its kinds.
class NlpEntityRecognizer : public EntityRecognizer {
 public:
  using EntityRecognizer::EntityRecognizer;
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;
  std::vector<ExplainedResult> explain(const NlpArtifacts& artifacts) const override;

 protected:
  // Whether it is of the recognizer's kinds.
  bool reports(const RecognizerResult& result) const;
};

// What the engine found in a text of one language.
class SpacyRecognizer : public NlpEntityRecognizer {
 public:
  SpacyRecognizer(std::string supported_language, std::vector<std::string> supported_entities);
};

}  // namespace core::recognition
