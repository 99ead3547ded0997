#include "core/entity_sync.hpp"

#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/propagation/propagable_surfaces.hpp"
#include "core/anonymization/propagation/surface_spread.hpp"
#include "core/anonymization/propagation/surface_sync_pairs.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {

std::string _document_text_entity_sync_locale(std::string_view language, std::u32string_view text) {
  if (text::contains_ideograph(text)) return "zh";
  return language == "en" || language == "mixed" ? "en" : "zh";
}

void apply_entity_surface_sync(MaskedText& out, std::u32string_view src_text,
                               const Analyzer& analyzer, std::string_view language,
                               const std::vector<Replacement>& filtered_replacements,
                               const PlaceholderByKey& org_by_okey,
                               const PlaceholderByKey* loc_by_okey) {
  const auto locale = _document_text_entity_sync_locale(language, src_text);
  auto pairs = collect_document_entity_surface_sync_pairs(
      src_text, analyzer, locale, &filtered_replacements, &org_by_okey, loc_by_okey);
  std::erase_if(pairs, [](const SurfacePlaceholder& pair) {
    return is_non_propagable_location_surface(pair.surface) &&
           is_numbered_placeholder_of(pair.placeholder, tag::ADDRESS);
  });
  spread_surfaces(out, pairs);
}

std::u32string _apply_entity_surface_sync_to_text(
    std::u32string_view out, std::u32string_view src_text, const Analyzer& analyzer,
    std::string_view language, const std::vector<Replacement>& filtered_replacements,
    const PlaceholderByKey& org_by_okey) {
  MaskedText masked(out);
  apply_entity_surface_sync(masked, src_text, analyzer, language, filtered_replacements,
                            org_by_okey);
  return masked.take_text();
}

}  // namespace core::anonymization
