#include <algorithm>
#include <numeric>
#include <unordered_map>

#include "core/parties/party_names.hpp"

namespace core::parties {
namespace {

// Names that begin alike; where there are more, nobody can tell which is meant.
constexpr std::size_t MOST_ALIKE_SHORT_FORMS = 200;
using Buckets = std::unordered_map<std::u32string, std::vector<std::size_t>>;

constexpr std::size_t BRAND = 2;
constexpr std::size_t FIRST_WORDS = 4;

// Where a name is looked up: its first two ideographs, its first word.
std::u32string bucket_of(const OrganizationName& name) {
  if (name.script == Script::CHINESE) return name.core.substr(0, BRAND);
  return name.words.empty() ? std::u32string() : name.words.front();
}

Buckets index_of(const PartyNames& names) {
  Buckets out;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto& name = names.name(i);
    if (name.is_branch || name.script == Script::NONE) continue;
    out[bucket_of(name)].push_back(i);
    if (name.place_words == 0) continue;
    for (std::size_t w = 1; w < std::min(FIRST_WORDS, name.words.size()); ++w) {
      auto& bucket = out[name.words[w]];
      if (bucket.empty() || bucket.back() != i) bucket.push_back(i);
    }
  }
  return out;
}

// How much a name says: of two that may be one, the one that says more is the longer form.
std::size_t weight(const OrganizationName& name) {
  constexpr std::size_t PART = 8;
  return PART * (name.core.size() + name.words.size()) + (name.place.empty() ? 0 : 4) +
         (name.is_group ? 2 : 0) + (name.is_full() ? 1 : 0);
}

void unite_short_form(std::size_t i, const std::vector<std::size_t>& alike, PartyNames& names) {
  const auto& name = names.name(i);
  const auto own = names.party(i);
  auto party = own;
  bool is_short = false;
  for (const auto other : alike) {
    const auto& longer = names.name(other);
    if (other == i || names.party(other) == own || weight(longer) <= weight(name)) continue;
    const auto found = likeness(name, longer);
    if (found == Likeness::NONE) continue;
    if (party != own && party != names.party(other)) return;
    party = names.party(other);
    is_short = is_short || (found == Likeness::SHORT && names.has_full_name(other, name.script));
  }
  if (is_short) names.unite(party, i);
}

}  // namespace

void unite_short_forms(const std::vector<bool>& settled, PartyNames& names) {
  const auto buckets = index_of(names);
  std::vector<std::size_t> order(names.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  // The longer first: what is shorter may then stand for both as one.
  std::stable_sort(order.begin(), order.end(), [&names](std::size_t a, std::size_t b) {
    return weight(names.name(a)) > weight(names.name(b));
  });
  for (const auto i : order) {
    const auto& name = names.name(i);
    if (settled[i] || name.is_branch || name.script == Script::NONE) continue;
    const auto found = buckets.find(bucket_of(name));
    if (found == buckets.end() || found->second.size() > MOST_ALIKE_SHORT_FORMS) continue;
    unite_short_form(i, found->second, names);
  }
}

}  // namespace core::parties
