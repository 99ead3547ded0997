#include "core/anonymization/replacements/numbered_builder.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <unordered_map>

#include "core/anonymization/analyzer/language.hpp"
#include "core/anonymization/cleanup/filters.hpp"
#include "core/anonymization/constants.hpp"
#include "core/anonymization/country_names.hpp"
#include "core/anonymization/identity/date_money.hpp"
#include "core/anonymization/identity/location_identity.hpp"
#include "core/anonymization/identity/org_identity.hpp"
#include "core/anonymization/identity/tag_and_key.hpp"
#include "core/anonymization/party_labeled_names.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/replacements/hit_steps.hpp"
#include "core/anonymization/span_index.hpp"
#include "core/person_clustering.hpp"
#include "core/text/find_character.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/view_map.hpp"

namespace core::anonymization {
namespace {

using text::Regex;
using Number = std::int64_t;
using NumberByKey = std::unordered_map<std::u32string, Number>;
using Results = std::vector<RecognizerResult>;

// Nokia Oyj: the Finnish company form that analyzers leave out of the name.
const Regex RE_OYJ_SUFFIX("RE_OYJ_SUFFIX", UR"((?i)\s+Oyj\b)");
constexpr Offset OYJ_CONTEXT = 8;

// A sentence in which 轨道 is taken for a country's name by its neighbours.
constexpr std::u32string_view NO_COUNTRY_PHRASE = U"轨道交通技术的飞速发展";

// 中国和格鲁吉亚两国之间. What it ends in tells whether a text is worth a search.
constexpr std::u32string_view BETWEEN_TWO_COUNTRIES = U"两国之间";
const Regex RE_CHINA_AND_ANOTHER("RE_CHINA_AND_ANOTHER",
                                 UR"(中国\s*[和与及]\s*[\u4e00-\u9fffA-Za-z·]{2,24}\s*两国之间)");
constexpr Offset CHINA_LENGTH = 2;

// Placeholders read the same in documents of both languages, so that the
// numbered and the canonical ones agree.
constexpr std::string_view PLACEHOLDER_LOCALE = "zh";

void sort_by_start(auto& spans) {
  const auto begins_first = [](const auto& a, const auto& b) { return a.start < b.start; };
  if (std::is_sorted(spans.begin(), spans.end(), begins_first)) return;
  std::stable_sort(spans.begin(), spans.end(), begins_first);
}

// The hits that are numbered, without overlaps, sorted by start.
Results analyze(std::u32string_view text, const Analyzer& analyzer, std::string_view language,
                std::string_view profile) {
  const auto analysis_text = _normalize_fill_underscores_for_analysis(text);
  auto results = analyzer.analyze(analysis_text, language);
  for (const auto& step : hit_steps(profile, language)) {
    results = step.run(text, analysis_text, std::move(results));
  }
  sort_by_start(results);
  return results;
}

// Hands out numbers and collects the replacements.
class Numberer {
 public:
  Numberer(std::u32string_view text, const Results& results) : text_(text) {
    Results persons;
    std::copy_if(results.begin(), results.end(), std::back_inserter(persons),
                 [](const auto& r) { return r.entity_type == entity_type::PERSON; });
    person_numbers_ = person_span_to_placeholder_num(text, persons);
    auto& counter = counter_of(tag::NAME);
    for (const auto& [span, number] : person_numbers_) counter = std::max(counter, number);
    replacements_.reserve(results.size());
  }

  void number(const RecognizerResult& r);
  void expand_party_mentions();
  void add_china_phrases();

  std::vector<Replacement> finish() && {
    sort_by_start(replacements_);
    return std::move(replacements_);
  }

 private:
  struct Span {
    Offset start;
    Offset end;
  };
  // What was written over surfaces of one kind before; empty if it is not to be used again.
  using WrittenBySurface = text::ViewMap<std::u32string>;

  void number_person(const RecognizerResult& r);
  std::u32string organization(Span span);
  std::u32string location(Span span);
  std::u32string date(Span span);
  void number_money(Span span);
  void number_other(const RecognizerResult& r);

  std::u32string_view surface(Span span) const { return text::slice(text_, span.start, span.end); }
  Span with_oyj(Span span) const;
  Span with_brackets(Span span) const {
    const auto [start, end] = expand_span_to_absorb_wrapping_brackets(text_, span.start, span.end);
    return {start, end};
  }
  std::u32string bare_country(Span span) const;

  // One counter for each tag, so that two values never share a placeholder.
  Number& counter_of(std::string_view tag) {
    return counters_.try_emplace(std::string(tag)).first->second;
  }
  Number next_number(std::string_view tag) { return ++counter_of(tag); }
  Number number_of(NumberByKey& by_key, std::u32string key, std::string_view tag) {
    const auto [entry, is_new] = by_key.try_emplace(std::move(key));
    if (is_new) entry->second = next_number(tag);
    return entry->second;
  }
  static std::u32string placeholder(std::string_view tag, Number number) {
    return format_numbered_placeholder(tag, number, PLACEHOLDER_LOCALE);
  }
  void add(Span span, std::u32string written) {
    replacements_.push_back({span.start, span.end, std::move(written)});
  }
  // What a kind of entities is keyed by is the surface and nothing around it, so that
  // equal surfaces get what the first one got.
  template <class Write>
  void add_by_surface(WrittenBySurface& known, Span span, Write write) {
    auto& written = known.add(surface(span)).first.value;
    if (written.empty()) written = write(span);
    add(span, written);
  }

  std::u32string_view text_;
  std::map<std::pair<Offset, Offset>, Number> person_numbers_;
  std::map<std::string, Number, std::less<>> counters_;
  NumberByKey date_num_by_key_;
  NumberByKey location_num_by_key_;
  NumberByKey org_num_by_key_;
  std::map<std::string, NumberByKey, std::less<>> generic_num_by_tag_key_;
  WrittenBySurface organizations_;
  WrittenBySurface locations_;
  WrittenBySurface dates_;
  WrittenBySurface amounts_;
  std::map<std::string, WrittenBySurface, std::less<>> others_by_type_;
  std::vector<Replacement> replacements_;
};

void Numberer::number(const RecognizerResult& r) {
  const Span span{r.start, r.end};
  if (r.entity_type == entity_type::PERSON) {
    number_person(r);
  } else if (r.entity_type == entity_type::CARD_LAST4) {
    add(span, format_card_last4_placeholder(surface(span)));
  } else if (r.entity_type == entity_type::ORGANIZATION) {
    add_by_surface(organizations_, with_oyj(span), [this](Span s) { return organization(s); });
  } else if (r.entity_type == entity_type::LOCATION) {
    add_by_surface(locations_, with_brackets(span), [this](Span s) { return location(s); });
  } else if (r.entity_type == entity_type::DATE_TIME) {
    add_by_surface(dates_, span, [this](Span s) { return date(s); });
  } else if (r.entity_type == entity_type::MONEY) {
    number_money(with_brackets(span));
  } else {
    number_other(r);
  }
}

// A span without an identity, or one that the person map lacks, is a person of its own.
void Numberer::number_person(const RecognizerResult& r) {
  const auto found = person_numbers_.find({r.start, r.end});
  const Number number = found != person_numbers_.end() ? found->second : next_number(tag::NAME);
  add({r.start, r.end}, placeholder(tag::NAME, number));
}

Numberer::Span Numberer::with_oyj(Span span) const {
  const auto behind = text::slice(text_, span.end, saturating_add(span.end, OYJ_CONTEXT));
  if (behind.empty() || !text::is_space(behind.front())) return span;
  if (const auto oyj = RE_OYJ_SUFFIX.match(behind)) span.end += static_cast<Offset>(oyj->end());
  return span;
}

// The country that an organization span consists of; empty if it is none, or
// if countries are not masked as addresses.
std::u32string Numberer::bare_country(Span span) const {
  const auto s = surface(span);
  auto country = _canonical_geo_country_identity_fragment(s);
  if (country.empty()) return country;
  if (text::remove_space(s).find(NO_COUNTRY_PHRASE) != std::u32string::npos) return {};
  const bool is_address =
      _geo_country_mask_as_address_enabled() && _org_span_is_bare_geo_country(s, country);
  return is_address ? country : std::u32string();
}

std::u32string Numberer::organization(Span span) {
  if (const auto country = bare_country(span); !country.empty()) {
    return placeholder(tag::ADDRESS,
                       number_of(location_num_by_key_, text::case_fold(country), tag::ADDRESS));
  }
  auto key = _organization_identity_key(text_, span.start, span.end);
  return placeholder(tag::ORG, number_of(org_num_by_key_, std::move(key), tag::ORG));
}

std::u32string Numberer::location(Span span) {
  auto key = _location_identity_key(text_, span.start, span.end);
  return placeholder(tag::ADDRESS, number_of(location_num_by_key_, std::move(key), tag::ADDRESS));
}

std::u32string Numberer::date(Span span) {
  auto key = _datetime_identity_key(text_, span.start, span.end);
  return placeholder(tag::DATE, number_of(date_num_by_key_, std::move(key), tag::DATE));
}

// An amount without an identity is one of its own.
void Numberer::number_money(Span span) {
  auto& written = amounts_.add(surface(span)).first.value;
  if (!written.empty()) return add(span, written);
  auto key = _generic_entity_identity_key(entity_type::MONEY, text_, span.start, span.end);
  auto& by_key = generic_num_by_tag_key_[std::string(tag::MONEY)];
  const bool has_identity = !key.empty();
  const auto number =
      has_identity ? number_of(by_key, std::move(key), tag::MONEY) : next_number(tag::MONEY);
  auto phrase = _money_replacement_phrase(surface(span), placeholder(tag::MONEY, number));
  if (has_identity) written = phrase;
  add(span, std::move(phrase));
}

void Numberer::number_other(const RecognizerResult& r) {
  auto known = others_by_type_.find(r.entity_type);
  if (known == others_by_type_.end()) {
    known = others_by_type_.emplace(r.entity_type, WrittenBySurface()).first;
  }
  const Span span{r.start, r.end};
  auto& written = known->second.add(surface(span)).first.value;
  if (!written.empty()) return add(span, written);
  const auto tag = tag_of_entity_type(r.entity_type);
  auto key = _generic_entity_identity_key(r.entity_type, text_, r.start, r.end);
  const bool has_identity = !key.empty();
  const auto number = has_identity ? number_of(generic_num_by_tag_key_[tag], std::move(key), tag)
                                   : next_number(tag);
  auto numbered = placeholder(tag, number);
  if (has_identity) written = numbered;
  add(span, std::move(numbered));
}

void Numberer::expand_party_mentions() {
  auto further = further_party_mentions({.text = text_,
                                         .replacements = replacements_,
                                         .org_num_by_key = org_num_by_key_,
                                         .org_counter = counter_of(tag::ORG),
                                         .placeholder_locale = PLACEHOLDER_LOCALE});
  std::move(further.begin(), further.end(), std::back_inserter(replacements_));
}

void Numberer::add_china_phrases() {
  if (text::find_rare(text_, BETWEEN_TWO_COUNTRIES) == text::NPOS) return;
  const auto phrases = RE_CHINA_AND_ANOTHER.find_all(text_);
  if (phrases.empty()) return;
  const auto taken = SpanIndex::of(replacements_);
  for (const auto& phrase : phrases) {
    const auto start = static_cast<Offset>(phrase.start());
    const Span china{start, start + CHINA_LENGTH};
    if (!taken.overlaps(china.start, china.end)) add(china, location(china));
  }
}

}  // namespace

std::vector<Replacement> build_numbered_replacements(std::u32string_view text,
                                                     const Analyzer& analyzer,
                                                     std::string_view language,
                                                     std::string_view strategy_profile) {
  const auto resolved = resolve_analyze_language(language, text);
  const auto results = analyze(text, analyzer, resolved, strategy_profile);
  Numberer numberer(text, results);
  for (const auto& r : results) numberer.number(r);
  numberer.expand_party_mentions();
  numberer.add_china_phrases();
  return std::move(numberer).finish();
}

}  // namespace core::anonymization
