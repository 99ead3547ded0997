#include <optional>
#include <string>
#include <unordered_set>

#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_runs.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
namespace entity_type = anonymization::entity_type;

constexpr double UNEXPLAINED_SCORE = 0.5;

// How much must speak for a name.
constexpr int ENOUGH_EVIDENCE = 3;

constexpr auto WORDS_BEFORE_NOUNS =
    text::words({U"the",  U"a",     U"an",   U"each",  U"any",   U"such",  U"this",   U"that",
                 U"its",  U"their", U"our",  U"your",  U"his",   U"her",   U"my",     U"all",
                 U"no",   U"every", U"said", U"other", U"these", U"those", U"either", U"neither",
                 U"both", U"some",  U"same", U"which", U"whose", U"new",   U"another"});

// Before the name of somebody who does or gets something
constexpr auto STRONG_PREPOSITIONS = text::words(
    {U"with", U"by", U"from", U"to", U"between", U"against", U"through", U"via", U"before"});

constexpr auto PREPOSITIONS = text::words({U"of", U"at", U"for", U"and", U"or", U"than", U"called",
                                           U"named", U"in", U"as", U"is", U"that"});

constexpr auto PLACE_PREPOSITIONS =
    text::words({U"in", U"at", U"from", U"near", U"to", U"off", U"outside", U"around", U"of"});

// Behind the name of somebody who acts
constexpr auto VERBS_BEHIND_NAMES = text::words(
    {U"shall",       U"will",     U"has",      U"had",       U"have",      U"is",
     U"was",         U"may",      U"must",     U"agrees",    U"agreed",    U"undertakes",
     U"pays",        U"paid",     U"holds",    U"held",      U"owns",      U"acts",
     U"acted",       U"would",    U"can",      U"cannot",    U"does",      U"did",
     U"wants",       U"says",     U"said",     U"sends",     U"sent",      U"confirms",
     U"confirmed",   U"claims",   U"claimed",  U"grants",    U"granted",   U"warrants",
     U"provides",    U"provided", U"delivers", U"delivered", U"undertook", U"which",
     U"whose",       U"who",      U"are",      U"were",      U"stays",     U"remains",
     U"accepts",     U"accepted", U"requests", U"requested", U"signed",    U"signs",
     U"contributes", U"issued"});

// Such verbs as tell more than "shall" and "is", which stand behind things, too
constexpr auto ACTS = text::words(
    {U"agrees",    U"agreed",    U"undertakes", U"undertook",   U"pays",     U"paid",
     U"holds",     U"held",      U"owns",       U"acts",        U"acted",    U"wants",
     U"says",      U"said",      U"sends",      U"sent",        U"confirms", U"confirmed",
     U"claims",    U"claimed",   U"grants",     U"granted",     U"warrants", U"provides",
     U"delivers",  U"delivered", U"who",        U"accepts",     U"accepted", U"requests",
     U"requested", U"signed",    U"signs",      U"contributes", U"appoints", U"appointed",
     U"engages",   U"engaged",   U"represents"});

// The last word of a rule or a document; the words before it belong to its title.
constexpr auto TITLES_OF_RULES = text::words(
    {U"act",      U"acts",       U"law",        U"laws",         U"rules",       U"rule",
     U"code",     U"convention", U"directive",  U"regulation",   U"regulations", U"ordinance",
     U"protocol", U"treaty",     U"principles", U"statute",      U"clause",      U"charter",
     U"accord",   U"terms",      U"conditions", U"guidelines",   U"standard",    U"standards",
     U"form",     U"bill",       U"decree",     U"constitution", U"amendment",   U"gesetz",
     U"time",     U"week",       U"day",        U"licence",      U"license",     U"date"});

// The last word of a place
constexpr auto PLACE_WORDS =
    text::words({U"county",   U"state",     U"port",     U"airport", U"island", U"islands",
                 U"valley",   U"river",     U"bay",      U"harbour", U"harbor", U"province",
                 U"district", U"village",   U"township", U"lake",    U"beach",  U"region",
                 U"terminal", U"peninsula", U"coast",    U"heights", U"borough"});

class UnexplainedNameSearch {
 public:
  explicit UnexplainedNameSearch(const NlpArtifacts& a)
      : a_(a), unwrapped_(unwrapped(a.folded)), t_(unwrapped_), found_(find_latin_runs(t_)) {}

  std::vector<RecognizerResult> run() {
    for (const auto& entity : a_.entities) {
      const auto& r = entity.result;
      const bool place = r.entity_type == entity_type::LOCATION;
      (place ? places_ : names_).add(r.start, r.end);
      if (r.entity_type == entity_type::ORGANIZATION) organizations_.add(r.start, r.end);
    }
    names_.finish();
    places_.finish();
    organizations_.finish();
    for (const auto& w : found_.words) note_brand(w);
    for (const auto& run : found_.runs) note_definition(run);
    for (const auto& run : found_.runs) note_determiner(run);
    for (const auto& run : found_.runs) judge(run);
    return std::move(out_);
  }

 private:
  // Part of a run.
  struct Part {
    std::size_t first;
    std::size_t last;  // one behind
    bool opens;        // a sentence
    bool determined;   // stands behind an article or the like
    bool empty() const { return first == last; }
    std::size_t size() const { return last - first; }
  };

  const LatinWord& word(std::size_t i) const { return found_.words[i]; }
  std::u32string_view in(const LatinWord& w) const { return t_.substr(w.start, w.end - w.start); }
  std::u32string low(std::size_t i) const { return lowered(in(word(i))); }
  std::size_t start_of(const Part& p) const { return word(p.first).start; }
  std::size_t end_of(const Part& p) const { return word(p.last - 1).end; }
  std::u32string_view in(const Part& p) const {
    return t_.substr(start_of(p), end_of(p) - start_of(p));
  }

  // The run without the words of the sentence around the name.
  Part part_of(const LatinRun& run) const {
    Part p{run.first_word, run.first_word + run.word_count, run.sentence_start, false};
    p.determined = WORDS_BEFORE_NOUNS.contains(lowered(token_before(t_, run.start).in(t_))) &&
                   run.start > 0 && t_[run.start - 1] == U' ';
    while (!p.empty() && leads_in(p)) {
      p.determined |= WORDS_BEFORE_NOUNS.contains(low(p.first));
      ++p.first;
      p.opens = false;
    }
    while (!p.empty() && (word(p.first).connective || in(word(p.first)) == U"&")) ++p.first;
    while (!p.empty() && (word(p.last - 1).connective || is_term_in_capitals(p.last - 1))) --p.last;
    return p;
  }

  bool leads_in(const Part& p) const {
    const auto& w = word(p.first);
    if (w.initial) return false;
    if (is_shortened_title(w) || is_term_in_capitals(p.first)) return true;
    if (p.size() == 1) return false;
    if (w.particular) return false;
    const auto l = low(p.first);
    return is_small_word(l) || WORDS_BEFORE_NOUNS.contains(l) ||
           is_covered(a_.of(WordClass::EN_TITLE), w.start, w.end) ||
           (p.opens && w.vocabulary && particular_words(p) > 0) ||
           // Trade Marks VERDAMET
           (w.vocabulary && word(p.last - 1).shape == WordShape::CAPITALS &&
            w.shape != WordShape::CAPITALS && word(p.last - 1).particular);
  }

  // SWIFT, EUR, MV, ORDERS beside a name
  bool is_term_in_capitals(std::size_t i) const {
    return word(i).shape == WordShape::CAPITALS && word(i).vocabulary;
  }

  // Avv. , Ing. , Capt.
  bool is_shortened_title(const LatinWord& w) const {
    constexpr std::size_t LONGEST = 5;
    return w.end < t_.size() && t_[w.end] == U'.' && w.end - w.start <= LONGEST &&
           w.end - w.start > 1 && w.shape == WordShape::CAPITAL;
  }

  // In a line of capitals only words count that are none, and ordinary ones beside them:
  // VINAKIEM; SREE VENKATESWARA CASHEW
  void judge_capitals(const Part& p) {
    constexpr std::size_t SHORTEST = 5;
    for (std::size_t i = p.first; i < p.last;) {
      std::size_t end = i;
      bool unknown = false;
      for (; end < p.last && !word(end).vocabulary; ++end) {
        const auto& w = word(end);
        unknown |= w.particular && w.end - w.start >= SHORTEST &&
                   w.facts.name_class != LatinNameClass::PROPER;
      }
      const Part part{i, end, false, false};
      if (unknown) add(is_person(part) ? entity_type::PERSON : entity_type::ORGANIZATION, part);
      i = end + 1;
    }
  }

  // A word of a company's name that is no other word
  void note_brand(const LatinWord& w) {
    constexpr std::size_t SHORTEST = 4;
    if (w.particular && w.end - w.start >= SHORTEST && w.shape == WordShape::CAPITAL &&
        w.facts.city == WorldCity::NONE && organizations_.contains(w.start, w.end)) {
      brands_.insert(in(w));
    }
  }

  // Key Staff Turnover ("KST"), but a name behind that of an organization: Ems GmbH (K&B)
  void note_definition(const LatinRun& run) {
    if (run.start < 4 || run.word_count > 3) return;
    std::size_t at = run.start;
    while (at > 0 && (t_[at - 1] == U'"' || t_[at - 1] == 0x201C || t_[at - 1] == 0x2018)) --at;
    if (at < 3 || t_[at - 1] != U'(' || t_[at - 2] != U' ') return;
    const auto behind_name = static_cast<std::ptrdiff_t>(at) - 2;
    const auto& w = word(run.first_word);
    const auto role = token_before(t_, at - 2);
    if (organizations_.touches(behind_name - 1, behind_name) ||
        is_covered(a_.of(WordClass::ORGANIZATION_LABEL), role.start, role.end)) {
      if (!w.vocabulary && closes_definition(run.end))
        aliases_.insert(t_.substr(run.start, run.end - run.start));
    } else if (run.word_count == 1 && w.shape == WordShape::CAPITALS) {
      determined_.insert(lowered(in(w)));
    }
  }

  bool closes_definition(std::size_t at) const {
    constexpr std::u32string_view QUOTES = U"\"\u201D\u2019";
    while (at < t_.size() && QUOTES.find(t_[at]) != t_.npos) ++at;
    return at < t_.size() && t_[at] == U')';
  }

  void note_determiner(const LatinRun& run) {
    const Part p = part_of(run);
    if (!p.empty() && p.determined) determined_.insert(lowered(in(p)));
  }

  int particular_words(const Part& p) const {
    int n = 0;
    for (std::size_t i = p.first; i < p.last; ++i) n += word(i).particular ? 1 : 0;
    return n;
  }

  void judge(const LatinRun& run) {
    const Part p = part_of(run);
    if (p.empty() || run.foreign_line || is_known(p) || !stands_free(p)) return;
    if (add_route(p)) return;
    if (const auto type = place_type(run, p)) {
      add(*type, p);
    } else if (run.capitals_line) {
      judge_capitals(p);
    } else if (is_brand(p)) {
      add(entity_type::ORGANIZATION, p);
    } else if (evidence(run, p) >= ENOUGH_EVIDENCE) {
      add(is_person(p) ? entity_type::PERSON : entity_type::ORGANIZATION, p);
    }
  }

  bool is_city(std::size_t start, std::size_t end) const {
    return is_covered(a_.of(WordClass::EN_PLACE), start, end) ||
           is_world_city(t_.substr(start, end - start));
  }

  // Qingdao–Guangzhou: two cities
  bool add_route(const Part& p) {
    if (p.size() != 1) return false;
    const auto route = in(p);
    const std::size_t dash = route.find_first_of(U"-\u2013");
    if (dash == route.npos || dash < 3 || route.size() - dash < 4) return false;
    const std::size_t start = start_of(p);
    if (!is_city(start, start + dash) || !is_city(start + dash + 1, end_of(p))) return false;
    add_by_line(a_.folded, entity_type::LOCATION, start, start + dash, UNEXPLAINED_SCORE, out_);
    add_by_line(a_.folded, entity_type::LOCATION, start + dash + 1, end_of(p), UNEXPLAINED_SCORE,
                out_);
    return true;
  }

  bool is_brand(const Part& p) const {
    if (aliases_.contains(in(p))) return true;
    return brands_.contains(in(word(p.first))) &&
           (p.size() == 1 || particular_words(p) == static_cast<int>(p.size()));
  }

  void add(std::string_view type, const Part& p) {
    const std::size_t start = in(p).find(U'&') == t_.npos ? start_of(p) : start_of_list(p);
    const std::size_t end = type == entity_type::ORGANIZATION ? behind_form(end_of(p)) : end_of(p);
    add_by_line(a_.folded, type, start, end, UNEXPLAINED_SCORE, out_);
  }

  // Weserbank Holtorf eG: forms that are no capitals
  std::size_t behind_form(std::size_t end) const {
    static constexpr std::u32string_view FORMS[] = {U" eG",   U" e.G.", U" eV",    U" e.V.",
                                                    U" e.K.", U" mbH",  U" P.S.",  U", P.S.",
                                                    U" A.Ş.", U" Şti.", U" & Cia", U" & Cie"};
    for (const auto form : FORMS) {
      const std::size_t stop = end + form.size();
      if (t_.substr(end).starts_with(form) && (stop >= t_.size() || !is_latin_letter(t_[stop]))) {
        return stop;
      }
    }
    return end;
  }

  // Harrow, Finch & Dale: single words before the commas belong to the name.
  std::size_t start_of_list(const Part& p) const {
    constexpr int MOST = 3;
    std::size_t start = start_of(p);
    if (p.size() < 3 || in(word(p.first + 1)) != U"&") return start;
    for (int n = 0; n < MOST; ++n) {
      if (start < 3 || t_[start - 1] != U' ' || t_[start - 2] != U',') break;
      const Token token = token_before(t_, start - 2);
      if (token.empty() || token.end != start - 2 || !is_upper(t_[token.start])) break;
      const Token left = token_before(t_, token.start);
      const bool longer = !left.empty() && left.end + 1 == token.start && is_upper(t_[left.start]);
      if (longer || is_contract_language(token.in(t_)) ||
          is_covered(a_.of(WordClass::EN_PLACE), token.start, token.end)) {
        break;
      }
      start = token.start;
    }
    return start;
  }

  // Whether another finder has read it, or it is no name by what it says.
  bool is_known(const Part& p) const {
    const auto start = static_cast<std::ptrdiff_t>(start_of(p));
    const auto end = static_cast<std::ptrdiff_t>(end_of(p));
    if (names_.touches(start, end) || places_.contains(start, end)) return true;
    for (const auto c : {WordClass::EN_ROLE, WordClass::PUBLIC_NAME, WordClass::SHIELD}) {
      if (is_covered(a_.of(c), start_of(p), end_of(p))) return true;
    }
    return TITLES_OF_RULES.contains(low(p.last - 1));
  }

  // No part of an address on the net, a number or a file name; no rule with its number.
  bool stands_free(const Part& p) const {
    constexpr std::u32string_view GLUE = U"@/\\_#.:=$%+*<>";
    const std::size_t start = start_of(p);
    const std::size_t end = end_of(p);
    if (start > 0 && GLUE.find(t_[start - 1]) != GLUE.npos && t_[start - 1] != U':') return false;
    if (is_technique(p)) return false;
    if (end >= t_.size()) return true;
    if (GLUE.find(t_[end]) != GLUE.npos && end + 1 < t_.size() && t_[end + 1] != U' ' &&
        !is_cell_end(t_[end + 1])) {
      return false;
    }
    return !(t_[end] == U' ' && end + 1 < t_.size() && text::is_ascii_digit(t_[end + 1]) &&
             p.size() == 1);
  }

  bool is_in_chinese(const Part& p) const {
    return has_han_before(start_of(p)) || has_han_behind(end_of(p));
  }

  bool has_han_before(std::size_t at) const {
    if (at > 0 && t_[at - 1] == U' ') --at;
    return at > 0 && is_han(t_[at - 1]);
  }

  bool has_han_behind(std::size_t at) const {
    if (at < t_.size() && t_[at] == U' ') ++at;
    return at < t_.size() && is_han(t_[at]);
  }

  // 采用Nginx, Elasticsearch集群: what Chinese says of software and goods
  bool is_technique(const Part& p) const {
    static constexpr auto USES = text::words({U"采用", U"基于", U"使用", U"支持", U"运行", U"部署",
                                              U"兼容", U"型号", U"品牌", U"利用", U"符合", U"版本",
                                              U"安装", U"接入", U"适用", U"生产", U"产品"});
    static constexpr auto KINDS = text::words(
        {U"系统", U"平台", U"软件", U"接口", U"协议", U"技术", U"框架", U"数据", U"服务", U"算法",
         U"模型", U"语言", U"格式", U"型号", U"标准", U"工具", U"集群", U"引擎", U"组件", U"环境",
         U"方式", U"条款", U"文件", U"证书", U"测试", U"牌的", U"规则", U"材料", U"产品", U"设备"});
    std::size_t start = start_of(p);
    std::size_t end = end_of(p);
    if (start > 0 && t_[start - 1] == U' ') --start;
    if (end < t_.size() && t_[end] == U' ') ++end;
    return (start > 1 && USES.contains(t_.substr(start - 2, 2))) ||
           KINDS.contains(t_.substr(end, 2));
  }

  std::u32string before(const Part& p) const {
    const std::size_t start = start_of(p);
    if (start == 0 || t_[start - 1] != U' ') return {};
    return lowered(token_before(t_, start).in(t_));
  }

  // "before the EEOC"
  std::u32string before_article(const Part& p) const {
    const Token article = token_before(t_, start_of(p));
    if (article.start == 0 || t_[article.start - 1] != U' ') return {};
    return lowered(token_before(t_, article.start).in(t_));
  }

  std::u32string behind(const Part& p) const {
    const std::size_t end = end_of(p);
    if (end >= t_.size() || t_[end] != U' ') return {};
    return lowered(token_after(t_, end).in(t_));
  }

  // A city of the world, or what ends like a place
  std::optional<std::string_view> place_type(const LatinRun& run, const Part& p) const {
    const auto preposition = before(p);
    const bool behind_preposition = PLACE_PREPOSITIONS.contains(preposition);
    const auto facts = latin_word(in(p));
    if (facts.city != WorldCity::NONE && !facts.city_is_common_word && !word(p.first).vocabulary &&
        in(p).size() > 2) {
      const bool comma = start_of(p) > 1 && t_[start_of(p) - 2] == U',';
      const bool listed = comma || !run.sentence_start || behind_preposition;
      constexpr std::size_t LONG = 5;
      const bool sure = !facts.city_is_person_name && facts.english_frequency == 0 &&
                        (word(p.first).shape == WordShape::CAPITAL || in(p).size() >= LONG);
      if (behind_preposition || (sure && (listed || run.capitals_line))) {
        return entity_type::LOCATION;
      }
    }
    const bool place_word = p.size() > 1 && PLACE_WORDS.contains(low(p.last - 1));
    if (place_word && particular_words(p) > 0) return entity_type::LOCATION;
    return std::nullopt;
  }

  int evidence(const LatinRun& run, const Part& p) const {
    const auto& first = word(p.first);
    if (p.size() == 1 && first.shape == WordShape::CAPITALS) return acronym_evidence(run, p);
    if (run.capitals_line) return 0;
    if (is_party(p)) return ENOUGH_EVIDENCE;
    int sum = word_evidence(p);
    if (sum <= 0) return 0;
    const bool unknown = particular_words(p) > 0;
    const auto left = before(p);
    const auto right = behind(p);
    if (STRONG_PREPOSITIONS.contains(left)) sum += 2;
    if (unknown ? PREPOSITIONS.contains(left) : left == U"of" || left == U"at") sum += 1;
    if (unknown ? VERBS_BEHIND_NAMES.contains(right) : ACTS.contains(right)) sum += 1;
    if (is_defined_as_role(p) || is_beside_organization(p)) sum += 2;
    if (is_possessive(p)) sum += 1;
    if (p.opens && p.size() == 1 && !is_in_chinese(p)) sum -= 1;
    const bool chinese = is_in_chinese(p);
    if (chinese && !unknown) return 0;
    if (run.title_line && !chinese && !is_field(p) && !(p.size() > 1 && is_cell(p))) sum -= 1;
    return sum;
  }

  // The whole of a table cell
  bool is_cell(const Part& p) const {
    const std::size_t start = start_of(p);
    const std::size_t end = end_of(p);
    const bool left = start == 0 || is_cell_end(t_[start - 1]);
    const bool right = end >= t_.size() || is_cell_end(t_[end]);
    return left && right && (tab_before(start) || (end < t_.size() && t_[end] == U'\t'));
  }

  bool tab_before(std::size_t at) const { return at > 0 && t_[at - 1] == U'\t'; }

  // Snowdrift Analytics and Datakern OÜ, of which the second was found
  bool is_beside_organization(const Part& p) const {
    static constexpr std::u32string_view LINKS[] = {U" and ", U", ", U"; ", U" & ", U" or "};
    for (const auto link : LINKS) {
      const auto behind = static_cast<std::ptrdiff_t>(end_of(p) + link.size());
      if (t_.substr(end_of(p)).starts_with(link) && organizations_.touches(behind, behind + 1)) {
        return true;
      }
      const auto before =
          static_cast<std::ptrdiff_t>(start_of(p)) - static_cast<std::ptrdiff_t>(link.size());
      if (before > 0 && t_.substr(0, start_of(p)).ends_with(link) &&
          organizations_.touches(before - 1, before)) {
        return true;
      }
    }
    return false;
  }

  // Harbor Point Logistics ("Customer"), whatever its words are
  bool is_party(const Part& p) const {
    if (p.size() < 2 || p.determined || !is_defined_as_role(p)) return false;
    const std::size_t quote = t_.find_first_of(U"\"\u201C", end_of(p));
    const Token role = token_after(t_, quote + 1);
    return is_covered(a_.of(WordClass::ORGANIZATION_LABEL), role.start, role.end);
  }

  bool is_defined_as_role(const Part& p) const {
    const auto behind_name = t_.substr(end_of(p), 8);
    return behind_name.starts_with(U" (\"") || behind_name.starts_with(U" (\u201C") ||
           behind_name.starts_with(U" (the \"") || behind_name.starts_with(U" (the \u201C");
  }

  bool is_possessive(const Part& p) const {
    return t_.substr(end_of(p), 2) == U"'s" || t_.substr(end_of(p), 2) == U"\u2019s";
  }

  // The whole of a table cell, or of what stands behind a colon
  bool is_field(const Part& p) const {
    const std::size_t start = start_of(p);
    const std::size_t end = end_of(p);
    std::size_t left = start;
    while (left > 0 && t_[left - 1] == U' ') --left;
    const bool opens = left > 0 && (t_[left - 1] == U':' || t_[left - 1] == U'\t');
    const bool closes = end >= t_.size() || is_cell_end(t_[end]) || t_[end] == U',' ||
                        t_[end] == U';' || t_[end] == U'(';
    return opens && closes;
  }

  // How much a word that is none speaks for a name
  static int weight_of(const LatinWord& w, bool alone) {
    // IQF Strawberries: a few letters may be any abbreviation
    constexpr std::size_t ABBREVIATION = 4;
    if (w.facts.name_class == LatinNameClass::PROPER) return alone ? 0 : 1;
    if (w.shape == WordShape::CAPITALS && w.end - w.start <= ABBREVIATION) return 1;
    return w.facts.name_class == LatinNameClass::NONE ? 3 : 2;
  }

  int word_evidence(const Part& p) const {
    int particular = 0;
    int ordinary = 0;
    int vocabulary = 0;
    for (std::size_t i = p.first; i < p.last; ++i) {
      const auto& w = word(i);
      if (w.connective || w.initial) continue;
      if (w.particular) {
        particular = std::max(particular, weight_of(w, p.size() == 1));
      } else {
        ++(w.vocabulary ? vocabulary : ordinary);
      }
    }
    if (particular > 1) return particular;
    if (p.size() < 2) return 0;
    if (p.determined || determined_.contains(lowered(in(p))) || is_written_small(p)) return 0;
    const bool ampersand = in(p).find(U" & ") != t_.npos && vocabulary == 0;
    return particular + std::min(ordinary, 2) - vocabulary + (ampersand ? 1 : 0);
  }

  // Each of its words stands in lower case elsewhere.
  bool is_written_small(const Part& p) const {
    for (std::size_t i = p.first; i < p.last; ++i) {
      if (!word(i).connective && !found_.lower_words.contains(low(i))) return false;
    }
    return true;
  }

  // IBM, EEOC: letters that are no word and no term of a trade.
  int acronym_evidence(const LatinRun& run, const Part& p) const {
    const auto& w = word(p.first);
    const std::size_t length = w.end - w.start;
    if (w.vocabulary || !w.particular || run.capitals_line || length < 3) return 0;
    if (determined_.contains(lowered(in(w)))) return 0;
    int sum = length >= 7 ? 3 : 1;
    auto left = before(p);
    if (left == U"the" && VERBS_BEHIND_NAMES.contains(behind(p))) sum += 1;
    if (left == U"the") left = before_article(p);
    if (STRONG_PREPOSITIONS.contains(left)) sum += 2;
    if (PREPOSITIONS.contains(left)) sum += 1;
    if (VERBS_BEHIND_NAMES.contains(behind(p))) sum += 1;
    if (is_possessive(p)) sum += 1;
    if (run.title_line) sum -= 1;
    return sum;
  }

  // A given name, or initials, and one or two words that no dictionary has
  bool is_person(const Part& p) const {
    const auto& first = word(p.first);
    const auto is_name = [](const LatinWord& w, LatinNameClass kind) {
      return w.facts.name_class == kind || w.facts.name_class == LatinNameClass::BOTH;
    };
    if (p.size() == 1) {
      return first.particular && first.shape == WordShape::CAPITAL &&
             first.facts.name_class != LatinNameClass::NONE &&
             first.facts.name_class != LatinNameClass::PROPER;
    }
    if (p.size() > 4) return false;
    if (!first.initial && !is_name(first, LatinNameClass::GIVEN)) return false;
    for (std::size_t i = p.first + 1; i < p.last; ++i) {
      const auto& w = word(i);
      if (!w.particular && !w.connective && !w.initial && !is_name(w, LatinNameClass::SURNAME)) {
        return false;
      }
    }
    return in(p).find(U'&') == t_.npos;
  }

  const NlpArtifacts& a_;
  std::u32string unwrapped_;
  std::u32string_view t_;
  LatinRuns found_;
  SpanCover names_;
  SpanCover places_;
  SpanCover organizations_;
  std::unordered_set<std::u32string_view> brands_;
  std::unordered_set<std::u32string_view> aliases_;  // defined behind an organization
  std::unordered_set<std::u32string> determined_;
  std::vector<RecognizerResult> out_;
};

}  // namespace

UnexplainedNameFinder::UnexplainedNameFinder()
    : EntityRecognizer("UnexplainedNameFinder",
                       {std::string(entity_type::ORGANIZATION), std::string(entity_type::PERSON),
                        std::string(entity_type::LOCATION)}) {}

std::vector<RecognizerResult> UnexplainedNameFinder::analyze(const NlpArtifacts& artifacts) const {
  return UnexplainedNameSearch(artifacts).run();
}

}  // namespace core::nlp
