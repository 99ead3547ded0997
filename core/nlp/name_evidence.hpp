// How much likelier the characters of a stretch are the name of a person than words.
//
// The text is weighed as the dictionary cuts it: what the words around and within
// the stretch cost, against what they cost when the stretch is a name.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/recognition/nlp_artifacts.hpp"

namespace core::nlp {

// Half steps of the binary logarithm, as the frequencies of the lists.
using Evidence = int;

inline constexpr Evidence NO_NAME = -1000;

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

// Of the ends of a name of one or two given characters behind the surname at `at` the
// likelier one; `at` if neither can be one.
std::size_t likeliest_name_end(const recognition::NlpArtifacts& artifacts, std::size_t at,
                               std::size_t surname);

}  // namespace core::nlp
