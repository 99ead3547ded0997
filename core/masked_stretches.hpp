// Which parts of a document its placeholders stand for.
//
// Offsets count code points.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization_core.hpp"

namespace core::anonymization {

// What is written for an amount holds its wording: 人民币[MONEY1]元 for 人民币100元.
// Without the wording on both sides, [MONEY1] and 100.
struct BarePlaceholder {
  std::u32string_view placeholder;
  // How much of the surface before and behind it stayed.
  std::size_t before = 0;
  std::size_t behind = 0;
};
BarePlaceholder without_wording(std::u32string_view written, std::u32string_view surface);

// A part of the original that cannot be read in the masked text.
struct MaskedStretch {
  Offset start = 0;
  Offset end = 0;
  std::u32string placeholder;

  bool operator==(const MaskedStretch&) const = default;
};

// All of them, spread mentions included, sorted and disjoint. `document` is what
// anonymize_document made of `original`.
std::vector<MaskedStretch> masked_stretches(std::u32string_view original,
                                            const AnonymizedDocument& document);

// Their placeholders alone, views into `document`.
std::vector<std::u32string_view> masked_placeholders(const AnonymizedDocument& document);

}  // namespace core::anonymization
