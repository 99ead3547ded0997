#include "core/anonymization/cleanup/filters.hpp"

#include <algorithm>

#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/word_set.hpp"

namespace core::anonymization {
namespace {

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

constexpr auto GENERIC_INSTITUTION_NOUN =
    text::words({U"公司", U"有限公司", U"有限责任公司", U"股份有限公司", U"集团", U"企业", U"机构",
                 U"中心", U"银行", U"平台", U"工程", U"项目", U"单位", U"部门", U"协会", U"学院",
                 U"研究院", U"研究所", U"事务所", U"控股", U"实业", U"股份",
                 // 合同自称与关联主体
                 U"该公司", U"本公司", U"贵公司", U"分公司", U"子公司", U"总公司", U"母公司",
                 U"合资公司", U"法人公司"});

constexpr auto DIRECTION_REGION_WORD_NOT_ADDRESS =
    text::words({U"东南", U"西南", U"东北", U"西北",   U"东西",   U"南北",   U"以东",   U"以南",
                 U"以西", U"以北", U"偏东", U"偏南",   U"偏西",   U"偏北",   U"东部",   U"西部",
                 U"南部", U"北部", U"中部", U"中西部", U"东北部", U"西南部", U"东南部", U"西北部"});

constexpr auto GENERIC_GEO_INFRA_NOUN_NOT_ADDRESS = text::words(
    {U"铁路", U"公路", U"高速公路", U"铁路网", U"公路网", U"高速", U"国道", U"省道", U"轨道",
     U"干线", U"支线", U"线路", U"口岸", U"港口", U"车站", U"机场", U"码头", U"航道"});

constexpr auto IT_PRODUCT_COMPOUND_NOT_ADDRESS =
    text::words({U"云平台", U"云系统", U"云服务", U"云主机", U"云磁盘"});

constexpr auto CN_ADDRESS_TAIL_CHAR_NOT_ORG =
    text::words({U"室", U"号", U"栋", U"座", U"层", U"楼", U"巷", U"弄"});

// The only types that an analyzer gives to a section number; 3.1.4 as a phone number stays.
constexpr auto SECTION_NUMBER_TYPES = text::type_names({"DATE_TIME", "DATE", "QUANTITY"});

constexpr auto NAME_OR_PLACE_TYPES =
    text::type_names({"ORGANIZATION", "LOCATION", "GPE", "PERSON"});
constexpr auto PLACE_TYPES = text::type_names({"LOCATION", "GPE"});
constexpr auto ORG_OR_PLACE_TYPES = text::type_names({"ORGANIZATION", "LOCATION", "GPE"});

std::u32string_view surface(std::u32string_view text, const RecognizerResult& r) {
  return text::slice(text, r.start, r.end);
}

bool is_structural_sequence(std::u32string_view text, const RecognizerResult& r) {
  const auto s = surface(text, r);
  if (RE_ZH_ORDINAL_SURFACE.full_match(s)) return true;
  if (RE_EN_BARE_MONTH.full_match(s)) return true;
  return SECTION_NUMBER_TYPES.contains(r.entity_type) && RE_DOTTED_SECTION_NUMBER.full_match(s);
}

// Words that name no place although they look like part of one.
bool is_no_place(std::u32string_view text, const RecognizerResult& r, std::u32string_view s) {
  if (DIRECTION_REGION_WORD_NOT_ADDRESS.contains(s)) return true;
  if (GENERIC_GEO_INFRA_NOUN_NOT_ADDRESS.contains(s)) return true;
  if (_is_it_product_compound_not_address(s)) return true;
  return s == U"云" && text::slice(text, r.end, saturating_add(r.end, 2)) == U"平台";
}

bool is_generic(std::u32string_view text, const RecognizerResult& r) {
  if (!NAME_OR_PLACE_TYPES.contains(r.entity_type)) return false;
  const auto s = text::strip(surface(text, r));
  if (GENERIC_INSTITUTION_NOUN.contains(s)) return true;
  if (RE_PURE_NUMERIC_SURFACE.full_match(s)) return true;
  if (PLACE_TYPES.contains(r.entity_type) && is_no_place(text, r, s)) return true;
  if (ORG_OR_PLACE_TYPES.contains(r.entity_type) && RE_CN_PHASE_ORDINAL_NOT_ADDRESS.full_match(s)) {
    return true;
  }
  if (r.entity_type != entity_type::ORGANIZATION) return false;
  return CN_ADDRESS_TAIL_CHAR_NOT_ORG.contains(s) || (s.size() == 1 && text::is_ideograph(s[0]));
}

}  // namespace

std::u32string _normalize_fill_underscores_for_analysis(std::u32string_view text) {
  std::u32string out(text);
  for (const auto& run : RE_FILL_UNDERSCORE_RUN.find_all(text)) {
    std::fill(out.begin() + static_cast<std::ptrdiff_t>(run.start()),
              out.begin() + static_cast<std::ptrdiff_t>(run.end()), U' ');
  }
  return out;
}

std::vector<RecognizerResult> _drop_blank_fill_results(std::u32string_view text,
                                                       std::vector<RecognizerResult> results) {
  std::erase_if(results,
                [&](const auto& r) { return !RE_SURFACE_HAS_CONTENT.search(surface(text, r)); });
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
  const auto s = text::remove_space(surf);
  return IT_PRODUCT_COMPOUND_NOT_ADDRESS.contains(s) ||
         RE_IT_PRODUCT_YUN_COMPOUND_NOT_ADDRESS.full_match(s).has_value();
}

}  // namespace core::anonymization
