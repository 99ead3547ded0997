// Whether a string of digits is a telephone number somewhere.
#pragma once

#include <string_view>

namespace core::recognition {

// Whether the numbering plan of a region that our documents come from (CN, HK, MO,
// TW, US, GB, AU, SG, JP, KR, DE, FR) has such a number, written as one dials it
// there, or that of any country behind "+" and its code. Numbers of ten digits with
// the 0 of their area need not be assigned. Blanks, hyphens, dots,
// slashes and brackets may stand in it. Asks libphonenumber, which reads its tables
// at the first call: some milliseconds. May be called from any thread.
bool is_phone_number(std::u32string_view number);

}  // namespace core::recognition
