// What the large Chinese lists say of a word or of a character of a name.
//
// Words are given as in NlpArtifacts::folded (simplified characters). Lookups
// need no preparation and may be made from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "core/recognition/nlp_artifacts.hpp"
#include "core/text/flat_trie.hpp"

namespace core::text::trie_data {
extern "C" const std::uint64_t veildoc_trie_chinese_words[];
}  // namespace core::text::trie_data

namespace core::nlp {

using recognition::Division;

struct ChineseWordFacts {
  recognition::ChineseWordClass word_class = recognition::ChineseWordClass::UNKNOWN;
  // As in ChineseWord; of a division that is no other word: by its level.
  std::uint8_t frequency = 0;
  Division division = Division::NONE;
  bool bare_division = false;       // 南山 for 南山区
  bool ambiguous_division = false;  // also an everyday word: 和平, 城关
};

// Of a word of the lists; nothing if none has it.
std::optional<ChineseWordFacts> chinese_word(std::u32string_view word);

// Whether it is an everyday word, no name and no character without a use of its
// own, of at least that frequency (see ChineseWord).
bool is_ordinary_word(std::u32string_view word, unsigned min_frequency = 1);

// Whether it is a function word or a frequent verb, which stand beside the names of
// organizations and not in them: 由, 委托, 根据.
bool is_prose_word(std::u32string_view word);

// How much likelier a character is at each place of a person's name than in
// running text: 16 is as likely, each step up (to 31) or down (to 1) a factor of
// the square root of two, 0 is not found there.
struct NameCharacter {
  std::uint8_t surname = 0;  // first
  std::uint8_t middle = 0;   // first of two given characters
  std::uint8_t last = 0;     // second of two, or the only one
};
NameCharacter name_character(char32_t c);

// How much a given name of one or two characters reads like one: the steps above
// or below 16 of its characters, added up. 0 if any is never found so, and for
// other lengths; above 8 for most names, lower where the characters are common (建国).
int given_name_score(std::u32string_view given);

// Facts in the form in which the trie of words holds them.
ChineseWordFacts chinese_word_facts(std::uint32_t payload);

// Their frequency alone, for whoever asks for it at every character.
inline std::uint8_t chinese_word_frequency(std::uint32_t payload) {
  constexpr std::uint32_t DIVISION = 7U << 9U;
  return (payload & DIVISION) == 0 ? static_cast<std::uint8_t>(payload & 0x3FU)
                                   : chinese_word_facts(payload).frequency;
}

// Calls visit(length, frequency) for every word of the lists that `text` begins with,
// shortest first.
template <class Visit>
void each_chinese_word(std::u32string_view text, Visit visit) {
  const text::FlatTrie words(text::trie_data::veildoc_trie_chinese_words);
  words.each_prefix(text, [&](std::size_t length, std::uint32_t payload) {
    visit(length, chinese_word_frequency(payload));
  });
}

}  // namespace core::nlp
