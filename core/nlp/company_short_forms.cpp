#include "core/nlp/company_short_forms.hpp"

#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/name_pieces.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::WordClass;

// A shorter form of a Chinese name stands in too many words by accident.
constexpr std::size_t SHORTEST_CHINESE = 3;
constexpr std::size_t SHORTEST_PREFIX = 4;
constexpr std::size_t LONGEST_BRAND = 4;
constexpr std::size_t SHORTEST_LATIN_WORD = 5;

// First words that name no company by themselves.
constexpr auto COMMON_FIRST_WORDS =
    text::words({U"united",        U"global",         U"american",   U"european",   U"asian",
                 U"international", U"national",       U"north",      U"south",      U"east",
                 U"west",          U"china",          U"pacific",    U"atlantic",   U"first",
                 U"new",           U"great",          U"royal",      U"central",    U"general",
                 U"world",         U"technical",      U"grupo",      U"banca",      U"court",
                 U"high",          U"superior",       U"northern",   U"southern",   U"western",
                 U"eastern",       U"advanced",       U"digital",    U"the",        U"hong",
                 U"ministry",      U"department",     U"companies",  U"camera",     U"commercial",
                 U"gulf",          U"london",         U"bank",       U"university", U"asia",
                 U"africa",        U"america",        U"europe",     U"home",       U"star",
                 U"sun",           U"information",    U"accounting", U"middle",     U"shanghai",
                 U"beijing",       U"rappresentanze", U"cyberspace"});

const std::string ORGANIZATION_TYPE(anonymization::entity_type::ORGANIZATION);

// The parts of a Chinese company's name: 苏州 | 澜迅精密机械 | 有限公司.
struct ChineseName {
  std::u32string_view place;  // without 市 or 省; empty if there is none or it is long
  std::u32string_view core;
  std::size_t core_start = 0;
  std::size_t core_end = 0;
};

std::size_t behind_places(const NlpArtifacts& a, std::size_t start, std::size_t end) {
  while (true) {
    const std::size_t next = NamePieceReader(a).place_end(start);
    if (next == start || next + 2 > end) return start;
    // 衡山羽软件: a brand is left.
    const auto trade = first_from(a.of(WordClass::TRADE_WORD), next);
    if (trade != a.of(WordClass::TRADE_WORD).end() && trade->start < next + 2) return start;
    start = next;
  }
}

// Where the kind of company begins, or a bank's 银行 ends; `end` if there is none.
std::size_t core_end_of(const NlpArtifacts& a, std::size_t start, std::size_t end) {
  std::size_t stop = end;
  for (const auto c : {WordClass::COMPANY_FORM, WordClass::PLAIN_COMPANY, WordClass::BANK}) {
    const auto it = first_from(a.of(c), start);
    if (it == a.of(c).end() || it->end > end) continue;
    // The 行 of 银行 ends no name; that of 石料行 does.
    if (it->end - it->start == 1 && it->end != end) continue;
    stop = std::min(stop, c == WordClass::BANK ? it->end : it->start);
  }
  return stop;
}

ChineseName parts_of(const NlpArtifacts& a, std::size_t start, std::size_t end) {
  constexpr std::size_t LONGEST_CORE = 24;
  constexpr std::size_t LONGEST_PLACE = 4;
  const std::u32string_view t = a.folded;
  ChineseName name;
  name.core_start = behind_places(a, start, end);
  const std::size_t stop = core_end_of(a, name.core_start, end);
  if (stop == end) return name;
  const auto core = t.substr(name.core_start, std::min(stop - name.core_start, LONGEST_CORE));
  name.core = core.substr(0, core.find_first_of(U"( "));
  name.core_end = name.core_start + name.core.size();
  name.place = t.substr(start, name.core_start - start);
  const bool division = name.place.ends_with(U'市') || name.place.ends_with(U'省');
  if (name.place.size() > 2 && division) name.place.remove_suffix(1);
  if (name.place.size() > LONGEST_PLACE) name.place = {};
  return name;
}

// How many characters stand before the first word for a trade: 2 of 驭川供应链, 3 of
// 木棉里品牌. 0 if there is no such word, or no brand of two to four characters.
std::size_t brand_length(const NlpArtifacts& a, const ChineseName& name) {
  const auto& trades = a.of(WordClass::TRADE_WORD);
  const auto it = first_from(trades, name.core_start + 2);
  if (it == trades.end() || it->start >= name.core_end) return 0;
  const std::size_t brand = it->start - name.core_start;
  const bool sentence = is_touched(a.of(WordClass::CLAUSE_WORD), name.core_start, it->start);
  return brand <= LONGEST_BRAND && !sentence ? brand : 0;
}

std::u32string joined(std::u32string_view first, std::u32string_view second) {
  return std::u32string(first).append(second);
}

// Whether no word of the lists lies in it, so that it stands in no other word either.
bool is_unknown(const NlpArtifacts& a, std::size_t start, std::size_t end) {
  for (std::size_t i = word_index(a.chinese_words, start);
       i < a.chinese_words.size() && a.chinese_words[i].start < end; ++i) {
    if (a.chinese_words[i].known()) return false;
  }
  return true;
}

// 澜迅公司, 苏州澜迅, 澜迅机械: what may be made of the first characters of the core.
void add_compounds(const NlpArtifacts& a, const ChineseName& name, std::u32string_view brand,
                   std::vector<ShortForm>& out) {
  const auto add = [&](std::u32string form) {
    if (form.size() >= SHORTEST_CHINESE) out.push_back({std::move(form), ORGANIZATION_TYPE});
  };
  add(joined(brand, U"公司"));
  if (!name.place.empty()) add(joined(name.place, brand));
  if (brand.size() == LONGEST_BRAND) return;
  const auto& trades = a.of(WordClass::TRADE_WORD);
  for (auto it = first_from(trades, name.core_start + 2);
       it != trades.end() && it->end <= name.core_end; ++it) {
    add(joined(brand, std::u32string_view(a.folded).substr(it->start, it->end - it->start)));
  }
}

// 彩云小面馆 of 南宁市西乡塘区彩云小面馆
void add_whole_core(const NlpArtifacts& a, const ChineseName& name, std::size_t end,
                    std::vector<ShortForm>& out) {
  constexpr std::size_t SHORTEST_CORE = 2;
  constexpr std::size_t SHORTEST_REST = 5;
  const std::size_t core_end = name.core_start + name.core.size();
  if (name.core.size() < SHORTEST_CORE || end < name.core_start + SHORTEST_REST ||
      are_ordinary_words(a.chinese_words, name.core_start, core_end)) {
    return;
  }
  const auto rest = std::u32string_view(a.folded).substr(name.core_start, end - name.core_start);
  out.push_back({std::u32string(rest), ORGANIZATION_TYPE});
}

bool names_a_company(std::u32string_view word) {
  std::u32string folded(word);
  for (char32_t& c : folded) c = lower(c);
  return word.size() >= SHORTEST_LATIN_WORD && is_upper(word.front()) &&
         !COMMON_FIRST_WORDS.contains(folded) && !is_contract_word(word) &&
         !is_contract_language(word);
}

std::vector<Token> words_of(std::u32string_view t, std::size_t start, std::size_t end) {
  std::vector<Token> words;
  while (start < end) {
    Token word = token_after(t, start);
    if (word.empty() || word.start >= end) break;
    word.end = std::min(word.end, end);
    words.push_back(word);
    start = word.end;
  }
  return words;
}

// Where the legal form begins, without the comma before it and a place in brackets.
std::size_t latin_core_end(const NlpArtifacts& a, std::size_t start, std::size_t end) {
  const std::u32string_view t = a.folded;
  const auto form = first_from(a.of(WordClass::EN_LEGAL_FORM), start);
  if (form == a.of(WordClass::EN_LEGAL_FORM).end() || form->end > end) return start;
  std::size_t stop = std::min(form->start, start + t.substr(start, form->start - start).find(U'('));
  if (stop < start) stop = form->start;
  while (stop > start && (t[stop - 1] == U' ' || t[stop - 1] == U',')) --stop;
  return stop;
}

}  // namespace

void add_chinese_company_forms(const NlpArtifacts& a, std::size_t start, std::size_t end,
                               std::vector<ShortForm>& out) {
  const ChineseName name = parts_of(a, start, end);
  if (name.core.size() < 2) return;
  if (const std::size_t brand = brand_length(a, name); brand > 0) {
    const bool at_edge =
        brand < SHORTEST_CHINESE && !is_unknown(a, name.core_start, name.core_start + brand);
    out.push_back({std::u32string(name.core.substr(0, brand)), ORGANIZATION_TYPE, false, at_edge});
    out.push_back({joined(name.core.substr(0, brand), U"集团"), ORGANIZATION_TYPE});
  }
  add_whole_core(a, name, end, out);
  for (std::size_t n = SHORTEST_PREFIX; n <= name.core.size(); ++n) {
    out.push_back({std::u32string(name.core.substr(0, n)), ORGANIZATION_TYPE});
    out.push_back({joined(name.core.substr(0, n), U"集团"), ORGANIZATION_TYPE});
  }
  // 泉州清源山机电
  constexpr std::size_t LONGEST_PREFIX = 8;
  for (std::size_t n = LONGEST_BRAND + 1;
       !name.place.empty() && n <= std::min(name.core.size(), LONGEST_PREFIX); ++n) {
    out.push_back({joined(name.place, name.core.substr(0, n)), ORGANIZATION_TYPE});
  }
  for (std::size_t n = 2; n <= std::min(name.core.size(), LONGEST_BRAND); ++n) {
    add_compounds(a, name, name.core.substr(0, n), out);
  }
}

void add_latin_company_forms(const NlpArtifacts& a, std::size_t start, std::size_t end,
                             std::vector<ShortForm>& out) {
  const std::u32string_view t = a.folded;
  const auto words = words_of(t, start, latin_core_end(a, start, end));
  if (words.empty()) return;
  const auto add = [&](std::size_t first, std::size_t last) {
    const auto surface = t.substr(words[first].start, words[last].end - words[first].start);
    if (first < last || names_a_company(surface)) {
      out.push_back({std::u32string(surface), ORGANIZATION_TYPE, first == last});
    }
  };
  // The brand stands behind the places: Shenzhen Qianhai Mulin Advisory.
  std::size_t brand = 0;
  const auto& places = a.of(WordClass::EN_PLACE);
  while (brand + 1 < words.size() &&
         end_of_word_at(places, words[brand].start) >= words[brand].end) {
    ++brand;
  }
  const std::size_t last = words.size() - 1;
  add(brand, brand);
  if (last > 0) add(0, last);
  if (brand < last) add(brand, brand + 1);
  if (last >= 3) add(last - 1, last);
}

}  // namespace core::nlp
