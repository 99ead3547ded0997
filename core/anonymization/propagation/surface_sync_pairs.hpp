// The surfaces of a document that are masked wherever they stand.
//
// Offsets count code points.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "core/anonymization/result.hpp"

namespace core::anonymization {

// The organization and address surfaces of the text that may be spread, each
// with the canonical placeholder of its entity, the longest first. Of surfaces
// that differ only in case the first is kept. What is not given is computed
// with the analyzer.
std::vector<SurfacePlaceholder> collect_document_entity_surface_sync_pairs(
    std::u32string_view text, const Analyzer& analyzer, std::string_view language,
    const std::vector<Replacement>* replacements = nullptr,
    const PlaceholderByKey* okey_to_org = nullptr, const PlaceholderByKey* okey_to_loc = nullptr);

// The organizations among them, as (placeholder, surface).
std::vector<MappingEntry> collect_document_org_name_placeholder_pairs(std::u32string_view text,
                                                                      const Analyzer& analyzer,
                                                                      std::string_view language);

}  // namespace core::anonymization
