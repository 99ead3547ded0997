#include "core/parties/organization_name.hpp"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "core/text/lexicon.hpp"
#include "core/text/unicode.hpp"
#include "core/text/word_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view legal_forms_en;
extern const std::string_view organization_suffixes;
extern const std::string_view places_en;
extern const std::string_view places_zh;
extern const std::string_view trade_words;
}  // namespace core::text::lexicon_data

namespace core::parties {
namespace {

namespace data = text::lexicon_data;
using Words = std::unordered_set<std::u32string>;

// Chinese forms, the longest first. A name with one of the first group stands in
// a register; the others are what remains of one in running text.
constexpr std::u32string_view FULL_FORMS[] = {
    U"合伙企业(有限合伙)", U"合伙企业(普通合伙)", U"有限责任公司", U"股份有限公司", U"有限公司",
    U"股份公司",           U"株式会社",           U"有限会社",     U"合伙企业"};
constexpr std::u32string_view COMPANY = U"公司";
constexpr std::u32string_view GROUP = U"集团";

// A brand has at least two ideographs, and hardly more than four.
constexpr std::size_t MIN_BRAND = 2;
constexpr std::size_t MAX_BRAND = 4;
constexpr std::size_t LONGEST_TRADE_WORD = 6;
constexpr std::size_t LONGEST_PLACE = 12;
constexpr std::size_t LONGEST_SUFFIX = 12;

// A Latin name is not cut down to less than this, nor to one of these words.
constexpr std::size_t MIN_LATIN_BRAND = 4;
constexpr std::size_t MIN_LATIN_NAME = 3;
constexpr auto COMMON_WORDS = text::words(
    {U"advanced",  U"african",    U"american",  U"asia",       U"asian",         U"associated",
     U"atlantic",  U"bank",       U"british",   U"capital",    U"central",       U"century",
     U"china",     U"chinese",    U"city",      U"commercial", U"companies",     U"company",
     U"court",     U"department", U"digital",   U"east",       U"eastern",       U"euro",
     U"europe",    U"european",   U"federal",   U"first",      U"general",       U"german",
     U"global",    U"golden",     U"grand",     U"great",      U"greater",       U"group",
     U"high",      U"holdings",   U"home",      U"hong",       U"industrial",    U"information",
     U"institute", U"inter",      U"joint",     U"ministry",   U"international", U"mutual",
     U"national",  U"north",      U"northern",  U"pacific",    U"people",        U"peoples",
     U"premier",   U"project",    U"prime",     U"public",     U"royal",         U"shenzhen",
     U"smart",     U"south",      U"southern",  U"standard",   U"star",          U"state",
     U"supreme",   U"swiss",      U"technical", U"trans",      U"union",         U"united",
     U"universal", U"university", U"west",      U"western",    U"world"});
constexpr auto BRANCH_WORDS =
    text::words({U"agency", U"branch", U"branches", U"department", U"division", U"office",
                 U"subbranch", U"sub-branch", U"subsidiary"});
constexpr auto SMALL_WORDS =
    text::words({U"and", U"de", U"des", U"du", U"for", U"in", U"of", U"on", U"the", U"to"});

Words words_of(std::string_view list) {
  auto words = text::lexicon_words(list);
  for (auto& word : words) word = text::case_fold(word);
  return {words.begin(), words.end()};
}

const Words& chinese_places() {
  static const Words words = words_of(data::places_zh);
  return words;
}

const Words& trades() {
  static const Words words = words_of(data::trade_words);
  return words;
}

struct Suffixes {
  Words branches;
  Words institutions;  // of every kind
  Words houses;        // hospitals, universities, law firms: they have names of their own
};

const Suffixes& suffixes() {
  static const Suffixes all = [] {
    Suffixes out;
    for (auto& row : text::lexicon_rows(data::organization_suffixes)) {
      if (row.size() < 2) continue;
      if (row[1] == U"BRANCH") out.branches.insert(row[0]);
      if (row[1] == U"BANK" || row[1] == U"INSTITUTION" || row[1] == U"PUBLIC_BODY") {
        out.institutions.insert(row[0]);
      }
      if (row[1] == U"INSTITUTION") out.houses.insert(row[0]);
    }
    return out;
  }();
  return all;
}

// ---- Chinese

// The length of the longest of the words at the end of `name`; 0 if there is none.
std::size_t suffix_length(std::u32string_view name, const Words& words) {
  for (std::size_t n = std::min(name.size(), LONGEST_SUFFIX); n > 0; --n) {
    if (words.contains(std::u32string(name.substr(name.size() - n)))) return n;
  }
  return 0;
}

bool ends_in(std::u32string_view name, const Words& words) {
  return suffix_length(name, words) > 0;
}

// Where the first word for a trade begins behind the first character; npos if none does.
std::size_t first_trade(std::u32string_view core) {
  for (std::size_t i = 1; i < core.size(); ++i) {
    for (std::size_t n = 2; n <= std::min(LONGEST_TRADE_WORD, core.size() - i); ++n) {
      if (trades().contains(std::u32string(core.substr(i, n)))) return i;
    }
  }
  return core.npos;
}

// How much of `name` names places, so that a brand is left: 0 of 衡山羽软件.
std::size_t place_length(std::u32string_view name) {
  std::size_t length = 0;
  for (std::size_t at = 0; at < name.size();) {
    std::size_t n = std::min(LONGEST_PLACE, name.size() - at);
    while (n > 1 && !chinese_places().contains(std::u32string(name.substr(at, n)))) --n;
    if (n < 2) break;
    at += n;
    const auto rest = name.substr(at);
    const bool begins_with_trade = trades().contains(std::u32string(rest.substr(0, MIN_BRAND)));
    if (rest.size() >= MIN_BRAND && first_trade(rest) >= MIN_BRAND && !begins_with_trade) {
      length = at;
    }
  }
  return length;
}

bool cut_end(std::u32string_view& name, std::u32string_view end) {
  if (!name.ends_with(end)) return false;
  name.remove_suffix(end.size());
  return true;
}

void parse_form(std::u32string_view& name, OrganizationName& out) {
  for (const auto form : FULL_FORMS) {
    if (!cut_end(name, form)) continue;
    out.form = form;
    break;
  }
  if (out.form.empty() && cut_end(name, COMPANY)) out.form = COMPANY;
  out.is_group = cut_end(name, GROUP);
}

// Takes (香港) out of the name.
std::u32string parse_qualifier(std::u32string_view name, OrganizationName& out) {
  const auto open = name.find(U'(');
  const auto close = name.find(U')', open == name.npos ? 0 : open);
  if (open == name.npos || close == name.npos) return std::u32string(name);
  out.qualifier = name.substr(open + 1, close - open - 1);
  if (out.qualifier == GROUP) {
    out.qualifier.clear();
    out.is_group = true;
  }
  return std::u32string(name.substr(0, open)) + std::u32string(name.substr(close + 1));
}

// Takes the company and its branch apart.
void parse_branch(std::u32string_view name, OrganizationName& out) {
  constexpr std::size_t SHORTEST_BRANCH_WORD = 2;
  const auto last = name.size() - SHORTEST_BRANCH_WORD - 1;
  std::size_t end = 0;
  for (const std::u32string_view head : {COMPANY, GROUP, std::u32string_view(U"银行")}) {
    const auto at = name.rfind(head, last);
    if (at != name.npos && at + head.size() < name.size()) end = std::max(end, at + head.size());
  }
  out.company = name.substr(0, end);
  out.branch = name.substr(end);
}

OrganizationName parse_chinese(std::u32string_view surface) {
  OrganizationName out;
  out.script = Script::CHINESE;
  const auto whole = text::case_fold(text::fold_parentheses(text::remove_space(surface)));
  std::u32string_view name = whole;
  out.is_branch = ends_in(name, suffixes().branches);
  out.is_branch ? parse_branch(name, out) : parse_form(name, out);
  out.is_institution = ends_in(name, suffixes().institutions);
  const auto plain = parse_qualifier(name, out);
  name = plain;
  constexpr std::u32string_view LAW_FIRM = U"律所";
  std::u32string firm;
  if (name.ends_with(LAW_FIRM)) {
    firm = std::u32string(name.substr(0, name.size() - LAW_FIRM.size())) + U"律师事务所";
    name = firm;
  }
  if (!out.is_group) out.is_group = cut_end(name, GROUP);
  const auto place = place_length(name);
  out.place = name.substr(0, place);
  out.core = name.substr(place);
  const auto trade = first_trade(out.core);
  if (trade >= MIN_BRAND && trade <= MAX_BRAND) out.brand = out.core.substr(0, trade);
  return out;
}

// 北京 of 北京市
std::u32string_view bare_place(std::u32string_view place) {
  constexpr std::u32string_view DIVISIONS = U"市省县区";
  if (place.size() > 2 && DIVISIONS.find(place.back()) != place.npos) place.remove_suffix(1);
  return place;
}

bool is_subsequence(std::u32string_view part, std::u32string_view whole) {
  std::size_t at = 0;
  for (const char32_t c : part) {
    at = whole.find(c, at);
    if (at == whole.npos) return false;
    ++at;
  }
  return true;
}

// 华信, 华信科技, 华信贸易 of 华信科技贸易
bool is_short_core(const OrganizationName& name, const OrganizationName& longer) {
  if (longer.core.starts_with(name.core)) return true;
  const auto& brand = longer.brand;
  return !brand.empty() && name.core.starts_with(brand) &&
         is_subsequence(std::u32string_view(name.core).substr(brand.size()),
                        std::u32string_view(longer.core).substr(brand.size()));
}

// Whether the name needs no place: 北屿中心医院, but neither a bank nor a court
// nor a bureau, and no 大学.
bool is_known_by_core(const OrganizationName& name) {
  if (!name.is_institution) return true;
  const auto house = suffix_length(name.core, suffixes().houses);
  return house > 0 && house == suffix_length(name.core, suffixes().institutions) &&
         name.core.size() >= house + MIN_BRAND;
}

Likeness chinese_likeness(const OrganizationName& name, const OrganizationName& longer) {
  const bool same_place = bare_place(name.place) == bare_place(longer.place);
  if (!name.place.empty() && !same_place) return Likeness::NONE;
  if (name.is_full() || name.is_institution || longer.is_institution) {
    const bool same = name.form == longer.form || (name.form.empty() && name.is_institution);
    return same && name.core == longer.core && name.qualifier == longer.qualifier &&
                   name.is_group == longer.is_group && (same_place || is_known_by_core(longer))
               ? Likeness::SHORT
               : Likeness::NONE;
  }
  if (name.core.size() < MIN_BRAND || trades().contains(name.core)) return Likeness::NONE;
  if (name.is_group && !longer.is_group) return Likeness::NONE;
  if (!is_short_core(name, longer)) return Likeness::NONE;
  return name.qualifier == longer.qualifier ? Likeness::SHORT : Likeness::POSSIBLE;
}

// ---- Latin

bool is_separator(char32_t c) { return text::is_space(c) || c == U',' || c == U'，'; }

// "Co.,Ltd." as co, ltd; "(Hong Kong)" as (hong, kong); "&" as and.
std::vector<std::u32string> latin_words(std::u32string_view surface) {
  std::vector<std::u32string> out;
  std::u32string word;
  const auto finish = [&] {
    if (word == U"&" || word == U"＆") word = U"and";
    if (!word.empty()) out.push_back(std::move(word));
    word.clear();
  };
  for (const char32_t c : text::case_fold(text::fold_parentheses(surface))) {
    if (is_separator(c)) {
      finish();
    } else if (c != U'.' && c != U'"') {
      word += c == U'’' ? U'\'' : c;
    }
  }
  finish();
  return out;
}

std::u32string joined(const std::vector<std::u32string>& words, std::size_t from, std::size_t to) {
  std::u32string out;
  for (std::size_t i = from; i < to; ++i) {
    if (i > from) out += U' ';
    out += words[i];
  }
  return out;
}

const Words& latin_forms() {
  static const Words forms = [] {
    Words out;
    for (const auto& row : text::lexicon_rows(data::legal_forms_en)) {
      // "Holdings" is part of the name: Acme Holdings is not Acme Ltd.
      if (row.size() < 2 || row[1] != U"EN_LEGAL_FORM" || row[0] == U"holdings") continue;
      const auto words = latin_words(row[0]);
      out.insert(joined(words, 0, words.size()));
    }
    return out;
  }();
  return forms;
}

const Words& latin_places() {
  static const Words words = words_of(data::places_en);
  return words;
}

// One spelling for the forms that have several.
std::u32string plain_form(const std::u32string& word) {
  constexpr std::array<std::pair<std::u32string_view, std::u32string_view>, 5> SPELLINGS = {
      {{U"limited", U"ltd"},
       {U"corporation", U"corp"},
       {U"incorporated", U"inc"},
       {U"company", U"co"},
       {U"private", U"pte"}}};
  for (const auto& [from, to] : SPELLINGS) {
    if (word == from) return std::u32string(to);
  }
  return word;
}

// The number of words at the end that are a legal form.
std::size_t form_words(const std::vector<std::u32string>& words) {
  constexpr std::size_t LONGEST_FORM = 5;
  std::size_t end = words.size();
  for (std::size_t n = std::min(LONGEST_FORM, end - 1); n > 0;) {
    if (latin_forms().contains(joined(words, end - n, end))) {
      end -= n;
      n = std::min(LONGEST_FORM, end - 1);
    } else {
      --n;
    }
  }
  return words.size() - end;
}

OrganizationName parse_latin(std::u32string_view surface) {
  OrganizationName out;
  out.script = Script::LATIN;
  out.words = latin_words(surface);
  if (out.words.empty()) return {};
  if (out.words.size() > 1 && out.words.front() == U"the") out.words.erase(out.words.begin());
  out.is_branch = std::any_of(out.words.begin() + 1, out.words.end(),
                              [](const auto& word) { return BRANCH_WORDS.contains(word); });
  const auto form = form_words(out.words);
  for (auto i = out.words.size() - form; i < out.words.size(); ++i) {
    out.form += (out.form.empty() ? U"" : U" ") + plain_form(out.words[i]);
  }
  out.words.resize(out.words.size() - form);
  while (out.place_words + 1 < out.words.size() &&
         latin_places().contains(out.words[out.place_words])) {
    ++out.place_words;
  }
  return out;
}

bool stands_at(const std::vector<std::u32string>& words, const std::vector<std::u32string>& longer,
               std::size_t at) {
  return at + words.size() <= longer.size() &&
         std::equal(words.begin(), words.end(), longer.begin() + static_cast<std::ptrdiff_t>(at));
}

Likeness latin_likeness(const OrganizationName& name, const OrganizationName& longer) {
  if (name.words.empty()) return Likeness::NONE;
  const auto& first = name.words.front();
  for (const std::size_t at : {std::size_t{0}, longer.place_words}) {
    if (!stands_at(name.words, longer.words, at)) continue;
    const auto end = at + name.words.size();
    if (end == longer.words.size()) {
      if (!name.form.empty()) {
        return name.form == longer.form ? Likeness::SHORT : Likeness::NONE;
      }
      const bool known = first.size() >= MIN_LATIN_NAME && !COMMON_WORDS.contains(first);
      return name.words.size() > 1 || known ? Likeness::SHORT : Likeness::POSSIBLE;
    }
    if (!name.form.empty()) return Likeness::NONE;
    // Behind a short name a place marks another company of the same house.
    const auto& next = longer.words[end];
    const bool known = first.size() >= MIN_LATIN_BRAND && !COMMON_WORDS.contains(first) &&
                       !latin_places().contains(first);
    return known && next.front() != U'(' && !latin_places().contains(next) ? Likeness::SHORT
                                                                           : Likeness::POSSIBLE;
  }
  // Mulin Advisory of Shenzhen Qianhai Mulin Advisory
  constexpr std::size_t MIN_TAIL = 2;
  const bool tail = name.form.empty() && name.words.size() >= MIN_TAIL && longer.place_words > 0 &&
                    longer.words.size() > name.words.size() &&
                    stands_at(name.words, longer.words, longer.words.size() - name.words.size());
  return tail && !COMMON_WORDS.contains(first) ? Likeness::SHORT : Likeness::NONE;
}

// Whether `alias` is made of the first letters of the words of `name`.
bool is_acronym(std::u32string_view alias, std::u32string_view name) {
  std::u32string all;
  std::u32string important;
  for (const auto& word : latin_words(name)) {
    const char32_t letter = word.front() == U'(' && word.size() > 1 ? word[1] : word.front();
    all += letter;
    if (!SMALL_WORDS.contains(word)) important += letter;
  }
  std::u32string letters;
  for (const char32_t c : text::case_fold(alias)) {
    if (text::is_ascii_alpha(c)) letters += c;
  }
  constexpr std::size_t MIN_LETTERS = 2;
  return letters.size() >= MIN_LETTERS &&
         (all.starts_with(letters) || important.starts_with(letters));
}

}  // namespace

bool OrganizationName::is_full() const { return !form.empty() && form != COMPANY; }

OrganizationName parse_organization_name(std::u32string_view surface) {
  constexpr std::size_t LONGEST_NAME = 200;
  surface = text::strip(surface);
  if (surface.empty() || surface.size() > LONGEST_NAME) return {};
  if (text::contains_ideograph(surface)) return parse_chinese(surface);
  const bool latin = std::any_of(surface.begin(), surface.end(), text::is_ascii_alpha);
  return latin ? parse_latin(surface) : OrganizationName{};
}

Likeness likeness(const OrganizationName& name, const OrganizationName& longer) {
  if (name.script != longer.script || name.is_branch || longer.is_branch) return Likeness::NONE;
  switch (name.script) {
    case Script::CHINESE:
      return chinese_likeness(name, longer);
    case Script::LATIN:
      return latin_likeness(name, longer);
    default:
      return Likeness::NONE;
  }
}

bool is_same_name(const OrganizationName& a, const OrganizationName& b) {
  if (a.script != b.script) return false;
  if (a.script == Script::LATIN) return a.words == b.words && a.form == b.form;
  return a.script == Script::CHINESE && bare_place(a.place) == bare_place(b.place) &&
         a.core == b.core && a.form == b.form && a.qualifier == b.qualifier &&
         a.is_group == b.is_group;
}

bool abbreviates(std::u32string_view alias, std::u32string_view name) {
  const bool chinese = text::contains_ideograph(alias);
  if (chinese != text::contains_ideograph(name)) return false;
  if (chinese) {
    constexpr std::size_t MIN_IDEOGRAPHS = 2;
    return alias.size() >= MIN_IDEOGRAPHS &&
           is_subsequence(text::remove_space(text::fold_parentheses(alias)),
                          text::remove_space(text::fold_parentheses(name)));
  }
  if (is_acronym(alias, name)) return true;
  const auto words = latin_words(alias);
  const auto whole = latin_words(name);
  for (std::size_t at = 0; at < whole.size(); ++at) {
    if (!words.empty() && stands_at(words, whole, at)) return true;
  }
  return false;
}

}  // namespace core::parties
