#include "core/recognition/decision_log.hpp"

#include <utility>

#include "core/anonymization/hit_changes.hpp"

namespace core::recognition {

DecisionLog::Key DecisionLog::key_of(const anonymization::RecognizerResult& result) {
  return {result.start, result.end, result.entity_type};
}

void DecisionLog::note(const anonymization::RecognizerResult& result,
                       AnalysisExplanation explanation) {
  const auto [known, added] = explanations_.try_emplace(key_of(result), explanation);
  if (!added && known->second.score < explanation.score) known->second = std::move(explanation);
}

void DecisionLog::note_step(const std::string& step,
                            const std::vector<anonymization::RecognizerResult>& before,
                            const std::vector<anonymization::RecognizerResult>& after) {
  const auto changes = anonymization::hit_changes(before, after);
  for (const auto& change : changes.lost) {
    const auto& r = before[change.before];
    LostResult lost{r, of(r), step};
    if (change.became) {
      lost.became = after[*change.became];
      auto changed = lost.explanation;
      changed.refinement = step;
      explanations_.try_emplace(key_of(*lost.became), std::move(changed));
    }
    lost_.push_back(std::move(lost));
  }
  for (const std::size_t i : changes.added) {
    const auto& r = after[i];
    explanations_.try_emplace(key_of(r), AnalysisExplanation{step, {}, r.score, r.score});
  }
}

const AnalysisExplanation& DecisionLog::of(const anonymization::RecognizerResult& result) const {
  return explanations_.at(key_of(result));
}

}  // namespace core::recognition
