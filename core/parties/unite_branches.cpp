#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "core/parties/party_names.hpp"

namespace core::parties {
namespace {

// Branches whose names end alike; where there are more, nobody can tell which is meant.
constexpr std::size_t MOST_ALIKE_BRANCHES = 32;
constexpr std::size_t ENDING = 4;  // characters: 岳麓支行

bool is_place(std::u32string_view name) {
  if (name.empty()) return true;
  // A brand must stand behind a place for it to be read as one.
  return parse_organization_name(std::u32string(name) + U"岳麓").place == name;
}

// Whether `name` is a shorter form of the branch `longer`: 驭川遵义分公司, 湘沅银行岳麓支行.
bool is_short_for(const OrganizationName& name, const OrganizationName& longer) {
  if (longer.company.empty()) return false;
  auto company = name.company;
  if (company.empty()) {
    if (!name.branch.ends_with(longer.branch)) return false;
    company = name.branch.substr(0, name.branch.size() - longer.branch.size());
  } else {
    if (!longer.branch.ends_with(name.branch)) return false;
    const auto more = longer.branch.size() - name.branch.size();
    if (!is_place(std::u32string_view(longer.branch).substr(0, more))) return false;
  }
  const auto own = parse_organization_name(company);
  const auto full = parse_organization_name(longer.company);
  return is_same_name(own, full) || likeness(own, full) == Likeness::SHORT;
}

void unite_branch(std::size_t i, const std::vector<std::size_t>& alike, PartyNames& names) {
  std::vector<std::size_t> found;
  std::copy_if(alike.begin(), alike.end(), std::back_inserter(found), [&](std::size_t other) {
    return other != i && names.surface(other).size() > names.surface(i).size() &&
           is_short_for(names.name(i), names.name(other));
  });
  const bool one = std::all_of(found.begin(), found.end(), [&](std::size_t other) {
    return names.party(other) == names.party(found.front());
  });
  if (!found.empty() && one) names.unite(found.front(), i);
}

}  // namespace

void unite_branches(PartyNames& names) {
  std::unordered_map<std::u32string, std::vector<std::size_t>> by_ending;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto& name = names.name(i);
    if (name.script != Script::CHINESE || !name.is_branch || name.branch.size() < ENDING) continue;
    by_ending[name.branch.substr(name.branch.size() - ENDING)].push_back(i);
  }
  for (auto& [ending, alike] : by_ending) {
    if (alike.size() > MOST_ALIKE_BRANCHES) continue;
    // The longer first, as a shorter one may then stand for several that are one.
    std::stable_sort(alike.begin(), alike.end(), [&names](std::size_t a, std::size_t b) {
      return names.surface(a).size() > names.surface(b).size();
    });
    for (const auto i : alike) unite_branch(i, alike, names);
  }
}

}  // namespace core::parties
