#include "core/anonymization/replacements/hit_steps.hpp"

#include <utility>

#include "core/anonymization/cleanup/filters.hpp"
#include "core/anonymization/cleanup/overlap.hpp"
#include "core/anonymization/doc_alias_scan.hpp"
#include "core/anonymization/overrides.hpp"

namespace core::anonymization {
namespace {

using Results = std::vector<RecognizerResult>;

HitStep filter(std::string name, Results (*drop)(std::u32string_view, Results)) {
  return {std::move(name), [drop](std::u32string_view text, std::u32string_view, Results results) {
            return drop(text, std::move(results));
          }};
}

Results add_aliases(std::u32string_view text, Results results) {
  for (auto& alias : scan_defined_alias_candidates(text)) results.push_back(std::move(alias));
  return results;
}

Results resolve_overlaps(std::u32string_view, Results results) {
  return _resolve_overlaps(std::move(results));
}

}  // namespace

std::vector<HitStep> hit_steps(std::string_view profile, std::string_view language) {
  auto of_profile = _resolve_semantic_strategy_steps(profile, language);
  const auto profile_name = "profile " + std::string(profile);
  std::vector<HitStep> steps;
  const bool overridden = OverridesScope::any();
  if (overridden) steps.push_back(filter("keep list", drop_kept_hits));
  steps.push_back(filter("blanks and punctuation", _drop_blank_fill_results));
  steps.push_back(filter("ordinals and section numbers", _drop_structural_sequence_results));
  steps.push_back(filter("generic nouns", _drop_generic_institution_noun_results));
  steps.push_back(filter("defined aliases", add_aliases));
  for (auto& step : of_profile.before_overlaps) steps.push_back({profile_name, std::move(step)});
  steps.push_back(filter("overlaps", resolve_overlaps));
  for (auto& step : of_profile.after_overlaps) steps.push_back({profile_name, std::move(step)});
  steps.push_back(filter("overlaps", resolve_overlaps));
  if (overridden) steps.push_back(filter("mask list", add_masked_hits));
  return steps;
}

}  // namespace core::anonymization
