#include "core/nlp/name_evidence.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_lexicon.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/lexicon.hpp"

namespace core::text::lexicon_data {
extern const std::string_view chinese_surnames;
extern const std::string_view given_name_characters;
}  // namespace core::text::lexicon_data

namespace core::nlp {
namespace {

using recognition::ChineseWordClass;
using recognition::NlpArtifacts;

// What a word costs that stands once in the corpus of the lists.
constexpr Evidence RAREST = 52;
// And the most frequent one that the lists could hold.
constexpr Evidence CHEAPEST_WORD = RAREST - 63;
constexpr Evidence NEUTRAL = 16;
constexpr Evidence UNSEEN_GIVEN = 9;
constexpr Evidence LISTED_GIVEN = 20;
constexpr Evidence LISTED_SURNAME = 20;
constexpr Evidence FREQUENT_WORD = 25;
constexpr Evidence COMPOUND_SURNAME = 12;
// A name of the dictionary is that of a famous person; it may well be another's.
constexpr Evidence KNOWN_NAME = 14;
// The rarest words of three characters that read like a name often are one.
constexpr std::uint8_t RARE_WORD = 5;
// Contracts name a person more often than one of the thousands of small places.
constexpr std::uint8_t SMALL_PLACE = 14;
constexpr Evidence UNLIKELY_PLACE = 8;
// Given names are often words: 建国, 光明.
constexpr Evidence WORD_AS_GIVEN_NAME = 2;

// Surnames of few that are frequent words: names behind a role or in a list at most.
constexpr std::u32string_view WORDS_AS_SURNAMES = U"开令税代步候充赏腾琴果撒朵闪药诺顿展钊籍";
constexpr Evidence WORD_AS_SURNAME = -6;

// Never in a given name: they join words to sentences.
constexpr std::u32string_view NEVER_BETWEEN_WORDS_OF_NAMES =
    U"的了是不与或及等被把但且从给就都也还要每另所她它们这款项即均"
    U"吗呢吧啊很最您你我他其该此副";

Evidence word_cost(std::u32string_view word) {
  const auto facts = chinese_word(word);
  return facts ? RAREST - facts->frequency : RAREST;
}

NameCharacterFacts facts_by_lists(char32_t c) {
  NameCharacterFacts out;
  const NameCharacter name = name_character(c);
  if (name.surname > 0) out.surname = static_cast<std::int16_t>(name.surname - NEUTRAL);
  const auto given = [](std::uint8_t known) {
    return static_cast<std::int8_t>((known > 0 ? known : UNSEEN_GIVEN) - NEUTRAL);
  };
  out.middle = given(name.middle);
  out.last = given(name.last);
  out.cost = static_cast<std::uint8_t>(word_cost({&c, 1}));
  return out;
}

// The cost of the likeliest words of a short stretch.
Evidence cost_of_words(std::u32string_view text) {
  constexpr std::size_t LONGEST = 12;
  constexpr std::size_t LONGEST_WORD = 4;
  if (text.empty()) return 0;
  const NameCharacters& characters = NameCharacters::instance();
  if (text.size() == 1) return characters.of(text.front()).cost;
  if (text.size() > LONGEST) return RAREST;
  std::array<Evidence, LONGEST + 1> best{};
  std::fill_n(best.begin() + 1, text.size(), (RAREST + 1) * static_cast<Evidence>(LONGEST));
  for (std::size_t at = 0; at < text.size(); ++at) {
    best[at + 1] = std::min(best[at + 1], best[at] + characters.of(text[at]).cost);
    each_chinese_word(
        text.substr(at, LONGEST_WORD), [&](std::size_t length, std::uint8_t frequency) {
          if (length == 1) return;
          best[at + length] = std::min(best[at + length], best[at] + RAREST - frequency);
        });
  }
  return best[text.size()];
}

// What the characters of the surname cost when it is one.
Evidence cost_of_surname(std::u32string_view surname) {
  const Evidence cost = surname.size() == 1 ? NameCharacters::instance().of(surname.front()).cost
                                            : word_cost(surname);
  return cost - surname_evidence(surname);
}

struct GivenName {
  Evidence weight = 0;  // as a given name
  Evidence cost = 0;    // of its characters as words
};

GivenName weigh_given_name(std::u32string_view given) {
  GivenName out;
  for (std::size_t i = 0; i < given.size(); ++i) {
    const NameCharacterFacts& facts = NameCharacters::instance().of(given[i]);
    out.weight += i + 1 < given.size() ? facts.middle : facts.last;
    out.cost += facts.cost;
  }
  return out;
}

bool may_be_given_name(std::u32string_view given) {
  return std::all_of(given.begin(), given.end(), [](char32_t c) {
    return is_han(c) && !NameCharacters::instance().of(c).never_in_name;
  });
}

}  // namespace

const NameCharacters& NameCharacters::instance() {
  static const NameCharacters characters;
  return characters;
}

NameCharacters::NameCharacters()
    : facts_(COUNT), other_{NO_NAME, UNSEEN_GIVEN - NEUTRAL, UNSEEN_GIVEN - NEUTRAL, RAREST} {
  for (std::size_t i = 0; i < COUNT; ++i) {
    facts_[i] = facts_by_lists(static_cast<char32_t>(FIRST + i));
  }
  for (const auto& word : text::lexicon_words(text::lexicon_data::given_name_characters)) {
    if (NameCharacterFacts* c = at(word.front())) {
      c->middle = std::max<std::int8_t>(c->middle, LISTED_GIVEN - NEUTRAL);
      c->last = std::max<std::int8_t>(c->last, LISTED_GIVEN - NEUTRAL);
    }
  }
  for (const char32_t name : WORDS_AS_SURNAMES) {
    NameCharacterFacts* c = at(name);
    c->is_surname = true;
    c->surname = std::max<std::int16_t>(c->surname, WORD_AS_SURNAME);
  }
  for (const auto& name : text::lexicon_words(text::lexicon_data::chinese_surnames)) {
    NameCharacterFacts* c = at(name.front());
    if (c == nullptr) continue;
    if (name.size() > 1) {
      c->begins_compound = true;
      continue;
    }
    c->listed_surname = true;
    // A rare surname; one that is a frequent word begins names less often still.
    if (c->surname == NO_NAME) {
      c->surname = static_cast<std::int16_t>(
          std::min<Evidence>(LISTED_SURNAME - NEUTRAL, c->cost - FREQUENT_WORD));
    }
  }
  for (NameCharacterFacts& c : facts_) {
    c.is_surname = c.is_surname || c.listed_surname || c.surname >= 0;
  }
  for (const char32_t c : NEVER_BETWEEN_WORDS_OF_NAMES) at(c)->never_in_name = true;
}

NameCharacterFacts* NameCharacters::at(char32_t c) {
  return c >= FIRST && c - FIRST < COUNT ? &facts_[c - FIRST] : nullptr;
}

bool NameCharacters::begins_with_compound(std::u32string_view text) {
  return text.size() >= 2 && is_chinese_surname(text.substr(0, 2));
}

std::size_t surname_length(std::u32string_view t, std::size_t at) {
  return NameCharacters::instance().surname_length(t, at);
}

bool is_listed_surname(char32_t c) { return NameCharacters::instance().of(c).listed_surname; }

Evidence surname_evidence(std::u32string_view surname) {
  if (surname.size() > 1) return is_chinese_surname(surname) ? COMPOUND_SURNAME : NO_NAME;
  return NameCharacters::instance().of(surname.front()).surname;
}

Evidence given_evidence(char32_t c) { return NameCharacters::instance().of(c).given(); }

Evidence name_evidence_from(const NlpArtifacts& a, std::size_t start, std::size_t end,
                            std::size_t surname, Evidence least) {
  const std::u32string_view t = a.folded;
  const auto name = t.substr(start, end - start);
  if (surname == 0 || name.size() <= surname) return NO_NAME;
  const auto first = name.substr(0, surname);
  const auto given = name.substr(surname);
  if (surname_evidence(first) == NO_NAME || !may_be_given_name(given)) return NO_NAME;
  std::size_t left = start;
  std::size_t right = end;
  Evidence words = 0;
  for (std::size_t i = word_index(a.chinese_words, start);
       i < a.chinese_words.size() && a.chinese_words[i].start < end; ++i) {
    const auto& word = a.chinese_words[i];
    left = std::min<std::size_t>(left, word.start);
    right = std::max<std::size_t>(right, word.end);
    words += RAREST - word.frequency;
    const bool rare_name = word.frequency <= RARE_WORD && word.length() == 3 && name.size() == 3;
    if (word.word_class == ChineseWordClass::PERSON || rare_name) words += KNOWN_NAME;
    if (word.word_class == ChineseWordClass::PLACE && word.frequency <= SMALL_PLACE) {
      words += UNLIKELY_PLACE;
    }
  }
  // What can only lower the sum, or raise it by little, is looked up last.
  const GivenName weighed = weigh_given_name(given);
  const Evidence so_far = words + weighed.weight - cost_of_surname(first);
  const bool may_be_word = given.size() == 2 && weighed.weight > 0;
  const Evidence least_cost =
      may_be_word ? std::min(weighed.cost, CHEAPEST_WORD + WORD_AS_GIVEN_NAME) : weighed.cost;
  if (so_far - least_cost < least) return NO_NAME;
  const Evidence around =
      cost_of_words(t.substr(left, start - left)) + cost_of_words(t.substr(end, right - end));
  Evidence cost = weighed.cost;
  if (may_be_word && so_far - least_cost - around >= least) {
    const Evidence as_word = word_cost(given);
    if (as_word < RAREST) cost = std::min(cost, as_word + WORD_AS_GIVEN_NAME);
  }
  return so_far - around - cost;
}

Evidence name_evidence(const NlpArtifacts& a, std::size_t start, std::size_t end,
                       std::size_t surname) {
  return name_evidence_from(a, start, end, surname, std::numeric_limits<Evidence>::min());
}

std::size_t likeliest_name_end(const NlpArtifacts& a, std::size_t at, std::size_t surname) {
  std::size_t best = at;
  Evidence most = NO_NAME;
  for (std::size_t given = 1; given <= 2 && at + surname + given <= a.folded.size(); ++given) {
    const Evidence evidence = name_evidence(a, at, at + surname + given, surname);
    if (evidence > most) {
      most = evidence;
      best = at + surname + given;
    }
  }
  return best;
}

}  // namespace core::nlp
