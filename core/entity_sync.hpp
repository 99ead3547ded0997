// Spreads the placeholders of organizations and places over mentions that the
// analyzer missed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "core/anonymization/masked_text.hpp"
#include "core/anonymization/result.hpp"

namespace core::anonymization {

// `out` is the text `src_text` with its replacements written in; the result is
// `out` with the remaining occurrences of their surfaces written over too.
std::u32string _apply_entity_surface_sync_to_text(
    std::u32string_view out, std::u32string_view src_text, const Analyzer& analyzer,
    std::string_view language, const std::vector<Replacement>& filtered_replacements,
    const PlaceholderByKey& org_by_okey);

// The same for a text whose placeholders are tracked.
void apply_entity_surface_sync(MaskedText& out, std::u32string_view src_text,
                               const Analyzer& analyzer, std::string_view language,
                               const std::vector<Replacement>& filtered_replacements,
                               const PlaceholderByKey& org_by_okey,
                               const PlaceholderByKey* loc_by_okey = nullptr);

// "zh" for a text with an ideograph, whatever was requested; else the request,
// where it is "en" ("mixed" is "en" here), and "zh" for any other.
std::string _document_text_entity_sync_locale(std::string_view language, std::u32string_view text);

}  // namespace core::anonymization
