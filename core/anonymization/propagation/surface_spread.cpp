#include "core/anonymization/propagation/surface_spread.hpp"

#include <algorithm>
#include <bitset>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "core/anonymization/propagation/propagable_surfaces.hpp"
#include "core/text/multi_pattern.hpp"
#include "core/text/rare_words.hpp"
#include "core/text/unicode.hpp"
#include "core/text/view_set.hpp"
#include "core/text/word_set.hpp"

namespace core::anonymization {
namespace {

// Cities whose arbitration clause keeps them: 在中国北京进行仲裁.
constexpr auto SEAT_CITIES =
    text::words({U"北京", U"上海", U"深圳", U"广州", U"杭州", U"南京", U"武汉", U"成都", U"重庆"});
constexpr std::u32string_view SEAT_BEFORE = U"在中国";
constexpr std::u32string_view SEAT_BEHIND = U"进行仲裁";
constexpr std::size_t SEAT_CONTEXT_BEFORE = 6;
constexpr std::size_t SEAT_CONTEXT_BEHIND = 10;

// A value that is in no text, to keep texts apart that are searched together.
constexpr char32_t NOWHERE = 0xFFFFFFFF;

constexpr std::u32string_view AFFILIATED_COMPANY = U"关联公司";
constexpr char32_t POSSESSIVE = U'其';

// How a name is looked for.
enum class NameKind { LATIN, AFFILIATE, SEAT, CHINESE };

NameKind kind_of(std::u32string_view name) {
  if (!text::contains_ideograph(name)) return NameKind::LATIN;
  if (name == AFFILIATED_COMPANY) return NameKind::AFFILIATE;
  if (is_non_propagable_location_surface(name) || SEAT_CITIES.contains(name)) return NameKind::SEAT;
  return NameKind::CHINESE;
}

// text::case_fold_simple, which leaves an ideograph as it is.
char32_t fold_character(char32_t c) {
  return text::is_ideograph(c) ? c : text::case_fold_simple(c);
}

std::u32string fold_simple(std::u32string_view s) {
  std::u32string out(s);
  std::transform(out.begin(), out.end(), out.begin(), fold_character);
  return out;
}

// Letters and digits in front of or behind which a Latin name is part of a
// longer word. Folded, because the letter case of the name does not count either.
bool is_word_character(char32_t c) { return text::is_ascii_alnum(text::case_fold_simple(c)); }

struct Span {
  std::size_t start;
  std::size_t end;
};

// The text around an occurrence, as the pair that is looked for sees it: with
// the placeholders that earlier pairs wrote.
class Surroundings {
 public:
  explicit Surroundings(std::u32string_view text) : text_(text) {}

  std::u32string_view text() const { return text_; }

  void write(const Span& span, std::u32string_view placeholder) {
    written_.emplace(span.start, Written{span.end, placeholder});
  }

  bool is_written(const Span& span) const {
    const auto next = written_.lower_bound(span.end);
    return next != written_.begin() && std::prev(next)->second.end > span.start;
  }

  // Up to `count` characters before and behind an offset.
  std::u32string before(std::size_t at, std::size_t count) const;
  std::u32string behind(std::size_t at, std::size_t count) const;

  std::vector<Edit> edits() const {
    std::vector<Edit> out;
    out.reserve(written_.size());
    for (const auto& [start, w] : written_) {
      out.push_back({static_cast<Offset>(start), static_cast<Offset>(w.end), w.placeholder});
    }
    return out;
  }

 private:
  struct Written {
    std::size_t end;
    std::u32string_view placeholder;
  };

  std::u32string_view text_;
  std::map<std::size_t, Written> written_;  // by start
};

std::u32string Surroundings::before(std::size_t at, std::size_t count) const {
  std::u32string reversed;
  auto next = written_.lower_bound(at);
  while (at > 0 && reversed.size() < count) {
    if (next != written_.begin() && std::prev(next)->second.end == at) {
      --next;
      const auto& placeholder = next->second.placeholder;
      reversed.append(placeholder.rbegin(), placeholder.rend());
      at = next->first;
    } else {
      reversed.push_back(text_[--at]);
    }
  }
  reversed.resize(std::min(reversed.size(), count));
  std::reverse(reversed.begin(), reversed.end());
  return reversed;
}

std::u32string Surroundings::behind(std::size_t at, std::size_t count) const {
  std::u32string out;
  auto next = written_.lower_bound(at);
  while (at < text_.size() && out.size() < count) {
    if (next != written_.end() && next->first == at) {
      out += next->second.placeholder;
      at = next->second.end;
      ++next;
    } else {
      out.push_back(text_[at++]);
    }
  }
  out.resize(std::min(out.size(), count));
  return out;
}

bool is_whole_word(const Surroundings& around, const Span& span) {
  const auto left = around.before(span.start, 1);
  const auto right = around.behind(span.end, 1);
  return !(!left.empty() && is_word_character(left[0])) &&
         !(!right.empty() && is_word_character(right[0]));
}

bool is_possessive(const Surroundings& around, const Span& span) {
  const auto left = around.before(span.start, 1);
  return !left.empty() && left[0] == POSSESSIVE;
}

bool is_arbitration_seat(const Surroundings& around, const Span& span) {
  const auto name = around.text().substr(span.start, span.end - span.start);
  const auto context = around.before(span.start, SEAT_CONTEXT_BEFORE) + std::u32string(name) +
                       around.behind(span.end, SEAT_CONTEXT_BEHIND);
  const auto seat =
      std::u32string(SEAT_BEFORE) + std::u32string(name) + std::u32string(SEAT_BEHIND);
  return context.find(seat) != std::u32string::npos;
}

// Of the candidates (ascending; equal to the name up to letter case), those
// that are written over. A Latin candidate inside a longer word uses up none of
// the text; every Chinese one does, also one that is left alone.
std::vector<Span> safe_spans(std::u32string_view name, const std::vector<Span>& candidates,
                             const Surroundings& around) {
  const NameKind kind = kind_of(name);
  std::vector<Span> out;
  std::size_t cursor = 0;
  for (const Span& span : candidates) {
    if (span.start < cursor || around.is_written(span)) continue;
    if (kind == NameKind::LATIN && !is_whole_word(around, span)) continue;
    if (kind == NameKind::AFFILIATE && is_possessive(around, span)) continue;
    cursor = span.end;
    if (kind == NameKind::SEAT && is_arbitration_seat(around, span)) continue;
    out.push_back(span);
  }
  return out;
}

// Every occurrence of one name, overlapping ones too.
std::vector<Span> candidates_of(std::u32string_view text, std::u32string_view name) {
  const bool latin = kind_of(name) == NameKind::LATIN;
  const auto haystack = latin ? fold_simple(text) : std::u32string(text);
  const auto needle = latin ? fold_simple(name) : std::u32string(name);
  std::vector<Span> out;
  for (auto at = haystack.find(needle); at != std::u32string::npos;
       at = haystack.find(needle, at + 1)) {
    out.push_back({at, at + needle.size()});
  }
  return out;
}

// The occurrences of every pair's surface, found in one pass.
std::vector<std::vector<Span>> candidates_of(std::u32string_view text,
                                             std::span<const SurfacePlaceholder> pairs) {
  std::unordered_map<std::u32string, std::vector<std::size_t>> by_folded;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    by_folded[fold_simple(pairs[i].surface)].push_back(i);
  }
  std::vector<std::u32string_view> words;
  std::vector<const std::vector<std::size_t>*> owners;
  for (const auto& [word, indices] : by_folded) {
    words.push_back(word);
    owners.push_back(&indices);
  }
  std::vector<std::vector<Span>> out(pairs.size());
  const text::RareWords search(words);  // most mentions are masked by now
  search.scan(
      text,
      [&](const text::MultiPattern::Hit& hit) {
        const auto found = text.substr(hit.start, hit.end - hit.start);
        for (const std::size_t i : *owners[hit.pattern]) {
          const auto& surface = pairs[i].surface;
          if (found == surface || !text::contains_ideograph(surface)) {
            out[i].push_back({hit.start, hit.end});
          }
        }
      },
      fold_character);
  return out;
}

// Applies pairs of which none can touch what another of them writes.
void spread_batch(MaskedText& text, std::span<const SurfacePlaceholder> pairs) {
  if (pairs.empty()) return;
  Surroundings around(text.text());
  const auto candidates = candidates_of(text.text(), pairs);
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    for (const Span& span : safe_spans(pairs[i].surface, candidates[i], around)) {
      around.write(span, pairs[i].placeholder);
    }
  }
  const auto edits = around.edits();
  if (!edits.empty()) text.write(edits);
}

void spread_one(MaskedText& text, const SurfacePlaceholder& pair) {
  if (pair.surface.empty()) return;
  const Surroundings around(text.text());
  std::vector<Edit> edits;
  for (const Span& span :
       safe_spans(pair.surface, candidates_of(text.text(), pair.surface), around)) {
    edits.push_back(
        {static_cast<Offset>(span.start), static_cast<Offset>(span.end), pair.placeholder});
  }
  if (!edits.empty()) text.write(edits);
}

// The strings with which placeholders begin and end, to tell which surfaces can
// occur across the edge of one or hold one.
class PlaceholderEdges {
 public:
  void add(std::u32string_view folded) {
    if (folded.empty() || !whole_.insert(std::u32string(folded)).second) return;
    longest_ = std::max(longest_, folded.size());
    openings_.insert(folded.front());
    characters_.insert(folded.begin(), folded.end());
    for (std::size_t i = 1; i < folded.size(); ++i) {
      beginnings_.emplace(folded.substr(0, i));
      ends_.emplace(folded.substr(i));
    }
  }

  bool are_crossed_by(std::u32string_view folded) const {
    return begins_with_an_end(folded) || ends_with_a_beginning(folded) || holds_a_whole(folded);
  }

 private:
  bool begins_with_an_end(std::u32string_view s) const {
    for (std::size_t n = 1; n <= s.size() && n < longest_; ++n) {
      if (!characters_.contains(s[n - 1])) return false;
      if (ends_.contains(s.substr(0, n))) return true;
    }
    return false;
  }

  bool ends_with_a_beginning(std::u32string_view s) const {
    for (std::size_t n = 1; n <= s.size() && n < longest_; ++n) {
      if (!characters_.contains(s[s.size() - n])) return false;
      if (beginnings_.contains(s.substr(s.size() - n))) return true;
    }
    return false;
  }

  bool holds_a_whole(std::u32string_view s) const {
    for (std::size_t at = 0; at < s.size(); ++at) {
      if (!openings_.contains(s[at])) continue;
      for (std::size_t n = 1; n <= longest_ && at + n <= s.size(); ++n) {
        if (whole_.contains(s.substr(at, n))) return true;
      }
    }
    return false;
  }

  text::ViewSet whole_;
  text::ViewSet beginnings_;
  text::ViewSet ends_;
  std::unordered_set<char32_t> openings_;
  std::unordered_set<char32_t> characters_;
  std::size_t longest_ = 0;
};

// A set of characters that may hold more than were added.
class RoughCharacters {
 public:
  void add(std::u32string_view characters) {
    for (const char32_t c : characters) bits_.set(c % bits_.size());
  }
  bool has(char32_t c) const { return bits_.test(c % bits_.size()); }

 private:
  std::bitset<4096> bits_;
};

// What placeholders are made of: enough to tell of nearly every surface that it has
// nothing to do with any of them.
class PlaceholderCharacters {
 public:
  explicit PlaceholderCharacters(const std::vector<std::u32string>& folded) {
    for (const auto& placeholder : folded) {
      longest_ = std::max(longest_, placeholder.size());
      ends_.add({&placeholder.front(), 1});
      ends_.add({&placeholder.back(), 1});
      all_.add(placeholder);
    }
  }

  // What crosses the edge of a placeholder, or holds a whole one, holds the character at
  // one of its ends. What occurs within one is made of its characters.
  bool may_meet(std::u32string_view folded) const {
    const auto any_end =
        std::any_of(folded.begin(), folded.end(), [this](char32_t c) { return ends_.has(c); });
    return any_end ||
           (folded.size() <= longest_ &&
            std::all_of(folded.begin(), folded.end(), [this](char32_t c) { return all_.has(c); }));
  }

 private:
  RoughCharacters ends_;
  RoughCharacters all_;
  std::size_t longest_ = 0;
};

std::vector<std::u32string> folded_placeholders(const std::vector<SurfacePlaceholder>& pairs) {
  std::vector<std::u32string> out;
  out.reserve(pairs.size());
  for (const auto& pair : pairs) out.push_back(fold_simple(pair.placeholder));
  return out;
}

// The pairs whose surface may meet a placeholder, by their folded surfaces.
using PairsBySurface = std::unordered_map<std::u32string, std::vector<std::size_t>>;
PairsBySurface candidates_to_meet(const std::vector<SurfacePlaceholder>& pairs,
                                  const std::vector<std::u32string>& placeholders) {
  const PlaceholderCharacters characters(placeholders);
  PairsBySurface out;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    auto folded = fold_simple(pairs[i].surface);
    if (characters.may_meet(folded)) out[std::move(folded)].push_back(i);
  }
  return out;
}

// For each pair, whether its surface can occur within a placeholder, across the
// edge of one, or around one. Such a pair is applied by itself.
std::vector<bool> meets_a_placeholder(const std::vector<SurfacePlaceholder>& pairs) {
  const bool has_empty = std::any_of(pairs.begin(), pairs.end(),
                                     [](const auto& pair) { return pair.placeholder.empty(); });
  std::vector<bool> meets(pairs.size(), has_empty);
  if (has_empty) return meets;
  const auto placeholders = folded_placeholders(pairs);
  const auto by_surface = candidates_to_meet(pairs, placeholders);
  if (by_surface.empty()) return meets;
  PlaceholderEdges edges;
  std::u32string joined;
  for (const auto& placeholder : placeholders) {
    edges.add(placeholder);
    joined += placeholder;
    joined += NOWHERE;
  }
  const auto note = [&](const std::vector<std::size_t>& indices) {
    for (const std::size_t i : indices) meets[i] = true;
  };
  std::vector<std::u32string_view> words;
  std::vector<const std::vector<std::size_t>*> owners;
  for (const auto& [surface, indices] : by_surface) {
    if (edges.are_crossed_by(surface)) note(indices);
    words.push_back(surface);
    owners.push_back(&indices);
  }
  text::MultiPattern(words).scan(
      joined, [&](const text::MultiPattern::Hit& hit) { note(*owners[hit.pattern]); });
  return meets;
}

}  // namespace

std::u32string _replace_party_org_surface_safe(std::u32string_view text, std::u32string_view name,
                                               std::u32string_view placeholder) {
  MaskedText out(text);
  spread_one(out, {std::u32string(name), std::u32string(placeholder)});
  return out.take_text();
}

void spread_surfaces(MaskedText& text, const std::vector<SurfacePlaceholder>& pairs) {
  const auto meets = meets_a_placeholder(pairs);
  const std::span<const SurfacePlaceholder> all(pairs);
  std::size_t begin = 0;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    if (!meets[i]) continue;
    spread_batch(text, all.subspan(begin, i - begin));
    spread_one(text, pairs[i]);
    begin = i + 1;
  }
  spread_batch(text, all.subspan(begin));
}

}  // namespace core::anonymization
