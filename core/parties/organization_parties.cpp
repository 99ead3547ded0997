#include "core/parties/organization_parties.hpp"

#include <algorithm>

#include "core/anonymization/doc_alias_scan.hpp"
#include "core/parties/party_names.hpp"
#include "core/text/unicode.hpp"

namespace core::parties {
namespace {

using anonymization::RecognizerResult;

struct OrganizationPlace {
  Offset start;
  Offset end;
  Offset defined_at;
};

// Organizations in text order, none within another; of equals the definition.
std::vector<OrganizationPlace> outermost(std::u32string_view text,
                                         const std::vector<RecognizerResult>& hits) {
  std::vector<OrganizationPlace> found;
  for (const auto& hit : anonymization::scan_defined_alias_candidates(text)) {
    found.push_back({hit.start, hit.end, hit.defined_at});
  }
  for (const auto& hit : hits) {
    if (hit.entity_type != anonymization::entity_type::ORGANIZATION) continue;
    found.push_back({hit.start, hit.end, hit.defined_at});
  }
  std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
    return a.start != b.start ? a.start < b.start : a.end > b.end;
  });
  std::vector<OrganizationPlace> out;
  for (const auto& hit : found) {
    if (out.empty() || hit.start >= out.back().end) out.push_back(hit);
  }
  return out;
}

}  // namespace

std::vector<anonymization::KnownParty> collect_organizations(
    std::u32string_view text, const std::vector<RecognizerResult>& hits) {
  PartyNames names;
  std::vector<Mention> mentions;
  for (const auto& hit : outermost(text, hits)) {
    const auto surface = text::strip(text::slice(text, hit.start, hit.end));
    if (surface.empty()) continue;
    mentions.push_back({hit.start, hit.end, names.add(surface, hit.start), hit.defined_at});
  }
  const auto settled = unite_by_text(text, mentions, names);
  unite_by_pinyin(names);
  unite_short_forms(settled, names);
  unite_branches(names);
  return names.known_parties();
}

}  // namespace core::parties
