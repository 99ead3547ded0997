// How much likelier the characters of a stretch are the name of a person than words.
//
// The text is weighed as the dictionary cuts it: what the words around and within
// the stretch cost, against what they cost when the stretch is a name.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/recognition/nlp_artifacts.hpp"

namespace core::nlp {

// Half steps of the binary logarithm, as the frequencies of the lists.
using Evidence = int;

inline constexpr Evidence NO_NAME = -1000;

// What is known of a character, all in one place: it is asked of every character of a text.
struct NameCharacterFacts {
  std::int16_t surname = NO_NAME;  // evidence as a surname
  std::int8_t middle = 0;          // as the first of two given characters
  std::int8_t last = 0;            // as the last one
  std::uint8_t cost = 0;           // as a word
  bool listed_surname : 1 = false;
  bool begins_compound : 1 = false;  // 欧 of 欧阳
  bool is_surname : 1 = false;
  bool never_in_name : 1 = false;  // joins words to sentences

  Evidence given() const { return std::max(middle, last); }
};

class NameCharacters {
 public:
  // Made at the first call.
  static const NameCharacters& instance();

  const NameCharacterFacts& of(char32_t c) const {
    const std::size_t i = c - FIRST;
    return c >= FIRST && i < facts_.size() ? facts_[i] : other_;
  }

  // Calls visit(c) for each character that is a surname or the first one of some.
  template <class Visit>
  void each_surname_beginning(Visit visit) const {
    for (std::size_t i = 0; i < facts_.size(); ++i) {
      if (facts_[i].is_surname || facts_[i].begins_compound) {
        visit(static_cast<char32_t>(FIRST + i));
      }
    }
  }

  // See surname_length.
  std::size_t surname_length(std::u32string_view text, std::size_t at) const {
    if (at >= text.size()) return 0;
    const NameCharacterFacts& facts = of(text[at]);
    if (facts.begins_compound && begins_with_compound(text.substr(at))) return 2;
    return facts.is_surname ? 1 : 0;
  }

 private:
  static constexpr char32_t FIRST = 0x3400;  // the ideographs of the basic plane
  static constexpr std::size_t COUNT = 0xA000 - FIRST;

  NameCharacters();
  NameCharacterFacts* at(char32_t c);
  static bool begins_with_compound(std::u32string_view text);

  std::vector<NameCharacterFacts> facts_;
  NameCharacterFacts other_;
};

// The length of the surname with which the text at `at` begins: 2, 1 or 0 for none.
std::size_t surname_length(std::u32string_view text, std::size_t at);

// Whether the list of surnames has the character.
bool is_listed_surname(char32_t c);

// How much a character speaks for a surname: above 0 where names begin with it more
// often than running text holds it. NO_NAME for no surname.
Evidence surname_evidence(std::u32string_view surname);

// How much a character speaks for a given name, at either place.
Evidence given_evidence(char32_t c);

// How much likelier start..end is a name with a surname of `surname` characters than
// words, whatever stands around it; NO_NAME if it cannot be one. Positive only where
// a name is the better reading for somebody who expects one as often as a word.
Evidence name_evidence(const recognition::NlpArtifacts& artifacts, std::size_t start,
                       std::size_t end, std::size_t surname);

// The same if it is at least `least`; if not, that or anything else below.
Evidence name_evidence_from(const recognition::NlpArtifacts& artifacts, std::size_t start,
                            std::size_t end, std::size_t surname, Evidence least);

// Of the ends of a name of one or two given characters behind the surname at `at` the
// likelier one; `at` if neither can be one.
std::size_t likeliest_name_end(const recognition::NlpArtifacts& artifacts, std::size_t at,
                               std::size_t surname);

}  // namespace core::nlp
