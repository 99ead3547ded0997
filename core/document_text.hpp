// From a text to its final replacements, and from those to the masked text.
//
// Offsets count code points of the text.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "core/anonymization/masked_text.hpp"
#include "core/anonymization/result.hpp"

namespace core::anonymization {

struct PreparedReplacements {
  std::vector<Replacement> filtered;
  PlaceholderByKey org_by_okey;
};

// The replacements of the text, cut at `joiner` (or, if it is empty, at the
// paragraph joiners), cleaned, and decided upon; and the canonical placeholders
// of the organizations among them.
PreparedReplacements prepare_document_text_replacements(
    std::u32string_view text, const Analyzer& analyzer, std::string_view language,
    std::string_view strategy_profile = "contract_default", std::u32string_view joiner = {});

// A step between numbering and writing, by name.
struct ReplacementStep {
  std::string_view name;  // for people
  std::function<std::vector<Replacement>(std::u32string_view text,
                                         std::vector<Replacement> replacements)>
      run;
};

// Those of prepare_document_text_replacements, in the order in which they run;
// `joiner` outlives them.
std::vector<ReplacementStep> replacement_steps(std::u32string_view joiner = {});

// What the outside decider leaves of the replacements; all of them if there is
// no decider or it fails in any way.
std::vector<Replacement> _apply_llm_keep_mask_decision(std::u32string_view text,
                                                       std::vector<Replacement> filtered);

// The replacements with the canonical placeholder of each organization and
// place, in ASCII brackets. Their order is kept.
std::vector<Replacement> canonical_replacements(
    std::u32string_view text, const std::vector<Replacement>& filtered_replacements,
    const PlaceholderByKey& org_by_okey, std::string_view language);
// The same, with the canonical placeholders of places.
std::vector<Replacement> canonical_replacements(
    std::u32string_view text, const std::vector<Replacement>& filtered_replacements,
    const PlaceholderByKey& org_by_okey, const PlaceholderByKey& loc_by_okey);

// The text with the canonical placeholders written over the spans, from right
// to left. Overlapping spans are not refused: the later start is written first.
std::u32string apply_document_text_replacements(
    std::u32string_view text, const std::vector<Replacement>& filtered_replacements,
    const PlaceholderByKey& org_by_okey, std::string_view language = "zh");

}  // namespace core::anonymization
