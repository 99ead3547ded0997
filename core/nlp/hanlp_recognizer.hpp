// The names in Chinese texts that the NLP engine found.
#pragma once

#include "core/recognition/spacy_recognizer.hpp"

namespace core::nlp {

// Stands where SpacyRecognizer stands for other languages.
class HanlpRecognizer : public recognition::NlpEntityRecognizer {
 public:
  HanlpRecognizer(std::string supported_language, std::vector<std::string> supported_entities);
};

}  // namespace core::nlp
