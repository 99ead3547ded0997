#include "core/matter/entity_names.hpp"

#include <algorithm>

#include "core/anonymization/identity/tag_and_key.hpp"
#include "core/anonymization/result.hpp"
#include "core/parties/organization_name.hpp"
#include "core/text/unicode.hpp"

namespace core::matter {
namespace {

using anonymization::Offset;

bool is_decisive_organization(std::u32string_view surface) {
  const auto name = parties::parse_organization_name(surface);
  return name.is_full() || name.is_branch || name.is_institution;
}

bool is_decisive_person(const PersonName& name) {
  constexpr std::size_t LONG_TRANSLITERATION = 4;
  if (!name.titles.empty() || name.names.empty()) return false;
  const auto& first = name.names.front();
  if (name.names.size() > 1) return first.size() > 1 && name.names.back().size() > 1;
  if (!text::contains_ideograph(first)) return false;
  const auto chinese = parse_chinese_name(first);
  if (!chinese.title.empty()) return false;
  return !chinese.surname.empty() ? !chinese.given.empty() : first.size() >= LONG_TRANSLITERATION;
}

// The words between the first and the last name; one letter stands for a word.
bool middle_names_differ(const PersonName& a, const PersonName& b) {
  const auto most = std::min(a.names.size(), b.names.size());
  if (most <= 2 || a.names.front() != b.names.front() || a.names.back() != b.names.back()) {
    return false;
  }
  for (std::size_t i = 1; i + 1 < most; ++i) {
    const auto& x = a.names[i];
    const auto& y = b.names[i];
    if (!x.starts_with(y) && !y.starts_with(x)) return true;
    if (x != y && x.size() > 1 && y.size() > 1) return true;
  }
  return false;
}

}  // namespace

EntityName entity_name(std::string_view tag, std::u32string_view surface) {
  EntityName name;
  name.surface = surface;
  // An amount without a figure has no name.
  if (tag == anonymization::tag::MONEY) {
    name.key = anonymization::_generic_entity_identity_key(tag, surface, 0,
                                                           static_cast<Offset>(surface.size()));
    return name;
  }
  name.key = anonymization::_global_placeholder_tag_and_key(tag, surface, 0,
                                                            static_cast<Offset>(surface.size()))
                 .key;
  if (tag == anonymization::tag::ORG) name.decisive = is_decisive_organization(surface);
  if (tag == anonymization::tag::NAME) {
    name.person = parse_person_name(surface);
    name.decisive = is_decisive_person(name.person);
  }
  return name;
}

bool contradict(const std::vector<EntityName>& a, const std::vector<EntityName>& b) {
  return std::any_of(a.begin(), a.end(), [&b](const EntityName& x) {
    return std::any_of(b.begin(), b.end(), [&x](const EntityName& y) {
      return middle_names_differ(x.person, y.person);
    });
  });
}

bool is_short_form(std::string_view tag, const EntityName& name, const EntityName& decisive) {
  if (tag != anonymization::tag::ORG) return false;
  const auto shorter = parties::parse_organization_name(name.surface);
  const auto longer = parties::parse_organization_name(decisive.surface);
  return parties::likeness(shorter, longer) == parties::Likeness::SHORT ||
         parties::abbreviates(name.surface, decisive.surface);
}

}  // namespace core::matter
