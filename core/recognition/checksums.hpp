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

// Resident identity number of China, GB 11643-1999: 17 digits that begin with a
// province (GB/T 2260) and hold a possible date of birth, and a check character by
// ISO 7064 MOD 11-2.
bool is_resident_identity_valid(std::u32string_view number);

// Unified social credit code, GB 32100-2015: 18 characters, check character mod 31.
bool is_credit_code_valid(std::u32string_view code);

// Identity card of Hong Kong: one or two letters, six digits and a check
// character, in brackets or not.
bool is_hong_kong_identity_valid(std::u32string_view number);

// Identity card of Taiwan (a letter and 9 digits), and the resident certificate
// for foreigners of the same form.
bool is_taiwan_identity_valid(std::u32string_view number);

// Organization code of China, GB 11714-1997: 8 characters and a check character.
bool is_organization_code_valid(std::u32string_view code);

// IBAN, ISO 13616-1: the length that the country's entry in the SWIFT registry
// gives (release 99), mod 97 (ISO 7064 MOD 97-10). A country that is not in the
// registry may have 15 to 34 characters.
bool is_iban_valid(std::u32string_view iban);

// Routing number of the American Bankers Association: 9 digits, weights 3-7-1.
bool is_aba_routing_valid(std::u32string_view number);

// Freight container, ISO 6346: four letters and seven digits.
bool is_container_number_valid(std::u32string_view number);

// Vehicle, ISO 3779 with the check character of GB 16735 and 49 CFR 565: 17
// characters, three letters at least.
bool is_vehicle_identification_valid(std::u32string_view number);

// Legal entity identifier, ISO 17442: 20 characters, mod 97.
bool is_legal_entity_identifier_valid(std::u32string_view code);

// Securities identification number, ISO 6166: 12 characters, Luhn over their digits.
bool is_securities_identification_valid(std::u32string_view code);

// Ship, resolution A.1117(30) of the International Maritime Organization: seven digits, the
// last one checks the six before it.
bool is_ship_number_valid(std::u32string_view number);

// Australian Business Number: 11 digits, mod 89 by the rule of the Australian Business
// Register.
bool is_australian_business_number_valid(std::u32string_view number);

// Address of a Bitcoin wallet in Base58Check (1…, 3…): 25 bytes, the last four of them the
// beginning of the double SHA-256 of the others.
bool is_base58check_valid(std::u32string_view address);

// Address of a Bitcoin wallet in the form of BIP 173 and BIP 350 (bc1…).
bool is_bech32_valid(std::u32string_view address);

}  // namespace core::recognition
