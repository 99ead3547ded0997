// The steps from an analyzer's hits to those that are numbered, by name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/strategy.hpp"

namespace core::anonymization {

struct HitStep {
  std::string name;  // for people
  StrategyStep run;
};

// In the order in which they run. Throws ValueError for an unknown profile.
std::vector<HitStep> hit_steps(std::string_view profile, std::string_view language);

}  // namespace core::anonymization
