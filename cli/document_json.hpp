// What is known of a masked document, as JSON.
#pragma once

#include <string>
#include <string_view>

#include "core/anonymization_core.hpp"

namespace cli {

// One object, one line, for --json. Offsets count code points of `original`.
//
//   {"language":"zh","text":"甲方：[机构1]",
//    "mapping":[{"placeholder":"[机构1]","surface":"某某公司"}],
//    "replacements":[{"start":3,"end":7,"tag":"ORG","placeholder":"[机构1]"}]}
//
// Of an amount only the figure is listed: splicing the placeholders into
// `original` gives the masked text, but for mentions that were found by
// spreading a name.
std::string document_json(const core::anonymization::AnonymizedDocument& document,
                          std::u32string_view original);

}  // namespace cli
