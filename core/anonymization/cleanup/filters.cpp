#include "core/anonymization/cleanup/filters.hpp"

#include <algorithm>

#include "core/anonymization/cleanup/filter_rules.hpp"
#include "core/text/find_character.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {

using text::Regex;

// ______ after a label. "a_b" stays.
const Regex RE_FILL_UNDERSCORE_RUN("RE_FILL_UNDERSCORE_RUN", UR"(_{2,})");

// Anything but blanks, punctuation and fill-in marks.
const Regex RE_SURFACE_HAS_CONTENT("RE_SURFACE_HAS_CONTENT",
                                   UR"([一-鿿A-Za-z0-9０-９Ａ-Ｚａ-ｚ])");

// 第三条, 第2期, 第十二个月. "第三方" stays.
const Regex RE_ZH_ORDINAL_SURFACE(
    "RE_ZH_ORDINAL_SURFACE",
    UR"(^第[0-9０-９一二三四五六七八九十百千零两壹贰叁肆伍陆柒捌玖拾]+(?:个)?(?:月|年|周|日|天|季度|年度|阶段|期|章|条|款|项|次|步|步骤|部分|批|轮|名|位)?$)");

// month, Months. "12 months" is a term and stays.
const Regex RE_EN_BARE_MONTH("RE_EN_BARE_MONTH", UR"((?i)^months?$)");

// 1.2, 3.1.4, 12.10.1.2
const Regex RE_DOTTED_SECTION_NUMBER("RE_DOTTED_SECTION_NUMBER", UR"(\d{1,2}(?:\.\d{1,2}){1,3})");

// 3.2, （12）, 1-2/3
const Regex RE_PURE_NUMERIC_SURFACE("RE_PURE_NUMERIC_SURFACE", UR"([\d\s.,\-–—/／()（）]+)");

// 一期, 首期, 12期, 期
const Regex RE_CN_PHASE_ORDINAL_NOT_ADDRESS("RE_CN_PHASE_ORDINAL_NOT_ADDRESS",
                                            UR"((?:[一二三四五六七八九十两首末]|\d{1,2})?期)");

// 云平台, 政务云服务
const Regex RE_IT_PRODUCT_YUN_COMPOUND_NOT_ADDRESS(
    "RE_IT_PRODUCT_YUN_COMPOUND_NOT_ADDRESS", UR"(^[\u4e00-\u9fff]{0,8}(?:云平台|云系统|云服务)$)");

namespace {

constexpr char32_t UNDERSCORE = U'_';
constexpr std::size_t SHORTEST_FILL = 2;  // as RE_FILL_UNDERSCORE_RUN has it

// The only types that an analyzer gives to a section number; 3.1.4 as a phone number stays.
constexpr auto SECTION_NUMBER_TYPES = text::type_names({"DATE_TIME", "DATE", "QUANTITY"});

std::u32string_view surface(std::u32string_view text, const RecognizerResult& r) {
  return text::slice(text, r.start, r.end);
}

// What each pattern begins with tells most surfaces sooner.
bool is_structural_sequence(std::u32string_view text, const RecognizerResult& r) {
  const auto s = surface(text, r);
  if (s.empty()) return false;
  const char32_t first = s.front();
  if (first == U'第') return RE_ZH_ORDINAL_SURFACE.full_match(s).has_value();
  if (first == U'm' || first == U'M') return RE_EN_BARE_MONTH.full_match(s).has_value();
  return text::is_decimal_digit(first) && SECTION_NUMBER_TYPES.contains(r.entity_type) &&
         RE_DOTTED_SECTION_NUMBER.full_match(s);
}

template <class Words>
constexpr std::size_t longest_of(const Words& words) {
  std::size_t longest = 0;
  for (const auto word : words) longest = std::max(longest, word.size());
  return longest;
}

// Most names are longer than any of the words, which takes no search to tell.
template <class Words>
bool is_word_of(const Words& words, std::u32string_view s) {
  return s.size() <= longest_of(words) && words.contains(s);
}

// A number or brackets, and nothing that could be a letter.
bool is_pure_numeric(std::u32string_view s) {
  if (s.empty() || text::is_ideograph(s.front()) || text::is_ascii_alpha(s.front())) return false;
  return RE_PURE_NUMERIC_SURFACE.full_match(s).has_value();
}

bool is_phase(std::u32string_view s) {
  return s.ends_with(U'期') && RE_CN_PHASE_ORDINAL_NOT_ADDRESS.full_match(s);
}

// Words that name no place although they look like part of one.
bool is_no_place(std::u32string_view text, const RecognizerResult& r, std::u32string_view s) {
  if (is_word_of(DIRECTION_REGION_WORD_NOT_ADDRESS, s)) return true;
  if (is_word_of(GENERIC_GEO_INFRA_NOUN_NOT_ADDRESS, s)) return true;
  if (_is_it_product_compound_not_address(s)) return true;
  return s == U"云" && text::slice(text, r.end, saturating_add(r.end, 2)) == U"平台";
}

bool is_generic(std::u32string_view text, const RecognizerResult& r) {
  const std::string_view type = r.entity_type;
  const bool is_org = type == entity_type::ORGANIZATION;
  const bool is_place = type == entity_type::LOCATION || type == entity_type::GPE;
  if (!is_org && !is_place && type != entity_type::PERSON) return false;
  const auto s = text::strip(surface(text, r));
  if (is_word_of(GENERIC_INSTITUTION_NOUN, s)) return true;
  if (is_pure_numeric(s)) return true;
  if (is_place && is_no_place(text, r, s)) return true;
  if ((is_org || is_place) && is_phase(s)) return true;
  if (!is_org) return false;
  return is_word_of(CN_ADDRESS_TAIL_CHAR_NOT_ORG, s) || (s.size() == 1 && text::is_ideograph(s[0]));
}

}  // namespace

std::u32string _normalize_fill_underscores_for_analysis(std::u32string_view text) {
  std::u32string out(text);
  for (auto at = text::find_character(out, UNDERSCORE); at != text::NPOS;
       at = text::find_character(out, UNDERSCORE, at)) {
    const auto size = std::min(out.find_first_not_of(UNDERSCORE, at), out.size()) - at;
    if (size >= SHORTEST_FILL) out.replace(at, size, size, U' ');
    at += size;
  }
  return out;
}

std::vector<RecognizerResult> _drop_blank_fill_results(std::u32string_view text,
                                                       std::vector<RecognizerResult> results) {
  std::erase_if(results, [&](const auto& r) {
    const auto s = surface(text, r);
    if (!s.empty() && (text::is_ideograph(s.front()) || text::is_ascii_alnum(s.front()))) {
      return false;  // nearly all of them, sooner
    }
    return !RE_SURFACE_HAS_CONTENT.search(s);
  });
  return results;
}

std::vector<RecognizerResult> _drop_structural_sequence_results(
    std::u32string_view text, std::vector<RecognizerResult> results) {
  std::erase_if(results, [&](const auto& r) { return is_structural_sequence(text, r); });
  return results;
}

std::vector<RecognizerResult> _drop_generic_institution_noun_results(
    std::u32string_view text, std::vector<RecognizerResult> results) {
  std::erase_if(results, [&](const auto& r) { return is_generic(text, r); });
  return results;
}

bool _is_it_product_compound_not_address(std::u32string_view surf) {
  if (surf.find(U'云') == surf.npos) return false;  // which all of them hold
  const auto s = text::remove_space(surf);
  return IT_PRODUCT_COMPOUND_NOT_ADDRESS.contains(s) ||
         RE_IT_PRODUCT_YUN_COMPOUND_NOT_ADDRESS.full_match(s).has_value();
}

}  // namespace core::anonymization
