#include "core/anonymization/cleanup/overlap.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/anonymization/span_index.hpp"
#include "core/errors.hpp"
#include "core/text/word_set.hpp"

namespace core::anonymization {
namespace {

constexpr TypePriority ENTITY_OVERLAP_PRIORITY[] = {{"GAME", 101},
                                                    {"IT_PROTOCOL", 100},
                                                    {"PERSON", 100},
                                                    {"SOCIAL_ACCOUNT", 95},
                                                    {"QUAL_CODE", 94},
                                                    {"STOCK_TICKER", 93},
                                                    {"ORGANIZATION", 92},
                                                    {"BANK_ACCOUNT", 91},
                                                    {"CHINA_USCC", 91},
                                                    {"PHONE_NUMBER", 90},
                                                    {"EMAIL_ADDRESS", 90},
                                                    {"CREDIT_CARD", 88},
                                                    {"US_BANK_NUMBER", 88},
                                                    {"IBAN_CODE", 88},
                                                    {"US_SSN", 86},
                                                    {"US_PASSPORT", 86},
                                                    {"US_DRIVER_LICENSE", 86},
                                                    {"US_ITIN", 86},
                                                    {"IP_ADDRESS", 84},
                                                    {"LOCATION", 80},
                                                    {"GPE", 78},
                                                    {"NRP", 76},
                                                    {"YEAR", 62},
                                                    {"DATE_TIME", 60},
                                                    {"MONEY", 58},
                                                    {"PERCENT", 58},
                                                    {"QUANTITY", 58},
                                                    {"PRODUCT", 58},
                                                    {"CARD_LAST4", 56}};

// Kinds whose long hits protect their inside from hits of one character.
constexpr auto CONTIGUOUS_ENTITY_TYPES_FOR_NESTED_GUARD =
    text::type_names({"PERSON", "ORGANIZATION", "LOCATION", "GPE"});
constexpr Offset LONG_GUARD_LENGTH = 6;

bool is_guarded(const RecognizerResult& r) {
  return CONTIGUOUS_ENTITY_TYPES_FOR_NESTED_GUARD.contains(r.entity_type);
}

Offset length(const RecognizerResult& r) { return saturating_subtract(r.end, r.start); }

// The results' positions, the strongest first, equal ones in input order.
std::vector<std::size_t> by_strength(const std::vector<RecognizerResult>& results) {
  std::vector<std::tuple<int, double, Offset>> keys;
  keys.reserve(results.size());
  for (const auto& r : results) keys.push_back(_overlap_sort_key(r));
  std::vector<std::size_t> order(results.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return keys[a] > keys[b]; });
  return order;
}

}  // namespace

std::span<const TypePriority> entity_overlap_priorities() { return ENTITY_OVERLAP_PRIORITY; }

int _overlap_entity_priority(std::string_view entity_type) {
  const auto* row =
      std::find_if(std::begin(ENTITY_OVERLAP_PRIORITY), std::end(ENTITY_OVERLAP_PRIORITY),
                   [&](const TypePriority& p) { return p.entity_type == entity_type; });
  return row == std::end(ENTITY_OVERLAP_PRIORITY) ? DEFAULT_OVERLAP_PRIORITY : row->priority;
}

std::tuple<int, double, Offset> _overlap_sort_key(const RecognizerResult& r) {
  if (std::isnan(r.score)) {
    throw ValueError("The score of the " + r.entity_type + " result at " + std::to_string(r.start) +
                     ".." + std::to_string(r.end) + " is not a number");
  }
  return {_overlap_entity_priority(r.entity_type), r.score, length(r)};
}

std::vector<RecognizerResult> _drop_single_char_entity_inside_long_entity(
    std::vector<RecognizerResult> results) {
  std::vector<RecognizerResult> guards;
  std::copy_if(results.begin(), results.end(), std::back_inserter(guards),
               [](const auto& r) { return is_guarded(r) && length(r) >= LONG_GUARD_LENGTH; });
  if (guards.empty()) return results;
  const auto index = SpanIndex::of(guards);
  std::erase_if(results, [&](const RecognizerResult& r) {
    return is_guarded(r) && length(r) == 1 && index.covers(r.start, r.end);
  });
  return results;
}

std::vector<RecognizerResult> _resolve_overlaps(std::vector<RecognizerResult> results) {
  results = _drop_single_char_entity_inside_long_entity(std::move(results));
  std::vector<Offset> starts;
  starts.reserve(results.size());
  for (const auto& r : results) starts.push_back(r.start);
  SpanIndex taken(std::move(starts));
  std::vector<RecognizerResult> kept;
  kept.reserve(results.size());
  for (const std::size_t i : by_strength(results)) {
    auto& r = results[i];
    if (taken.overlaps(r.start, r.end)) continue;
    taken.add(r.start, r.end);
    kept.push_back(std::move(r));
  }
  std::stable_sort(kept.begin(), kept.end(),
                   [](const auto& a, const auto& b) { return a.start < b.start; });
  return kept;
}

}  // namespace core::anonymization
