// Names that stand beside each other because they name one.
//
// Offsets count code points.
#pragma once

#include <string_view>

#include "core/anonymization/result.hpp"

namespace core::parties {

enum class Adjacency {
  NONE,
  BRACKET,  // 山东岱岳有限公司（Daiyue Co., Ltd.）, Acme Ltd，中文名称：艾克美有限公司
  SLASH,  // 岑屿精工 / Cenyu
};

// How the name first_start..first_end is beside second_start..second_end, where
// `next` is the start of the next name behind, or the size of the text. NONE if
// the second shares its bracket with another name that follows.
struct NamePair {
  anonymization::Offset first_start;
  anonymization::Offset first_end;
  anonymization::Offset second_start;
  anonymization::Offset second_end;
  anonymization::Offset next;
};
Adjacency adjacency(std::u32string_view text, const NamePair& pair);

// The larger part of the letters is Chinese, or Latin.
bool is_chinese(std::u32string_view name);
bool is_latin(std::u32string_view name);

}  // namespace core::parties
