// Overlap queries over a set of spans that only grows.
//
// Spans are any pairs of offsets, also empty or inverted ones: two of them
// overlap when a.start < b.end and b.start < a.end, and touch otherwise.
#pragma once

#include <algorithm>
#include <limits>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

// Answers in logarithmic time. Every start that will be added must be named at
// construction.
class SpanIndex {
 public:
  explicit SpanIndex(std::vector<Offset> starts) : starts_(std::move(starts)) {
    if (!std::is_sorted(starts_.begin(), starts_.end())) std::sort(starts_.begin(), starts_.end());
    starts_.erase(std::unique(starts_.begin(), starts_.end()), starts_.end());
    largest_end_.assign(starts_.size() + 1, NONE);
  }

  // An index over spans that have `start` and `end`, with all of them added.
  template <class Spans>
  static SpanIndex of(const Spans& spans) {
    std::vector<Offset> starts;
    starts.reserve(spans.size());
    for (const auto& span : spans) starts.push_back(span.start);
    SpanIndex index(std::move(starts));
    std::size_t rank = 0;
    for (const auto& span : spans) {
      rank = index.rank_behind(rank, span.start);
      index.largest_end_[rank] = std::max(index.largest_end_[rank], span.end);
    }
    index.sum_up();
    return index;
  }

  void add(Offset start, Offset end) {
    for (std::size_t i = rank(start, true); i < largest_end_.size(); i += i & (~i + 1)) {
      largest_end_[i] = std::max(largest_end_[i], end);
    }
  }

  // Whether some span overlaps start..end.
  bool overlaps(Offset start, Offset end) const { return largest_end(end, false) > start; }

  // Whether some span begins at or before `start` and ends at or after `end`.
  bool covers(Offset start, Offset end) const {
    const Offset found = largest_end(start, true);
    return found != NONE && found >= end;
  }

 private:
  static constexpr Offset NONE = std::numeric_limits<Offset>::min();

  // How many of the starts are below `offset`, or at it too.
  std::size_t rank(Offset offset, bool inclusive) const {
    const auto at = inclusive ? std::upper_bound(starts_.begin(), starts_.end(), offset)
                              : std::lower_bound(starts_.begin(), starts_.end(), offset);
    return static_cast<std::size_t>(at - starts_.begin());
  }

  // rank(start, true), where spans mostly come in the order of their starts.
  std::size_t rank_behind(std::size_t last, Offset start) const {
    if (last > 0 && starts_[last - 1] == start) return last;
    return last < starts_.size() && starts_[last] == start ? last + 1 : rank(start, true);
  }

  // Makes the Fenwick tree of the largest ends by start.
  void sum_up() {
    for (std::size_t i = 1; i < largest_end_.size(); ++i) {
      const std::size_t parent = i + (i & (~i + 1));
      if (parent >= largest_end_.size()) continue;
      largest_end_[parent] = std::max(largest_end_[parent], largest_end_[i]);
    }
  }

  // The largest end among spans that begin before `offset` (or at it): a prefix
  // maximum, kept as a Fenwick tree.
  Offset largest_end(Offset offset, bool inclusive) const {
    Offset found = NONE;
    for (std::size_t i = rank(offset, inclusive); i > 0; i -= i & (~i + 1)) {
      found = std::max(found, largest_end_[i]);
    }
    return found;
  }

  std::vector<Offset> starts_;
  std::vector<Offset> largest_end_;
};

}  // namespace core::anonymization
