// How an analyzer came to a hit.
#pragma once

#include <optional>
#include <string>

#include "core/anonymization/result.hpp"

namespace core::recognition {

// It never holds text of the document: the words are those of the recognizer.
struct AnalysisExplanation {
  std::string recognizer;    // or the refinement that added the hit
  std::string pattern_name;  // of a recognizer by shape; the finder of a name
  double original_score = 0;
  double score = 0;
  // The recognizer's word that stands near the hit and raised its score.
  std::string supportive_context_word = {};
  std::optional<bool> validation_result = {};  // what the checksum says
  std::string refinement = {};                 // the last one that changed the hit

  bool operator==(const AnalysisExplanation&) const = default;
};

struct ExplainedResult {
  anonymization::RecognizerResult result;
  AnalysisExplanation explanation;
};

// A hit that a step of the analyzer dropped or changed.
struct LostResult {
  anonymization::RecognizerResult result;
  AnalysisExplanation explanation;
  std::string step;                                            // its name
  std::optional<anonymization::RecognizerResult> became = {};  // nothing if it was dropped
};

}  // namespace core::recognition
