#include "core/nlp/name_evidence.hpp"

#include <algorithm>
#include <array>
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

// What is known of a character, all in one place: it is asked of every character of a text.
struct Character {
  std::int16_t surname = NO_NAME;  // evidence as a surname
  std::int8_t middle = 0;          // as the first of two given characters
  std::int8_t last = 0;            // as the last one
  std::uint8_t cost = RAREST;      // as a word
  bool listed_surname = false;
  bool begins_compound = false;  // 欧 of 欧阳
  bool word_as_surname = false;
};

class Characters {
 public:
  static const Character& of(char32_t c) {
    static const Characters characters;
    const std::size_t i = c - FIRST;
    return c >= FIRST && i < characters.facts_.size() ? characters.facts_[i] : characters.other_;
  }

 private:
  static constexpr char32_t FIRST = 0x3400;  // the ideographs of the basic plane
  static constexpr std::size_t COUNT = 0xA000 - FIRST;

  Characters() : facts_(COUNT) {
    for (std::size_t i = 0; i < COUNT; ++i) read(static_cast<char32_t>(FIRST + i), facts_[i]);
    for (const auto& word : text::lexicon_words(text::lexicon_data::given_name_characters)) {
      if (Character* c = at(word.front())) {
        c->middle = std::max<std::int8_t>(c->middle, LISTED_GIVEN - NEUTRAL);
        c->last = std::max<std::int8_t>(c->last, LISTED_GIVEN - NEUTRAL);
      }
    }
    for (const char32_t name : WORDS_AS_SURNAMES) {
      Character* c = at(name);
      c->word_as_surname = true;
      c->surname = std::max<std::int16_t>(c->surname, WORD_AS_SURNAME);
    }
    for (const auto& name : text::lexicon_words(text::lexicon_data::chinese_surnames)) {
      Character* c = at(name.front());
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
  }

  static void read(char32_t c, Character& out) {
    const NameCharacter name = name_character(c);
    if (name.surname > 0) out.surname = static_cast<std::int16_t>(name.surname - NEUTRAL);
    const auto given = [](std::uint8_t known) {
      return static_cast<std::int8_t>((known > 0 ? known : UNSEEN_GIVEN) - NEUTRAL);
    };
    out.middle = given(name.middle);
    out.last = given(name.last);
    out.cost = static_cast<std::uint8_t>(word_cost({&c, 1}));
  }

  Character* at(char32_t c) {
    return c >= FIRST && c - FIRST < COUNT ? &facts_[c - FIRST] : nullptr;
  }

  std::vector<Character> facts_;
  Character other_{NO_NAME, UNSEEN_GIVEN - NEUTRAL, UNSEEN_GIVEN - NEUTRAL, RAREST, false, false};
};

// The cost of the likeliest words of a short stretch.
Evidence cost_of_words(std::u32string_view text) {
  constexpr std::size_t LONGEST = 12;
  constexpr std::size_t LONGEST_WORD = 4;
  if (text.empty()) return 0;
  if (text.size() > LONGEST) return RAREST;
  std::array<Evidence, LONGEST + 1> best{};
  for (std::size_t end = 1; end <= text.size(); ++end) {
    best[end] = best[end - 1] + Characters::of(text[end - 1]).cost;
    for (std::size_t length = 2; length <= std::min(end, LONGEST_WORD); ++length) {
      const auto facts = chinese_word(text.substr(end - length, length));
      if (facts) best[end] = std::min(best[end], best[end - length] + RAREST - facts->frequency);
    }
  }
  return best[text.size()];
}

// What the characters of the name cost when it is one.
Evidence cost_of_name(std::u32string_view name, std::size_t surname) {
  const auto given = name.substr(surname);
  Evidence weight = 0;
  Evidence cost = 0;
  for (std::size_t i = 0; i < given.size(); ++i) {
    const Character& facts = Characters::of(given[i]);
    weight += i + 1 < given.size() ? facts.middle : facts.last;
    cost += facts.cost;
  }
  if (given.size() == 2) {
    const Evidence as_word = word_cost(given);
    if (as_word < RAREST && weight > 0) cost = std::min(cost, as_word + WORD_AS_GIVEN_NAME);
  }
  const auto first = name.substr(0, surname);
  const Evidence first_cost = surname == 1 ? Characters::of(first.front()).cost : word_cost(first);
  return first_cost - surname_evidence(first) + cost - weight;
}

}  // namespace

std::size_t surname_length(std::u32string_view t, std::size_t at) {
  if (at >= t.size()) return 0;
  const Character& facts = Characters::of(t[at]);
  if (facts.begins_compound && at + 2 <= t.size() && is_chinese_surname(t.substr(at, 2))) return 2;
  return facts.listed_surname || facts.surname >= 0 || facts.word_as_surname ? 1 : 0;
}

bool is_listed_surname(char32_t c) { return Characters::of(c).listed_surname; }

Evidence surname_evidence(std::u32string_view surname) {
  if (surname.size() > 1) return is_chinese_surname(surname) ? COMPOUND_SURNAME : NO_NAME;
  return Characters::of(surname.front()).surname;
}

Evidence given_evidence(char32_t c) {
  const Character& facts = Characters::of(c);
  return std::max(facts.middle, facts.last);
}

Evidence name_evidence(const NlpArtifacts& a, std::size_t start, std::size_t end,
                       std::size_t surname) {
  const std::u32string_view t = a.folded;
  const auto name = t.substr(start, end - start);
  if (surname == 0 || name.size() <= surname) return NO_NAME;
  if (surname_evidence(name.substr(0, surname)) == NO_NAME) return NO_NAME;
  for (const char32_t c : name.substr(surname)) {
    if (!is_han(c) || NEVER_BETWEEN_WORDS_OF_NAMES.find(c) != NEVER_BETWEEN_WORDS_OF_NAMES.npos)
      return NO_NAME;
  }
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
  const Evidence around =
      cost_of_words(t.substr(left, start - left)) + cost_of_words(t.substr(end, right - end));
  return words - around - cost_of_name(name, surname);
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
