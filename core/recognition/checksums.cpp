#include "core/recognition/checksums.hpp"

#include <array>
#include <string>

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

}  // namespace

bool is_luhn_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  if (s.size() < 12 || s.size() > 19 || !all_digits(s)) return false;
  int sum = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const int value = digit(s[s.size() - 1 - i]) * (i % 2 == 0 ? 1 : 2);
    sum += value > 9 ? value - 9 : value;
  }
  return sum % 10 == 0;
}

bool is_resident_identity_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  if (s.size() != 18 || !all_digits(std::u32string_view(s).substr(0, 17))) return false;
  if (!is_date(number_at(s, 6, 4), number_at(s, 10, 2), number_at(s, 12, 2))) return false;
  constexpr std::array WEIGHTS = {7, 9, 10, 5, 8, 4, 2, 1, 6, 3, 7, 9, 10, 5, 8, 4, 2};
  constexpr std::u32string_view CHECKS = U"10X98765432";
  int sum = 0;
  for (std::size_t i = 0; i < WEIGHTS.size(); ++i) sum += digit(s[i]) * WEIGHTS[i];
  return s[17] == CHECKS[static_cast<std::size_t>(sum % 11)];
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

bool is_iban_valid(std::u32string_view iban) {
  const std::u32string s = compact(iban);
  if (s.size() < 15 || s.size() > 34) return false;
  const std::u32string turned = s.substr(4) + s.substr(0, 4);
  int rest = 0;
  for (const char32_t c : turned) {
    if (text::is_ascii_digit(c)) {
      rest = (rest * 10 + digit(c)) % 97;
    } else if (text::is_ascii_alpha(c)) {
      rest = (rest * 100 + static_cast<int>(c - U'A') + 10) % 97;
    } else {
      return false;
    }
  }
  return rest == 1;
}

bool is_aba_routing_valid(std::u32string_view number) {
  const std::u32string s = compact(number);
  if (s.size() != 9 || !all_digits(s)) return false;
  constexpr std::array WEIGHTS = {3, 7, 1, 3, 7, 1, 3, 7, 1};
  int sum = 0;
  for (std::size_t i = 0; i < s.size(); ++i) sum += digit(s[i]) * WEIGHTS[i];
  return sum != 0 && sum % 10 == 0;
}

}  // namespace core::recognition
