#include "core/anonymization/hit_changes.hpp"

#include <algorithm>
#include <tuple>

namespace core::anonymization {
namespace {

using Results = std::vector<RecognizerResult>;
using Places = std::vector<std::size_t>;

auto key_of(const RecognizerResult& r) { return std::tie(r.entity_type, r.start, r.end); }

Places sorted_places(const Results& results) {
  Places places(results.size());
  for (std::size_t i = 0; i < places.size(); ++i) places[i] = i;
  std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
    return key_of(results[a]) < key_of(results[b]);
  });
  return places;
}

// The places in `results`, of the sorted ones, whose hits `others` lacks.
Places missing(const Results& results, const Places& places, const Results& others,
               const Places& other_places) {
  Places out;
  auto other = other_places.begin();
  for (const std::size_t i : places) {
    const auto key = key_of(results[i]);
    while (other != other_places.end() && key_of(others[*other]) < key) ++other;
    if (other == other_places.end() || key_of(others[*other]) != key) out.push_back(i);
  }
  return out;
}

// Pairs lost hits with added ones of their kind that overlap them. Both lists are
// sorted by kind and start; hits of one kind seldom overlap, so few are passed
// over again.
void pair_up(const Results& before, std::vector<LostHit>& lost, const Results& after,
             const Places& added) {
  auto first = added.begin();
  for (auto& hit : lost) {
    const auto& r = before[hit.before];
    const auto is_left_of = [&](const RecognizerResult& a) {
      return std::tie(a.entity_type, a.end) <= std::tie(r.entity_type, r.start);
    };
    while (first != added.end() && is_left_of(after[*first])) ++first;
    if (first == added.end()) return;
    const auto& a = after[*first];
    if (a.entity_type == r.entity_type && a.start < r.end && r.start < a.end) hit.became = *first;
  }
}

}  // namespace

HitChanges hit_changes(const Results& before, const Results& after) {
  const auto places_before = sorted_places(before);
  const auto places_after = sorted_places(after);
  HitChanges out;
  for (const std::size_t i : missing(before, places_before, after, places_after)) {
    out.lost.push_back({i});
  }
  out.added = missing(after, places_after, before, places_before);
  pair_up(before, out.lost, after, out.added);
  return out;
}

}  // namespace core::anonymization
