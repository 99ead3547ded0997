// Chinese names of persons in the letters of pinyin.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace core::parties {

// The letters in which a Chinese name may be spelled, with the surname (so many characters)
// first and last: heli and lihe of 何丽. Several of a character that is read in more than
// one way; none if a character is not known.
std::vector<std::u32string> pinyin_spellings(std::u32string_view name, std::size_t surname);

// The letters of a name in the same way: lulihua of Lü Li-hua and LV LIHUA.
std::u32string pinyin_letters(std::u32string_view latin);

}  // namespace core::parties
