#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_lexicon.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/refinements.hpp"
#include "core/text/unicode.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
namespace entity_type = anonymization::entity_type;

// Before a person and no firm
constexpr auto SURE_PERSON_TITLES =
    text::words({U"mr", U"mrs", U"ms", U"miss", U"mx", U"dr", U"prof", U"professor", U"herr",
                 U"frau", U"mme", U"mlle"});

// Before a person as well, but also in the names of firms
constexpr auto OTHER_PERSON_TITLES =
    text::words({U"sister", U"brother", U"father", U"captain", U"capt",     U"judge", U"justice",
                 U"major",  U"colonel", U"nurse",  U"rev",     U"reverend", U"hon",   U"sgt",
                 U"sir",    U"madam",   U"engr",   U"adv",     U"ing",      U"avv",   U"dott"});

constexpr auto FUNCTION_WORDS =
    text::words({U"of", U"and", U"or", U"by", U"to", U"with", U"from", U"is", U"in", U"for", U"at",
                 U"as", U"on", U"between", U"that"});

// Hirer, Obligor, Franchisee: what somebody is in a contract
constexpr std::u32string_view ROLE_ENDINGS[] = {U"er",  U"ers",  U"or",  U"ors",  U"ee",  U"ees",
                                                U"ant", U"ants", U"ent", U"ents", U"ary", U"aries"};

std::u32string word_of(std::u32string_view token) {
  if (token.ends_with(U'.')) token.remove_suffix(1);
  return text::case_fold(token);
}

bool is_latin_name(const RecognizerResult& r) {
  return r.entity_type == entity_type::PERSON || r.entity_type == entity_type::ORGANIZATION;
}

class NameEdges {
 public:
  explicit NameEdges(const NlpArtifacts& a) : a_(a), t_(a.folded) {}

  // Ing of Dr. Ing.
  bool is_title(const RecognizerResult& r) const {
    const auto end = static_cast<std::size_t>(r.end);
    const auto word = word_of(text::slice(t_, r.start, r.end));
    return end < t_.size() && t_[end] == U'.' &&
           (SURE_PERSON_TITLES.contains(word) || OTHER_PERSON_TITLES.contains(word));
  }

  void trim(RecognizerResult& r) const {
    trim_title(r);
    trim_function_words(r);
  }

 private:
  // Dr. Hannelore Voss, Sister Agnes Kwok; not Dr. Oetker GmbH
  void trim_title(RecognizerResult& r) const {
    const auto end = static_cast<std::size_t>(r.end);
    constexpr int MOST = 3;
    for (int n = 0; n < MOST; ++n) {
      const Token title = token_after(t_, static_cast<std::size_t>(r.start));
      if (title.end + 1 >= end || t_[title.end] != U' ') return;
      const auto word = word_of(title.in(t_));
      const bool sure = SURE_PERSON_TITLES.contains(word);
      if (!sure && !OTHER_PERSON_TITLES.contains(word)) return;
      if (r.entity_type == entity_type::ORGANIZATION) {
        if (!sure || !may_be_person(title.end + 1, end)) return;
        r.entity_type = entity_type::PERSON;
      }
      r.start = static_cast<anonymization::Offset>(title.end + 1);
    }
  }

  bool may_be_person(std::size_t start, std::size_t end) const {
    constexpr int MOST_WORDS = 4;
    int words = 0;
    for (std::size_t at = start; at < end; ++words) {
      const Token token = token_after(t_, at);
      const auto word = token.in(t_);
      if (token.empty() || words == MOST_WORDS || word.ends_with(U"'s")) return false;
      const bool letters = std::all_of(word.begin(), word.end(), [](char32_t c) {
        return is_latin_letter(c) || c == U'.' || c == U'-' || c == U'\'';
      });
      if (!letters || is_touched(a_.of(WordClass::EN_LEGAL_FORM), token.start, token.end) ||
          is_touched(a_.of(WordClass::EN_ORGANIZATION_HEAD), token.start, token.end)) {
        return false;
      }
      at = token.end;
    }
    return words > 0;
  }

  void trim_function_words(RecognizerResult& r) const {
    const auto end = static_cast<std::size_t>(r.end);
    const Token first = token_after(t_, static_cast<std::size_t>(r.start));
    if (first.end < end && t_[first.end] == U' ' && FUNCTION_WORDS.contains(first.in(t_))) {
      r.start = static_cast<anonymization::Offset>(first.end + 1);
    }
    const Token last = token_before(t_, end);
    if (last.end == end && last.start > static_cast<std::size_t>(r.start) + 1 &&
        t_[last.start - 1] == U' ' && FUNCTION_WORDS.contains(last.in(t_))) {
      r.end = static_cast<anonymization::Offset>(last.start - 1);
    }
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
};

// What the document itself says of a word: it stands behind "the" as a noun does, and is
// the label of a party or defined as one.
struct RoleFacts {
  bool determined = false;
  bool label = false;
};

class Roles {
 public:
  explicit Roles(std::u32string_view t) : t_(t) {}

  void read(const RecognizerResult& r) {
    const auto start = static_cast<std::size_t>(r.start);
    const auto end = static_cast<std::size_t>(r.end);
    const auto surface = t_.substr(start, end - start);
    if (!is_single_word(surface)) {
      note_words(surface);
      return;
    }
    const auto word = text::case_fold(surface);
    RoleFacts& facts = facts_[word];
    const auto before = t_.substr(0, start);
    facts.determined |= before.ends_with(U"the ") || before.ends_with(U"The ");
    const bool opens = start == 0 || is_cell_end(t_[start - 1]);
    const char32_t behind = end < t_.size() ? t_[end] : U'\n';
    const bool possessive = t_.substr(end, 3) == U"'s ";
    facts.label |= opens && (behind == U':' || behind == U'\t' || possessive);
    facts.label |= is_quoted(start, end) && ends_like_role(word);
  }

  bool is_role(const RecognizerResult& r) const {
    const auto surface = text::slice(t_, r.start, r.end);
    if (!is_single_word(surface)) return false;
    const auto word = text::case_fold(surface);
    const auto found = facts_.find(word);
    return found != facts_.end() && found->second.determined && !of_names_.contains(word) &&
           (found->second.label || is_made_of_verb(word));
  }

 private:
  static bool is_single_word(std::u32string_view s) {
    return s.size() > 2 && std::all_of(s.begin(), s.end(), is_latin_letter) &&
           std::any_of(s.begin(), s.end(), is_lower);
  }

  void note_words(std::u32string_view surface) {
    for (std::size_t at = 0; at < surface.size();) {
      const Token token = token_after(surface, at);
      if (!token.empty()) of_names_.insert(word_of(token.in(surface)));
      at = std::max(token.end, at + 1);
    }
  }

  bool is_quoted(std::size_t start, std::size_t end) const {
    return start > 0 && end < t_.size() && (t_[start - 1] == U'"' || t_[start - 1] == 0x201C) &&
           (t_[end] == U'"' || t_[end] == 0x201D);
  }

  // Grantor of grant, Obligee of oblige: who does it or to whom it is done
  static bool is_made_of_verb(std::u32string_view word) {
    constexpr std::size_t SHORTEST_VERB = 4;
    constexpr unsigned EVERYDAY = 3;
    const auto kind = latin_name_class(word);  // the Parker plant
    if (kind != LatinNameClass::NONE && kind != LatinNameClass::PROPER) return false;
    for (const auto ending : ROLE_ENDINGS) {
      if (!word.ends_with(ending) || word.size() < SHORTEST_VERB + ending.size()) continue;
      const std::u32string verb(word.substr(0, word.size() - ending.size()));
      if (is_common_english_word(verb, EVERYDAY) || is_common_english_word(verb + U'e', EVERYDAY)) {
        return true;
      }
    }
    return false;
  }

  static bool ends_like_role(std::u32string_view word) {
    return std::any_of(std::begin(ROLE_ENDINGS), std::end(ROLE_ENDINGS),
                       [&](std::u32string_view ending) { return word.ends_with(ending); });
  }

  std::u32string_view t_;
  std::unordered_map<std::u32string, RoleFacts> facts_;
  std::unordered_set<std::u32string> of_names_;  // words of longer names
};

}  // namespace

std::vector<RecognizerResult> drop_roles_and_titles(const NlpArtifacts& artifacts,
                                                    std::vector<RecognizerResult> results) {
  const NameEdges edges(artifacts);
  Roles roles(artifacts.folded);
  for (auto& r : results) {
    if (!is_latin_name(r)) continue;
    edges.trim(r);
    roles.read(r);
  }
  std::erase_if(results, [&](const auto& r) {
    return is_latin_name(r) && (roles.is_role(r) || edges.is_title(r));
  });
  return results;
}

}  // namespace core::nlp
