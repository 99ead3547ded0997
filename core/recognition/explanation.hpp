// How an analyzer came to a hit.
#pragma once

#include <optional>
#include <string>

#include "core/anonymization/result.hpp"

namespace core::recognition {

// It never holds text of the document: the words are those of the recognizer.
struct AnalysisExplanation {
  std::string recognizer;    // or the refinement that added or changed the hit
  std::string pattern_name;  // of a recognizer by shape; the finder of a name
  double original_score = 0;
  double score = 0;
  // The recognizer's word that stands near the hit and raised its score.
  std::string supportive_context_word = {};
  std::optional<bool> validation_result = {};  // what the checksum says

  bool operator==(const AnalysisExplanation&) const = default;
};

struct ExplainedResult {
  anonymization::RecognizerResult result;
  AnalysisExplanation explanation;
};

}  // namespace core::recognition
