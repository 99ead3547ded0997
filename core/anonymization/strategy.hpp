// Which of an analyzer's hits a profile masks.
//
//   contract_default   every hit
//   strict             every hit; the command also switches further recognizers on
//   identity           parties, persons, places, contacts and identifying numbers;
//                      dates, amounts, percentages and quantities stay readable
//
// In every profile a candidate of doc_alias_scan stays only if an ORGANIZATION
// was reported that ends before the definition clause, in its paragraph, and
// nothing that the profile masks was reported over the alias.
//
// A step reads the text, the text that was analysed (of the same length) and
// the results, and returns the results that go on.
#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

using StrategyStep = std::function<std::vector<RecognizerResult>(
    std::u32string_view text, std::u32string_view analysis_text,
    std::vector<RecognizerResult> results)>;

struct StrategySteps {
  std::vector<StrategyStep> before_overlaps;
  std::vector<StrategyStep> after_overlaps;
};

// The steps of a profile: the application's, or those above. Throws ValueError,
// listing the known profiles, if `profile` is none of them.
StrategySteps _resolve_semantic_strategy_steps(std::string_view profile, std::string_view language);

// The steps of a profile above, whatever the application says.
StrategySteps built_in_strategy_steps(std::string_view profile);

// Steps of the application's own: asked at each call, from any thread; nothing
// leaves the profile to those above. An empty function removes it.
using StrategyResolver = std::function<std::optional<StrategySteps>(std::string_view profile,
                                                                    std::string_view language)>;
void set_strategy_resolver(StrategyResolver resolver);

}  // namespace core::anonymization
