#include "core/anonymization/overrides.hpp"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "core/anonymization/placeholders.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

thread_local const OverridesScope* innermost_overrides = nullptr;

void sort_by_place(auto& spans) {
  std::stable_sort(spans.begin(), spans.end(),
                   [](const auto& a, const auto& b) { return a.start < b.start; });
}

bool has_content(std::u32string_view text, Offset start, Offset end) {
  const auto part = text::slice(text, start, end);
  return std::any_of(part.begin(), part.end(), text::is_letter_or_number);
}

// The stretches to mask that are not kept.
Stretches wanted_masks(const Overrides& overrides) {
  Stretches out;
  for (const auto& [start, end] : overrides.mask) {
    if (!is_kept(overrides, start, end)) out.emplace_back(start, end);
  }
  return out;
}

// The parts of the stretches that no span covers. Spans are sorted by start.
Stretches uncovered(const Stretches& stretches, const auto& spans) {
  Stretches out;
  auto next = spans.begin();
  for (const auto& [start, end] : stretches) {
    Offset at = start;
    while (next != spans.end() && next->end <= start) ++next;
    for (auto span = next; span != spans.end() && span->start < end; ++span) {
      if (span->start > at) out.emplace_back(at, span->start);
      at = std::max(at, span->end);
    }
    if (at < end) out.emplace_back(at, end);
  }
  return out;
}

// The masks that are not within one hit. Hits are sorted and disjoint.
Stretches masks_beyond(const Stretches& masks, const std::vector<RecognizerResult>& hits) {
  Stretches out;
  auto next = hits.begin();
  for (const auto& [start, end] : masks) {
    while (next != hits.end() && next->end <= start) ++next;
    const bool within = next != hits.end() && next->start <= start && next->end >= end;
    if (!within) out.emplace_back(start, end);
  }
  return out;
}

// Numbers for surfaces that are masked late, behind those that are taken.
class LateNumbers {
 public:
  explicit LateNumbers(const std::vector<Replacement>& replacements) {
    for (const auto& r : replacements) {
      const auto parsed = parse_numbered_placeholder(r.placeholder);
      if (parsed && parsed->tag == entity_type::MASKED) last_ = std::max(last_, parsed->number);
    }
  }
  std::int64_t of(std::u32string_view surface) {
    const auto key = text::case_fold(text::remove_space(surface));
    const auto [at, is_new] = by_surface_.try_emplace(key, last_ + 1);
    if (is_new) ++last_;
    return at->second;
  }

 private:
  std::int64_t last_ = 0;
  std::unordered_map<std::u32string, std::int64_t> by_surface_;
};

}  // namespace

OverridesScope::OverridesScope(std::u32string_view text, const Overrides& overrides)
    : text_(text), overrides_(overrides), outer_(innermost_overrides) {
  innermost_overrides = this;
}

OverridesScope::~OverridesScope() { innermost_overrides = outer_; }

const Overrides* OverridesScope::of(std::u32string_view text) {
  const auto* scope = innermost_overrides;
  return scope != nullptr && scope->text_ == text ? &scope->overrides_ : nullptr;
}

bool OverridesScope::any() { return innermost_overrides != nullptr; }

bool is_kept(const Overrides& overrides, Offset start, Offset end) {
  const auto behind = std::upper_bound(
      overrides.keep.begin(), overrides.keep.end(), start,
      [](Offset at, const std::pair<Offset, Offset>& stretch) { return at < stretch.first; });
  return behind != overrides.keep.begin() && std::prev(behind)->second >= end;
}

std::vector<RecognizerResult> drop_kept_hits(std::u32string_view text,
                                             std::vector<RecognizerResult> hits) {
  const auto* overrides = OverridesScope::of(text);
  if (overrides == nullptr) return hits;
  std::erase_if(hits, [&](const auto& hit) { return is_kept(*overrides, hit.start, hit.end); });
  return hits;
}

std::vector<RecognizerResult> add_masked_hits(std::u32string_view text,
                                              std::vector<RecognizerResult> hits) {
  const auto* overrides = OverridesScope::of(text);
  if (overrides == nullptr) return hits;
  sort_by_place(hits);
  const auto masks = masks_beyond(wanted_masks(*overrides), hits);
  std::vector<RecognizerResult> out;
  auto next = masks.begin();
  for (const auto& hit : hits) {
    while (next != masks.end() && next->second <= hit.start) ++next;
    auto rest = hit;
    for (auto mask = next; mask != masks.end() && mask->first < hit.end; ++mask) {
      auto left = rest;
      left.end = mask->first;
      if (has_content(text, left.start, left.end)) out.push_back(left);
      rest.start = std::min(mask->second, rest.end);
    }
    if (rest.start == hit.start || has_content(text, rest.start, rest.end)) out.push_back(rest);
  }
  for (const auto& [start, end] : masks) {
    out.push_back({std::string(entity_type::MASKED), start, end, 1});
  }
  sort_by_place(out);
  return out;
}

std::vector<Replacement> apply_overrides(std::u32string_view text,
                                         std::vector<Replacement> replacements) {
  const auto* overrides = OverridesScope::of(text);
  if (overrides == nullptr) return replacements;
  std::erase_if(replacements, [&](const auto& r) { return is_kept(*overrides, r.start, r.end); });
  sort_by_place(replacements);
  LateNumbers numbers(replacements);
  for (const auto& [start, end] : uncovered(wanted_masks(*overrides), replacements)) {
    if (!has_content(text, start, end)) continue;
    const auto number = numbers.of(text::slice(text, start, end));
    replacements.push_back(
        {start, end, format_numbered_placeholder(entity_type::MASKED, number, "zh")});
  }
  sort_by_place(replacements);
  return replacements;
}

}  // namespace core::anonymization
