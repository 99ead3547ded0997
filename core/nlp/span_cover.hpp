// Which parts of a text are taken by hits.
#pragma once

#include <algorithm>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::nlp {

// The union of spans, for many questions. Spans are added first, in any order.
class SpanCover {
 public:
  void add(anonymization::Offset start, anonymization::Offset end) {
    spans_.emplace_back(start, end);
  }

  // Sorts and joins what was added; touching spans stay apart.
  void finish() {
    sort();
    std::size_t joined = 0;
    for (const auto& s : spans_) {
      if (joined > 0 && s.first < spans_[joined - 1].second) {
        spans_[joined - 1].second = std::max(spans_[joined - 1].second, s.second);
      } else {
        spans_[joined++] = s;
      }
    }
    spans_.resize(joined);
  }

  bool contains(anonymization::Offset start, anonymization::Offset end) const {
    const auto it = before(start);
    return it != spans_.end() && it->second >= end;
  }

  // Whether a span reaches beyond start..end on one side or on both.
  bool contains_more_than(anonymization::Offset start, anonymization::Offset end) const {
    const auto it = before(start);
    return it != spans_.end() && it->second >= end && (it->first < start || it->second > end);
  }

  bool touches(anonymization::Offset start, anonymization::Offset end) const {
    const auto it = before(end - 1);
    return it != spans_.end() && it->second > start;
  }

 private:
  // Most lists of hits are sorted but for what was found last.
  void sort() {
    const auto rest = std::is_sorted_until(spans_.begin(), spans_.end());
    std::sort(rest, spans_.end());
    std::inplace_merge(spans_.begin(), rest, spans_.end());
  }

  // The last span that begins at `at` or before.
  std::vector<std::pair<anonymization::Offset, anonymization::Offset>>::const_iterator before(
      anonymization::Offset at) const {
    const auto it = std::upper_bound(spans_.begin(), spans_.end(), at,
                                     [](auto p, const auto& s) { return p < s.first; });
    return it == spans_.begin() ? spans_.end() : std::prev(it);
  }

  std::vector<std::pair<anonymization::Offset, anonymization::Offset>> spans_;
};

}  // namespace core::nlp
