// Which surface each placeholder stands for: one entry a replaced span, in
// order of the spans' starts, repeats included.
#pragma once

#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

// With the placeholders that apply_document_text_replacements writes.
std::vector<MappingEntry> mapping_entries_from_canonical_replacements(
    std::u32string_view text, const std::vector<Replacement>& filtered_replacements,
    const PlaceholderByKey& org_by_okey, std::string_view language = "zh");

// With the placeholders as they stand in the list.
std::vector<MappingEntry> mapping_entries_from_replacements(std::u32string_view text,
                                                            std::vector<Replacement> replacements);

}  // namespace core::anonymization
