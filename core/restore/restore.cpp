#include "core/restore/restore.hpp"

#include <algorithm>

#include "core/restore/occurrence_choice.hpp"
#include "core/text/multi_pattern.hpp"
#include "core/text/unicode.hpp"

namespace core::restore {
namespace {

Finding finding_of(const FoundPlaceholder& found, const std::vector<Entry>& entries) {
  Finding finding{found.written.start, found.written.end, Outcome::RESTORED, found.entry, 0};
  if (found.entry == EntryIndex::NONE) {
    finding.outcome = Outcome::UNKNOWN;
  } else if (found.entry == EntryIndex::SEVERAL) {
    finding.outcome = Outcome::AMBIGUOUS;
  } else {
    finding.surface = entries[found.entry].first_surface();
  }
  return finding;
}

Outcome outcome_of(Choice::By by) {
  switch (by) {
    case Choice::By::CONTEXT:
      return Outcome::RESTORED;
    case Choice::By::ORDER:
      return Outcome::BY_ORDER;
    default:
      return Outcome::FIRST_SURFACE;
  }
}

// Decides between the surfaces of those entries that have several.
void choose_surfaces(std::u32string_view text, const std::vector<FoundPlaceholder>& found,
                     const Mapping& mapping, std::vector<Finding>& findings) {
  std::unordered_map<std::size_t, std::vector<std::size_t>> open;  // by entry
  for (std::size_t i = 0; i < found.size(); ++i) {
    const auto entry = found[i].entry;
    if (entry < mapping.entries.size() && mapping.entries[entry].surfaces.size() > 1) {
      open[entry].push_back(i);
    }
  }
  if (open.empty()) return;
  const Contexts contexts(text, found, mapping.entries);
  for (const auto& [entry, places] : open) {
    std::vector<Surroundings> surroundings;
    surroundings.reserve(places.size());
    for (const auto i : places) surroundings.push_back({contexts.before(i), contexts.after(i)});
    const auto choices = choose_occurrences(mapping.entries[entry], surroundings);
    for (std::size_t k = 0; k < places.size(); ++k) {
      findings[places[k]].outcome = outcome_of(choices[k].by);
      findings[places[k]].surface = choices[k].surface;
    }
  }
}

bool is_name_character(char32_t c) { return text::is_ascii_alnum(c) || c == U'_'; }

// Names of placeholders outside of brackets: 机构1, ORG1. Not in 机构12 nor FORG1.
class BareNames {
 public:
  explicit BareNames(const std::vector<Entry>& entries) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (entries[i].placeholder.size() < 2) continue;
      const auto key = placeholder_key(entries[i].placeholder);
      if (!is_own_tag(std::u32string_view(key).substr(0, key.find_last_of(U'#')))) continue;
      auto& name =
          names_.emplace_back(entries[i].placeholder, 1, entries[i].placeholder.size() - 2);
      std::transform(name.begin(), name.end(), name.begin(), text::case_fold_simple);
      entries_.push_back(i);
    }
  }

  // Those outside of the findings.
  std::vector<Finding> find(std::u32string_view text, const std::vector<Finding>& findings) const {
    const std::vector<std::u32string_view> views(names_.begin(), names_.end());
    std::vector<Finding> out;
    auto next = findings.begin();
    const text::MultiPattern words(views);
    words.scan(
        text,
        [&](const text::MultiPattern::Hit& hit) {
          while (next != findings.end() && next->end <= hit.start) ++next;
          const bool taken = next != findings.end() && next->start < hit.end;
          const bool overlaps = !out.empty() && out.back().end > hit.start;
          if (taken || overlaps || !is_whole(text, hit)) return;
          out.push_back({hit.start, hit.end, Outcome::NO_BRACKETS, entries_[hit.pattern], 0});
        },
        text::case_fold_simple);
    return out;
  }

 private:
  static bool is_whole(std::u32string_view text, const text::MultiPattern::Hit& hit) {
    const bool inside_left = hit.start > 0 && is_name_character(text[hit.start]) &&
                             is_name_character(text[hit.start - 1]);
    const bool inside_right = hit.end < text.size() && is_name_character(text[hit.end]);
    return !inside_left && !inside_right;
  }

  std::vector<std::u32string> names_;
  std::vector<std::size_t> entries_;
};

}  // namespace

std::vector<Finding> find_restorable(std::u32string_view edited, const Mapping& mapping) {
  const EntryIndex index(mapping.entries);
  auto found = find_placeholders(edited, index);
  // [附件9] and [1] are no placeholders.
  std::erase_if(found, [&](const FoundPlaceholder& f) {
    return f.entry == EntryIndex::NONE && !is_own_tag(f.written.tag()) &&
           !index.has_tag(f.written.tag());
  });
  std::vector<Finding> findings;
  findings.reserve(found.size());
  for (const auto& f : found) findings.push_back(finding_of(f, mapping.entries));
  choose_surfaces(edited, found, mapping, findings);
  const auto bare = BareNames(mapping.entries).find(edited, findings);
  findings.insert(findings.end(), bare.begin(), bare.end());
  std::sort(findings.begin(), findings.end(),
            [](const Finding& a, const Finding& b) { return a.start < b.start; });
  return findings;
}

std::u32string restored_text(std::u32string_view edited, const Mapping& mapping,
                             const std::vector<Finding>& findings) {
  std::u32string out;
  out.reserve(edited.size());
  std::size_t at = 0;
  for (const auto& finding : findings) {
    if (!is_restored(finding.outcome)) continue;
    out += edited.substr(at, finding.start - at);
    out += mapping.entries[finding.entry].surfaces[finding.surface];
    at = finding.end;
  }
  return out.append(edited.substr(at));
}

}  // namespace core::restore
