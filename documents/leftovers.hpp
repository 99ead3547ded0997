// What reads like something that was masked, in a text that was analysed, and is left.
//
// Offsets count code points of that text; start is in, end is out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/overrides.hpp"
#include "core/masked_stretches.hpp"
#include "documents/surface_search.hpp"

namespace documents {

struct Leftover {
  enum class Kind {
    KEPT,    // on purpose: by --keep, or by a rule that dropped the hit
    MISSED,  // a name or an identifying number, as it is masked elsewhere
    ALIKE,   // anything else: a place, an amount, one common word, a part of another
  };
  std::size_t start = 0;
  std::size_t end = 0;
  Kind kind = Kind::ALIKE;
  std::u32string placeholder = {};  // of the surface that it reads like
};

// Those outside of the stretches, sorted and disjoint. `masked` is sorted, `kept` too.
std::vector<Leftover> leftovers(std::u32string_view text,
                                const std::vector<core::anonymization::MaskedStretch>& masked,
                                const core::anonymization::Stretches& kept);

// What an anonymization of the text left on purpose: what is kept, and what an analyzer
// found and a rule dropped.
core::anonymization::Stretches kept_on_purpose(
    std::u32string_view text, const std::vector<core::anonymization::RecognizerResult>& hits,
    std::string_view language, std::string_view strategy_profile,
    const core::anonymization::Overrides& overrides);

}  // namespace documents
