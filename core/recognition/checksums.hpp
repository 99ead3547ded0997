// Check digits of identity numbers and codes.
//
// The functions take the number as it is written: blanks and hyphens are
// skipped, letters may be small. Anything that has the wrong length or wrong
// characters fails.
#pragma once

#include <string_view>

namespace core::recognition {

// Payment cards, ISO/IEC 7812-1 Annex B (Luhn); 12 to 19 digits.
bool is_luhn_valid(std::u32string_view number);

// Resident identity number of China, GB 11643-1999: 17 digits with a possible
// date of birth and a check character by ISO 7064 MOD 11-2.
bool is_resident_identity_valid(std::u32string_view number);

// Unified social credit code, GB 32100-2015: 18 characters, check character mod 31.
bool is_credit_code_valid(std::u32string_view code);

// IBAN, ISO 13616-1: 15 to 34 characters, mod 97 (ISO 7064 MOD 97-10).
bool is_iban_valid(std::u32string_view iban);

// Routing number of the American Bankers Association: 9 digits, weights 3-7-1.
bool is_aba_routing_valid(std::u32string_view number);

}  // namespace core::recognition
