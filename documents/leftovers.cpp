#include "documents/leftovers.hpp"

#include <algorithm>
#include <map>
#include <utility>

#include "core/anonymization/placeholders.hpp"
#include "core/hit_fates.hpp"
#include "core/text/unicode.hpp"
#include "core/text/word_set.hpp"
#include "documents/characters.hpp"

namespace documents {
namespace {

namespace anonymization = core::anonymization;
using anonymization::Offset;
using anonymization::Stretches;

// Kinds whose surfaces may mean something else elsewhere: the place of a court, a count
// of goods, a common noun.
constexpr auto ORDINARY_TAGS =
    core::text::type_names({"ADDRESS", "DATE", "MONEY", "PERCENT", "QUANTITY", "INSTITUTION", "NRP",
                            "PRODUCT", "GAME", "PROJECT"});
// A shorter surface turns up by chance: 张伟民 in 张伟民间借贷, Grace in Grace Period.
constexpr std::size_t LEAST_IDEOGRAPHS = 4;
constexpr std::size_t LEAST_WORDS = 2;
constexpr std::size_t LEAST_OF_A_NUMBER = 7;

struct Known {
  std::u32string surface;
  std::u32string placeholder;
};

std::size_t index_of(Offset offset) { return static_cast<std::size_t>(offset); }

bool overlaps(const Stretches& stretches, std::size_t start, std::size_t end) {
  const auto found = std::partition_point(
      stretches.begin(), stretches.end(),
      [start](const auto& stretch) { return index_of(stretch.second) <= start; });
  return found != stretches.end() && index_of(found->first) < end;
}

// As it is spelled, but for characters that nobody sees and how far blanks reach.
std::u32string spelled(std::u32string_view text) {
  std::u32string out;
  for (const char32_t c : text) {
    if (is_invisible(c)) continue;
    if (!core::text::is_space(c)) {
      out += c;
    } else if (!out.empty() && out.back() != U' ') {
      out += U' ';
    }
  }
  return out;
}

// Letters and digits of alphabets go on in a word; ideographs do not.
bool goes_on(char32_t a, char32_t b) {
  const auto in_word = [](char32_t c) {
    return c == U'_' || (core::text::is_letter_or_number(c) && !core::text::is_ideograph(c));
  };
  return in_word(a) && in_word(b);
}

bool is_whole_word(std::u32string_view text, std::size_t start, std::size_t end) {
  if (start > 0 && goes_on(text[start - 1], text[start])) return false;
  return end >= text.size() || !goes_on(text[end - 1], text[end]);
}

bool is_distinct(std::u32string_view surface) {
  const auto count = [surface](const auto& is) {
    return static_cast<std::size_t>(std::count_if(surface.begin(), surface.end(), is));
  };
  if (count(core::text::is_ideograph) >= LEAST_IDEOGRAPHS) return true;
  if (count(core::text::is_decimal_digit) > 0 || surface.find(U'@') != surface.npos) {
    return surface.size() >= LEAST_OF_A_NUMBER;
  }
  return count([](char32_t c) { return c == U' '; }) + 1 >= LEAST_WORDS;
}

bool names_somebody(const Known& known) {
  const auto parsed = anonymization::parse_numbered_placeholder(known.placeholder);
  return (!parsed || !ORDINARY_TAGS.contains(std::string_view(parsed->tag))) &&
         is_distinct(spelled(known.surface));
}

Leftover::Kind kind_of_left(std::u32string_view text, std::size_t start, std::size_t end,
                            const Known& known, const Stretches& kept) {
  if (overlaps(kept, start, end)) return Leftover::Kind::KEPT;
  const bool same = spelled(text.substr(start, end - start)) == spelled(known.surface);
  return same && names_somebody(known) && is_whole_word(text, start, end) ? Leftover::Kind::MISSED
                                                                          : Leftover::Kind::ALIKE;
}

// The stretches as pairs, united and sorted.
Stretches united(Stretches stretches) {
  std::sort(stretches.begin(), stretches.end());
  Stretches out;
  for (const auto& [start, end] : stretches) {
    if (start >= end) continue;
    if (!out.empty() && start <= out.back().second) {
      out.back().second = std::max(out.back().second, end);
    } else {
      out.emplace_back(start, end);
    }
  }
  return out;
}

}  // namespace

std::vector<Leftover> leftovers(std::u32string_view text,
                                const std::vector<anonymization::MaskedStretch>& masked,
                                const Stretches& kept) {
  std::map<std::u32string, Known> known;  // by what is searched for
  std::vector<std::u32string> surfaces;
  Stretches taken;
  for (const auto& stretch : masked) {
    std::u32string surface(core::text::slice(text, stretch.start, stretch.end));
    taken.emplace_back(stretch.start, stretch.end);
    if (known.try_emplace(SurfaceSearch::compact(surface), Known{surface, stretch.placeholder})
            .second) {
      surfaces.push_back(std::move(surface));
    }
  }
  const SurfaceSearch search(surfaces);
  auto places = search.find_in(text);
  std::sort(places.begin(), places.end(), [](const auto& a, const auto& b) {
    return a.start != b.start ? a.start < b.start : a.end > b.end;
  });
  std::vector<Leftover> out;
  for (const auto& place : places) {
    if (!out.empty() && place.start < out.back().end) continue;
    if (overlaps(taken, place.start, place.end)) continue;
    const auto& like = known.at(std::u32string(place.word));
    out.push_back({place.start, place.end, kind_of_left(text, place.start, place.end, like, kept),
                   like.placeholder});
  }
  return out;
}

Stretches kept_on_purpose(std::u32string_view text,
                          const std::vector<anonymization::RecognizerResult>& hits,
                          std::string_view language, std::string_view strategy_profile,
                          const anonymization::Overrides& overrides) {
  Stretches out = overrides.keep;
  const auto fates = anonymization::hit_fates(text, hits, language, strategy_profile);
  for (std::size_t i = 0; i < hits.size(); ++i) {
    if (fates[i].step.empty()) continue;
    if (!fates[i].became) {
      out.emplace_back(hits[i].start, hits[i].end);
    } else {
      out.emplace_back(hits[i].start, fates[i].became->first);
      out.emplace_back(fates[i].became->second, hits[i].end);
    }
  }
  return united(std::move(out));
}

}  // namespace documents
