// Runs of capitalized words in a text: where names in Latin letters may stand, and what
// each word says for or against one.
//
// Positions count code points of the text that was read.
#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "core/nlp/latin_lexicon.hpp"

namespace core::nlp {

enum class WordShape : std::uint8_t {
  LOWER,    // agreement, iPhone
  CAPITAL,  // Agreement, McArthur, O'Brien
  CAPITALS  // IBM, AGREEMENT, K&B
};

// A word of a run, without a full stop or 's behind it.
struct LatinWord {
  std::uint32_t start = 0;
  std::uint32_t end = 0;
  WordShape shape = WordShape::LOWER;
  bool initial = false;     // J. or J
  bool connective = false;  // de, van, &
  // Neither in an English dictionary nor part of the language of contracts, nor written
  // in small letters elsewhere in the text: Falkenrath, also names of persons and places.
  bool particular = false;
  bool vocabulary = false;  // a word that contracts use in their own terms: Price, Buyer
  LatinWordFacts facts;
};

// Words that follow each other with single blanks, from a capital to a capital.
struct LatinRun {
  std::uint32_t first_word = 0;  // in LatinRuns::words
  std::uint32_t word_count = 0;
  std::uint32_t start = 0;
  std::uint32_t end = 0;
  bool sentence_start = false;
  bool title_line = false;     // no word of its line but small words like "of" is in lower case
  bool capitals_line = false;  // and all of the line is in capitals
  bool foreign_line = false;   // most of the line's words in lower case are no English
};

struct LatinRuns {
  std::vector<LatinWord> words;
  std::vector<LatinRun> runs;
  std::unordered_set<std::u32string_view> lower_words;  // of the text, written so
};

// `text` outlives the result.
LatinRuns find_latin_runs(std::u32string_view text);

}  // namespace core::nlp
