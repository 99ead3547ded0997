#include "core/anonymization/propagation/surface_sync_pairs.hpp"

#include <algorithm>
#include <unordered_set>

#include "core/anonymization/country_names.hpp"
#include "core/anonymization/identity/location_identity.hpp"
#include "core/anonymization/identity/org_identity.hpp"
#include "core/anonymization/party_labeled_names.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/propagation/canonical_placeholders.hpp"
#include "core/anonymization/propagation/propagable_surfaces.hpp"
#include "core/anonymization/replacements/numbered_builder.hpp"
#include "core/anonymization/span_index.hpp"
#include "core/text/find_character.hpp"
#include "core/text/multi_pattern.hpp"
#include "core/text/rare_words.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/view_map.hpp"

namespace core::anonymization {
namespace {

using text::Regex;

// 格鲁吉亚与: a place with the word behind it
const Regex RE_SHORT_IDEOGRAPHS("RE_SHORT_IDEOGRAPHS", UR"([\u4e00-\u9fff]{2,4})");
constexpr std::u32string_view GLUED_WORDS = U"与和在";

// 格鲁吉亚, in 位于格鲁吉亚国
const Regex RE_COUNTRY_STEM("RE_COUNTRY_STEM", UR"([\u4e00-\u9fff]{2,8})");
constexpr std::u32string_view LOCATED_IN = U"位于";
constexpr char32_t COUNTRY = U'国';
constexpr std::size_t MIN_STEM = 2;
constexpr std::size_t MAX_STEM = 8;

// The spelling under which an organization is registered and looked up.
std::u32string registered_org_name(std::u32string_view name) {
  auto compact = text::remove_space(name);
  std::erase_if(compact, is_joiner_fragment);
  return _normalize_party_org_identity_fragment(compact);
}

// What the text names behind 位于 and before 国: the stems of all such phrases.
std::unordered_set<std::u32string_view> located_in_stems(std::u32string_view text) {
  std::unordered_set<std::u32string_view> stems;
  for (auto at = text::find_rare(text, LOCATED_IN); at != text::NPOS;
       at = text::find_rare(text, LOCATED_IN, at + 1)) {
    const auto begin = at + LOCATED_IN.size();
    for (auto length = MIN_STEM; length <= MAX_STEM && begin + length < text.size(); ++length) {
      if (text[begin + length] == COUNTRY) stems.insert(text.substr(begin, length));
    }
  }
  return stems;
}

class Collector {
 public:
  Collector(std::u32string_view text, const std::vector<Replacement>& replacements,
            const PlaceholderByKey& okey_to_org, const PlaceholderByKey& okey_to_loc)
      : text_(text),
        replacements_(replacements),
        okey_to_org_(okey_to_org),
        okey_to_loc_(okey_to_loc) {}

  void register_spans();
  void register_party_names();
  void register_located_countries();
  std::vector<SurfacePlaceholder> pairs() const;

 private:
  void register_org(std::u32string_view name);
  void register_loc(const Replacement& span);
  void register_pair(std::u32string surface, std::u32string_view placeholder);
  bool could_register_org(std::u32string_view name) const;

  std::u32string_view text_;
  const std::vector<Replacement>& replacements_;
  const PlaceholderByKey& okey_to_org_;
  const PlaceholderByKey& okey_to_loc_;
  std::vector<SurfacePlaceholder> registered_;
  std::unordered_set<std::u32string> seen_;  // case-folded surfaces
};

void Collector::register_pair(std::u32string surface, std::u32string_view placeholder) {
  if (seen_.insert(text::case_fold(surface)).second) {
    registered_.push_back({std::move(surface), std::u32string(placeholder)});
  }
}

void Collector::register_org(std::u32string_view name) {
  auto surface = registered_org_name(name);
  if (!_looks_like_propagable_org_name(surface)) return;
  if (const auto* placeholder = okey_to_org_.find(text::case_fold(surface))) {
    register_pair(std::move(surface), *placeholder);
  }
}

void Collector::register_loc(const Replacement& span) {
  auto s = text::remove_space(text::slice(text_, span.start, span.end));
  if (!_looks_like_propagable_location_surface(s)) return;
  if (RE_SHORT_IDEOGRAPHS.full_match(s) && GLUED_WORDS.find(s.back()) != std::u32string::npos) {
    return;
  }
  const auto* placeholder = okey_to_loc_.find(_location_identity_key(text_, span.start, span.end));
  if (placeholder == nullptr) return;
  const auto country = _canonical_geo_country_identity_fragment(s);
  if (!country.empty() && s != country) return;
  register_pair(std::move(s), *placeholder);
}

// A surface that stands there again adds nothing.
void Collector::register_spans() {
  text::MetWords locations;
  text::MetWords orgs;
  for (const auto& r : replacements_) {
    const auto span = text::slice(text_, r.start, r.end);
    if (is_numbered_placeholder_of(r.placeholder, tag::ADDRESS)) {
      if (locations.insert(span)) register_loc(r);
      continue;
    }
    if (!is_numbered_placeholder_of(r.placeholder, tag::ORG) || !orgs.insert(span)) continue;
    register_org(span);
    if (std::none_of(span.begin(), span.end(), is_joiner_fragment)) continue;
    for (const auto piece : RE_JOINER_FRAGMENT_IN_ORG_SPAN.split(span)) {
      if (const auto name = text::strip(piece); !name.empty()) register_org(name);
    }
  }
}

// Whether register_org would add the name, were it called.
bool Collector::could_register_org(std::u32string_view name) const {
  const auto surface = registered_org_name(name);
  const auto folded = text::case_fold(surface);
  return okey_to_org_.contains(folded) && !seen_.contains(folded) &&
         _looks_like_propagable_org_name(surface);
}

// A labelled name counts when it stands, at least once, within an organization
// that was masked. Only names that would add something are searched for.
void Collector::register_party_names() {
  auto names = _collect_party_labeled_org_names(text_);
  std::erase_if(names, [&](const auto& name) { return !could_register_org(name); });
  if (names.empty()) return;
  std::vector<Replacement> orgs;
  std::copy_if(replacements_.begin(), replacements_.end(), std::back_inserter(orgs),
               [](const auto& r) { return is_numbered_placeholder_of(r.placeholder, tag::ORG); });
  const auto masked = SpanIndex::of(orgs);
  const text::RareWords search(std::vector<std::u32string_view>(names.begin(), names.end()));
  std::vector<std::size_t> cursor(names.size(), 0);
  std::vector<bool> is_masked(names.size(), false);
  search.scan(text_, [&](const text::MultiPattern::Hit& hit) {
    if (hit.start < cursor[hit.pattern]) return;
    cursor[hit.pattern] = hit.end;
    if (masked.covers(static_cast<Offset>(hit.start), static_cast<Offset>(hit.end))) {
      is_masked[hit.pattern] = true;
    }
  });
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (is_masked[i]) register_org(names[i]);
  }
}

// 位于格鲁吉亚国 carries the placeholder of the short form 格鲁吉亚.
void Collector::register_located_countries() {
  const auto stems = located_in_stems(text_);
  if (stems.empty()) return;
  for (const auto& r : replacements_) {
    if (!is_numbered_placeholder_of(r.placeholder, tag::ADDRESS)) continue;
    const auto s = text::strip(text::slice(text_, r.start, r.end));
    if (!stems.contains(s) || s.back() == COUNTRY || !RE_COUNTRY_STEM.full_match(s) ||
        is_non_propagable_location_surface(s)) {
      continue;
    }
    register_pair(std::u32string(s) + COUNTRY, r.placeholder);
  }
}

std::vector<SurfacePlaceholder> Collector::pairs() const {
  std::vector<SurfacePlaceholder> out;
  std::copy_if(registered_.begin(), registered_.end(), std::back_inserter(out), [](const auto& p) {
    return !is_non_propagable_location_surface(p.surface) ||
           !is_numbered_placeholder_of(p.placeholder, tag::ADDRESS);
  });
  std::stable_sort(out.begin(), out.end(), [](const auto& a, const auto& b) {
    return a.surface.size() > b.surface.size();
  });
  return out;
}

}  // namespace

std::vector<SurfacePlaceholder> collect_document_entity_surface_sync_pairs(
    std::u32string_view text, const Analyzer& analyzer, std::string_view language,
    const std::vector<Replacement>* replacements, const PlaceholderByKey* okey_to_org,
    const PlaceholderByKey* okey_to_loc) {
  std::vector<Replacement> built;
  if (replacements == nullptr) {
    built = build_numbered_replacements(text, analyzer, language);
    replacements = &built;
  }
  PlaceholderByKey org_map;
  if (okey_to_org == nullptr) {
    org_map = build_okey_to_canonical_org_placeholders(text, *replacements, language);
    okey_to_org = &org_map;
  }
  PlaceholderByKey loc_map;
  if (okey_to_loc == nullptr) {
    loc_map = build_okey_to_canonical_location_placeholders(text, *replacements, language);
    okey_to_loc = &loc_map;
  }
  Collector collector(text, *replacements, *okey_to_org, *okey_to_loc);
  collector.register_spans();
  collector.register_party_names();
  collector.register_located_countries();
  return collector.pairs();
}

std::vector<MappingEntry> collect_document_org_name_placeholder_pairs(std::u32string_view text,
                                                                      const Analyzer& analyzer,
                                                                      std::string_view language) {
  std::vector<MappingEntry> out;
  for (auto& pair : collect_document_entity_surface_sync_pairs(text, analyzer, language)) {
    if (is_numbered_placeholder_of(pair.placeholder, tag::ORG)) {
      out.push_back({std::move(pair.placeholder), std::move(pair.surface)});
    }
  }
  return out;
}

}  // namespace core::anonymization
