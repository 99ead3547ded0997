// Keeps the explanations of hits while steps change the list of hits.
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

  // Compares the lists before and after a step. A hit that it changed keeps its
  // explanation, with the step as its refinement; one that it added is explained
  // by the step; those that it took away are noted as lost.
  void note_step(const std::string& step,
                 const std::vector<anonymization::RecognizerResult>& before,
                 const std::vector<anonymization::RecognizerResult>& after);

  // The hit must have been noted.
  const AnalysisExplanation& of(const anonymization::RecognizerResult& result) const;

  // In the order of the steps.
  std::vector<LostResult> take_lost() { return std::move(lost_); }

 private:
  using Key = std::tuple<anonymization::Offset, anonymization::Offset, std::string>;
  static Key key_of(const anonymization::RecognizerResult& result);

  std::map<Key, AnalysisExplanation> explanations_;
  std::vector<LostResult> lost_;
};

}  // namespace core::recognition
