#include "core/anonymization/masked_text.hpp"

#include <algorithm>
#include <cstdint>
#include <span>

#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

constexpr std::int32_t DOCUMENT = -1;

// A character of the text and the edit that wrote it.
struct Cell {
  char32_t character;
  std::int32_t edit;
};
using Cells = std::vector<Cell>;

Offset size_of(std::u32string_view s) { return static_cast<Offset>(s.size()); }

// Edits at one place are not disjoint: there the order of writing shows.
bool sorted_disjoint_inside(const std::vector<Edit>& edits, Offset size) {
  Offset last_start = -1;
  Offset last_end = 0;
  for (const Edit& e : edits) {
    if (e.start < last_end || e.start == last_start || e.end < e.start || e.end > size)
      return false;
    last_start = e.start;
    last_end = e.end;
  }
  return true;
}

void append(Cells& cells, std::u32string_view text, std::int32_t edit) {
  for (const char32_t c : text) cells.push_back({c, edit});
}

// One edit of a start behind the document's end: it only touches the end of
// the text and what such edits appended before.
void splice_behind_end(Cells& cells, const Edit& edit, std::int32_t id) {
  const auto size = static_cast<Offset>(cells.size());
  const Offset start = std::min(edit.start, size);
  const Offset end = std::clamp<Offset>(edit.end, 0, size);
  const Cells rest(cells.begin() + end, cells.end());
  cells.resize(static_cast<std::size_t>(start));
  append(cells, edit.written, id);
  cells.insert(cells.end(), rest.begin(), rest.end());
}

// Splices edits of descending starts. What stands behind the last start is kept
// in reverse, so that cutting into it is cutting off its end.
Cells splice(std::u32string_view text, const std::vector<Edit>& edits) {
  Cells base;
  append(base, text, DOCUMENT);
  std::size_t i = 0;
  for (; i < edits.size() && edits[i].start > size_of(text); ++i) {
    splice_behind_end(base, edits[i], static_cast<std::int32_t>(i));
  }
  Cells behind;
  auto begin = static_cast<Offset>(base.size());
  const auto take_over = [&](Offset from) {
    for (Offset at = begin; at > from; --at)
      behind.push_back(base[static_cast<std::size_t>(at - 1)]);
  };
  for (; i < edits.size(); ++i) {
    const Offset start = std::max<Offset>(edits[i].start, 0);
    const Offset end = std::max<Offset>(edits[i].end, 0);
    take_over(std::min(end, begin));
    const auto cut = static_cast<std::size_t>(std::max<Offset>(end - begin, 0));
    behind.resize(behind.size() - std::min(cut, behind.size()));
    const auto written = edits[i].written;
    for (auto c = written.rbegin(); c != written.rend(); ++c) {
      behind.push_back({*c, static_cast<std::int32_t>(i)});
    }
    begin = start;
  }
  take_over(0);
  std::reverse(behind.begin(), behind.end());
  return behind;
}

// Placements and edits that overlap each other, directly or through others:
// what becomes one placement.
struct Region {
  Offset start;
  Offset end;
  std::span<Placement> placements;
  std::span<const Edit> edits;
};

// Takes the first region off both lists, of which one is not empty.
Region take_region(std::span<Placement>& placements, std::span<const Edit>& edits) {
  const bool edit_first =
      placements.empty() || (!edits.empty() && edits.front().start < placements.front().start);
  Region region{edit_first ? edits.front().start : placements.front().start,
                edit_first ? edits.front().end : placements.front().end,
                {},
                {}};
  std::size_t taken_placements = edit_first ? 0 : 1;
  std::size_t taken_edits = edit_first ? 1 : 0;
  const auto take = [&region](const auto& spans, std::size_t& taken) {
    if (taken == spans.size() || spans[taken].start >= region.end) return false;
    region.end = std::max(region.end, spans[taken].end);
    ++taken;
    return true;
  };
  while (take(placements, taken_placements) || take(edits, taken_edits)) {
  }
  region.placements = placements.first(taken_placements);
  region.edits = edits.first(taken_edits);
  placements = placements.subspan(taken_placements);
  edits = edits.subspan(taken_edits);
  return region;
}

// How long a text is once the edits, which are disjoint, are written into it.
std::size_t size_with(std::u32string_view text, const std::vector<Edit>& edits) {
  auto size = size_of(text);
  for (const Edit& e : edits) size += size_of(e.written) - (e.end - e.start);
  return static_cast<std::size_t>(size);
}

// What the document has where the region stands. Takes it from the placements.
std::u32string surface_beneath(std::u32string_view text, const Region& region) {
  const auto placements = region.placements;
  if (placements.size() == 1 && placements.front().start == region.start &&
      placements.front().end == region.end) {
    return std::move(placements.front().surface);
  }
  if (placements.empty()) return std::u32string(text::slice(text, region.start, region.end));
  std::u32string out;
  Offset at = region.start;
  for (const Placement& p : placements) {
    out += text::slice(text, at, p.start);
    out += p.surface;
    at = p.end;
  }
  return out.append(text::slice(text, at, region.end));
}

}  // namespace

std::vector<Edit> edits_of(const std::vector<Replacement>& replacements) {
  std::vector<Edit> edits;
  edits.reserve(replacements.size());
  for (const auto& r : replacements) edits.push_back({r.start, r.end, r.placeholder});
  return edits;
}

void MaskedText::write(const std::vector<Edit>& edits) {
  std::u32string out;
  out.reserve(size_with(text_, edits));
  std::vector<Placement> placements;
  placements.reserve(placements_.size() + edits.size());
  Offset last = 0;
  std::span<Placement> placements_left(placements_);
  std::span<const Edit> edits_left(edits);
  while (!placements_left.empty() || !edits_left.empty()) {
    const Region region = take_region(placements_left, edits_left);
    out += text::slice(text_, last, region.start);
    Placement made{size_of(out), 0, {}};
    Offset at = region.start;
    for (const Edit& e : region.edits) {
      out += text::slice(text_, at, e.start);
      out += e.written;
      at = e.end;
    }
    out += text::slice(text_, at, region.end);
    made.end = size_of(out);
    made.surface = surface_beneath(text_, region);
    placements.push_back(std::move(made));
    last = region.end;
  }
  out += text::slice(text_, last, size_of(text_));
  text_ = std::move(out);
  placements_ = std::move(placements);
}

void MaskedText::erase(const std::vector<Edit>& spans) {
  std::u32string out;
  out.reserve(text_.size());
  Offset last = 0;
  // The new place of an old offset; asked for in ascending order.
  std::size_t next = 0;
  Offset erased = 0;
  const auto moved = [&](Offset at) {
    for (; next < spans.size() && spans[next].end <= at; ++next) {
      erased += spans[next].end - spans[next].start;
    }
    const Offset partly = next < spans.size() ? std::max<Offset>(at - spans[next].start, 0) : 0;
    return at - erased - partly;
  };
  for (auto& p : placements_) {
    p.start = moved(p.start);
    p.end = moved(p.end);
  }
  for (const Edit& e : spans) {
    out += text::slice(text_, last, e.start);
    last = e.end;
  }
  out += text::slice(text_, last, size_of(text_));
  text_ = std::move(out);
}

void MaskedText::take_back(const std::vector<std::size_t>& indices) {
  if (indices.empty()) return;
  std::u32string out;
  std::vector<Placement> left;
  Offset last = 0;
  auto next = indices.begin();
  for (std::size_t i = 0; i < placements_.size(); ++i) {
    auto& p = placements_[i];
    out += text::slice(text_, last, p.start);
    last = p.end;
    if (next != indices.end() && *next == i) {
      out += p.surface;
      ++next;
      continue;
    }
    const Offset start = size_of(out);
    out += text::slice(text_, p.start, p.end);
    left.push_back({start, size_of(out), std::move(p.surface)});
  }
  out += text::slice(text_, last, size_of(text_));
  text_ = std::move(out);
  placements_ = std::move(left);
}

void MaskedText::splice_right_to_left(std::vector<Edit> edits) {
  const auto begins_first = [](const Edit& a, const Edit& b) { return a.start < b.start; };
  if (!std::is_sorted(edits.begin(), edits.end(), begins_first)) {
    std::stable_sort(edits.begin(), edits.end(), begins_first);
  }
  if (sorted_disjoint_inside(edits, size_of(text_))) return write(edits);
  std::stable_sort(edits.begin(), edits.end(),
                   [&](const Edit& a, const Edit& b) { return begins_first(b, a); });
  const Cells cells = splice(text_, edits);
  std::u32string out;
  out.reserve(cells.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const auto id = cells[i].edit;
    if (id != DOCUMENT && (i == 0 || cells[i - 1].edit != id)) {
      const Edit& e = edits[static_cast<std::size_t>(id)];
      placements_.push_back({static_cast<Offset>(i), static_cast<Offset>(i),
                             std::u32string(text::slice(text_, e.start, e.end))});
    }
    if (id != DOCUMENT) placements_.back().end = static_cast<Offset>(i) + 1;
    out.push_back(cells[i].character);
  }
  text_ = std::move(out);
}

}  // namespace core::anonymization
