// What one step did to a list of hits, told from the lists before and after it.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

// A hit that the list after the step lacks. Hits of one span and kind are one
// here, whatever their scores.
struct LostHit {
  std::size_t before = 0;  // its place in the list before
  // The first hit of its kind that is new after the step and overlaps it: what
  // the step made of it.
  std::optional<std::size_t> became = {};

  bool operator==(const LostHit&) const = default;
};

struct HitChanges {
  std::vector<LostHit> lost;
  std::vector<std::size_t> added;  // places in the list after, of hits that the one before lacks
};

HitChanges hit_changes(const std::vector<RecognizerResult>& before,
                       const std::vector<RecognizerResult>& after);

}  // namespace core::anonymization
