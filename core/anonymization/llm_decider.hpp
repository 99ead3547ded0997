// The hook for an outside decider (a language model, a reviewer) that has the
// last word on whether a span is masked. There is none until one is set.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

// Returns the replacements to be made, out of those it is offered.
using ReplacementSpanFilter = std::function<std::vector<Replacement>(
    std::u32string_view text, const std::vector<Replacement>& spans)>;

// An empty function removes the decider. May be called from any thread.
void set_replacement_span_filter(ReplacementSpanFilter filter);

// Throws Error if no decider is set; passes on what the decider throws.
std::vector<Replacement> filter_replacement_spans(std::u32string_view text,
                                                  const std::vector<Replacement>& spans);

}  // namespace core::anonymization
