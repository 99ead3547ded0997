// The words of the embedded analyzer as the build compiles them from data/:
// tools/lexicons/compile_vocabulary.cpp writes what vocabulary.cpp reads.
#pragma once

#include <cstdint>

#include "core/recognition/nlp_artifacts.hpp"

namespace core::nlp {

// How a word must be written in the text to count.
enum class Case : std::uint8_t {
  ANY,
  CAPITAL,  // its first letter is a capital; a word of two letters is all capitals
  EXACT     // as in the list, or all in capitals if it is longer than an abbreviation
};

constexpr Case case_of(recognition::WordClass c) {
  using recognition::WordClass;
  switch (c) {
    case WordClass::EN_LEGAL_FORM:
    case WordClass::EN_ORGANIZATION_HEAD:
    case WordClass::EN_TITLE:
    case WordClass::EN_GIVEN_NAME:
      return Case::CAPITAL;
    case WordClass::EN_PLACE:
    case WordClass::EN_REGION:
    case WordClass::PUBLIC_NAME:
      return Case::EXACT;
    default:
      return Case::ANY;
  }
}

// What a word of the trie, which holds them in small letters, stands for.
struct VocabularyUse {
  recognition::WordClass word_class;
  std::uint16_t length;    // of the spelling; 0 where it does not count
  std::uint32_t spelling;  // where it begins in `spellings`
};

namespace vocabulary_data {

// Those of payload p of the trie are uses[first_uses[p]] to uses[first_uses[p + 1]].
extern const std::uint32_t first_uses[];
extern const VocabularyUse uses[];
extern const char32_t spellings[];

}  // namespace vocabulary_data

}  // namespace core::nlp
