// Short forms that follow from the full name of a company.
#pragma once

#include <vector>

#include "core/nlp/short_forms.hpp"

namespace core::nlp {

// The name at start..end of the folded text. 苏州澜迅精密机械有限公司 -> 澜迅精密,
// 澜迅精密机械, 澜迅公司, 苏州澜迅, and 澜迅 where a phrase begins.
void add_chinese_company_forms(const recognition::NlpArtifacts& artifacts, std::size_t start,
                               std::size_t end, std::vector<ShortForm>& out);

// Bramblewick Robotics, Inc. -> Bramblewick Robotics, Bramblewick;
// Shenzhen Qianhai Mulin Advisory Co., Ltd. -> Mulin Advisory
void add_latin_company_forms(const recognition::NlpArtifacts& artifacts, std::size_t start,
                             std::size_t end, std::vector<ShortForm>& out);

}  // namespace core::nlp
