// What would be masked, for somebody who reviews it.
#pragma once

#include <string>

#include "core/restore/mapping.hpp"

namespace cli {

// A row for each placeholder, in the order of the text: its kind, how often it stands
// there, and all that it stands for.
//
//   KIND  PLACEHOLDER  COUNT  SURFACES
//   ORG   [机构1]          3  北京华信科技有限公司 | 华信科技
std::string review_table(const core::restore::Mapping& mapping);

}  // namespace cli
