// Chinese text cut into words, by which a finder sees what is not an everyday word.
//
// Offsets count code points. May be called from any thread.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/recognition/nlp_artifacts.hpp"

namespace core::nlp {

// The likeliest words of every run of ideographs in `folded` (as in NlpArtifacts),
// in their order, without gaps within a run: of all ways to cut it into words of
// the lists and single characters, the one whose words are most frequent together.
// What no list has comes out as single characters. The lists hold hardly any names
// of persons, and none of companies that are not well known.
// Linear in the length. `folded` is shorter than 2^32.
recognition::ChineseWords segment_words(std::u32string_view folded);

// Questions on a segmented text.
using recognition::ChineseWords;

// See ChineseWords::index_at.
std::size_t word_index(const ChineseWords& words, std::size_t position);

// The word that holds `position`; null between the runs of ideographs.
const recognition::ChineseWord* word_at(const ChineseWords& words, std::size_t position);

// Whether no word goes on over `position`.
bool is_word_boundary(const ChineseWords& words, std::size_t position);

struct TextRange {
  std::size_t start = 0;
  std::size_t end = 0;
};

// The neighbouring characters around `position` that are no known words, 鑫盛 in
// 由鑫盛公司: what a name is made of. Empty at `position` if its character is part
// of a known word.
TextRange unknown_run(const ChineseWords& words, std::size_t position);

// Whether the words in [start, end) are all known everyday words and begin and end
// there; false if there is none.
bool are_ordinary_words(const ChineseWords& words, std::size_t start, std::size_t end);

}  // namespace core::nlp
