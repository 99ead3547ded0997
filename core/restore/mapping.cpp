#include "core/restore/mapping.hpp"

#include <algorithm>

#include "core/masked_stretches.hpp"
#include "core/text/unicode.hpp"

namespace core::restore {
namespace {

using anonymization::AnonymizedDocument;
using anonymization::Offset;

// Above every code point: what a context holds for entry 0.
constexpr char32_t FIRST_ENTRY = 0x110000;

// Paragraph joiners begin with U+E000.
bool ends_line(char32_t c) { return c == U'\n' || c == U'\u2028' || c == U'\u2029' || c == 0xE000; }

// A placeholder where it stands, and what it stands for.
struct Known {
  WrittenPlaceholder written;
  std::size_t entry;
  std::size_t surface;
};

// The entries as they grow, each with its surfaces by their spelling.
class EntryCollector {
 public:
  std::size_t entry_of(std::u32string_view placeholder) {
    const auto [at, is_new] =
        by_placeholder_.try_emplace(std::u32string(placeholder), entries.size());
    if (is_new) {
      entries.push_back({at->first, {}, 0, {}});
      surfaces_.emplace_back();
    }
    return at->second;
  }

  std::size_t add(std::size_t entry, std::u32string_view surface) {
    auto& known = entries[entry];
    const auto [at, is_new] =
        surfaces_[entry].try_emplace(std::u32string(surface), known.surfaces.size());
    if (is_new) known.surfaces.push_back(at->first);
    ++known.count;
    return at->second;
  }

  std::vector<Entry> entries;

 private:
  std::unordered_map<std::u32string, std::size_t> by_placeholder_;
  std::vector<std::unordered_map<std::u32string, std::size_t>> surfaces_;
};

// Where the placeholders proper stand, without the wording of amounts around them.
struct BarePlacement {
  std::size_t start;
  std::size_t end;
  std::u32string_view surface;
};

std::vector<BarePlacement> bare_placements(const AnonymizedDocument& document) {
  std::vector<BarePlacement> out;
  out.reserve(document.placements.size());
  for (const auto& placement : document.placements) {
    const auto written = text::slice(document.text, placement.start, placement.end);
    const auto bare = anonymization::without_wording(written, placement.surface);
    const std::u32string_view surface = placement.surface;
    const auto start = static_cast<std::size_t>(placement.start) + bare.before;
    out.push_back({start, start + bare.placeholder.size(),
                   surface.substr(bare.before, surface.size() - bare.before - bare.behind)});
  }
  return out;
}

// Gives entries to what was written for the document's values.
std::vector<Known> place(std::u32string_view text, const std::vector<WrittenPlaceholder>& written,
                         const std::vector<BarePlacement>& placements, EntryCollector& collector) {
  std::vector<Known> known;
  known.reserve(written.size());
  std::size_t next = 0;
  for (const auto& w : written) {
    while (next < placements.size() && placements[next].end <= w.start) ++next;
    Known k{w, EntryIndex::NONE, 0};
    if (next < placements.size() && placements[next].start < w.end) {
      k.entry = collector.entry_of(text.substr(w.start, w.end - w.start));
      k.surface = collector.add(k.entry, placements[next].surface);
      ++next;
    }
    known.push_back(std::move(k));
  }
  return known;
}

// What else is written like one of the placeholders, or like any of veildoc's, is
// text of the document.
void place_own_text(std::u32string_view text, std::vector<Known>& known,
                    EntryCollector& collector) {
  const EntryIndex index(collector.entries);
  for (auto& k : known) {
    if (k.entry != EntryIndex::NONE) continue;
    const auto spelled = text.substr(k.written.start, k.written.end - k.written.start);
    k.entry = index.find(text, k.written);
    if (k.entry == EntryIndex::NONE && is_own_tag(k.written.tag())) {
      k.entry = collector.entry_of(spelled);
    }
    if (k.entry < collector.entries.size()) k.surface = collector.add(k.entry, spelled);
  }
}

}  // namespace

std::size_t Entry::first_surface() const {
  const auto key = placeholder_key(placeholder);
  const auto found = std::find_if(surfaces.begin(), surfaces.end(), [&](const auto& surface) {
    return placeholder_key(surface) != key;
  });
  return found == surfaces.end() ? 0 : static_cast<std::size_t>(found - surfaces.begin());
}

Mapping make_mapping(const AnonymizedDocument& document, Occurrences occurrences) {
  const std::u32string_view text = document.text;
  EntryCollector collector;
  auto known = place(text, find_written_placeholders(text), bare_placements(document), collector);
  place_own_text(text, known, collector);

  std::vector<FoundPlaceholder> found;
  found.reserve(known.size());
  for (const auto& k : known) found.push_back({k.written, k.entry});
  const Contexts contexts(text, found, collector.entries);
  for (std::size_t i = 0; i < known.size(); ++i) {
    if (known[i].entry >= collector.entries.size()) continue;
    auto& entry = collector.entries[known[i].entry];
    if (entry.surfaces.size() < 2 && occurrences == Occurrences::WHERE_NEEDED) continue;
    entry.occurrences.push_back({known[i].surface, contexts.before(i), contexts.after(i)});
  }
  return {document.language, {}, std::move(collector.entries), {}};
}

EntryIndex::EntryIndex(const std::vector<Entry>& entries) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    by_spelling_.emplace(entries[i].placeholder, i);
    const WrittenPlaceholder written{0, 0, placeholder_key(entries[i].placeholder)};
    if (written.key.empty()) continue;
    tags_.emplace(written.tag());
    const auto [at, is_new] = by_key_.try_emplace(written.key, i);
    if (!is_new) at->second = SEVERAL;
  }
}

std::size_t EntryIndex::find(std::u32string_view text,
                             const WrittenPlaceholder& placeholder) const {
  const auto spelled = text.substr(placeholder.start, placeholder.end - placeholder.start);
  if (const auto at = by_spelling_.find(std::u32string(spelled)); at != by_spelling_.end()) {
    return at->second;
  }
  const auto at = by_key_.find(placeholder.key);
  return at == by_key_.end() ? NONE : at->second;
}

std::vector<FoundPlaceholder> find_placeholders(std::u32string_view text, const EntryIndex& index) {
  std::vector<FoundPlaceholder> out;
  for (auto& written : find_written_placeholders(text)) {
    const auto entry = index.find(text, written);
    out.push_back({std::move(written), entry});
  }
  return out;
}

Contexts::Contexts(std::u32string_view text, const std::vector<FoundPlaceholder>& placeholders,
                   const std::vector<Entry>& entries)
    : entries_(entries) {
  items_.reserve(text.size());
  item_of_.reserve(placeholders.size());
  std::size_t at = 0;
  const auto take = [&](std::size_t to) {
    for (; at < to; ++at) {
      if (ends_line(text[at])) {
        if (!items_.empty() && items_.back() != LINE_END) items_.push_back(LINE_END);
        continue;
      }
      if (const char32_t c = placeholder_character(text[at]); c != 0) items_.push_back(c);
    }
  };
  for (const auto& placeholder : placeholders) {
    take(placeholder.written.start);
    item_of_.push_back(items_.size());
    if (placeholder.entry >= entries.size()) {
      take(placeholder.written.end);
    } else {
      items_.push_back(FIRST_ENTRY + static_cast<char32_t>(placeholder.entry));
      at = placeholder.written.end;
    }
  }
  take(text.size());
}

std::u32string Contexts::before(std::size_t i) const {
  std::size_t from = item_of_[i];
  for (std::size_t count = 0; from > 0 && count < CONTEXT_LENGTH; --from) {
    if (items_[from - 1] != LINE_END) ++count;
  }
  return spelled(from, item_of_[i]);
}

std::u32string Contexts::after(std::size_t i) const {
  std::size_t to = item_of_[i] + 1;
  for (std::size_t count = 0; to < items_.size() && count < CONTEXT_LENGTH; ++to) {
    if (items_[to] != LINE_END) ++count;
  }
  return spelled(item_of_[i] + 1, to);
}

std::u32string Contexts::spelled(std::size_t from, std::size_t to) const {
  std::u32string out;
  for (std::size_t i = from; i < to; ++i) {
    if (items_[i] < FIRST_ENTRY) {
      out += items_[i];
    } else {
      out += entries_[items_[i] - FIRST_ENTRY].placeholder;
    }
  }
  return out;
}

}  // namespace core::restore
