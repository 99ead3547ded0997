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
    std::sort(spans_.begin(), spans_.end());
    std::vector<std::pair<anonymization::Offset, anonymization::Offset>> joined;
    for (const auto& s : spans_) {
      if (!joined.empty() && s.first < joined.back().second) {
        joined.back().second = std::max(joined.back().second, s.second);
      } else {
        joined.push_back(s);
      }
    }
    spans_ = std::move(joined);
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
