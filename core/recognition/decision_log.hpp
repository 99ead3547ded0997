// Keeps the explanations of hits while refinements change the list of hits.
#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "core/recognition/explanation.hpp"

namespace core::recognition {

class DecisionLog {
 public:
  // Of several explanations of a hit the one with the best score stays.
  void note(const anonymization::RecognizerResult& result, AnalysisExplanation explanation);

  // Explains every hit that is not known yet by the step that brought it.
  void note_new(const std::vector<anonymization::RecognizerResult>& results,
                const std::string& step);

  // The hit must have been noted.
  const AnalysisExplanation& of(const anonymization::RecognizerResult& result) const;

 private:
  using Key = std::tuple<anonymization::Offset, anonymization::Offset, std::string>;
  static Key key_of(const anonymization::RecognizerResult& result);

  std::map<Key, AnalysisExplanation> explanations_;
};

}  // namespace core::recognition
