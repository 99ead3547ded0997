// Which surfaces are specific enough to be masked wherever they stand.
//
// Lengths count code points; those of names are taken without white space.
#pragma once

#include <string_view>

#include "core/text/regex.hpp"
#include "core/text/word_set.hpp"

namespace core::anonymization {

// A company form or an institution noun at the end of a compact surface (searched).
extern const text::Regex RE_PROPAGABLE_ORG_NAME_SUFFIX;
// An English legal form as a word, anywhere (searched).
extern const text::Regex RE_EN_PROPAGABLE_ORG_LEGAL_SUFFIX;

inline constexpr auto NON_PROPAGABLE_ORG_SURFACE =
    text::words({U"与", U"及", U"和", U"同", U"及/或"});

inline constexpr auto NON_PROPAGABLE_LOCATION_SURFACE = text::words(
    {U"外高加索", U"外高加索地区", U"南高加索", U"南高加索地区", U"北高加索", U"高加索",
     U"高加索地区", U"北高加索地区", U"丝绸之路", U"丝绸之路经济带", U"大高加索", U"小高加索",
     U"欧亚", U"欧洲", U"亚洲", U"里海", U"黑海",
     // 被误认为地名的虚词
     U"应在", U"应于", U"须在", U"得于", U"限于",
     // 城市与国家
     U"北京", U"上海", U"深圳", U"广州", U"杭州", U"南京", U"武汉", U"成都", U"重庆", U"古巴",
     U"伊朗", U"北朝鲜", U"北韩", U"苏丹", U"叙利亚", U"格林尼治", U"大洋洲", U"澳大利亚", U"香港",
     U"香",
     // 产品与资源库
     U"思政模块库", U"课程思政模块库", U"云平台", U"云系统", U"云服务", U"云主机", U"云磁盘"});

// Place words that are never spread: regions, cities, words that only look like
// places. As organizations they are, but not out of an arbitration clause.
bool is_non_propagable_location_surface(std::u32string_view surface);

// 某某工程施工合同, 建设工程
bool _looks_like_project_title(std::u32string_view frag);

// Whether an organization surface may be masked document-wide:
// 北京某某科技有限公司 and Acme Ltd may, 关联公司, 及/或 and ABC may not.
bool _looks_like_propagable_org_name(std::u32string_view name);

// Whether a location surface may: 上海市浦东新区 may; 上海, 东校区 and any surface
// with a digit may not.
bool _looks_like_propagable_location_surface(std::u32string_view name);

}  // namespace core::anonymization
