#include <algorithm>

#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_lexicon.hpp"
#include "core/nlp/latin_names.hpp"
#include "core/nlp/latin_prose_persons.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/text/regex.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
using text::Regex;

constexpr double LATIN_LABEL_SCORE = 0.9;
constexpr double LATIN_PROSE_SCORE = 0.6;

// Between a label and a name; group 1 is a mark that makes the word a label:
// "Name: ", "Attention (Legal): ", "联系人 Contact："
const Regex RE_SEPARATOR(
    "RE_SEPARATOR",
    UR"((?:[ ]?(?:\([^()\n]{1,24}\)|[A-Za-z/ ]{1,20}(?=:)|[\u4e00-\u9fff]{1,6}(?=:)))?[ ]{0,4}(:)?[ ]{0,8}(?:_{1,40}[ ]{1,4})?["“]?(?:(?:Mr|Ms|Mrs|Dr|Prof|Mme|Miss)\.? )?)");

// Labels that need no mark: "attention Jürgen Petersen", "with a copy to Wei-Ling Szeto"
const Regex RE_OPEN_LABEL(
    "RE_OPEN_LABEL",
    UR"((?i)attention|attn|dear|hi|hello|in the presence of|for the attention of|attention of|represented by|signed by|witnessed by|with a copy to|copy to|by|cc|sole arbitrator|sole member|service owner|account manager)");

// Between two names of a list: "A (Grade 1), B", "A; B", "A and B", 甲、B
const Regex RE_NEXT_NAME(
    "RE_NEXT_NAME",
    UR"((?: ?\([^()\n]{1,24}\)| ?<[^<>\n]{3,64}>)?(?:, and |; and |[,;] ?| and | & |[、，；/] ?)(?:(?:Mr|Ms|Mrs|Dr|Prof)\.? )?(?=\p{Lu}))");

// A greeting and the close of a letter, with a given name alone behind
const Regex RE_GREETING(
    "RE_GREETING",
    UR"((?<![\p{L}])(?i:dear|hi|hello|hey|gd day|good (?:morning|day|afternoon)) (\p{Lu}[\p{L}'-]{1,20}(?: \p{Lu}[\p{L}'-]{1,20}){0,2})(?=[,:\n]| and | / ))",
    Regex::Scanned::YES);
const Regex RE_CLOSE(
    "RE_CLOSE",
    UR"((?i:regards|rgds|brgds|sincerely|thanks|thank you|thx|yours|wishes|cheers|best|faithfully|truly|cordialement|saludos),? ?\n{1,5} {0,8}(\p{Lu}[\p{L}'. -]{1,40})(?=\n|$))",
    Regex::Scanned::YES);

// What stands in the line below a name: a role, a date, a mail address
const Regex RE_BELOW_NAME(
    "RE_BELOW_NAME",
    UR"(\n{1,2} {0,20}(?:(?:Title|Date|Its|Name|Position|Tel|Phone|E-?mail|By|Per|Passport)\b|[\w.+-]{1,40}@|\d{1,5} \p{Lu}))");

class LatinPersonSearch {
 public:
  explicit LatinPersonSearch(const NlpArtifacts& a) : a_(a), t_(a.folded) {}

  std::vector<RecognizerResult> run() {
    behind_titles();
    behind_labels();
    before_roles();
    behind_roles();
    given_names();
    letters();
    signatures();
    const PersonEvidence evidence{out_, expected_};
    for (auto& person : latin_prose_persons(a_, evidence)) out_.push_back(std::move(person));
    return std::move(out_);
  }

 private:
  void add(std::size_t start, std::size_t end, double score) {
    if (end > start) {
      out_.push_back(make_hit(anonymization::entity_type::PERSON, start, end, score));
    }
  }

  void behind_titles() {
    for (const auto& title : a_.of(WordClass::EN_TITLE)) {
      std::size_t at = title.end;
      if (at < t_.size() && t_[at] == U'.') ++at;
      while (at < t_.size() && t_[at] == U' ') ++at;
      std::size_t start = at;
      // Ms van Oostrum: a particle may come first.
      const Token first = token_after(t_, at);
      if (!first.empty() && is_connective(first.in(t_)) && first.end < t_.size())
        start = first.end + 1;
      const std::size_t end = latin_name_end(a_, start, 1);
      if (end > start) {
        add(at, end, LATIN_LABEL_SCORE);
      } else {
        add_small_word(at);
      }
    }
  }

  // Ms. He Lili: small words that are Chinese surnames too
  void add_small_word(std::size_t at) {
    static constexpr auto SURNAMES = text::words(
        {U"He", U"She", U"An", U"You", U"So", U"To", U"On", U"In", U"Or", U"At", U"Me"});
    const Token word = token_after(t_, at);
    if (word.start != at || !SURNAMES.contains(word.in(t_))) return;
    const std::size_t given =
        word.end < t_.size() && t_[word.end] == U' ' ? latin_name_end(a_, word.end + 1, 1) : 0;
    add(at, given > word.end + 1 ? given : word.end, LATIN_LABEL_SCORE);
  }

  void behind_labels() {
    for (const auto& label : a_.of(WordClass::PERSON_LABEL)) {
      const auto m = RE_SEPARATOR.match_at(t_, label.end);
      if (!m) continue;
      const auto word = t_.substr(label.start, label.end - label.start);
      // 订单经理 Annegret Vollmer: a blank sets the two scripts off well enough
      const bool chinese = !word.empty() && is_han(word.front()) && m->end() > label.end;
      const bool marked = label.from_table || m->has(1) || chinese;
      if (!marked && !RE_OPEN_LABEL.full_match(word)) continue;
      if (marked) expected_.push_back(m->end());
      add_list(m->end(), LATIN_LABEL_SCORE);
      // Authorised signatory: van Oostrum
      const Token first = token_after(t_, m->end());
      if (m->has(1) && first.start == m->end() && first.end < t_.size() &&
          is_connective(first.in(t_))) {
        const std::size_t end = latin_name_end(a_, first.end + 1, 1);
        if (end > first.end + 1) add(m->end(), end, LATIN_LABEL_SCORE);
      }
    }
  }

  void add_list(std::size_t at, double score) {
    constexpr int LONGEST = 100;
    for (int n = 0; n < LONGEST; ++n) {
      const std::size_t end = name_end(at);
      if (end == at) return;
      add(at, end, score);
      const auto m = RE_NEXT_NAME.match_at(t_, end);
      if (!m) return;
      at = m->end();
    }
  }

  // A name of two words that is no place
  std::size_t name_end(std::size_t at) const {
    const std::size_t end = latin_name_end(a_, at, 2);
    const bool place = end > at && is_covered(a_.of(WordClass::EN_PLACE), at, end);
    return place ? at : end;
  }

  // our Chief Operating Officer Naledi van Wyk; our attorney, Kwame A. Boateng
  void behind_roles() {
    for (const auto& role : a_.of(WordClass::EN_ROLE)) {
      std::size_t at = role.end;
      if (at < t_.size() && t_[at] == U',') ++at;
      if (at >= t_.size() || t_[at] != U' ') continue;
      const std::size_t end = name_end(++at);
      const bool comma = t_[at - 2] == U',';
      if (comma && end < t_.size() && t_[end] != U',' && t_[end] != U';') continue;
      if (!touches_organization(end)) add(at, end, LATIN_PROSE_SCORE);
    }
  }

  // Rowan Property Partners: the words go on
  bool touches_organization(std::size_t end) const {
    const Token next = token_after(t_, end);
    return !next.empty() && is_upper(t_[next.start]) && next.start == end + 1 &&
           (is_contract_language(next.in(t_)) || is_contract_word(next.in(t_))) &&
           !std::all_of(t_.begin() + static_cast<std::ptrdiff_t>(next.start),
                        t_.begin() + static_cast<std::ptrdiff_t>(next.end), is_upper);
  }

  // Not Dear Sir, Dear Valued Customer
  bool may_be_name(std::size_t start, std::size_t end) const {
    bool named = false;
    for (std::size_t at = start; at < end;) {
      const Token word = token_after(t_, at);
      if (word.empty()) return true;  // letters of another script
      const auto s = word.in(t_);
      if (is_covered(a_.of(WordClass::EN_TITLE), word.start, word.end)) return false;
      const bool ordinary =
          is_contract_word(s) || is_contract_language(s) ||
          (is_common_english_word(s) && latin_name_class(s) == LatinNameClass::NONE);
      named |= !ordinary;
      at = word.end;
    }
    return named;
  }

  void letters() {
    for (const auto& m : RE_GREETING.find_all(t_, a_.index)) {
      const bool known = is_touched(a_.of(WordClass::EN_GIVEN_NAME), m.start(1), m.end(1));
      if (known || may_be_name(m.start(1), m.end(1))) add(m.start(1), m.end(1), LATIN_LABEL_SCORE);
    }
    for (const auto& m : RE_CLOSE.find_all(t_, a_.index)) {
      const std::size_t end = latin_name_end(a_, m.start(1), 1);
      if (end == m.end(1)) add(m.start(1), end, LATIN_LABEL_SCORE);
    }
  }

  // A line that is a name, above a role, a date or an address, or below a line to sign on
  void signatures() {
    for (std::size_t line = 0; line < t_.size();) {
      const std::size_t stop = std::min(t_.find(U'\n', line), t_.size());
      std::size_t at = line;
      while (at < stop && (t_[at] == U' ' || t_[at] == U'>')) ++at;
      if (t_.substr(at, 4) == U"/s/ " || t_.substr(at, 4) == U"/S/ ") {
        add(at + 4, latin_name_end(a_, at + 4, 2), LATIN_LABEL_SCORE);
      } else if (at < stop && is_upper(t_[at])) {
        const std::size_t end = name_end(at);
        const bool whole = end > at && (end == stop || t_.substr(end, 2) == U" |");
        if (whole && (is_signed(line) || is_above(stop) || end < stop))
          add(at, end, LATIN_PROSE_SCORE);
      }
      line = stop + 1;
    }
  }

  bool is_signed(std::size_t line) const {
    std::size_t above = line;
    while (above > 0 && (t_[above - 1] == U'\n' || t_[above - 1] == U' ')) --above;
    return above > 0 && t_[above - 1] == U'_';
  }

  bool is_above(std::size_t stop) const {
    std::size_t next = stop;
    while (next < t_.size() && (t_[next] == U'\n' || t_[next] == U' ')) ++next;
    return RE_BELOW_NAME.match_at(t_, stop).has_value() ||
           end_of_word_at(a_.of(WordClass::EN_ROLE), next) > next;
  }

  // Ruth Ann Calloway, Managing Member; Theodora Blackmantle (Director)
  void before_roles() {
    for (const auto& role : a_.of(WordClass::EN_ROLE)) {
      std::size_t end = role.start;
      while (end > 0 && (t_[end - 1] == U' ' || t_[end - 1] == U'(')) --end;
      const bool bracket = end < role.start && t_[role.start - 1] == U'(';
      const bool comma = end > 0 && end < role.start && t_[end - 1] == U',';
      if (!bracket && !comma) continue;
      if (comma) --end;
      add(latin_name_start(a_, end), end, LATIN_PROSE_SCORE);
    }
  }

  void given_names() {
    for (const auto& given : a_.of(WordClass::EN_GIVEN_NAME)) {
      const Token before = token_before(t_, given.start);
      const bool inside_name = !before.empty() && before.end + 1 == given.start &&
                               is_upper(t_[before.start]) && !is_contract_word(before.in(t_)) &&
                               english_word_frequency(before.in(t_)) <= 2 &&
                               !is_covered(a_.of(WordClass::EN_TITLE), before.start, before.end);
      if (inside_name) {
        const std::size_t end = latin_name_end(a_, given.start, 1);
        const std::size_t start = latin_name_start(a_, end);
        if (start < given.start) add(start, end, LATIN_PROSE_SCORE);
        continue;
      }
      if (add_inverted(given.start)) continue;
      const std::size_t end = name_end(given.start);
      add(given.start, end, LATIN_PROSE_SCORE);
      if (end == given.start) add_wrapped(given.start, given.end);
    }
  }

  // Botha, Johannes as a whole entry: "Botha, Johannes" <...>
  bool add_inverted(std::size_t at) {
    if (at < 4 || t_[at - 1] != U' ' || t_[at - 2] != U',') return false;
    std::size_t start = at - 2;
    const std::size_t surname_end = start;
    constexpr std::size_t LONGEST = 40;
    while (start > 0 && surname_end - start < LONGEST &&
           (is_latin_letter(t_[start - 1]) || t_[start - 1] == U'-' || t_[start - 1] == U'\'' ||
            t_[start - 1] == U' ')) {
      --start;
    }
    const bool opens = start == 0 || t_[start - 1] == U'"' || t_[start - 1] == U'“' ||
                       t_[start - 1] == U'\n' || t_[start - 1] == U'\t' || t_[start - 1] == U';';
    while (start < surname_end && t_[start] == U' ') ++start;
    if (!opens || start == surname_end || !is_upper(t_[start])) return false;
    for (std::size_t i = start; i < surname_end;) {
      const Token word = token_after(t_, i);
      if (word.empty() || is_contract_word(word.in(t_)) || is_contract_language(word.in(t_)))
        return false;
      i = word.end;
    }
    const std::size_t end = latin_name_end(a_, at, 1);
    const bool closes = end >= t_.size() || t_[end] == U'"' || t_[end] == U'”' ||
                        t_[end] == U'\n' || t_[end] == U'\t' || t_[end] == U';' ||
                        t_.substr(end, 2) == U" <";
    if (end == at || !closes || is_covered(a_.of(WordClass::EN_PLACE), start, surname_end)) {
      return false;
    }
    add(start, end, LATIN_PROSE_SCORE);
    return true;
  }

  // A name whose surname stands in the next line of a wrapped paragraph
  void add_wrapped(std::size_t start, std::size_t end) {
    constexpr std::size_t LONG_LINE = 40;
    if (end + 2 >= t_.size() || t_[end] != U'\n' || !is_upper(t_[end + 1])) return;
    const std::size_t line = t_.substr(0, end).rfind(U'\n');
    if (end - (line == t_.npos ? 0 : line) < LONG_LINE) return;
    const std::size_t last = latin_name_end(a_, end + 1, 1);
    if (last == end + 1) return;
    add(start, end, LATIN_PROSE_SCORE);
    add(end + 1, last, LATIN_PROSE_SCORE);
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  std::vector<RecognizerResult> out_;
  std::vector<std::size_t> expected_;  // where a label announces a name
};

}  // namespace

LatinPersonFinder::LatinPersonFinder()
    : EntityRecognizer("LatinPersonFinder", {std::string(anonymization::entity_type::PERSON)}) {}

std::vector<RecognizerResult> LatinPersonFinder::analyze(const NlpArtifacts& artifacts) const {
  return LatinPersonSearch(artifacts).run();
}

}  // namespace core::nlp
