#include "core/nlp/latin_names.hpp"

#include <algorithm>

#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::WordClass;

constexpr int MOST_WORDS = 5;

constexpr auto PARTICLES =
    text::words({U"van", U"der", U"den", U"de",    U"la",    U"von",   U"zu",   U"bin", U"binti",
                 U"ibn", U"al",  U"el",  U"dela",  U"del",   U"della", U"di",   U"da",  U"dos",
                 U"du",  U"le",  U"y",   U"ter",   U"binte", U"bte",   U"bint", U"s/o", U"d/o",
                 U"a/l", U"a/p", U"w/o", U"ten",   U"zur",   U"vom",   U"af",   U"av",  U"lo",
                 U"las", U"los", U"dei", U"degli", U"das",   U"do"});

// J., D.J., A.-S.
bool is_initial(std::u32string_view word) {
  if (word.size() < 2 || word.size() > 5 || word.back() != U'.') return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    const bool sign = word[i] == U'.' || (word[i] == U'-' && word[i - 1] == U'.');
    if (sign == (i % 2 == 0) && !(i > 0 && is_upper(word[i]))) return false;
  }
  return is_upper(word[0]);
}

// Also in the capitals of a whole line: VAN DER BERG
bool is_particle(std::u32string_view word) {
  std::u32string low(word);
  for (char32_t& c : low) c = lower(c);
  return PARTICLES.contains(word) ||
         (word.size() > 2 && is_upper(word[1]) && PARTICLES.contains(low));
}

// Volksbank, Stadtsparkasse, Stadtwerke: the last part of the compound is a kind of firm.
bool ends_in_firm(std::u32string_view word) {
  constexpr std::size_t LEAST_BEFORE = 3;
  for (const std::u32string_view kind :
       {U"bank", U"banken", U"kasse", U"werke", U"werk", U"gesellschaft", U"genossenschaft",
        U"verband", U"stiftung", U"klinikum", U"technik", U"versicherung", U"verlag"}) {
    if (word.size() >= kind.size() + LEAST_BEFORE && word.ends_with(kind)) return true;
  }
  return false;
}

// Desrosiers, Okonkwo-Hale, O'Brien, ABERNATHY. Not LLC., R2, or a word of the contract.
bool is_name_word(std::u32string_view word) {
  if (word.size() < 2 || !is_upper(word.front())) return false;
  const bool letters = std::all_of(word.begin(), word.end(), [](char32_t c) {
    return is_latin_letter(c) || c == U'-' || c == U'\'';
  });
  return letters && !is_contract_word(word) && !is_contract_language(word) && !ends_in_firm(word);
}

bool belongs_elsewhere(const NlpArtifacts& a, const Token& token) {
  for (const auto c : {WordClass::EN_LEGAL_FORM, WordClass::EN_ROLE,
                       WordClass::EN_ORGANIZATION_HEAD, WordClass::EN_STREET_WORD}) {
    if (is_covered(a.of(c), token.start, token.end)) return true;
  }
  return false;
}

// A sentence ends behind the name.
Token without_full_stop(std::u32string_view t, Token token) {
  if (!token.empty() && t[token.end - 1] == U'.' && !is_initial(token.in(t))) --token.end;
  // Desrosiers's
  if (token.end > token.start + 2 && token.in(t).ends_with(U"'s")) token.end -= 2;
  return token;
}

// John Mark Obi: a given name that is a word of contracts as well, before a surname
bool is_name_between(const NlpArtifacts& a, const Token& token) {
  const std::u32string_view t = a.folded;
  const Token next = token_after(t, token.end);
  return is_covered(a.of(WordClass::EN_GIVEN_NAME), token.start, token.end) && !next.empty() &&
         next.start == token.end + 1 && is_name_word(without_full_stop(t, next).in(t));
}

enum class Part : std::uint8_t { NONE, LINK, WORD };

// What a word is to the name that it may stand in. No particle opens a name.
Part part_of_name(const NlpArtifacts& a, const Token& token, bool opens) {
  const auto word = token.in(a.folded);
  if (is_covered(a.of(WordClass::EN_TITLE), token.start, token.end)) return Part::NONE;
  if (is_initial(word) || (!opens && is_particle(word))) return Part::LINK;
  return is_name_word(word) || (!opens && is_name_between(a, token)) ? Part::WORD : Part::NONE;
}

bool is_role(const NlpArtifacts& a, const Token& token) {
  return is_covered(a.of(WordClass::EN_ROLE), token.start, token.end);
}

}  // namespace

std::size_t latin_name_end(const NlpArtifacts& a, std::size_t at, int fewest) {
  const std::u32string_view t = a.folded;
  std::size_t end = at;
  std::size_t next = at;
  int words = 0;
  while (words < MOST_WORDS) {
    const Token raw = token_after(t, next);
    const Token token = without_full_stop(t, raw);
    if (token.empty() || (words == 0 && token.start != at)) break;
    const Part part = part_of_name(a, token, words == 0);
    if (part == Part::NONE) break;
    next = token.end;
    if (part == Part::LINK) {
      words = std::max(words, 1);
      continue;
    }
    // A role may follow a name; the name of a firm holds no person.
    if (belongs_elsewhere(a, token)) return is_role(a, token) && words >= fewest ? end : at;
    ++words;
    end = token.end;
    if (raw.end != token.end) break;
  }
  return words >= fewest ? end : at;
}

std::size_t latin_name_start(const NlpArtifacts& a, std::size_t end) {
  const std::u32string_view t = a.folded;
  std::size_t start = end;
  std::size_t at = end;
  int words = 0;
  while (words < MOST_WORDS) {
    const Token token = token_before(t, at);
    if (token.empty() || (words == 0 && token.end != end)) break;
    const auto word = token.in(t);
    if (is_covered(a.of(WordClass::EN_TITLE), token.start, token.end)) break;
    if (is_name_word(word)) {
      if (belongs_elsewhere(a, token)) return end;
      start = token.start;
      ++words;
    } else if (words == 0 || !(is_initial(word) || is_particle(word))) {
      break;
    }
    at = token.start;
    if (at == 0 || t[at - 1] != U' ') break;
  }
  return words >= 2 ? start : end;
}

}  // namespace core::nlp
