// What the large lists in Latin letters say of a word: common English word, name of
// a person, city of the world.
//
// Words are looked up without regard to case and accents ("Müller", "MULLER" and
// "muller" are one; "Mueller" is listed too), with ' or ’. Lookups need no
// preparation and may be made from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace core::nlp {

enum class LatinNameClass : std::uint8_t {
  NONE,
  GIVEN,
  SURNAME,
  BOTH,   // given name and surname
  PROPER  // written with a capital in English dictionaries: a person, a place, a brand
};

enum class WorldCity : std::uint8_t {
  NONE,
  CITY,  // from 15,000 inhabitants, or a seat of administration
  LARGE  // from 500,000 inhabitants, or a capital
};

struct LatinWordFacts {
  // As an English word in small letters: 0 is none, 1 stands hardly ever in 50
  // million words of everyday language, each further step is ten times as often, up
  // to 7. Words of contracts have at least 3; words that are mostly names at most 2.
  std::uint8_t english_frequency = 0;
  LatinNameClass name_class = LatinNameClass::NONE;
  bool name_is_common_word = false;  // May, Price, Stone
  WorldCity city = WorldCity::NONE;
  bool city_is_common_word = false;  // Reading, Mobile, Nice
  bool city_is_person_name = false;  // Washington, Paris
};

// All of it in one lookup. Nothing is known of an empty word.
LatinWordFacts latin_word(std::u32string_view word);

// Frequency from which a word counts as common: no rare word that hides a name.
inline constexpr unsigned COMMON_ENGLISH_WORD = 2;
bool is_common_english_word(std::u32string_view word, unsigned min_frequency = COMMON_ENGLISH_WORD);
unsigned english_word_frequency(std::u32string_view word);
LatinNameClass latin_name_class(std::u32string_view word);

// "new york" too: words with single blanks.
bool is_world_city(std::u32string_view words);

// The length in code points of the longest city that `text` begins with and that
// ends with a word; 0 if there is none.
std::size_t world_city_length(std::u32string_view text);

}  // namespace core::nlp
