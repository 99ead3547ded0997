#include "core/recognition/decision_log.hpp"

#include <utility>

namespace core::recognition {

DecisionLog::Key DecisionLog::key_of(const anonymization::RecognizerResult& result) {
  return {result.start, result.end, result.entity_type};
}

void DecisionLog::note(const anonymization::RecognizerResult& result,
                       AnalysisExplanation explanation) {
  const auto [known, added] = explanations_.try_emplace(key_of(result), explanation);
  if (!added && known->second.score < explanation.score) known->second = std::move(explanation);
}

void DecisionLog::note_new(const std::vector<anonymization::RecognizerResult>& results,
                           const std::string& step) {
  for (const auto& r : results) {
    explanations_.try_emplace(key_of(r), AnalysisExplanation{step, {}, r.score, r.score});
  }
}

const AnalysisExplanation& DecisionLog::of(const anonymization::RecognizerResult& result) const {
  return explanations_.at(key_of(result));
}

}  // namespace core::recognition
