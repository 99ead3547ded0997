// What the filters go by: patterns (for full matches, where no comment says
// otherwise) and lists of words.
#pragma once

#include "core/text/regex.hpp"
#include "core/text/word_set.hpp"

namespace core::anonymization {

extern const text::Regex RE_FILL_UNDERSCORE_RUN;  // searched
extern const text::Regex RE_SURFACE_HAS_CONTENT;  // searched
extern const text::Regex RE_ZH_ORDINAL_SURFACE;
extern const text::Regex RE_EN_BARE_MONTH;
extern const text::Regex RE_DOTTED_SECTION_NUMBER;
extern const text::Regex RE_PURE_NUMERIC_SURFACE;
extern const text::Regex RE_CN_PHASE_ORDINAL_NOT_ADDRESS;
extern const text::Regex RE_IT_PRODUCT_YUN_COMPOUND_NOT_ADDRESS;

// Nouns that name no party by themselves.
inline constexpr auto GENERIC_INSTITUTION_NOUN =
    text::words({U"公司", U"有限公司", U"有限责任公司", U"股份有限公司", U"集团", U"企业", U"机构",
                 U"中心", U"银行", U"平台", U"工程", U"项目", U"单位", U"部门", U"协会", U"学院",
                 U"研究院", U"研究所", U"事务所", U"控股", U"实业", U"股份",
                 // 合同自称与关联主体
                 U"该公司", U"本公司", U"贵公司", U"分公司", U"子公司", U"总公司", U"母公司",
                 U"合资公司", U"法人公司"});

inline constexpr auto DIRECTION_REGION_WORD_NOT_ADDRESS =
    text::words({U"东南", U"西南", U"东北", U"西北",   U"东西",   U"南北",   U"以东",   U"以南",
                 U"以西", U"以北", U"偏东", U"偏南",   U"偏西",   U"偏北",   U"东部",   U"西部",
                 U"南部", U"北部", U"中部", U"中西部", U"东北部", U"西南部", U"东南部", U"西北部"});

inline constexpr auto GENERIC_GEO_INFRA_NOUN_NOT_ADDRESS = text::words(
    {U"铁路", U"公路", U"高速公路", U"铁路网", U"公路网", U"高速", U"国道", U"省道", U"轨道",
     U"干线", U"支线", U"线路", U"口岸", U"港口", U"车站", U"机场", U"码头", U"航道"});

inline constexpr auto IT_PRODUCT_COMPOUND_NOT_ADDRESS =
    text::words({U"云平台", U"云系统", U"云服务", U"云主机", U"云磁盘"});

inline constexpr auto CN_ADDRESS_TAIL_CHAR_NOT_ORG =
    text::words({U"室", U"号", U"栋", U"座", U"层", U"楼", U"巷", U"弄"});

}  // namespace core::anonymization
