#include "core/parties/party_names.hpp"

#include <algorithm>
#include <utility>

#include "core/anonymization/identity/org_identity.hpp"

namespace core::parties {

namespace {

bool lists(const std::vector<std::u32string>& surfaces, std::u32string_view surface) {
  return std::find(surfaces.begin(), surfaces.end(), surface) != surfaces.end();
}

}  // namespace

std::size_t PartyNames::add(std::u32string_view surface, Offset start) {
  auto& known = number_by_surface_.add(surface).first.value;
  if (known) return *known;
  const auto number = read(surface, start);
  if (lists(names_[number].surfaces, surface)) known = number;
  return number;
}

std::size_t PartyNames::read(std::u32string_view surface, Offset start) {
  auto key =
      anonymization::_organization_identity_key(surface, 0, static_cast<Offset>(surface.size()));
  const auto [found, is_new] = number_by_key_.try_emplace(key, names_.size());
  const auto number = found->second;
  if (is_new) {
    Name name;
    name.key = std::move(key);
    name.start = start;
    name.parent = number;
    names_.push_back(std::move(name));
  }
  auto& name = names_[number];
  if (lists(name.surfaces, surface)) return number;
  constexpr std::size_t MOST_SURFACES = 16;
  if (name.surfaces.size() < MOST_SURFACES) name.surfaces.emplace_back(surface);
  // Acme and Acme Limited have one key: the full one tells more.
  if (auto parsed = parse_organization_name(surface); is_new || !name.parsed.is_full()) {
    name.parsed = std::move(parsed);
    const bool anchor =
        name.parsed.is_full() || name.parsed.is_branch || name.parsed.is_institution;
    if (anchor && name.parsed.script == Script::CHINESE) name.chinese = number;
    if (anchor && name.parsed.script == Script::LATIN) name.latin = number;
  }
  return number;
}

std::size_t PartyNames::party(std::size_t i) const {
  while (names_[i].parent != i) {
    names_[i].parent = names_[names_[i].parent].parent;
    i = names_[i].parent;
  }
  return i;
}

bool PartyNames::has_full_name(std::size_t i, Script script) const {
  const auto& first = names_[party(i)];
  return (script == Script::CHINESE ? first.chinese : first.latin) != NO_NAME;
}

bool PartyNames::agree(std::size_t a, std::size_t b) const {
  if (a == NO_NAME || b == NO_NAME) return true;
  const auto& x = name(a);
  const auto& y = name(b);
  if (x.is_branch != y.is_branch) return false;
  if (x.script != y.script) return true;
  return x.is_branch || x.is_institution || is_same_name(x, y) ||
         likeness(x, y) == Likeness::SHORT || likeness(y, x) == Likeness::SHORT;
}

bool PartyNames::unite(std::size_t a, std::size_t b) {
  a = party(a);
  b = party(b);
  if (a == b) return true;
  if (b < a) std::swap(a, b);
  auto& x = names_[a];
  auto& y = names_[b];
  for (const auto p : {x.chinese, x.latin}) {
    if (!agree(p, y.chinese) || !agree(p, y.latin)) return false;
  }
  y.parent = a;
  const auto take = [this](std::size_t& to, std::size_t from) {
    if (to == NO_NAME || (from != NO_NAME && !name(to).is_full() && name(from).is_full())) {
      to = from;
    }
  };
  take(x.chinese, y.chinese);
  take(x.latin, y.latin);
  return true;
}

std::vector<anonymization::KnownParty> PartyNames::known_parties() const {
  std::vector<std::vector<std::size_t>> members(names_.size());
  for (std::size_t i = 0; i < names_.size(); ++i) members[party(i)].push_back(i);
  std::vector<anonymization::KnownParty> out;
  for (const auto& group : members) {
    if (group.size() < 2) continue;
    const auto& first = names_[group.front()];
    auto chosen = std::min(first.chinese, first.latin);
    if (chosen == NO_NAME) {
      chosen = *std::max_element(group.begin(), group.end(), [this](auto a, auto b) {
        return names_[a].key.size() < names_[b].key.size();
      });
    }
    anonymization::KnownParty party{names_[chosen].key, {}};
    for (const auto i : group) {
      if (i == chosen) continue;
      const auto& surfaces = names_[i].surfaces;
      party.variants.insert(party.variants.end(), surfaces.begin(), surfaces.end());
    }
    out.push_back(std::move(party));
  }
  return out;
}

}  // namespace core::parties
