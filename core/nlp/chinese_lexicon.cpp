#include "core/nlp/chinese_lexicon.hpp"

#include <algorithm>

#include "core/text/flat_trie.hpp"

namespace core::text::trie_data {
extern "C" const std::uint64_t veildoc_trie_chinese_words[];
extern "C" const std::uint64_t veildoc_trie_name_characters[];
extern "C" const std::uint64_t veildoc_trie_prose_words[];
}  // namespace core::text::trie_data

namespace core::nlp {
namespace {

using recognition::ChineseWordClass;

// How likely a division is that no other list has, by Division.
constexpr std::uint8_t DIVISION_FREQUENCY[] = {0, 24, 20, 16, 10};
constexpr std::uint8_t BARE_DIVISION_FREQUENCY[] = {0, 24, 20, 12, 8};

// In the order of core/nlp/CMakeLists.txt.
constexpr ChineseWordClass CLASSES[] = {ChineseWordClass::ORDINARY, ChineseWordClass::PERSON,
                                        ChineseWordClass::PLACE, ChineseWordClass::ORGANIZATION,
                                        ChineseWordClass::CHARACTER};

}  // namespace

ChineseWordFacts chinese_word_facts(std::uint32_t payload) {
  ChineseWordFacts facts;
  facts.frequency = static_cast<std::uint8_t>(payload & 0x3FU);
  facts.division = static_cast<Division>(payload >> 9U & 7U);
  facts.bare_division = (payload >> 12U & 1U) != 0;
  facts.ambiguous_division = (payload >> 13U & 1U) != 0;
  facts.word_class = facts.frequency == 0 ? ChineseWordClass::PLACE : CLASSES[payload >> 6U & 7U];
  if (facts.division != Division::NONE) {
    const auto level = static_cast<std::size_t>(facts.division);
    // 保定市 with what it is, is nothing else.
    if (!facts.bare_division) {
      facts.ambiguous_division = false;
      facts.word_class = ChineseWordClass::PLACE;
    }
    facts.frequency = std::max(facts.frequency, facts.bare_division ? BARE_DIVISION_FREQUENCY[level]
                                                                    : DIVISION_FREQUENCY[level]);
  }
  return facts;
}

std::optional<ChineseWordFacts> chinese_word(std::u32string_view word) {
  const text::FlatTrie words(text::trie_data::veildoc_trie_chinese_words);
  const auto payload = words.find(word);
  if (!payload) return std::nullopt;
  return chinese_word_facts(*payload);
}

bool is_ordinary_word(std::u32string_view word, unsigned min_frequency) {
  const auto facts = chinese_word(word);
  return facts && facts->word_class == ChineseWordClass::ORDINARY &&
         facts->frequency >= min_frequency;
}

bool is_prose_word(std::u32string_view word) {
  return text::FlatTrie(text::trie_data::veildoc_trie_prose_words).find(word).has_value();
}

NameCharacter name_character(char32_t c) {
  const text::FlatTrie characters(text::trie_data::veildoc_trie_name_characters);
  const auto payload = characters.find({&c, 1});
  if (!payload) return {};
  const auto part = [&](unsigned shift) {
    return static_cast<std::uint8_t>(*payload >> shift & 0x1FU);
  };
  return {part(0), part(5), part(10)};
}

int given_name_score(std::u32string_view given) {
  if (given.empty() || given.size() > 2) return 0;
  const int last = name_character(given.back()).last;
  const int middle = given.size() == 2 ? name_character(given.front()).middle : 16;
  return last == 0 || middle == 0 ? 0 : last + middle - 32;
}

}  // namespace core::nlp
