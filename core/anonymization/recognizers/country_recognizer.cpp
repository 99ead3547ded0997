#include "core/anonymization/recognizers/country_recognizer.hpp"

#include <algorithm>
#include <memory>

#include "core/anonymization/country_names.hpp"
#include "core/text/multi_pattern.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

using recognition::NlpArtifacts;
using recognition::WordClass;
using recognition::WordHit;
using text::MultiPattern;

constexpr double SCORE = 0.6;
// An abbreviation such as US is no word of a sentence in capitals.
constexpr std::size_t LONGEST_ABBREVIATION = 3;

char32_t folded_letter(char32_t c) { return text::case_fold_simple(c); }

struct Words {
  std::vector<std::u32string> spellings;
  std::unique_ptr<const MultiPattern> search;
};

Words make_words() {
  Words words{known_country_names(), nullptr};
  std::vector<std::u32string> keys = words.spellings;
  for (auto& key : keys) std::transform(key.begin(), key.end(), key.begin(), folded_letter);
  words.search =
      std::make_unique<MultiPattern>(std::vector<std::u32string_view>(keys.begin(), keys.end()));
  return words;
}

const Words& words() {
  static const Words instance = make_words();
  return instance;
}

bool is_latin(char32_t c) { return text::is_ascii_alnum(c) || (c >= 0xC0 && c <= 0x24F); }

bool is_small_letter(char32_t c) {
  return is_latin(c) && !text::is_ascii_digit(c) && c == folded_letter(c);
}

bool is_spelled(std::u32string_view surface, std::u32string_view spelling) {
  if (surface == spelling) return true;
  return spelling.size() > LONGEST_ABBREVIATION &&
         std::none_of(surface.begin(), surface.end(), is_small_letter);
}

// A word of Latin letters stands alone; US$ is a currency.
bool stands_alone(std::u32string_view t, const MultiPattern::Hit& hit) {
  if (is_latin(t[hit.start]) && hit.start > 0 && is_latin(t[hit.start - 1])) return false;
  if (!is_latin(t[hit.end - 1]) || hit.end == t.size()) return true;
  return !is_latin(t[hit.end]) && t[hit.end] != U'$';
}

// Whether a word of the class covers a part of the hit.
bool is_taken(const NlpArtifacts& a, WordClass word_class, const MultiPattern::Hit& hit) {
  const auto& list = a.of(word_class);
  const auto it = std::partition_point(list.begin(), list.end(),
                                       [&](const WordHit& w) { return w.end <= hit.start; });
  return it != list.end() && it->start < hit.end;
}

bool is_taken(const NlpArtifacts& a, const MultiPattern::Hit& hit) {
  return is_taken(a, WordClass::PLACE, hit) || is_taken(a, WordClass::EN_PLACE, hit) ||
         is_taken(a, WordClass::SHIELD, hit) || is_taken(a, WordClass::PUBLIC_NAME, hit);
}

}  // namespace

CountryRecognizer::CountryRecognizer()
    : EntityRecognizer("CountryRecognizer", {std::string(entity_type::LOCATION)}) {}

std::vector<RecognizerResult> CountryRecognizer::analyze(const NlpArtifacts& artifacts) const {
  const std::u32string_view t = artifacts.folded;
  std::vector<RecognizerResult> results;
  const auto visit = [&](const MultiPattern::Hit& hit) {
    if (!stands_alone(t, hit) || is_taken(artifacts, hit)) return;
    if (!is_spelled(t.substr(hit.start, hit.end - hit.start), words().spellings[hit.pattern])) {
      return;
    }
    const RecognizerResult result{std::string(entity_type::LOCATION),
                                  static_cast<Offset>(hit.start), static_cast<Offset>(hit.end),
                                  SCORE};
    // Ends come in order: a name within the one before, or around it.
    while (!results.empty() && results.back().start >= result.start) results.pop_back();
    if (results.empty() || results.back().end <= result.start) results.push_back(result);
  };
  words().search->scan(t, visit, folded_letter);
  return results;
}

}  // namespace core::anonymization
