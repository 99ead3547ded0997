// The names that the NLP engine found, as hits of a recognizer.
#pragma once

#include <optional>
#include <string_view>

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

// The kind of entity that a label of a spaCy model stands for: PER and PERSON PERSON,
// ORG ORGANIZATION, GPE, LOC and FAC LOCATION, DATE and TIME DATE_TIME, NORP NRP,
// MONEY MONEY; labels that are called like one of these kinds stand for it.
// nullopt for others, such as CARDINAL or WORK_OF_ART, which are not reported.
std::optional<std::string_view> spacy_entity_type(std::string_view label);

// What the engine found in a text of one language, with a model of spaCy or without.
class SpacyRecognizer : public NlpEntityRecognizer {
 public:
  SpacyRecognizer(std::string supported_language, std::vector<std::string> supported_entities);
};

}  // namespace core::recognition
