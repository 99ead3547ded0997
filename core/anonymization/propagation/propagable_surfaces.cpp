#include "core/anonymization/propagation/propagable_surfaces.hpp"

#include <algorithm>

#include "core/anonymization/cleanup/filters.hpp"
#include "core/anonymization/constants.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {

using text::Regex;

// …有限公司, …大学, AcmeLtd (the surface is compact here)
const Regex RE_PROPAGABLE_ORG_NAME_SUFFIX(
    "RE_PROPAGABLE_ORG_NAME_SUFFIX",
    UR"((?i)(?:有限责任公司|股份有限公司|有限公司|公司|集团|学院|大学|学校|中学|小学|医院|研究院|研究所|中心|银行|印钞厂|厂|局|厅|署|所|院|合作社|基金会|Limited|LLC|L\.L\.C\.|Inc\.?|Corp\.?|Corporation|Company|Co\.|Ltd\.?)$)");

// Acme Inc (New York)
const Regex RE_EN_PROPAGABLE_ORG_LEGAL_SUFFIX(
    "RE_EN_PROPAGABLE_ORG_LEGAL_SUFFIX",
    UR"((?i)(?:\b(?:LLC|Inc\.?|Limited|Ltd\.?|Corporation|Corp\.?|Company)\b))");

namespace {

// 华信科技（上海）, with nothing but name characters
const Regex RE_CHINESE_NAME_CHARACTERS("RE_CHINESE_NAME_CHARACTERS",
                                       UR"([\u4e00-\u9fff·A-Za-z0-9（）()]+)");

const Regex RE_LATIN_RUN("RE_LATIN_RUN", UR"([A-Za-z]{2,})");

// 某某工程施工合同, 项目合作协议
const Regex RE_PROJECT_TITLE("RE_PROJECT_TITLE",
                             UR"((?:工程|项目).{0,40}(?:合同|协议)|(?:建设工程|改造工程))");

// road: a word that an English model took for a place
const Regex RE_LOWER_LATIN_WORD("RE_LOWER_LATIN_WORD", UR"([a-z]{4,})");

// 地址Address: a Chinese label glued to its translation
const Regex RE_GLUED_FIELD_CAPTION(
    "RE_GLUED_FIELD_CAPTION",
    UR"((?i)[\u4e00-\u9fff]{1,8}(?:Effective|Date|Address|Telephone|Email|Number|Name|Title|By|Dated))");

// 东校区
const Regex RE_CAMPUS("RE_CAMPUS", UR"([\u4e00-\u9fff]{2,12}校区)");

// 课程思政资源模块库
const Regex RE_TEACHING_LIBRARY("RE_TEACHING_LIBRARY", UR"((?:课程思政|思政|资源库|师资库))");

const Regex RE_STREET_MARKER("RE_STREET_MARKER", UR"((?:街|大道|号|室|房|楼|邮编|大厦|广场))");

// 里海沿岸各国铁路网联通地区
const Regex RE_REGION_NARRATIVE("RE_REGION_NARRATIVE",
                                UR"((?:地区|山脉|铁路网|通道|市场|资源丰富))");

const Regex RE_PLACE_CHARACTERS("RE_PLACE_CHARACTERS", UR"([\u4e00-\u9fffA-Za-z·]{2,24})");

// Fragments of definition and payment clauses that end like a name.
constexpr auto REFUSED_ORG_SURFACES =
    text::words({U"签约主体", U"其控股子公司", U"控股子公司", U"其子公司", U"其关联公司",
                 U"关联公司", U"合作公司", U"工作组", U"标准化机构", U"标准化政府机构",
                 U"CSR委员会", U"董事会CSR委员会", U"合人民币", U"折合人民币"});

constexpr std::u32string_view REFUSED_ORG_PREFIXES[] = {U"等用词应指", U"应指", U"指"};

constexpr auto TEACHING_LIBRARIES = text::words({U"思政模块库", U"课程思政模块库"});

constexpr std::size_t MIN_ORG_LENGTH = 3;
constexpr std::size_t MIN_BARE_NAME_LENGTH = 4;      // of a name without any suffix
constexpr std::size_t MIN_ENGLISH_WORDS_LENGTH = 8;  // of two or more words without a legal form
constexpr std::ptrdiff_t MIN_ENGLISH_WORDS = 2;
constexpr std::size_t MIN_LOCATION_LENGTH = 2;
constexpr std::size_t MIN_NARRATIVE_LENGTH = 13;

bool is_refused_org(std::u32string_view s) {
  if (s.size() < MIN_ORG_LENGTH || NON_PROPAGABLE_ORG_SURFACE.contains(s)) return true;
  if (std::any_of(std::begin(REFUSED_ORG_PREFIXES), std::end(REFUSED_ORG_PREFIXES),
                  [&](auto prefix) { return s.starts_with(prefix); })) {
    return true;
  }
  return REFUSED_ORG_SURFACES.contains(s) || _is_cn_generic_research_center_narrative(s);
}

// `raw` has its blanks, `s` has none.
bool is_english_name(std::u32string_view raw, std::u32string_view s) {
  if (RE_EN_PROPAGABLE_ORG_LEGAL_SUFFIX.search(raw)) return true;
  if (raw.find(U'-') != std::u32string_view::npos && s.size() >= MIN_BARE_NAME_LENGTH) return true;
  const auto words = static_cast<std::ptrdiff_t>(RE_LATIN_RUN.find_all(raw).size());
  return words >= MIN_ENGLISH_WORDS && s.size() >= MIN_ENGLISH_WORDS_LENGTH;
}

bool is_teaching_library(std::u32string_view s) {
  if (TEACHING_LIBRARIES.contains(s)) return true;
  return s.ends_with(U"模块库") && RE_TEACHING_LIBRARY.search(s);
}

bool is_region_narrative(std::u32string_view s) {
  return s.size() >= MIN_NARRATIVE_LENGTH && !RE_STREET_MARKER.search(s) &&
         RE_REGION_NARRATIVE.search(s);
}

}  // namespace

bool is_non_propagable_location_surface(std::u32string_view surface) {
  return NON_PROPAGABLE_LOCATION_SURFACE.contains(surface);
}

bool _looks_like_project_title(std::u32string_view frag) {
  return RE_PROJECT_TITLE.search(frag).has_value();
}

bool _looks_like_propagable_org_name(std::u32string_view name) {
  const auto raw = text::strip(name);
  const auto s = text::remove_space(raw);
  if (is_refused_org(s)) return false;
  if (s.ends_with(U"公司")) return true;  // the most frequent of these suffixes
  if (RE_PROPAGABLE_ORG_NAME_SUFFIX.search(s)) return true;
  if (!text::contains_ideograph(s)) return is_english_name(raw, s);
  return s.size() >= MIN_BARE_NAME_LENGTH && RE_CHINESE_NAME_CHARACTERS.full_match(s);
}

bool _looks_like_propagable_location_surface(std::u32string_view name) {
  const auto s = text::remove_space(name);
  if (s.size() < MIN_LOCATION_LENGTH || NON_PROPAGABLE_LOCATION_SURFACE.contains(s)) return false;
  if (!text::is_ideograph(s.front()) && RE_LOWER_LATIN_WORD.full_match(s)) return false;
  if (!text::is_ideograph(s.back()) && RE_GLUED_FIELD_CAPTION.full_match(s)) return false;
  if (s.ends_with(U"校区") && RE_CAMPUS.full_match(s)) return false;
  if (is_teaching_library(s)) return false;
  if (_is_it_product_compound_not_address(s)) return false;
  if (is_region_narrative(s)) return false;
  return RE_PLACE_CHARACTERS.full_match(s).has_value();
}

}  // namespace core::anonymization
