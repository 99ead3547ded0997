#include "core/document_text.hpp"

#include "core/anonymization/llm_decider.hpp"
#include "core/anonymization/overrides.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/propagation/canonical_placeholders.hpp"
#include "core/anonymization/replacements/numbered_builder.hpp"
#include "core/anonymization/replacements/span_postprocess.hpp"

namespace core::anonymization {

PreparedReplacements prepare_document_text_replacements(std::u32string_view text,
                                                        const Analyzer& analyzer,
                                                        std::string_view language,
                                                        std::string_view strategy_profile,
                                                        std::u32string_view joiner) {
  auto replacements = build_numbered_replacements(text, analyzer, language, strategy_profile);
  for (const auto& step : replacement_steps(joiner)) {
    replacements = step.run(text, std::move(replacements));
  }
  auto org_by_okey = build_okey_to_canonical_org_placeholders(text, replacements, language);
  return {std::move(replacements), std::move(org_by_okey)};
}

std::vector<ReplacementStep> replacement_steps(std::u32string_view joiner) {
  using Replacements = std::vector<Replacement>;
  return {{"paragraph joiners",
           [joiner](std::u32string_view text, Replacements replacements) {
             return joiner.empty()
                        ? _clip_replacements_at_embedded_docx_joiners(std::move(replacements), text)
                        : _split_replacements_at_joiner(std::move(replacements), text, joiner);
           }},
          {"closing quotes of definitions",
           [](std::u32string_view text, Replacements replacements) {
             return _trim_org_replacement_spans_at_defined_alias_closers(std::move(replacements),
                                                                         text);
           }},
          {"weak organizations",
           [](std::u32string_view text, Replacements replacements) {
             return _filter_weak_org_replacements(std::move(replacements), text);
           }},
          {"keep/mask decision",
           [](std::u32string_view text, Replacements replacements) {
             return _apply_llm_keep_mask_decision(text, std::move(replacements));
           }},
          {"keep and mask lists", [](std::u32string_view text, Replacements replacements) {
             return apply_overrides(text, std::move(replacements));
           }}};
}

std::vector<Replacement> _apply_llm_keep_mask_decision(std::u32string_view text,
                                                       std::vector<Replacement> filtered) {
  // The decider is optional and outside our control. When it is missing or
  // fails, everything stays masked, which is the safe side.
  try {
    return filter_replacement_spans(text, filtered);
  } catch (...) {
    return filtered;
  }
}

std::vector<Replacement> canonical_replacements(
    std::u32string_view text, const std::vector<Replacement>& filtered_replacements,
    const PlaceholderByKey& org_by_okey, std::string_view language) {
  return canonical_replacements(
      text, filtered_replacements, org_by_okey,
      build_okey_to_canonical_location_placeholders(text, filtered_replacements, language));
}

std::vector<Replacement> canonical_replacements(
    std::u32string_view text, const std::vector<Replacement>& filtered_replacements,
    const PlaceholderByKey& org_by_okey, const PlaceholderByKey& loc_by_okey) {
  auto out = filtered_replacements;
  CanonicalPlaceholders canonical(text, org_by_okey, loc_by_okey);
  for (auto& replacement : out) {
    canonical.write_to(replacement);
    if (has_full_width_brackets(replacement.placeholder)) {
      replacement.placeholder = ensure_ascii_placeholder_brackets(replacement.placeholder);
    }
  }
  return out;
}

std::u32string apply_document_text_replacements(
    std::u32string_view text, const std::vector<Replacement>& filtered_replacements,
    const PlaceholderByKey& org_by_okey, std::string_view language) {
  const auto replacements =
      canonical_replacements(text, filtered_replacements, org_by_okey, language);
  MaskedText out(text);
  out.splice_right_to_left(edits_of(replacements));
  return out.take_text();
}

}  // namespace core::anonymization
