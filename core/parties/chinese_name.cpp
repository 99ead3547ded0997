#include <algorithm>

#include "core/parties/script_names.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/unicode.hpp"

namespace core::text::lexicon_data {
extern const std::string_view organization_suffixes;
extern const std::string_view places_zh;
extern const std::string_view trade_words;
}  // namespace core::text::lexicon_data

namespace core::parties {
namespace {

namespace data = text::lexicon_data;

// Chinese forms, the longest first. A name with one of the first group stands in
// a register; the others are what remains of one in running text.
constexpr std::u32string_view FULL_FORMS[] = {
    U"合伙企业(有限合伙)", U"合伙企业(普通合伙)", U"有限责任公司", U"股份有限公司", U"有限公司",
    U"股份公司",           U"株式会社",           U"有限会社",     U"合伙企业"};
constexpr std::u32string_view GROUP = U"集团";

// A brand has at least two ideographs, and hardly more than four.
constexpr std::size_t MIN_BRAND = 2;
constexpr std::size_t MAX_BRAND = 4;
constexpr std::size_t LONGEST_TRADE_WORD = 6;
constexpr std::size_t LONGEST_PLACE = 12;
constexpr std::size_t LONGEST_SUFFIX = 12;

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

// The length of the longest of the words at the end of `name`; 0 if there is none.
std::size_t suffix_length(std::u32string_view name, const Words& words) {
  for (std::size_t n = std::min(name.size(), LONGEST_SUFFIX); n > 0; --n) {
    if (words.contains(name.substr(name.size() - n))) return n;
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
      if (trades().contains(core.substr(i, n))) return i;
    }
  }
  return core.npos;
}

// How much of `name` names places, so that a brand is left: 0 of 衡山羽软件.
std::size_t place_length(std::u32string_view name) {
  std::size_t length = 0;
  for (std::size_t at = 0; at < name.size();) {
    std::size_t n = std::min(LONGEST_PLACE, name.size() - at);
    while (n > 1 && !chinese_places().contains(name.substr(at, n))) --n;
    if (n < 2) break;
    at += n;
    const auto rest = name.substr(at);
    const bool begins_with_trade = trades().contains(rest.substr(0, MIN_BRAND));
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

// 华信, 华信科技, 华信贸易 of 华信科技贸易
bool is_short_core(const OrganizationName& name, const OrganizationName& longer) {
  if (longer.core.starts_with(name.core)) return true;
  // 铸安厂 of 河北铸安钢结构厂
  constexpr std::u32string_view KINDS = U"厂店院所场社行馆";
  const std::u32string_view core = name.core;
  if (core.size() > MIN_BRAND && !longer.core.empty() && core.back() == longer.core.back() &&
      KINDS.find(core.back()) != KINDS.npos &&
      longer.core.starts_with(core.substr(0, core.size() - 1))) {
    return true;
  }
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

}  // namespace

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

}  // namespace core::parties
