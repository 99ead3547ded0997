// What became of each hit of an analyzer on its way to the masked text.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

struct HitFate {
  // The step that dropped or changed the hit; empty for one that was masked as
  // it is, or with more around it.
  std::string step = {};
  // The span that a changed hit went on with. Nothing if it was dropped.
  std::optional<std::pair<Offset, Offset>> became = {};

  bool operator==(const HitFate&) const = default;
};

// Runs the hits of the text through the steps of an anonymization, one by one.
// A fate for each hit, in their order. `language` is "en" or "zh". What a dropped
// hit covers may be masked for another one, or by a name that spreads. Throws
// ValueError as anonymize_document does.
std::vector<HitFate> hit_fates(std::u32string_view text, const std::vector<RecognizerResult>& hits,
                               std::string_view language, std::string_view strategy_profile);

}  // namespace core::anonymization
