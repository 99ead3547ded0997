// The spelling of a place in which different spellings of it are equal.
#pragma once

#include <string>
#include <string_view>

namespace core::anonymization {

// Without white space and the punctuation ，,。；;、, with ASCII parentheses;
// 格鲁吉亚 alone becomes 格鲁吉亚国.
//
//   U" 北京市，海淀区（西）"  ->  U"北京市海淀区(西)"
std::u32string _normalize_location_surface(std::u32string_view surface);

}  // namespace core::anonymization
