#include "core/nlp/short_forms.hpp"

#include "core/nlp/hits.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/text/regex.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::RecognizerResult;
using recognition::WordClass;
using text::Regex;
namespace entity_type = anonymization::entity_type;

// “穆林食品”, "AAA", behind a bracket or 简称
const Regex RE_QUOTED("RE_QUOTED", UR"(["“「]([^"“”「」\n\t]{2,30})["”」])");

// 以下简称华信科技) without quotes
const Regex RE_UNQUOTED("RE_UNQUOTED",
                        UR"(简称(?:为)?[: ]?([\u4e00-\u9fffA-Za-z]{2,12})(?=[)，,]))");

// First words that name no company by themselves.
constexpr auto COMMON_FIRST_WORDS =
    text::words({U"united",        U"global",    U"american",    U"european",   U"asian",
                 U"international", U"national",  U"north",       U"south",      U"east",
                 U"west",          U"china",     U"pacific",     U"atlantic",   U"first",
                 U"new",           U"great",     U"royal",       U"central",    U"general",
                 U"world",         U"technical", U"grupo",       U"banca",      U"rappresentanze",
                 U"court",         U"high",      U"superior",    U"northern",   U"southern",
                 U"western",       U"eastern",   U"advanced",    U"digital",    U"the",
                 U"hong",          U"ministry",  U"department",  U"companies",  U"camera",
                 U"commercial",    U"gulf",      U"london",      U"bank",       U"university",
                 U"asia",          U"africa",    U"america",     U"europe",     U"home",
                 U"star",          U"sun",       U"information", U"cyberspace", U"accounting",
                 U"middle",        U"shanghai",  U"beijing"});

constexpr auto GENERIC_ALIASES = text::words(
    {U"公司", U"集团", U"银行", U"大学", U"医院", U"法院", U"学院", U"中心", U"目标公司",
     U"合资公司", U"项目公司", U"仲裁委", U"有限公司", U"合作社", U"律所", U"项目"});

std::u32string_view surface_of(const NlpArtifacts& a, const RecognizerResult& r) {
  return text::slice(a.folded, r.start, r.end);
}

std::u32string lowered(std::u32string_view word) {
  std::u32string out(word);
  for (char32_t& c : out) c = lower(c);
  return out;
}

// How many characters stand before the first word for a trade: 2 of 驭川供应链, 3 of
// 木棉里品牌. 0 if there is no such word, or no brand of two to four characters.
std::size_t brand_length(const NlpArtifacts& a, std::size_t start, std::size_t length) {
  const auto& trades = a.of(WordClass::TRADE_WORD);
  const auto it = first_from(trades, start + 2);
  if (it == trades.end() || it->start >= start + length) return 0;
  const std::size_t brand = it->start - start;
  const bool touched = is_touched(a.of(WordClass::CLAUSE_WORD), start, it->start);
  return brand <= 4 && !touched ? brand : 0;
}

void add_chinese_company(const NlpArtifacts& a, std::size_t start, std::size_t end,
                         std::vector<ShortForm>& out) {
  const std::u32string_view t = a.folded;
  std::size_t core = start;
  while (true) {
    const std::size_t place = end_of_word_at(a.of(WordClass::PLACE), core);
    if (place == core || place + 2 > end) break;
    core = place;
  }
  std::size_t stop = end;
  for (const auto c : {WordClass::COMPANY_FORM, WordClass::PLAIN_COMPANY, WordClass::BANK}) {
    for (auto it = first_from(a.of(c), core); it != a.of(c).end() && it->end <= end; ++it) {
      stop = std::min(stop, c == WordClass::BANK ? it->end : it->start);
    }
  }
  if (stop == end) return;
  auto name = t.substr(core, stop - core);
  name = name.substr(0, std::min(name.find(U'('), name.find(U' ')));
  const auto add = [&](std::u32string form) {
    if (form.size() >= 3)
      out.push_back({std::move(form), std::string(entity_type::ORGANIZATION), false});
  };
  if (const std::size_t brand = brand_length(a, core, name.size()); brand > 0) {
    out.push_back({std::u32string(name.substr(0, brand)), std::string(entity_type::ORGANIZATION),
                   false, brand < 3});
  }
  constexpr std::size_t SHORTEST = 4;
  for (std::size_t n = SHORTEST; n <= name.size(); ++n) {
    add(std::u32string(name.substr(0, n)));
    add(std::u32string(name.substr(0, n)) + U"集团");
  }
  for (std::size_t n = 2; n <= std::min<std::size_t>(name.size(), 4); ++n) {
    add(std::u32string(name.substr(0, n)) + U"公司");
    std::u32string_view place = t.substr(start, core - start);
    if (place.size() > 2)
      place.remove_suffix(place.ends_with(U"市") || place.ends_with(U"省") ? 1 : 0);
    for (auto it = first_from(a.of(WordClass::TRADE_WORD), core + 2);
         n <= 3 && it != a.of(WordClass::TRADE_WORD).end() && it->end <= stop; ++it) {
      add(std::u32string(name.substr(0, n)) +
          std::u32string(t.substr(it->start, it->end - it->start)));
    }
    if (!place.empty() && place.size() <= 4)
      add(std::u32string(place) + std::u32string(name.substr(0, n)));
  }
}

void add_latin_company(const NlpArtifacts& a, std::size_t start, std::size_t end,
                       std::vector<ShortForm>& out) {
  const std::u32string_view t = a.folded;
  const auto& forms = a.of(WordClass::EN_LEGAL_FORM);
  std::size_t stop = end;
  for (auto it = first_from(forms, start); it != forms.end() && it->end <= end; ++it) {
    stop = std::min(stop, it->start);
  }
  if (stop == end) return;
  auto name = t.substr(start, stop - start);
  name = name.substr(0, name.find(U'('));
  while (!name.empty() && (name.back() == U' ' || name.back() == U',')) name.remove_suffix(1);
  const std::string type(entity_type::ORGANIZATION);
  const Token first = token_after(t, start);
  const bool place = end_of_word_at(a.of(WordClass::EN_PLACE), first.start) == first.end;
  std::size_t words = 0;
  for (std::size_t blank = name.find(U' '); blank != name.npos;
       blank = name.find(U' ', blank + 1)) {
    if (++words > 1 || place) continue;
    const auto word = name.substr(0, blank);
    if (word.size() >= 5 && !COMMON_FIRST_WORDS.contains(lowered(word)) &&
        !is_contract_word(word)) {
      out.push_back({std::u32string(word), type, true});
    }
  }
  if (words == 0) {
    if (name.size() >= 5 && !is_contract_word(name) &&
        !COMMON_FIRST_WORDS.contains(lowered(name))) {
      out.push_back({std::u32string(name), type, true});
    }
    return;
  }
  out.push_back({std::u32string(name), type, false});
  // Shenzhen Qianhai Mulin Advisory Co., Ltd. -> Mulin Advisory; Bramblewick Precision Components -> Bramblewick Precision
  const std::size_t second = name.find(U' ', name.find(U' ') + 1);
  if (second != name.npos && !place)
    out.push_back({std::u32string(name.substr(0, second)), type, false});
  // Shenzhen Qianhai Mulin Advisory -> Mulin Advisory
  const std::size_t last_two = name.rfind(U' ', name.rfind(U' ') - 1);
  if (words >= 3 && last_two != name.npos)
    out.push_back({std::u32string(name.substr(last_two + 1)), type, false});
  if (place) {
    for (std::size_t blank = name.find(U' '); blank != name.npos;
         blank = name.find(U' ', blank + 1)) {
      const auto rest = name.substr(blank + 1);
      const auto word = rest.substr(0, rest.find(U' '));
      const auto two = rest.substr(0, rest.find(U' ', word.size() + 1));
      if (two.size() > word.size() && is_upper(word.front()))
        out.push_back({std::u32string(two), type, false});
      const bool known =
          end_of_word_at(a.of(WordClass::EN_PLACE), start + blank + 1) > start + blank + 1;
      if (!known && word.size() >= 5 && !COMMON_FIRST_WORDS.contains(lowered(word))) {
        out.push_back({std::u32string(word), type, true});
      }
      if (!known) break;
    }
  }
}

void add_person(std::u32string_view name, std::vector<ShortForm>& out) {
  const std::string type(entity_type::PERSON);
  constexpr std::size_t SHORTEST_PART = 3;
  if (is_han(name.front())) {
    const std::size_t dot = name.find(U'·');
    if (dot == name.npos) return;
    const auto first = name.substr(0, dot);
    const auto last = name.substr(name.rfind(U'·') + 1);
    if (first.size() >= SHORTEST_PART) out.push_back({std::u32string(first), type, false});
    if (last.size() >= SHORTEST_PART) out.push_back({std::u32string(last), type, false});
    return;
  }
  const std::size_t blank = name.rfind(U' ');
  if (blank == name.npos) return;
  const auto last = name.substr(blank + 1);
  if (last.size() >= 4) out.push_back({std::u32string(last), type, true});
}

// 洛社镇, 青白江区: the districts that an address names.
void add_districts(std::u32string_view address, std::vector<ShortForm>& out) {
  constexpr std::u32string_view LEVELS = U"省市区县镇乡州盟旗道";
  constexpr std::u32string_view KEPT = U"镇乡县区";
  std::size_t start = 0;
  for (std::size_t i = 0; i < address.size(); ++i) {
    if (LEVELS.find(address[i]) == LEVELS.npos) continue;
    const std::size_t length = i + 1 - start;
    if (KEPT.find(address[i]) != KEPT.npos && length >= 3 && length <= 5) {
      out.push_back({std::u32string(address.substr(start, length)),
                     std::string(entity_type::LOCATION), false});
    }
    start = i + 1;
  }
}

// Whether the characters of `alias` stand in `name` in this order, from its first on.
bool abbreviates(std::u32string_view alias, std::u32string_view name) {
  std::size_t at = 0;
  for (const char32_t c : alias) {
    at = name.find(c, at);
    if (at == name.npos) return false;
    ++at;
  }
  return true;
}

// AAA for American Arbitration Association
bool is_acronym(std::u32string_view alias, std::u32string_view name) {
  std::u32string initials;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (name[i] == U'&') initials.push_back(name[i]);
    if (is_upper(name[i]) && (i == 0 || !is_latin_letter(name[i - 1]))) initials.push_back(name[i]);
  }
  return alias.size() >= 2 && initials.starts_with(alias);
}

}  // namespace

std::vector<ShortForm> short_forms_of(const NlpArtifacts& a, const RecognizerResult& r) {
  std::vector<ShortForm> out;
  const auto surface = surface_of(a, r);
  if (surface.empty()) return out;
  const auto start = static_cast<std::size_t>(r.start);
  const auto end = static_cast<std::size_t>(r.end);
  if (r.entity_type == entity_type::ORGANIZATION) {
    is_han(surface.front()) ? add_chinese_company(a, start, end, out)
                            : add_latin_company(a, start, end, out);
  } else if (r.entity_type == entity_type::PERSON) {
    add_person(surface, out);
  } else if (r.entity_type == entity_type::LOCATION && is_han(surface.front())) {
    add_districts(surface, out);
  }
  return out;
}

std::vector<ShortForm> defined_short_forms(const NlpArtifacts& a,
                                           const std::vector<RecognizerResult>& results) {
  // An alias stands for one of the last organizations before it.
  constexpr std::size_t NEAREST = 8;
  std::vector<const RecognizerResult*> organizations;
  for (const auto& r : results) {
    if (r.entity_type == entity_type::ORGANIZATION) organizations.push_back(&r);
  }
  std::vector<ShortForm> out;
  const auto take = [&](const text::Match& m) {
    const auto alias = m.text(1);
    if (GENERIC_ALIASES.contains(alias) || is_contract_word(alias)) return;
    if (is_covered(a.of(WordClass::ORGANIZATION_LABEL), m.start(1), m.end(1))) return;
    auto it = std::upper_bound(organizations.begin(), organizations.end(),
                               static_cast<std::ptrdiff_t>(m.start()),
                               [](auto p, const auto* r) { return p < r->end; });
    for (std::size_t n = 0; n < NEAREST && it != organizations.begin(); ++n) {
      --it;
      const auto name = surface_of(a, **it);
      // 塔玛拉克公司 for Tamarack Bulk Carriers Inc.: said directly behind the name
      constexpr std::ptrdiff_t NEAR = 30;
      const auto gap = text::slice(a.folded, (*it)->end, static_cast<std::ptrdiff_t>(m.start()));
      const bool directly =
          n == 0 && static_cast<std::ptrdiff_t>(gap.size()) <= NEAR &&
          gap.find_first_of(U"。\n\t") == gap.npos &&
          ((gap.size() <= 2 && gap.find(U'(') != gap.npos) || gap.find(U'称') != gap.npos);
      const bool latin = is_latin_letter(alias.front());
      const bool short_for = latin ? is_acronym(alias, name) || name.find(alias) != name.npos
                                   : abbreviates(alias, name);
      const bool fits = directly || short_for;
      if (!fits) continue;
      out.push_back({std::u32string(alias), std::string(entity_type::ORGANIZATION), false});
      return;
    }
  };
  for (const auto& m : RE_QUOTED.find_all(a.folded)) take(m);
  for (const auto& m : RE_UNQUOTED.find_all(a.folded)) take(m);
  return out;
}

}  // namespace core::nlp
