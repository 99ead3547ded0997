// Writes placeholders over further mentions of surfaces.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/masked_text.hpp"
#include "core/anonymization/result.hpp"

namespace core::anonymization {

// Writes `placeholder` over every safe occurrence of `name`: a name without
// ideographs in any letter case and not inside a longer Latin word or number; a
// Chinese one literally, except a city in 在中国北京进行仲裁, and 关联公司 except
// in 其关联公司.
std::u32string _replace_party_org_surface_safe(std::u32string_view text, std::u32string_view name,
                                               std::u32string_view placeholder);

// _replace_party_org_surface_safe for each pair, one after the other: of two
// surfaces that overlap the earlier pair wins, and later pairs see what earlier
// ones wrote. One pass over the text for all pairs, except for surfaces that
// occur in one of the placeholders or across its edge (机构12 where there is a
// [机构12]), which cost a pass each.
void spread_surfaces(MaskedText& text, const std::vector<SurfacePlaceholder>& pairs);

}  // namespace core::anonymization
