#include "core/anonymization/recognizers/country_recognizer.hpp"

#include <algorithm>
#include <memory>

#include "core/anonymization/country_names.hpp"
#include "core/recognition/word_edges.hpp"
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

struct Words {
  std::vector<std::u32string> spellings;
  std::unique_ptr<const MultiPattern> search;
};

Words make_words() {
  Words words{known_country_names(), nullptr};
  std::vector<std::u32string> keys = words.spellings;
  for (auto& key : keys)
    std::transform(key.begin(), key.end(), key.begin(), recognition::fold_letter);
  words.search =
      std::make_unique<MultiPattern>(std::vector<std::u32string_view>(keys.begin(), keys.end()));
  return words;
}

const Words& words() {
  static const Words instance = make_words();
  return instance;
}

bool is_small_letter(char32_t c) {
  return recognition::is_spaced_letter(c) && !text::is_ascii_digit(c) &&
         c == recognition::fold_letter(c);
}

bool is_spelled(std::u32string_view surface, std::u32string_view spelling) {
  if (surface == spelling) return true;
  return spelling.size() > LONGEST_ABBREVIATION &&
         std::none_of(surface.begin(), surface.end(), is_small_letter);
}

// A whole word; US$ is a currency.
bool is_word(std::u32string_view t, const MultiPattern::Hit& hit) {
  return recognition::stands_alone(t, hit.start, hit.end) &&
         !(hit.end < t.size() && t[hit.end] == U'$');
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
    if (!is_word(t, hit) || is_taken(artifacts, hit)) return;
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
  words().search->scan(t, visit, recognition::fold_letter);
  return results;
}

}  // namespace core::anonymization
