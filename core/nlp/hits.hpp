// Looking up words of the vocabulary by their place.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"
#include "core/recognition/nlp_artifacts.hpp"

namespace core::nlp {

using recognition::WordHit;

// The first hit that begins at `at` or behind.
inline auto first_from(const std::vector<WordHit>& hits, std::size_t at) {
  return std::lower_bound(hits.begin(), hits.end(), at,
                          [](const WordHit& hit, std::size_t p) { return hit.start < p; });
}

// The end of a hit that begins at `at`; `at` if there is none.
inline std::size_t end_of_word_at(const std::vector<WordHit>& hits, std::size_t at) {
  for (auto it = first_from(hits, at); it != hits.end() && it->start == at; ++it) {
    if (!it->from_table) return it->end;
  }
  return at;
}

// Whether start..end lies within one hit.
inline bool is_covered(const std::vector<WordHit>& hits, std::size_t start, std::size_t end) {
  constexpr std::ptrdiff_t NEIGHBOURS = 3;
  auto it = first_from(hits, start + 1);
  for (std::ptrdiff_t n = 0; n < NEIGHBOURS && it != hits.begin(); ++n) {
    --it;
    if (it->start <= start && it->end >= end) return true;
  }
  return false;
}

// Whether a hit overlaps start..end.
inline bool is_touched(const std::vector<WordHit>& hits, std::size_t start, std::size_t end) {
  auto it = first_from(hits, start);
  if (it != hits.end() && it->start < end) return true;
  return it != hits.begin() && std::prev(it)->end > start;
}

// Answers is_touched for spans that are asked for from the left to the right. Hits may be
// added at the end of the list meanwhile.
class HitCursor {
 public:
  explicit HitCursor(const std::vector<WordHit>& hits) : hits_(hits) {}

  bool touches(std::size_t start, std::size_t end) {
    while (next_ < hits_.size() && hits_[next_].end <= start) ++next_;
    return next_ < hits_.size() && hits_[next_].start < end;
  }

 private:
  const std::vector<WordHit>& hits_;
  std::size_t next_ = 0;
};

inline anonymization::RecognizerResult make_hit(std::string_view type, std::size_t start,
                                                std::size_t end, double score) {
  return {std::string(type), static_cast<std::ptrdiff_t>(start), static_cast<std::ptrdiff_t>(end),
          score};
}

// A hit for each line of start..end, as nothing is masked across a line end.
inline void add_by_line(std::u32string_view folded, std::string_view type, std::size_t start,
                        std::size_t end, double score,
                        std::vector<anonymization::RecognizerResult>& out) {
  while (start < end) {
    const std::size_t stop =
        start + std::min(folded.substr(start, end - start).find(U'\n'), end - start);
    if (stop > start) out.push_back(make_hit(type, start, stop, score));
    start = stop + 1;
    while (start < end && folded[start] == U' ') ++start;
  }
}

}  // namespace core::nlp
