#include "core/nlp/short_forms.hpp"

#include <cstdint>

#include "core/nlp/character_table.hpp"
#include "core/nlp/company_short_forms.hpp"
#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_lexicon.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/name_abbreviations.hpp"
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
const Regex RE_QUOTED("RE_QUOTED", UR"(["“「『'【‘]([^"“”「」『』【】‘’'\n\t]{2,30})["”」』'】’])",
                      Regex::Scanned::YES);

// DAAD in brackets behind a name
const Regex RE_ACRONYM("RE_ACRONYM", UR"((?<=\()([A-Z]{2,8})(?=\)))", Regex::Scanned::YES);

// Tessari Inspection Services (泰莎利检验)
const Regex RE_TRANSLATION("RE_TRANSLATION",
                           UR"((?<=[A-Za-z.] \(|[A-Za-z.]\()([\u4e00-\u9fff]{3,14})(?=\)))",
                           Regex::Scanned::YES);

// 以下简称华信科技) without quotes
const Regex RE_UNQUOTED("RE_UNQUOTED",
                        UR"(简称(?:为)?[: ]?([\u4e00-\u9fffA-Za-z]{2,12})(?=[)，,]))",
                        Regex::Scanned::YES);

// Where the patterns above may begin.
class Openings {
 public:
  explicit Openings(std::u32string_view text) {
    static const CharacterBits<std::uint8_t> signs(
        {{U"\"“「『'【‘", QUOTE}, {U"(", BRACKET}, {U"简", SHORT_NAME}});
    for (std::size_t i = 0; i < text.size(); ++i) {
      const std::uint8_t sign = signs.of(text[i]);
      if (sign == 0) continue;
      if (sign == QUOTE) quotes_.push_back(i);
      if (sign == BRACKET) behind_brackets_.push_back(i + 1);
      if (sign == SHORT_NAME) short_names_.push_back(i);
    }
  }

  const std::vector<std::size_t>& quotes() const { return quotes_; }
  const std::vector<std::size_t>& behind_brackets() const { return behind_brackets_; }
  const std::vector<std::size_t>& short_names() const { return short_names_; }

 private:
  enum Sign : std::uint8_t { QUOTE = 1U << 0U, BRACKET = 1U << 1U, SHORT_NAME = 1U << 2U };

  std::vector<std::size_t> quotes_;
  std::vector<std::size_t> behind_brackets_;
  std::vector<std::size_t> short_names_;
};

// All matches of a pattern that begins at `places` only.
std::vector<text::Match> find_all_at(const Regex& regex, std::u32string_view text,
                                     const std::vector<std::size_t>& places) {
  std::vector<text::Match> out;
  for (const std::size_t at : places) {
    if (!out.empty() && at < out.back().end()) continue;
    if (at >= text.size()) break;
    if (const auto m = regex.match_at(text, at)) out.push_back(*m);
  }
  return out;
}

constexpr auto GENERIC_ALIASES = text::words(
    {U"贵公司",   U"贵司",     U"我司",     U"我公司",   U"本公司",     U"贵方",     U"我方",
     U"公司",     U"集团",     U"银行",     U"大学",     U"医院",       U"法院",     U"学院",
     U"中心",     U"目标公司", U"合资公司", U"项目公司", U"仲裁委",     U"有限公司", U"合作社",
     U"律所",     U"项目",     U"标的公司", U"独资商号", U"个体工商户", U"承运公司", U"平台公司",
     U"借款公司", U"总部",     U"总公司",   U"分公司",   U"子公司",     U"工厂",     U"加工厂",
     U"基地",     U"门店",     U"加盟店",   U"学校",     U"幼儿园",     U"餐厅",     U"酒店",
     U"超市",     U"物业",     U"物业公司", U"经纪公司", U"供应商",     U"平台",     U"机构",
     U"协会",     U"学会",     U"商会",     U"俱乐部",   U"剧组",       U"商场",     U"诊所",
     U"药店",     U"农场",     U"牧场",     U"养殖场",   U"车队",       U"运营商",   U"服务商",
     U"经销商",   U"代理商",   U"管委会",   U"村委会",   U"联合体",     U"业委会",   U"基金",
     U"信托",     U"工作室",   U"研究院",   U"研究所",   U"事务所",     U"保险公司", U"担保公司",
     U"劳务公司", U"监理公司", U"施工单位", U"用工单位", U"用人单位",   U"主办单位", U"承办单位"});

std::u32string_view surface_of(const NlpArtifacts& a, const RecognizerResult& r) {
  return text::slice(a.folded, r.start, r.end);
}

// Lourdes M. Echeverría -> Lourdes Echeverría; Inés Ortega Villalobos -> Inés Ortega,
// Ortega Villalobos
void add_pairs_of_names(std::u32string_view name, std::vector<ShortForm>& out) {
  constexpr std::size_t SHORTEST = 3;
  std::vector<std::u32string_view> words;
  for (Token word = token_after(name, 0); !word.empty(); word = token_after(name, word.end)) {
    if (word.end - word.start >= SHORTEST && is_upper(name[word.start])) {
      words.push_back(word.in(name));
    }
  }
  const auto add = [&](std::u32string_view first, std::u32string_view second) {
    auto form = std::u32string(first).append(U" ").append(second);
    if (form != name) out.push_back({std::move(form), std::string(entity_type::PERSON), false});
  };
  for (std::size_t i = 1; i < words.size(); ++i) add(words[i - 1], words[i]);
  if (words.size() > 2) add(words.front(), words.back());
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
  if (last.size() >= 4 && !is_everyday_name(last))
    out.push_back({std::u32string(last), type, true});
  add_pairs_of_names(name, out);
}

// 洛社镇, 青白江区: the districts that an address names.
void add_districts(std::u32string_view address, std::vector<ShortForm>& out) {
  constexpr std::u32string_view LEVELS = U"省市区县镇乡州盟旗道村路";
  constexpr std::u32string_view KEPT = U"镇乡县区村路道";
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

// 区教育局 of 甘州区教育局: a body without the name of its division.
void add_body(std::u32string_view name, std::vector<ShortForm>& out) {
  constexpr std::u32string_view UNITS = U"市县区镇乡";
  constexpr std::u32string_view BODIES = U"局委会府所办院厅";
  constexpr std::size_t SHORTEST = 4;
  if (name.size() < SHORTEST + 2 || BODIES.find(name.back()) == BODIES.npos) return;
  const std::size_t unit = name.find_last_of(UNITS, name.size() - SHORTEST);
  if (unit == name.npos || unit < 2) return;
  out.push_back({std::u32string(name.substr(unit)), std::string(entity_type::ORGANIZATION)});
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

// IGK for Ingenieurgesellschaft Karwendel, CWC for Castellanos-Whitfield Composites: capitals
// that stand in the name in this order, the first one at its start.
bool has_letters(std::u32string_view alias, std::u32string_view name) {
  constexpr std::size_t LONGEST = 6;
  if (alias.size() < 2 || alias.size() > LONGEST || !is_latin_letter(name.front())) return false;
  if (!std::all_of(alias.begin(), alias.end(), is_upper)) return false;
  std::u32string low(name);
  for (char32_t& c : low) c = lower(c);
  std::u32string letters(alias);
  for (char32_t& c : letters) c = lower(c);
  return letters.front() == low.front() && abbreviates(letters, low);
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

// Which of the quoted words are short for an organization before them.
class Definitions {
 public:
  Definitions(const NlpArtifacts& a, const std::vector<RecognizerResult>& results) : a_(a) {
    for (const auto& r : results) {
      if (r.entity_type == entity_type::ORGANIZATION) organizations_.push_back(&r);
    }
  }

  // Original Lender: each of its words is one of contracts
  static bool is_role(std::u32string_view alias) {
    if (alias.find(U' ') == alias.npos) return false;
    for (std::size_t at = 0; at < alias.size();) {
      const Token word = token_after(alias, at);
      if (word.empty() ||
          !(is_contract_word(word.in(alias)) || is_contract_language(word.in(alias)))) {
        return false;
      }
      at = word.end;
    }
    return true;
  }

  bool defines(const text::Match& m) const {
    const auto alias = m.text(1);
    if (GENERIC_ALIASES.contains(alias) || is_contract_word(alias) || is_role(alias)) return false;
    if (is_covered(a_.of(WordClass::ORGANIZATION_LABEL), m.start(1), m.end(1))) return false;
    const auto at = static_cast<std::ptrdiff_t>(m.start());
    auto it = std::upper_bound(organizations_.begin(), organizations_.end(), at,
                               [](auto p, const auto* r) { return p < r->end; });
    if (it != organizations_.begin() && stands_directly_behind(**std::prev(it), at)) return true;
    for (std::size_t n = 0; n < NEAREST && it != organizations_.begin(); ++n) {
      --it;
      const auto name = surface_of(a_, **it);
      if (is_short_for(alias, name) || (is_quoted(m) && has_letters(alias, name))) return true;
    }
    return false;
  }

 private:
  // An alias stands for one of the last organizations before it.
  static constexpr std::size_t NEAREST = 8;

  // Tamarack Bulk Carriers Inc.（以下简称“塔玛拉克公司”）: no likeness is needed.
  bool stands_directly_behind(const RecognizerResult& organization, std::ptrdiff_t at) const {
    constexpr std::size_t FARTHEST = 30;
    const auto gap = text::slice(a_.folded, organization.end, at);
    if (gap.size() > FARTHEST || gap.find_first_of(U"。\n\t") != gap.npos) return false;
    const bool bracket = gap.size() <= 2 && gap.find(U'(') != gap.npos;
    return bracket || gap.find(U'称') != gap.npos;
  }

  // ("IGK")
  bool is_quoted(const text::Match& m) const {
    const std::size_t open = m.start();
    return m.start(1) == open + 1 && open > 0 && a_.folded[open - 1] == U'(';
  }

  static bool is_short_for(std::u32string_view alias, std::u32string_view name) {
    if (!is_latin_letter(alias.front())) return abbreviates(alias, name);
    return is_acronym(alias, name) || name.find(alias) != name.npos;
  }

  const NlpArtifacts& a_;
  std::vector<const RecognizerResult*> organizations_;
};

}  // namespace

std::vector<ShortForm> short_forms_of(const NlpArtifacts& a, const RecognizerResult& r) {
  std::vector<ShortForm> out;
  const auto surface = surface_of(a, r);
  if (surface.empty()) return out;
  const auto start = static_cast<std::size_t>(r.start);
  const auto end = static_cast<std::size_t>(r.end);
  if (r.entity_type == entity_type::ORGANIZATION) {
    is_han(surface.front()) ? add_chinese_company_forms(a, start, end, out)
                            : add_latin_company_forms(a, start, end, out);
    if (is_han(surface.front())) add_body(surface, out);
  } else if (r.entity_type == entity_type::PERSON) {
    add_person(surface, out);
  } else if (r.entity_type == entity_type::LOCATION && is_han(surface.front())) {
    add_districts(surface, out);
  }
  return out;
}

std::vector<ShortForm> defined_short_forms(const NlpArtifacts& a,
                                           const std::vector<RecognizerResult>& results) {
  const Definitions definitions(a, results);
  const Openings openings(a.folded);
  std::vector<ShortForm> out;
  add_abbreviations(a, results, out);
  for (const auto& m : find_all_at(RE_TRANSLATION, a.folded, openings.behind_brackets())) {
    if (is_touched(a.of(WordClass::TRADE_WORD), m.end(1) - 1, m.end(1)) && definitions.defines(m)) {
      out.push_back({std::u32string(m.text(1)), std::string(entity_type::ORGANIZATION)});
    }
  }
  const auto add_defined = [&](const Regex& regex, const std::vector<std::size_t>& places) {
    for (const auto& m : find_all_at(regex, a.folded, places)) {
      if (definitions.defines(m)) {
        out.push_back({std::u32string(m.text(1)), std::string(entity_type::ORGANIZATION)});
      }
    }
  };
  add_defined(RE_QUOTED, openings.quotes());
  add_defined(RE_UNQUOTED, openings.short_names());
  add_defined(RE_ACRONYM, openings.behind_brackets());
  return out;
}

bool is_everyday_name(std::u32string_view word) {
  constexpr unsigned EVERYDAY = 3;
  return !word.empty() && is_latin_letter(word.front()) && is_common_english_word(word, EVERYDAY);
}

}  // namespace core::nlp
