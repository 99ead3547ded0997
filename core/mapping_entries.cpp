#include "core/mapping_entries.hpp"

#include <algorithm>

#include "core/document_text.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {

std::vector<MappingEntry> mapping_entries_from_canonical_replacements(
    std::u32string_view text, const std::vector<Replacement>& filtered_replacements,
    const PlaceholderByKey& org_by_okey, std::string_view language) {
  return mapping_entries_from_replacements(
      text, canonical_replacements(text, filtered_replacements, org_by_okey, language));
}

std::vector<MappingEntry> mapping_entries_from_replacements(std::u32string_view text,
                                                            std::vector<Replacement> replacements) {
  const auto begins_first = [](const auto& a, const auto& b) { return a.start < b.start; };
  if (!std::is_sorted(replacements.begin(), replacements.end(), begins_first)) {
    std::stable_sort(replacements.begin(), replacements.end(), begins_first);
  }
  std::vector<MappingEntry> out;
  out.reserve(replacements.size());
  for (auto& r : replacements) {
    out.push_back({std::move(r.placeholder), std::u32string(text::slice(text, r.start, r.end))});
  }
  return out;
}

}  // namespace core::anonymization
