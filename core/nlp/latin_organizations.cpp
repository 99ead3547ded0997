#include <optional>

#include "core/nlp/hits.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/text/regex.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
using text::Regex;

constexpr double SCORE = 0.85;
constexpr int LONGEST_NAME = 10;  // words

// Behind a company: ", London Branch", " Leeds branch", ", Manila Representative Office"
const Regex RE_BRANCH(
    "RE_BRANCH",
    UR"(,? (?:\p{Lu}[\p{L}'-]{1,20} ){1,4}(?:[Ss]ub-?[Bb]ranch|SUB-BRANCH|[Bb]ranch|BRANCH|Representative Office|Liaison Office)(?!\p{L}))");

// Behind a court, a university, a ministry: " of Singapore", " of the State of Delaware"
const Regex RE_OF(
    "RE_OF",
    UR"((?: (?:of|for|di|de|del) (?:the )?\p{Lu}[\p{L}'&-]*(?:(?: | and | & | of | of the )\p{Lu}[\p{L}'&-]*){0,5})(?!\p{L}))");

// Behind a German court or bank: Landgericht Hamburg
const Regex RE_BEHIND("RE_BEHIND", UR"( \p{Lu}[\p{L}-]{2,30}(?!\p{L}))");

constexpr auto GERMAN_HEADS = text::words(
    {U"landgericht", U"amtsgericht", U"oberlandesgericht", U"kantonalbank", U"sparebank"});

// Heads that "of" and any name behind them make particular: University of Vardøya.
constexpr auto OF_HEADS = text::words({U"university", U"court", U"courts", U"institute", U"college",
                                       U"ministry", U"bank", U"landgericht", U"amtsgericht",
                                       U"oberlandesgericht", U"kantonalbank", U"arbitrale"});

bool is_german(std::u32string_view word) { return GERMAN_HEADS.contains(word); }

// Heads that alone make a name of one capitalized word before them: Dubai Courts.
constexpr auto STRONG_HEADS =
    text::words({U"bank",        U"university",   U"college",    U"institute",  U"hospital",
                 U"court",       U"courts",       U"commission", U"centre",     U"center",
                 U"association", U"authority",    U"ministry",   U"council",    U"chamber",
                 U"foundation",  U"exchange",     U"society",    U"sparebank",  U"landgericht",
                 U"amtsgericht", U"kantonalbank", U"arbitrale",  U"federation", U"department"});

// Forms of two letters that are also words in a heading: PAYABLE AS FOLLOWS.
constexpr auto DOUBTFUL_FORMS =
    text::words({U"AS", U"SE", U"SA", U"AB", U"KG", U"LP", U"AG", U"NV", U"BV", U"Company",
                 U"Holdings", U"COMPANY", U"HOLDINGS", U"Co.", U"Limited"});

class Search {
 public:
  explicit Search(const NlpArtifacts& a) : a_(a), t_(a.folded) {}

  std::vector<RecognizerResult> run() {
    for (const auto& form : a_.of(WordClass::EN_LEGAL_FORM)) take_company(form);
    for (const auto& head : a_.of(WordClass::EN_ORGANIZATION_HEAD)) take_head(head);
    return std::move(out_);
  }

 private:
  struct Name {
    std::size_t start;
    int words = 0;       // capitalized
    int particular = 0;  // and not of the contract's own vocabulary
  };

  void add(std::size_t start, std::size_t end) {
    out_.push_back(make_hit(anonymization::entity_type::ORGANIZATION, start, end, SCORE));
  }

  void take_company(const WordHit& form) {
    std::size_t left = form.start;
    const bool doubtful = DOUBTFUL_FORMS.contains(t_.substr(form.start, form.end - form.start));
    if (!doubtful && left > 1 && t_[left - 1] == U' ' && t_[left - 2] == U',') left -= 2;
    const Name name = walk_left(left);
    if (name.particular < 1 || (doubtful && !stands_free(form, name))) return;
    std::size_t end = form.end;
    if (const auto m = RE_BRANCH.match_at(t_, end)) end = m->end();
    add(name.start, end);
  }

  bool stands_free(const WordHit& form, const Name& name) const {
    const Token next = token_after(t_, form.end);
    const bool word_behind = !next.empty() && is_latin_letter(t_[next.start]);
    const bool word = form.end - form.start > 2;
    const bool capital_behind =
        word_behind && is_upper(t_[next.start]) && is_lower(t_[form.end - 1]);
    return word ? name.words >= 2 && !capital_behind : !word_behind;
  }

  void take_head(const WordHit& head) {
    std::u32string word(t_.substr(head.start, head.end - head.start));
    for (char32_t& c : word) c = lower(c);
    const std::u32string_view kind = std::u32string_view(word).substr(word.rfind(U' ') + 1);
    const bool strong = STRONG_HEADS.contains(kind);
    const bool compound = kind.size() < word.size();
    const bool court = kind.starts_with(U"court");
    Name name = walk_left(head.start);
    if (compound) ++name.words, ++name.particular;
    const auto of =
        is_german(word) ? RE_BEHIND.match_at(t_, head.end) : RE_OF.match_at(t_, head.end);
    std::size_t end = of && (strong || name.particular > 0) ? of->end() : head.end;
    if (court) end = std::min(end, std::max(head.end, t_.substr(0, end).find(U" and ", head.end)));
    const bool ranked = court && (name.words > 0 || compound);
    const bool named =
        ranked || (strong ? name.particular >= 1 : name.particular >= 2 && name.words >= 3);
    const bool named_behind =
        of && (strong ? OF_HEADS.contains(kind) || is_place_or_long(*of)
                      : name.particular >= 1 &&
                            is_touched(a_.of(WordClass::EN_PLACE), of->start(), of->end()));
    if (!named && !named_behind) return;
    std::size_t full_end = end;
    if (const auto m = RE_BRANCH.match_at(t_, end)) full_end = m->end();
    add(std::min(name.start, head.start), full_end);
  }

  bool is_place_or_long(const text::Match& of) const {
    return is_touched(a_.of(WordClass::EN_PLACE), of.start(), of.end()) ||
           std::count(of.text().begin(), of.text().end(), U' ') >= 3;
  }

  // The capitalized words before `end`.
  Name walk_left(std::size_t end) const {
    Name name{end};
    std::size_t at = end;
    bool connected = false;  // the word to the right is "and" or the like
    for (int i = 0; i < LONGEST_NAME; ++i) {
      if (const auto open = bracket_before(at)) {
        at = *open;
        continue;
      }
      const Token token = token_before(t_, at);
      if (token.empty() || token.end + 1 < at) break;
      const auto word = token.in(t_);
      const bool connective = is_connective(word);
      if (is_capitalized(word)) {
        if (ends_name(token, connected)) break;
        name.start = token.start;
        ++name.words;
        name.particular += is_contract_word(word) ? 0 : 1;
      } else if (!connective) {
        break;
      }
      connected = connective;
      at = token.start;
      if (at == 0 || t_[at - 1] != U' ') break;
    }
    return trimmed(name, end);
  }

  // Whether what stands before a name ends with this word.
  bool ends_name(const Token& token, bool connected) const {
    const auto word = token.in(t_);
    if (ends_sentence(word) || is_plain_number(word)) return true;
    // Harrow Logistics Limited and Tallgrass Systems, Inc. are two.
    return connected && is_covered(a_.of(WordClass::EN_LEGAL_FORM), token.start, token.end);
  }

  // "(Hong Kong)" before `at`: where it opens.
  std::optional<std::size_t> bracket_before(std::size_t at) const {
    constexpr std::size_t LONGEST = 30;
    if (at > 0 && t_[at - 1] == U' ') --at;
    if (at == 0 || t_[at - 1] != U')') return std::nullopt;
    for (std::size_t i = at - 1; i > 0 && at - i < LONGEST; --i) {
      if (t_[i - 1] == U'(')
        return i >= 2 && t_[i - 2] == U' ' ? std::optional(i - 1) : std::nullopt;
      if (!is_latin_letter(t_[i - 1]) && t_[i - 1] != U' ') return std::nullopt;
    }
    return std::nullopt;
  }

  static bool is_capitalized(std::u32string_view word) {
    return is_upper(word.front()) || text::is_ascii_digit(word.front()) ||
           (word.size() > 2 && (word[1] == U'\'') && is_upper(word[2]));
  }

  static bool is_plain_number(std::u32string_view word) {
    return std::none_of(word.begin(), word.end(), is_latin_letter);
  }

  // "Parties." but not "St." or "J."
  static bool ends_sentence(std::u32string_view word) {
    constexpr std::size_t LONGEST_ABBREVIATION = 4;
    return word.back() == U'.' && word.size() > LONGEST_ABBREVIATION &&
           word.find(U'.') == word.size() - 1;
  }

  // Without the words of the sentence before the name: The, Between, Buyer.
  Name trimmed(Name name, std::size_t end) const {
    while (name.words > 0) {
      const Token first = token_after(t_, name.start);
      const auto word = first.in(t_);
      const bool number = std::all_of(word.begin(), word.end(), [](char32_t c) {
        return text::is_ascii_digit(c) || c == U'.';
      });
      if (first.end >= end || !(number || leads_in(word))) break;
      if (!number || is_upper(word.front())) --name.words;
      std::size_t next = first.end;
      while (next < end && t_[next] == U' ') ++next;
      name.start = next;
      if (next >= end) name.words = 0;
    }
    return name;
  }

  static bool leads_in(std::u32string_view word) {
    return is_connective(word) ||
           (is_contract_word(word) && word != U"General" && word != U"First" && word != U"High" &&
            word != U"Supreme" && word != U"Superior" && word != U"Federal" &&
            word != U"Commercial" && word != U"District" && word != U"State" &&
            word != U"Technical");
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  std::vector<RecognizerResult> out_;
};

}  // namespace

LatinOrganizationFinder::LatinOrganizationFinder()
    : EntityRecognizer("LatinOrganizationFinder",
                       {std::string(anonymization::entity_type::ORGANIZATION)}) {}

std::vector<RecognizerResult> LatinOrganizationFinder::analyze(
    const NlpArtifacts& artifacts) const {
  return Search(artifacts).run();
}

}  // namespace core::nlp
