// When two places or addresses are the same place.
//
// The key folds away blanks, punctuation and bracket width, and leads every
// name of a country to one. Offsets count code points.
#pragma once

#include <string>
#include <string_view>

#include "core/anonymization/location_surface.hpp"
#include "core/anonymization/result.hpp"

namespace core::anonymization {

// Empty for a surface without content.
//
//   北京市，海淀区 = 北京市 海淀区     USA = 美国 = 美利坚合众国
std::u32string location_identity_key_from_surface(std::u32string_view surface);

// The key of the span.
std::u32string _location_identity_key(std::u32string_view text, Offset start, Offset end);

// Whether two keys that may differ name one address: one is a truncated form of
// the other (from 8 characters on), or they differ only in a house number of
// which one begins with the other, behind the same 10 or more characters. Short
// keys, such as a bare district, never unify with a longer address. Linear.
bool address_unification_keys_equivalent(std::u32string_view a, std::u32string_view b);

}  // namespace core::anonymization
