#include "core/anonymization/cleanup/overlap.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/anonymization/span_index.hpp"
#include "core/errors.hpp"

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

constexpr Offset LONG_GUARD_LENGTH = 6;

bool is_guarded(const RecognizerResult& r) {
  return CONTIGUOUS_ENTITY_TYPES_FOR_NESTED_GUARD.contains(r.entity_type);
}

Offset length(const RecognizerResult& r) { return saturating_subtract(r.end, r.start); }

// The positions, the strongest result first, equal ones in their order.
std::vector<std::size_t> by_strength(const std::vector<RecognizerResult>& results,
                                     const std::vector<std::size_t>& positions) {
  std::vector<std::pair<std::tuple<int, double, Offset>, std::size_t>> keyed;
  keyed.reserve(positions.size());
  for (const std::size_t i : positions) keyed.emplace_back(_overlap_sort_key(results[i]), i);
  std::stable_sort(keyed.begin(), keyed.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  std::vector<std::size_t> order;
  order.reserve(keyed.size());
  for (const auto& [key, position] : keyed) order.push_back(position);
  return order;
}

std::vector<RecognizerResult> take(std::vector<RecognizerResult>& results,
                                   const std::vector<std::size_t>& positions) {
  std::vector<RecognizerResult> out;
  out.reserve(positions.size());
  for (const std::size_t i : positions) out.push_back(std::move(results[i]));
  return out;
}

}  // namespace

std::span<const TypePriority> entity_overlap_priorities() { return ENTITY_OVERLAP_PRIORITY; }

bool is_long_entity(const RecognizerResult& r) {
  return is_guarded(r) && length(r) >= LONG_GUARD_LENGTH;
}

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

std::vector<std::size_t> positions_outside_long_entities(
    const std::vector<RecognizerResult>& results) {
  std::vector<RecognizerResult> guards;
  std::copy_if(results.begin(), results.end(), std::back_inserter(guards), is_long_entity);
  const auto index = SpanIndex::of(guards);
  std::vector<std::size_t> positions;
  positions.reserve(results.size());
  for (std::size_t i = 0; i < results.size(); ++i) {
    const auto& r = results[i];
    if (!(is_guarded(r) && length(r) == 1 && index.covers(r.start, r.end))) positions.push_back(i);
  }
  return positions;
}

std::vector<std::size_t> positions_without_overlaps(const std::vector<RecognizerResult>& results) {
  std::vector<Offset> starts;
  starts.reserve(results.size());
  for (const auto& r : results) starts.push_back(r.start);
  SpanIndex taken(std::move(starts));
  std::vector<std::size_t> kept;
  kept.reserve(results.size());
  for (const std::size_t i : by_strength(results, positions_outside_long_entities(results))) {
    if (taken.overlaps(results[i].start, results[i].end)) continue;
    taken.add(results[i].start, results[i].end);
    kept.push_back(i);
  }
  std::stable_sort(kept.begin(), kept.end(), [&](std::size_t a, std::size_t b) {
    return results[a].start < results[b].start;
  });
  return kept;
}

std::vector<RecognizerResult> _drop_single_char_entity_inside_long_entity(
    std::vector<RecognizerResult> results) {
  return take(results, positions_outside_long_entities(results));
}

std::vector<RecognizerResult> _resolve_overlaps(std::vector<RecognizerResult> results) {
  return take(results, positions_without_overlaps(results));
}

}  // namespace core::anonymization
