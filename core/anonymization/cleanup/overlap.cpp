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

std::vector<RecognizerResult> take(std::vector<RecognizerResult> results,
                                   const std::vector<std::size_t>& positions) {
  const bool all_in_order =
      positions.size() == results.size() && std::is_sorted(positions.begin(), positions.end());
  if (all_in_order) return results;
  std::vector<RecognizerResult> out;
  out.reserve(positions.size());
  for (const std::size_t i : positions) out.push_back(std::move(results[i]));
  return out;
}

std::vector<std::size_t> outside_long_entities(const std::vector<RecognizerResult>& results,
                                               std::vector<std::size_t> positions) {
  struct Guard {
    Offset start;
    Offset end;
  };
  std::vector<Guard> guards;
  for (const std::size_t i : positions) {
    if (is_long_entity(results[i])) guards.push_back({results[i].start, results[i].end});
  }
  const auto index = SpanIndex::of(guards);
  std::erase_if(positions, [&](std::size_t i) {
    const auto& r = results[i];
    return length(r) == 1 && is_guarded(r) && index.covers(r.start, r.end);
  });
  return positions;
}

void order_by_start(const std::vector<RecognizerResult>& results,
                    std::vector<std::size_t>& positions) {
  const auto begins_first = [&](std::size_t a, std::size_t b) {
    return results[a].start < results[b].start;
  };
  if (std::is_sorted(positions.begin(), positions.end(), begins_first)) return;
  std::stable_sort(positions.begin(), positions.end(), begins_first);
}

// Of the results at these positions (ascending) those that stay, by start.
std::vector<std::size_t> strongest(const std::vector<RecognizerResult>& results,
                                   std::vector<std::size_t> positions) {
  std::vector<Offset> starts;
  starts.reserve(positions.size());
  for (const std::size_t i : positions) starts.push_back(results[i].start);
  SpanIndex taken(std::move(starts));
  std::vector<std::size_t> kept;
  kept.reserve(positions.size());
  for (const std::size_t i :
       by_strength(results, outside_long_entities(results, std::move(positions)))) {
    if (taken.overlaps(results[i].start, results[i].end)) continue;
    taken.add(results[i].start, results[i].end);
    kept.push_back(i);
  }
  order_by_start(results, kept);
  return kept;
}

std::vector<std::size_t> all_positions(const std::vector<RecognizerResult>& results) {
  std::vector<std::size_t> positions(results.size());
  std::iota(positions.begin(), positions.end(), std::size_t{0});
  return positions;
}

// Takes those out of the positions (by start) whose results overlap another one, and
// returns them in ascending order. Every result has a length.
std::vector<std::size_t> take_contested(const std::vector<RecognizerResult>& results,
                                        std::vector<std::size_t>& positions) {
  std::vector<std::size_t> contested;
  std::size_t left = 0;
  for (std::size_t from = 0; from < positions.size();) {
    // from..to overlap each other, directly or through others.
    Offset end = results[positions[from]].end;
    std::size_t to = from + 1;
    for (; to < positions.size() && results[positions[to]].start < end; ++to) {
      end = std::max(end, results[positions[to]].end);
    }
    if (to == from + 1) {
      positions[left++] = positions[from];
    } else {
      for (std::size_t i = from; i < to; ++i) contested.push_back(positions[i]);
    }
    from = to;
  }
  positions.resize(left);
  std::sort(contested.begin(), contested.end());
  return contested;
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
  return outside_long_entities(results, all_positions(results));
}

// Nearly every result overlaps no other one, and what does, does so with few: only those
// are weighed. A result without a length may overlap without being reached by a walk from
// start to start, and one without a score is refused in the order of weighing.
std::vector<std::size_t> positions_without_overlaps(const std::vector<RecognizerResult>& results) {
  const bool plain = std::all_of(results.begin(), results.end(), [](const auto& r) {
    return r.start < r.end && !std::isnan(r.score);
  });
  auto positions = all_positions(results);
  if (!plain) return strongest(results, std::move(positions));
  order_by_start(results, positions);
  auto contested = take_contested(results, positions);
  if (contested.empty()) return positions;
  const auto kept = strongest(results, std::move(contested));
  std::vector<std::size_t> out(positions.size() + kept.size());
  std::merge(positions.begin(), positions.end(), kept.begin(), kept.end(), out.begin(),
             [&](std::size_t a, std::size_t b) { return results[a].start < results[b].start; });
  return out;
}

std::vector<RecognizerResult> _drop_single_char_entity_inside_long_entity(
    std::vector<RecognizerResult> results) {
  const auto positions = positions_outside_long_entities(results);
  return take(std::move(results), positions);
}

std::vector<RecognizerResult> _resolve_overlaps(std::vector<RecognizerResult> results) {
  const auto positions = positions_without_overlaps(results);
  return take(std::move(results), positions);
}

}  // namespace core::anonymization
