#include "cli/review_table.hpp"

#include <algorithm>

#include "cli/table.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

using core::restore::Entry;

std::string kind_of(const Entry& entry) {
  const auto parsed = core::anonymization::parse_numbered_placeholder(entry.placeholder);
  return parsed ? parsed->tag : std::string(core::anonymization::entity_type::CARD_LAST4);
}

// Which surfaces were masked; the others are text of the document.
std::vector<bool> masked_surfaces(const Entry& entry) {
  const auto key = core::restore::placeholder_key(entry.placeholder);
  std::vector<bool> masked;
  for (const auto& surface : entry.surfaces) {
    masked.push_back(core::restore::placeholder_key(surface) != key);
  }
  return masked;
}

}  // namespace

std::string review_table(const core::restore::Mapping& mapping) {
  Table table({{"KIND"}, {"PLACEHOLDER"}, {"COUNT", Align::RIGHT}, {"SURFACES"}});
  for (const auto& entry : mapping.entries) {
    const auto masked = masked_surfaces(entry);
    std::string surfaces;
    for (std::size_t i = 0; i < masked.size(); ++i) {
      if (!masked[i]) continue;
      surfaces += (surfaces.empty() ? "" : " | ") + core::text::encode_utf8(entry.surfaces[i]);
    }
    if (surfaces.empty()) continue;
    const auto own = std::count_if(
        entry.occurrences.begin(), entry.occurrences.end(),
        [&](const core::restore::Occurrence& occurrence) { return !masked[occurrence.surface]; });
    table.add({kind_of(entry), core::text::encode_utf8(entry.placeholder),
               std::to_string(entry.count - static_cast<std::size_t>(own)), surfaces});
  }
  return table.text();
}

}  // namespace cli
