// Names of countries and territories as places: a supplement to the place finders.
#pragma once

#include "core/recognition/entity_recognizer.hpp"

namespace core::anonymization {

// Finds the names that country_names knows, in Chinese and English, in the
// spelling of the list or in capitals. A word that the analyzer's vocabulary
// holds as a place, or as a part of another word (中国制造), is left to the finders.
class CountryRecognizer : public recognition::EntityRecognizer {
 public:
  CountryRecognizer();
  std::vector<RecognizerResult> analyze(const recognition::NlpArtifacts& artifacts) const override;
};

}  // namespace core::anonymization
