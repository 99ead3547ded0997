#include "core/hit_fates.hpp"

#include <algorithm>
#include <map>
#include <tuple>

#include "core/anonymization/analyzer.hpp"
#include "core/anonymization/cleanup/filters.hpp"
#include "core/anonymization/hit_changes.hpp"
#include "core/anonymization/replacements/hit_steps.hpp"
#include "core/anonymization/replacements/numbered_builder.hpp"
#include "core/anonymization/span_index.hpp"
#include "core/document_text.hpp"

namespace core::anonymization {
namespace {

using Results = std::vector<RecognizerResult>;
using Replacements = std::vector<Replacement>;

class KnownHits : public Analyzer {
 public:
  explicit KnownHits(const Results& hits) : hits_(hits) {}
  Results analyze(std::u32string_view, std::string_view) const override { return hits_; }

 private:
  const Results& hits_;
};

class Fates {
 public:
  explicit Fates(const Results& hits) : hits_(hits), fates_(hits.size()) {
    for (std::size_t i = 0; i < hits.size(); ++i) {
      const auto& r = hits[i];
      places_[{r.entity_type, r.start, r.end}].push_back(i);
    }
  }

  void note(const std::string& step, const Results& before, const Results& after) {
    for (const auto& lost : hit_changes(before, after).lost) {
      const auto& r = before[lost.before];
      const auto known = places_.find({r.entity_type, r.start, r.end});
      if (known == places_.end()) continue;  // a step had added it
      HitFate fate{step};
      if (lost.became) fate.became = {after[*lost.became].start, after[*lost.became].end};
      for (const std::size_t i : known->second) end(i, fate);
    }
  }

  // The replacements hold the hits that are left, some of them widened.
  void note(std::string_view step, Replacements replacements) {
    std::stable_sort(replacements.begin(), replacements.end(),
                     [](const auto& a, const auto& b) { return a.start < b.start; });
    const auto index = SpanIndex::of(replacements);
    for (std::size_t i = 0; i < hits_.size(); ++i) {
      if (!fates_[i].step.empty()) continue;
      const auto& r = hits_[i];
      if (index.covers(r.start, r.end)) continue;
      const auto first = std::lower_bound(
          replacements.begin(), replacements.end(), r.start,
          [](const Replacement& replacement, Offset start) { return replacement.start < start; });
      HitFate fate{std::string(step)};
      if (first != replacements.end() && first->start < r.end) {
        fate.became = {first->start, std::min(first->end, r.end)};
      }
      end(i, fate);
    }
  }

  std::vector<HitFate> take() && { return std::move(fates_); }

 private:
  void end(std::size_t hit, const HitFate& fate) {
    if (fates_[hit].step.empty()) fates_[hit] = fate;
  }

  const Results& hits_;
  std::vector<HitFate> fates_;
  std::map<std::tuple<std::string, Offset, Offset>, std::vector<std::size_t>> places_;
};

}  // namespace

std::vector<HitFate> hit_fates(std::u32string_view text, const Results& hits,
                               std::string_view language, std::string_view strategy_profile) {
  Fates fates(hits);
  const auto analysis_text = _normalize_fill_underscores_for_analysis(text);
  auto results = hits;
  for (const auto& step : hit_steps(strategy_profile, language)) {
    auto after = step.run(text, analysis_text, results);
    fates.note(step.name, results, after);
    results = std::move(after);
  }
  auto replacements =
      build_numbered_replacements(text, KnownHits(hits), language, strategy_profile);
  fates.note("numbering", replacements);
  for (const auto& step : replacement_steps()) {
    replacements = step.run(text, std::move(replacements));
    fates.note(step.name, replacements);
  }
  return std::move(fates).take();
}

}  // namespace core::anonymization
