#include <optional>

#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_lexicon.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/more_organizations.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/text/regex.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
using text::Regex;

constexpr double LATIN_ORGANIZATION_SCORE = 0.85;
constexpr int MOST_NAME_WORDS = 10;  // words

// Behind a company: ", London Branch", " Leeds branch", ", Manila Representative Office"
const Regex RE_BRANCH(
    "RE_BRANCH",
    UR"(,? (?:\p{Lu}[\p{L}'-]{1,20} ){1,4}(?:[Ss]ub-?[Bb]ranch|SUB-BRANCH|[Bb]ranch|BRANCH|Representative Office|Liaison Office)(?!\p{L}))");

// Behind a court, a university, a ministry: " of Singapore", " of the State of Delaware"
const Regex RE_OF(
    "RE_OF",
    UR"((?: (?:of|for|di|de|del) (?:the )?\p{Lu}[\p{L}'&-]*(?:(?: | and | & | of | of the )\p{Lu}[\p{L}'&-]*){0,5})(?!\p{L}))");

// Behind a court: District Court in Katowice; Superior Court of Washington for Pierce County
const Regex RE_IN("RE_IN",
                  UR"( (?:in|at) (?:the )?\p{Lu}[\p{L}'-]+(?: \p{Lu}[\p{L}'-]+)?(?!\p{L}))");
const Regex RE_FOR(
    "RE_FOR",
    UR"( (?:for|in|at|in and for) (?:the )?\p{Lu}[\p{L}'-]+(?: (?:of )?\p{Lu}[\p{L}'-]+){0,3}(?!\p{L}))");

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
constexpr auto STRONG_HEADS = text::words(
    {U"bank",       U"university",  U"college", U"institute",   U"hospital",     U"court",
     U"courts",     U"commission",  U"centre",  U"center",      U"association",  U"authority",
     U"ministry",   U"council",     U"chamber", U"foundation",  U"exchange",     U"society",
     U"sparebank",  U"landgericht", U"club",    U"amtsgericht", U"kantonalbank", U"arbitrale",
     U"federation", U"department"});

// Forms of two letters that are also words in a heading: PAYABLE AS FOLLOWS.
constexpr auto DOUBTFUL_FORMS = text::words(
    {U"AS",      U"SE",          U"SA",          U"AB",       U"KG",      U"LP",       U"AG",
     U"NV",      U"BV",          U"Company",     U"Holdings", U"COMPANY", U"HOLDINGS", U"Co.",
     U"Limited", U"CORPORATION", U"Corporation", U"RT",       U"SC",      U"SAL",      U"OÜ"});

// Words of contracts that also begin a name: First Prairie National Bank
constexpr auto FIRST_WORDS =
    text::words({U"general", U"first", U"high", U"supreme", U"superior", U"federal", U"commercial",
                 U"district", U"state", U"technical"});

// Heads before which common words are enough: Standard Trust Bank
constexpr auto COMMON_HEADS = text::words({U"bank", U"university", U"hospital"});

// Forms of firms whose names list their founders: Oakes, Trumbull & Hart LLP
constexpr auto FIRM_FORMS =
    text::words({U"llp", U"l.l.p.", U"pllc", U"p.c.", U"attorneys", U"solicitors", U"advocates",
                 U"associates", U"accountants"});

class LatinOrganizationSearch {
 public:
  explicit LatinOrganizationSearch(const NlpArtifacts& a)
      : a_(a), unwrapped_(unwrapped(a.folded)), t_(unwrapped_) {}

  std::vector<RecognizerResult> run() {
    for (const auto& form : a_.of(WordClass::EN_LEGAL_FORM)) take_company(form);
    for (const auto& head : a_.of(WordClass::EN_ORGANIZATION_HEAD)) take_head(head);
    add_front_headed_organizations(a_, t_, out_);
    add_labelled_organizations(a_, out_);
    return std::move(out_);
  }

 private:
  struct Name {
    std::size_t start;
    int words = 0;       // capitalized
    int particular = 0;  // and not of the contract's own vocabulary
  };

  // A name broken over two lines is a hit in each of them.
  void add(std::size_t start, std::size_t end) {
    add_by_line(a_.folded, anonymization::entity_type::ORGANIZATION, start, end,
                LATIN_ORGANIZATION_SCORE, out_);
  }

  void take_company(const WordHit& form) {
    std::size_t left = form.start;
    if (form.end < t_.size() && t_[form.end] == U'-') return;  // SOFTWARE-AS-A-SERVICE
    const bool doubtful = DOUBTFUL_FORMS.contains(t_.substr(form.start, form.end - form.start));
    if (!doubtful && left > 1 && t_[left - 1] == U' ' && t_[left - 2] == U',') left -= 2;
    Name name = walk_left(left, FIRM_FORMS.contains(kind_of(form)));
    if (name.particular < 1) take_title(left, name);
    if (name.particular < 1 || (doubtful && is_only_place(name, left)) ||
        (doubtful && !stands_free(form, name)))
      return;
    std::size_t end = form.end;
    if (const auto m = RE_BRANCH.match_at(t_, end)) end = m->end();
    add(name.start, end);
  }

  // Mr. Price Group Limited: common words behind a title make a brand.
  void take_title(std::size_t end, Name& name) const {
    constexpr int MOST_WORDS = 3;
    std::size_t at = end;
    for (int words = 0; words <= MOST_WORDS; ++words) {
      const Token token = token_before(t_, at);
      if (token.empty() || token.end + 1 < at || !is_upper(t_[token.start])) return;
      if (is_covered(a_.of(WordClass::EN_TITLE), token.start, token.end)) {
        if (words > 0) name = {token.start, words, 1};
        return;
      }
      at = token.start;
    }
  }

  std::u32string lowered(const WordHit& hit) const {
    std::u32string word(t_.substr(hit.start, hit.end - hit.start));
    for (char32_t& c : word) c = lower(c);
    return word;
  }

  // The last word, in lower case.
  std::u32string kind_of(const WordHit& hit) const {
    const std::u32string word = lowered(hit);
    return word.substr(word.rfind(U' ') + 1);
  }

  // A NEVADA CORPORATION
  bool is_only_place(const Name& name, std::size_t end) const {
    std::size_t stop = end;
    while (stop > name.start && t_[stop - 1] == U' ') --stop;
    return is_covered(a_.of(WordClass::EN_PLACE), name.start, stop);
  }

  bool stands_free(const WordHit& form, const Name& name) const {
    const Token next = token_after(t_, form.end);
    const bool word_behind = !next.empty() && is_latin_letter(t_[next.start]);
    const bool word = form.end - form.start > 2;
    const bool capital_behind =
        word_behind && is_upper(t_[next.start]) && is_lower(t_[form.end - 1]);
    // Medikon Handels AG and: a brand in small letters before the capitals
    const Token brand = token_before(t_, form.start);
    // 1740 Zumbro Bluff Dr. SE: a quarter of the town
    if (!brand.empty() && is_touched(a_.of(WordClass::EN_STREET_WORD), brand.start, brand.end)) {
      return false;
    }
    if (!word && is_upper(t_[form.end - 1]) && !brand.empty() && brand.end + 1 == form.start &&
        brand.end > brand.start + 2 && is_lower(t_[brand.end - 1]) &&
        !is_common_english_word(brand.in(t_), 1) && !(word_behind && is_upper(t_[next.start]))) {
      return true;
    }
    return word ? name.words >= 2 && !capital_behind : !word_behind;
  }

  void take_head(const WordHit& head) {
    const std::u32string word = lowered(head);
    const std::u32string_view kind = std::u32string_view(word).substr(word.rfind(U' ') + 1);
    const bool strong = STRONG_HEADS.contains(kind);
    const bool compound = kind.size() < word.size();
    const bool court = kind.starts_with(U"court");
    // Choice of Court
    if (court && token_before(t_, head.start).in(t_) == U"of") return;
    Name name = walk_left(head.start, FIRM_FORMS.contains(kind));
    if (compound) ++name.words, ++name.particular;
    const auto of =
        is_german(word) ? RE_BEHIND.match_at(t_, head.end) : RE_OF.match_at(t_, head.end);
    std::size_t end = of && goes_on_with_of(kind, name) ? of->end() : head.end;
    if (court) end = behind_court(head.end, end);
    const bool ranked = court && (name.words > 0 || compound);
    const bool plain = !is_set_in_capitals(head.start) && strong &&
                       name.words >= (COMMON_HEADS.contains(kind) ? 2 : 3);
    const bool public_body = name.words >= 2 && is_public_rank(name.start);
    const bool named = ranked || plain || public_body || name.particular >= (strong ? 1 : 2);
    if (!named && !(of && is_named_by(*of, kind, name))) return;
    if (end == head.end && kind == U"bank") end = behind_place(end);
    if (const auto m = RE_BRANCH.match_at(t_, end)) end = m->end();
    add(std::min(name.start, head.start), end);
  }

  // Not Goldleaf Spice Traders of Kochi, who live there
  static bool goes_on_with_of(std::u32string_view kind, const Name& name) {
    return STRONG_HEADS.contains(kind) || (name.particular > 0 && !kind.ends_with(U's'));
  }

  // With the place or the district of the court, but not with what follows "and"
  std::size_t behind_court(std::size_t head, std::size_t end) const {
    const auto place = end == head ? RE_IN.match_at(t_, end) : RE_FOR.match_at(t_, end);
    if (place) end = place->end();
    return std::min(end, std::max(head, t_.substr(0, end).find(U" and ", head)));
  }

  // National Tax Agency, Federal Customs Service
  bool is_public_rank(std::size_t start) const {
    static constexpr auto RANKS =
        text::words({U"National", U"Federal", U"Royal", U"Metropolitan", U"Provincial",
                     U"Municipal", U"Ministry", U"Imperial", U"Cantonal", U"Prefectural"});
    return RANKS.contains(token_after(t_, start).in(t_));
  }

  // Standard Trust Bank Ghana
  std::size_t behind_place(std::size_t end) const {
    if (!t_.substr(end).starts_with(U' ')) return end;
    return std::max(end, end_of_word_at(a_.of(WordClass::EN_PLACE), end + 1));
  }

  // Whether what stands behind the head makes it particular: University of Vardøya
  bool is_named_by(const text::Match& of, std::u32string_view kind, const Name& name) const {
    if (is_of_common_word(of.text())) return false;
    // Centre of Main Interests
    if (kind == U"centre" || kind == U"center") {
      return is_touched(a_.of(WordClass::EN_PLACE), of.start(), of.end());
    }
    if (STRONG_HEADS.contains(kind)) return OF_HEADS.contains(kind) || is_place_or_long(of);
    return name.particular >= 1 && is_touched(a_.of(WordClass::EN_PLACE), of.start(), of.end());
  }

  // Board of Directors
  static bool is_of_common_word(std::u32string_view of) {
    return std::count(of.begin(), of.end(), U' ') == 2 &&
           is_contract_language(of.substr(of.rfind(U' ') + 1));
  }

  bool is_place_or_long(const text::Match& of) const {
    return is_touched(a_.of(WordClass::EN_PLACE), of.start(), of.end()) ||
           std::count(of.text().begin(), of.text().end(), U' ') >= 3;
  }

  // Where walk_left stands.
  struct Walk {
    std::size_t at;          // the words from here on are read
    bool firm;               // commas may stand before an ampersand
    bool capitals;           // the line is set in capitals
    bool connected = false;  // the word to the right is "and" or the like
    bool ampersand = false;
  };

  // The capitalized words before `end`.
  Name walk_left(std::size_t end, bool firm = false) const {
    Name name{end};
    Walk walk{end, firm, is_set_in_capitals(end)};
    for (int i = 0; i < MOST_NAME_WORDS; ++i) {
      if (const auto open = bracket_before(walk.at)) {
        walk.at = *open;
        continue;
      }
      const Token token = token_before(t_, walk.at);
      if (token.empty() || token.end + 1 < walk.at || is_barrier(token, walk)) break;
      if (!take_word(token, walk, name)) break;
      if (walk.at == 0 || t_[walk.at - 1] != U' ') break;
      if (firm && walk.ampersand && walk.at > 1 && t_[walk.at - 2] == U',') walk.at -= 2;
    }
    return trimmed(name, end);
  }

  // Whether no name reaches across this word.
  bool is_barrier(const Token& token, const Walk& walk) const {
    const auto word = token.in(t_);
    if (walk.capitals && (is_small_word(word) || (word == U"OF" && !is_behind_head(token)))) {
      return true;
    }
    if (word == U"of" && is_behind_common_word(token)) return true;
    if (word == U"and" && parts_two_brands(token, walk.at)) return true;
    // ... Therapeutics and the University
    return walk.connected && (word == U"and" || !heads_of(token, walk.at));
  }

  // Opinion of Hollis Trevanion LLP; but Bank of Ghana Ltd
  bool is_behind_common_word(const Token& of) const {
    const Token left = token_before(t_, of.start);
    return !left.empty() && is_contract_language(left.in(t_)) &&
           !is_covered(a_.of(WordClass::EN_ORGANIZATION_HEAD), left.start, left.end);
  }

  // Snowdrift Analytics and Datakern OÜ; but Ship Repair and Trading Ltd
  bool parts_two_brands(const Token& conjunction, std::size_t right) const {
    const Token brand = token_after(t_, right);
    if (brand.empty() || !is_upper(t_[brand.start]) || is_common_english_word(brand.in(t_), 1) ||
        is_contract_language(brand.in(t_))) {
      return false;
    }
    const Token last = token_before(t_, conjunction.start);
    if (last.empty() || !is_upper(t_[last.start])) return false;
    const Token first = token_before(t_, last.start);
    return !first.empty() && first.end + 1 == last.start && is_upper(t_[first.start]);
  }

  // Adds the word to the name; false if it ends before it.
  bool take_word(const Token& token, Walk& walk, Name& name) const {
    const auto word = token.in(t_);
    const bool connective = is_connective(word);
    if (is_capitalized(word)) {
      if (ends_name(token, walk.connected, name)) return false;
      name.start = token.start;
      ++name.words;
      name.particular += is_contract_word(word) || is_contract_language(word) ? 0 : 1;
    } else if (!connective) {
      return false;
    }
    walk.ampersand |= word == U"&";
    walk.connected = connective;
    walk.at = token.start;
    return true;
  }

  // Whether the line up to `end` has no letter in lower case.
  bool is_set_in_capitals(std::size_t end) const {
    constexpr std::size_t WINDOW = 40;
    std::size_t letters = 0;
    for (std::size_t i = end; i > 0 && end - i < WINDOW && !is_cell_end(t_[i - 1]); --i) {
      if (is_lower(t_[i - 1])) return false;
      letters += is_upper(t_[i - 1]) ? 1 : 0;
    }
    return letters > 0;
  }

  // BANK OF ..., but not DIRECTORS OF ...
  bool is_behind_head(const Token& token) const {
    const Token left = token_before(t_, token.start);
    return !left.empty() && STRONG_HEADS.contains(kind_of({left.start, left.end}));
  }

  // Professor Tang of the School: before "of" only another organization goes on to the left.
  bool heads_of(const Token& token, std::size_t right) const {
    const auto word = token.in(t_);
    const auto rest = t_.substr(right);
    if (is_connective(word) || !(rest.starts_with(U"of the ") || rest.starts_with(U"of The "))) {
      return true;
    }
    return is_covered(a_.of(WordClass::EN_ORGANIZATION_HEAD), token.start, token.end);
  }

  // Whether what stands before a name ends with this word.
  bool ends_name(const Token& token, bool connected, const Name& name) const {
    const auto word = token.in(t_);
    if (ends_sentence(word) || is_plain_number(word)) return true;
    if (!connected) return false;
    // Harrow Logistics Limited and Tallgrass Systems, Inc. are two.
    return is_covered(a_.of(WordClass::EN_LEGAL_FORM), token.start, token.end) ||
           (name.particular > 0 &&
            is_covered(a_.of(WordClass::EN_ORGANIZATION_HEAD), token.start, token.end));
  }

  // "(Hong Kong)" before `at`: where it opens.
  std::optional<std::size_t> bracket_before(std::size_t at) const {
    constexpr std::size_t LONGEST = 30;
    if (at > 0 && t_[at - 1] == U' ') --at;
    if (at == 0 || t_[at - 1] != U')') return std::nullopt;
    for (std::size_t i = at - 1; i > 0 && at - i < LONGEST; --i) {
      if (t_[i - 1] == U'(')
        return i >= 2 && t_[i - 2] == U' ' ? std::optional(i - 1) : std::nullopt;
      // (H.K.)
      if (!is_latin_letter(t_[i - 1]) && t_[i - 1] != U' ' && t_[i - 1] != U'.')
        return std::nullopt;
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
    return word.back() == U'.' && word.find(U'.') == word.size() - 1 &&
           (word.size() > LONGEST_ABBREVIATION || text::is_ascii_digit(word.front()));
  }

  // Without the words of the sentence before the name: The, Between, Buyer.
  Name trimmed(Name name, std::size_t end) const {
    while (name.words > 0) {
      const Token first = token_after(t_, name.start);
      const auto word = first.in(t_);
      const bool number = std::all_of(word.begin(), word.end(), [](char32_t c) {
        return text::is_ascii_digit(c) || c == U'.';
      });
      if (first.end >= end || !(number || leads_in(word)) || begins_head(first)) break;
      if (!number || is_upper(word.front())) --name.words;
      std::size_t next = first.end;
      while (next < end && t_[next] == U' ') ++next;
      name.start = next;
      if (next >= end) name.words = 0;
    }
    return name;
  }

  // Arbitration Institute, Project Management Office, Audit Commission
  bool begins_head(const Token& first) const {
    static constexpr auto FIELDS = text::words(
        {U"Arbitration", U"Mediation", U"Audit", U"Project", U"Trade", U"Patent", U"Court"});
    const Token next = token_after(t_, first.end);
    if (next.empty() || !FIELDS.contains(first.in(t_))) return false;
    return next.start == first.end + 1 &&
           is_covered(a_.of(WordClass::EN_ORGANIZATION_HEAD), next.start, next.end) &&
           t_.substr(next.end).starts_with(U" of ");
  }

  static bool leads_in(std::u32string_view word) {
    std::u32string low(word);
    for (char32_t& c : low) c = lower(c);
    return is_connective(word) || (is_contract_word(word) && !FIRST_WORDS.contains(low));
  }

  const NlpArtifacts& a_;
  std::u32string unwrapped_;
  std::u32string_view t_;
  std::vector<RecognizerResult> out_;
};

}  // namespace

LatinOrganizationFinder::LatinOrganizationFinder()
    : EntityRecognizer("LatinOrganizationFinder",
                       {std::string(anonymization::entity_type::ORGANIZATION)}) {}

std::vector<RecognizerResult> LatinOrganizationFinder::analyze(
    const NlpArtifacts& artifacts) const {
  return LatinOrganizationSearch(artifacts).run();
}

}  // namespace core::nlp
