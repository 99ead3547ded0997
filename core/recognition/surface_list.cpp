#include "core/recognition/surface_list.hpp"

#include <algorithm>
#include <set>
#include <span>

#include "core/recognition/word_edges.hpp"
#include "core/text/unicode.hpp"

namespace core::recognition {
namespace {

using anonymization::Offset;

std::u32string folded_surface(std::u32string_view surface) {
  std::u32string out(surface);
  std::transform(out.begin(), out.end(), out.begin(), fold_letter);
  return out;
}

void join_overlapping(std::vector<std::pair<Offset, Offset>>& stretches) {
  std::sort(stretches.begin(), stretches.end());
  std::size_t kept = 0;
  for (const auto& stretch : stretches) {
    if (kept > 0 && stretch.first < stretches[kept - 1].second) {
      stretches[kept - 1].second = std::max(stretches[kept - 1].second, stretch.second);
    } else {
      stretches[kept++] = stretch;
    }
  }
  stretches.resize(kept);
}

text::MultiPattern search_for(const std::vector<std::u32string>& surfaces) {
  const std::vector<std::u32string_view> views(surfaces.begin(), surfaces.end());
  return text::MultiPattern(std::span<const std::u32string_view>(views));
}

}  // namespace

SurfaceList::SurfaceList(std::u32string_view list, std::string_view source)
    : search_(std::span<const std::u32string_view>()) {
  std::size_t number = 0;
  while (!list.empty()) {
    const auto end = std::min(list.find(U'\n'), list.size());
    const auto line = text::strip(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
    ++number;
    if (line.empty() || line.starts_with(U'#')) continue;
    if (line.size() > 2 && line.starts_with(U'/') && line.ends_with(U'/')) {
      const UserPattern pattern{"line " + std::to_string(number),
                                std::u32string(line.substr(1, line.size() - 2)), 1};
      patterns_.push_back({CompiledUserPattern(source, pattern), number});
    } else {
      surfaces_.push_back(folded_surface(line));
      surface_lines_.push_back(number);
    }
  }
  search_ = search_for(surfaces_);
}

SurfaceList::Found SurfaceList::find(std::u32string_view text) const {
  Found found;
  std::set<std::size_t> used;
  const auto add = [&](std::size_t start, std::size_t end, std::size_t line) {
    found.stretches.emplace_back(static_cast<Offset>(start), static_cast<Offset>(end));
    used.insert(line);
  };
  search_.scan(
      text,
      [&](const text::MultiPattern::Hit& hit) {
        if (stands_alone(text, hit.start, hit.end)) {
          add(hit.start, hit.end, surface_lines_[hit.pattern]);
        }
      },
      fold_letter);
  for (const auto& pattern : patterns_) {
    for (const auto& [start, end] : pattern.compiled.find(text)) add(start, end, pattern.line);
  }
  join_overlapping(found.stretches);
  auto lines = surface_lines_;
  for (const auto& pattern : patterns_) lines.push_back(pattern.line);
  std::sort(lines.begin(), lines.end());
  std::copy_if(lines.begin(), lines.end(), std::back_inserter(found.unused_lines),
               [&](std::size_t line) { return !used.contains(line); });
  return found;
}

}  // namespace core::recognition
