// Searches for characters that are rare in a text: several places are looked at together.
//
// Offsets count code points. May be called from any thread.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace core::nlp {

// The first offset from `from` on where the character stands, or one of them; the length
// of the text if there is none.
std::size_t find_rare(std::u32string_view text, std::size_t from, char32_t wanted);
std::size_t find_rare(std::u32string_view text, std::size_t from,
                      const std::array<char32_t, 4>& wanted);

}  // namespace core::nlp
