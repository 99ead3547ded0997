#include "core/masked_stretches.hpp"

#include <algorithm>

#include "core/anonymization/placeholders.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

// Goes through the original along the kept parts of the masked text. Where the
// original does not go on with them, paragraph joiners were taken out.
class Along {
 public:
  explicit Along(std::u32string_view original) : original_(original) {}

  Offset at() const { return static_cast<Offset>(at_); }
  void pass(std::u32string_view kept) {
    if (is_here(kept)) {  // as nearly always
      at_ += kept.size();
      return;
    }
    for (const char32_t c : kept) {
      at_ = original_.find(c, at_);
      at_ = at_ == std::u32string_view::npos ? original_.size() : at_ + 1;
    }
  }
  // To the surface, which stands here or behind what was taken out.
  void find(std::u32string_view surface) {
    if (is_here(surface)) return;
    if (const auto found = original_.find(surface, at_); found != std::u32string_view::npos) {
      at_ = found;
    }
  }

 private:
  bool is_here(std::u32string_view words) const {
    return words.size() <= original_.size() - at_ &&
           std::equal(words.begin(), words.end(), original_.begin() + at());
  }

  std::u32string_view original_;
  std::size_t at_ = 0;
};

// Whether no bracket stands between the first character and the last, so that nothing but
// the whole can be a placeholder.
bool is_bare(std::u32string_view written) {
  const auto inside = written.substr(written.empty() ? 0 : 1);
  const auto bracket = [](char32_t c) { return c == U'[' || c == U']'; };
  return written.size() > 1 && std::none_of(inside.begin(), inside.end() - 1, bracket) &&
         !has_full_width_brackets(inside.substr(0, inside.size() - 1));
}

}  // namespace

BarePlaceholder without_wording(std::u32string_view written, std::u32string_view surface) {
  if (is_bare(written)) return {written, 0, 0};
  for (const auto& [from, to] : find_numbered_placeholders(written)) {
    const auto start = static_cast<std::size_t>(from);
    const auto end = static_cast<std::size_t>(to);
    const std::size_t behind = written.size() - end;
    if (start + behind <= surface.size() && surface.starts_with(written.substr(0, start)) &&
        surface.ends_with(written.substr(end))) {
      return {written.substr(start, end - start), start, behind};
    }
  }
  return {written, 0, 0};
}

std::vector<std::u32string_view> masked_placeholders(const AnonymizedDocument& document) {
  std::vector<std::u32string_view> out;
  out.reserve(document.placements.size());
  for (const auto& placement : document.placements) {
    const auto written = text::slice(document.text, placement.start, placement.end);
    const auto bare = without_wording(written, placement.surface);
    if (placement.surface.size() > bare.before + bare.behind) out.push_back(bare.placeholder);
  }
  return out;
}

std::vector<MaskedStretch> masked_stretches(std::u32string_view original,
                                            const AnonymizedDocument& document) {
  std::vector<MaskedStretch> out;
  Along along(original);
  Offset kept_from = 0;
  for (const auto& placement : document.placements) {
    along.pass(text::slice(document.text, kept_from, placement.start));
    along.find(placement.surface);
    const auto written = text::slice(document.text, placement.start, placement.end);
    const auto bare = without_wording(written, placement.surface);
    const auto size = placement.surface.size();
    if (size > bare.before + bare.behind) {
      const auto start = along.at() + static_cast<Offset>(bare.before);
      const auto end = along.at() + static_cast<Offset>(size - bare.behind);
      out.push_back({start, end, std::u32string(bare.placeholder)});
    }
    along.pass(placement.surface);
    kept_from = placement.end;
  }
  return out;
}

}  // namespace core::anonymization
