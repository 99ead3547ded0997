#include "core/nlp/contract_language.hpp"

#include <unordered_set>

#include "core/nlp/characters.hpp"
#include "core/nlp/rare_characters.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/word_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view contract_language_en;
}  // namespace core::text::lexicon_data

namespace core::nlp {
namespace {

constexpr auto SMALL_WORDS = text::words(
    {U"and",     U"or",          U"with",    U"the",       U"a",       U"an",       U"by",
     U"to",      U"from",        U"in",      U"on",        U"at",      U"as",       U"is",
     U"are",     U"was",         U"were",    U"be",        U"being",   U"been",     U"between",
     U"shall",   U"will",        U"may",     U"must",      U"has",     U"have",     U"had",
     U"that",    U"this",        U"these",   U"those",     U"such",    U"any",      U"all",
     U"each",    U"its",         U"their",   U"our",       U"your",    U"under",    U"upon",
     U"into",    U"within",      U"without", U"through",   U"hereby",  U"herein",   U"hereto",
     U"hereof",  U"hereinafter", U"whereas", U"therefore", U"now",     U"if",       U"when",
     U"where",   U"which",       U"who",     U"behalf",    U"favor",   U"favour",   U"for",
     U"than",    U"then",        U"not",     U"no",        U"further", U"resolved", U"per",
     U"located", U"called",      U"known",   U"via",       U"against", U"before",   U"after"});

std::u32string lowered_word(std::u32string_view word) {
  while (!word.empty() && (word.back() == U'.' || word.back() == U',')) word.remove_suffix(1);
  return lowered(word);
}

const std::unordered_set<std::u32string>& lexicon() {
  static const std::unordered_set<std::u32string> words = [] {
    auto list = text::lexicon_words(text::lexicon_data::contract_language_en);
    return std::unordered_set<std::u32string>(list.begin(), list.end());
  }();
  return words;
}

// A line that was broken because it was full, or behind a comma.
bool is_wrapped(std::u32string_view line) {
  constexpr std::size_t FULL_LINE = 50;
  constexpr std::size_t WIDEST_PAGE = 100;
  if (line.size() > WIDEST_PAGE) return false;
  while (!line.empty() && line.back() == U' ') line.remove_suffix(1);
  if (line.empty() ||
      !(is_latin_letter(line.back()) || text::is_ascii_digit(line.back()) || line.back() == U',')) {
    return false;
  }
  return line.size() >= FULL_LINE || line.back() == U',';
}

// Of a table
bool is_row(std::u32string_view line) {
  return line.find(U'\t') != line.npos || line.find(U"   ") != line.npos;
}

// "Payment: T/T" below a full line
bool begins_with_label(std::u32string_view line) {
  constexpr std::size_t LONGEST_LABEL = 30;
  line = line.substr(0, line.find(U'\n'));
  return line.substr(0, LONGEST_LABEL).find(U':') != line.npos;
}

}  // namespace

bool is_contract_language(std::u32string_view word) {
  return lexicon().contains(lowered_word(word));
}

bool is_small_word(std::u32string_view word) { return SMALL_WORDS.contains(lowered_word(word)); }

std::u32string unwrapped(std::u32string_view folded) {
  std::u32string out(folded);
  std::size_t line = 0;
  for (std::size_t i = find_rare(out, 0, U'\n'); i + 1 < out.size();
       i = find_rare(out, i + 1, U'\n')) {
    const auto before = std::u32string_view(out).substr(line, i - line);
    const bool goes_on = is_latin_letter(out[i + 1]) || text::is_ascii_digit(out[i + 1]);
    line = i + 1;
    if (goes_on && is_wrapped(before) && !is_row(before) &&
        !begins_with_label(std::u32string_view(out).substr(line))) {
      out[i] = U' ';
    }
  }
  return out;
}

}  // namespace core::nlp
