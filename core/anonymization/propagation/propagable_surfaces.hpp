// Which surfaces are specific enough to be masked wherever they stand.
//
// Lengths count code points; those of names are taken without white space.
#pragma once

#include <string_view>

namespace core::anonymization {

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
