#include "core/recognition/checksums.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include <sodium/crypto_hash_sha256.h>

#include "core/text/unicode.hpp"

namespace core::recognition {
namespace {

// Without blanks and hyphens, in capitals.
std::u32string compact(std::u32string_view number) {
  std::u32string out;
  for (const char32_t c : number) {
    if (text::is_space(c) || c == U'-') continue;
    out.push_back(c >= U'a' && c <= U'z' ? c - U'a' + U'A' : c);
  }
  return out;
}

bool all_digits(std::u32string_view s) {
  for (const char32_t c : s) {
    if (!text::is_ascii_digit(c)) return false;
  }
  return true;
}

int digit(char32_t c) { return static_cast<int>(c - U'0'); }

int number_at(std::u32string_view s, std::size_t at, std::size_t length) {
  int value = 0;
  for (const char32_t c : s.substr(at, length)) value = value * 10 + digit(c);
  return value;
}

bool is_date(int year, int month, int day) {
  constexpr std::array DAYS = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (year < 1900 || year > 2099 || month < 1 || month > 12 || day < 1) return false;
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  const int last = DAYS[static_cast<std::size_t>(month - 1)];
  return day <= (month == 2 && leap ? 29 : last);
}

// 11 to 15, 21 to 23 ...: the provinces of GB/T 2260, with 81 to 83 for the residents
// of Hong Kong, Macau and Taiwan, and 91 for foreigners.
bool is_province(int code) {
  constexpr std::array<std::pair<int, int>, 9> RANGES = {
      {{11, 15}, {21, 23}, {31, 37}, {41, 46}, {50, 54}, {61, 65}, {71, 71}, {81, 83}, {91, 91}}};
  return std::any_of(RANGES.begin(), RANGES.end(),
                     [&](const auto& r) { return code >= r.first && code <= r.second; });
}

struct IbanLength {
  std::u32string_view country;
  std::size_t length;
};

// SWIFT, IBAN Registry, release 99.
constexpr IbanLength IBAN_LENGTHS[] = {
    {U"AD", 24}, {U"AE", 23}, {U"AL", 28}, {U"AT", 20}, {U"AZ", 28}, {U"BA", 20}, {U"BE", 16},
    {U"BG", 22}, {U"BH", 22}, {U"BI", 27}, {U"BR", 29}, {U"BY", 28}, {U"CH", 21}, {U"CR", 22},
    {U"CY", 28}, {U"CZ", 24}, {U"DE", 22}, {U"DJ", 27}, {U"DK", 18}, {U"DO", 28}, {U"EE", 20},
    {U"EG", 29}, {U"ES", 24}, {U"FI", 18}, {U"FK", 18}, {U"FO", 18}, {U"FR", 27}, {U"GB", 22},
    {U"GE", 22}, {U"GI", 23}, {U"GL", 18}, {U"GR", 27}, {U"GT", 28}, {U"HN", 28}, {U"HR", 21},
    {U"HU", 28}, {U"IE", 22}, {U"IL", 23}, {U"IQ", 23}, {U"IS", 26}, {U"IT", 27}, {U"JO", 30},
    {U"KW", 30}, {U"KZ", 20}, {U"LB", 28}, {U"LC", 32}, {U"LI", 21}, {U"LT", 20}, {U"LU", 20},
    {U"LV", 21}, {U"LY", 25}, {U"MC", 27}, {U"MD", 24}, {U"ME", 22}, {U"MK", 19}, {U"MN", 20},
    {U"MR", 27}, {U"MT", 31}, {U"MU", 30}, {U"NI", 28}, {U"NL", 18}, {U"NO", 15}, {U"OM", 23},
    {U"PK", 24}, {U"PL", 28}, {U"PS", 29}, {U"PT", 25}, {U"QA", 29}, {U"RO", 24}, {U"RS", 22},
    {U"RU", 33}, {U"SA", 24}, {U"SC", 31}, {U"SD", 18}, {U"SE", 24}, {U"SI", 19}, {U"SK", 24},
    {U"SM", 27}, {U"SO", 23}, {U"ST", 25}, {U"SV", 28}, {U"TL", 23}, {U"TN", 24}, {U"TR", 26},
    {U"UA", 29}, {U"VA", 22}, {U"VG", 24}, {U"XK", 20}, {U"YE", 30}};

bool has_iban_length(std::u32string_view s) {
  const auto* found = std::find_if(std::begin(IBAN_LENGTHS), std::end(IBAN_LENGTHS),
                                   [&](const auto& c) { return s.starts_with(c.country); });
  if (found == std::end(IBAN_LENGTHS)) return s.size() >= 15 && s.size() <= 34;
  return s.size() == found->length;
}

// The rest mod 97 of digits and letters, a letter as two digits (A is 10); -1 for
// anything else.
int rest_mod_97(std::u32string_view s) {
  int rest = 0;
  for (const char32_t c : s) {
    if (text::is_ascii_digit(c)) {
      rest = (rest * 10 + digit(c)) % 97;
    } else if (text::is_ascii_alpha(c)) {
      rest = (rest * 100 + static_cast<int>(c - U'A') + 10) % 97;
    } else {
      return -1;
    }
  }
  return rest;
}

// The sum of value times weight, without its sign or bounds in mind.
template <std::size_t N>
int weighted_sum(std::u32string_view digits, const std::array<int, N>& weights) {
  int sum = 0;
  for (std::size_t i = 0; i < N; ++i) sum += digit(digits[i]) * weights[i];
  return sum;
}

int luhn_sum(std::u32string_view digits) {
  int sum = 0;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const int value = digit(digits[digits.size() - 1 - i]) * (i % 2 == 0 ? 1 : 2);
    sum += value > 9 ? value - 9 : value;
  }
  return sum;
}

}  // namespace

bool is_luhn_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  if (s.size() < 12 || s.size() > 19 || !all_digits(s)) return false;
  return luhn_sum(s) % 10 == 0;
}

bool is_resident_identity_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  if (s.size() != 18 || !all_digits(std::u32string_view(s).substr(0, 17))) return false;
  if (!is_province(number_at(s, 0, 2))) return false;
  if (!is_date(number_at(s, 6, 4), number_at(s, 10, 2), number_at(s, 12, 2))) return false;
  constexpr std::array WEIGHTS = {7, 9, 10, 5, 8, 4, 2, 1, 6, 3, 7, 9, 10, 5, 8, 4, 2};
  constexpr std::u32string_view CHECKS = U"10X98765432";
  return s[17] == CHECKS[static_cast<std::size_t>(weighted_sum(s, WEIGHTS) % 11)];
}

bool is_credit_code_valid(std::u32string_view code) {
  const std::u32string s = compact(code);
  if (s.size() != 18) return false;
  // Neither I, O, S, V nor Z.
  constexpr std::u32string_view ALPHABET = U"0123456789ABCDEFGHJKLMNPQRTUWXY";
  std::size_t sum = 0;
  std::size_t weight = 1;
  for (std::size_t i = 0; i < 17; ++i) {
    const auto value = ALPHABET.find(s[i]);
    if (value == ALPHABET.npos) return false;
    sum += value * weight;
    weight = weight * 3 % 31;
  }
  return ALPHABET.find(s[17]) == (31 - sum % 31) % 31;
}

bool is_hong_kong_identity_valid(std::u32string_view number) {
  std::u32string s = compact(number);
  std::erase_if(s, [](char32_t c) { return c == U'(' || c == U')'; });
  if (s.size() == 8) s.insert(s.begin(), U' ');
  if (s.size() != 9 || !text::is_ascii_alpha(s[1])) return false;
  if (s[0] != U' ' && !text::is_ascii_alpha(s[0])) return false;
  // A blank before a single letter counts 36, A 10, and the weights run from 9 to 2.
  int sum = 9 * (s[0] == U' ' ? 36 : static_cast<int>(s[0] - U'A') + 10) +
            8 * (static_cast<int>(s[1] - U'A') + 10);
  const auto digits = std::u32string_view(s).substr(2, 6);
  if (!all_digits(digits)) return false;
  sum += weighted_sum(digits, std::array{7, 6, 5, 4, 3, 2});
  const int check = (11 - sum % 11) % 11;
  return s[8] == (check == 10 ? U'A' : U'0' + static_cast<char32_t>(check));
}

bool is_taiwan_identity_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  // The letters in the order of the numbers 10 to 35 that they stand for.
  constexpr std::u32string_view LETTERS = U"ABCDEFGHJKLMNPQRSTUVXYWZIO";
  if (s.size() != 10 || !all_digits(std::u32string_view(s).substr(1))) return false;
  const auto at = LETTERS.find(s[0]);
  if (at == LETTERS.npos || (s[1] != U'1' && s[1] != U'2' && s[1] != U'8' && s[1] != U'9')) {
    return false;
  }
  const int letter = static_cast<int>(at) + 10;
  const int sum =
      letter / 10 + 9 * (letter % 10) +
      weighted_sum(std::u32string_view(s).substr(1), std::array{8, 7, 6, 5, 4, 3, 2, 1, 1});
  return sum % 10 == 0;
}

bool is_organization_code_valid(std::u32string_view code) {
  const std::u32string s = compact(code);
  if (s.size() != 9) return false;
  constexpr std::array WEIGHTS = {3, 7, 9, 10, 5, 8, 4, 2};
  int sum = 0;
  for (std::size_t i = 0; i < WEIGHTS.size(); ++i) {
    if (!text::is_ascii_alnum(s[i])) return false;
    const int value = text::is_ascii_digit(s[i]) ? digit(s[i]) : static_cast<int>(s[i] - U'A') + 10;
    sum += value * WEIGHTS[i];
  }
  constexpr std::u32string_view CHECKS = U"0123456789X";
  return s[8] == CHECKS[static_cast<std::size_t>((11 - sum % 11) % 11)];
}

bool is_iban_valid(std::u32string_view iban) {
  const std::u32string s = compact(iban);
  return s.size() > 4 && has_iban_length(s) && rest_mod_97(s.substr(4) + s.substr(0, 4)) == 1;
}

bool is_aba_routing_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  if (s.size() != 9 || !all_digits(s)) return false;
  constexpr std::array WEIGHTS = {3, 7, 1, 3, 7, 1, 3, 7, 1};
  const int sum = weighted_sum(s, WEIGHTS);
  return sum != 0 && sum % 10 == 0;
}

bool is_container_number_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  if (s.size() != 11 || !all_digits(std::u32string_view(s).substr(4))) return false;
  int sum = 0;
  for (std::size_t i = 0; i < 10; ++i) {
    if (i < 4 && !text::is_ascii_alpha(s[i])) return false;
    // A is 10, and no multiple of 11 is a value: B 12, K 21, L 23, U 32, V 34.
    const int place = static_cast<int>(s[i] - U'A');
    const int value = i < 4 ? 10 + place + (place > 0) + (place > 10) + (place > 20) : digit(s[i]);
    sum += value << i;
  }
  return sum % 11 % 10 == digit(s[10]);
}

bool is_vehicle_identification_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  if (s.size() != 17) return false;
  constexpr std::u32string_view LETTERS = U"ABCDEFGHJKLMNPRSTUVWXYZ";
  constexpr std::array VALUES = {1, 2, 3, 4, 5, 6, 7, 8, 1, 2, 3, 4,
                                 5, 7, 9, 2, 3, 4, 5, 6, 7, 8, 9};
  constexpr std::array WEIGHTS = {8, 7, 6, 5, 4, 3, 2, 10, 0, 9, 8, 7, 6, 5, 4, 3, 2};
  int sum = 0;
  int letters = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const auto at = LETTERS.find(s[i]);
    if (at == LETTERS.npos && !text::is_ascii_digit(s[i])) return false;
    letters += at == LETTERS.npos ? 0 : 1;
    sum += (at == LETTERS.npos ? digit(s[i]) : VALUES[at]) * WEIGHTS[i];
  }
  constexpr std::u32string_view CHECKS = U"0123456789X";
  return letters >= 3 && s[8] == CHECKS[static_cast<std::size_t>(sum % 11)];
}

bool is_legal_entity_identifier_valid(std::u32string_view code) {
  const std::u32string s = compact(code);
  return s.size() == 20 && !all_digits(s) && rest_mod_97(s) == 1;
}

bool is_securities_identification_valid(std::u32string_view code) {
  const std::u32string s = compact(code);
  if (s.size() != 12) return false;
  std::u32string digits;
  for (const char32_t c : s) {
    if (!text::is_ascii_alnum(c)) return false;
    if (text::is_ascii_digit(c)) {
      digits.push_back(c);
    } else {
      const auto value = c - U'A' + 10;
      digits += {U'0' + value / 10, U'0' + value % 10};
    }
  }
  return luhn_sum(digits) % 10 == 0;
}

bool is_ship_number_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  if (s.size() != 7 || !all_digits(s)) return false;
  int sum = 0;
  for (int i = 0; i < 6; ++i) sum += digit(s[static_cast<std::size_t>(i)]) * (7 - i);
  return sum % 10 == digit(s[6]);
}

bool is_australian_business_number_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  constexpr std::array WEIGHTS = {10, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19};
  constexpr int MODULUS = 89;
  if (s.size() != WEIGHTS.size() || !all_digits(s) || s.front() == U'0') return false;
  int sum = -WEIGHTS[0];  // the first digit counts one less
  for (std::size_t i = 0; i < s.size(); ++i) sum += digit(s[i]) * WEIGHTS[i];
  return sum % MODULUS == 0;
}

bool is_base58check_valid(std::u32string_view address) {
  constexpr std::u32string_view ALPHABET =
      U"123456789ABCDEFGHJKLMNPQRSTUVWXYZabcdefghijkmnopqrstuvwxyz";
  constexpr std::size_t SHORTEST = 26;
  constexpr std::size_t LONGEST = 35;
  constexpr std::size_t CHECK = 4;
  if (address.size() < SHORTEST || address.size() > LONGEST) return false;
  std::array<unsigned char, 25> bytes{};
  for (const char32_t c : address) {
    const auto value = ALPHABET.find(c);
    if (value == ALPHABET.npos) return false;
    auto carry = static_cast<unsigned>(value);
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
      carry += 58U * *byte;
      *byte = static_cast<unsigned char>(carry & 0xffU);
      carry >>= 8U;
    }
    if (carry != 0) return false;
  }
  std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
  crypto_hash_sha256(hash.data(), bytes.data(), bytes.size() - CHECK);
  crypto_hash_sha256(hash.data(), hash.data(), hash.size());
  return std::equal(hash.begin(), hash.begin() + CHECK, bytes.end() - CHECK);
}

bool is_bech32_valid(std::u32string_view address) {
  constexpr std::u32string_view ALPHABET = U"qpzry9x8gf2tvdw0s3jn54khce6mua7l";
  constexpr std::array<std::uint32_t, 5> GENERATORS = {0x3b6a57b2, 0x26508e6d, 0x1ea119fa,
                                                       0x3d4233dd, 0x2a1462b3};
  constexpr std::uint32_t BECH32 = 1;
  constexpr std::uint32_t BECH32M = 0x2bc830a3;
  if (address.size() < 14 || address.size() > 90 || !address.starts_with(U"bc1")) return false;
  std::uint32_t check = 1;
  const auto take = [&](std::uint32_t value) {
    const std::uint32_t top = check >> 25U;
    check = ((check & 0x1ffffffU) << 5U) ^ value;
    for (std::size_t i = 0; i < GENERATORS.size(); ++i) {
      if (((top >> i) & 1U) != 0) check ^= GENERATORS[i];
    }
  };
  // The letters b and c before the 1, by their high and their low bits.
  for (const std::uint32_t value : {3U, 3U, 0U, 2U, 3U}) take(value);
  for (const char32_t c : address.substr(3)) {
    const auto value = ALPHABET.find(c);
    if (value == ALPHABET.npos) return false;
    take(static_cast<std::uint32_t>(value));
  }
  return check == BECH32 || check == BECH32M;
}

}  // namespace core::recognition
