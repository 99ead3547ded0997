#include "core/recognition/phone_numbers.hpp"

#include <algorithm>
#include <iterator>
#include <string>

#include <phonenumbers/phonenumberutil.h>

#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace core::recognition {
namespace {

using i18n::phonenumbers::PhoneNumber;
using i18n::phonenumbers::PhoneNumberUtil;

constexpr const char* REGIONS[] = {"CN", "HK", "MO", "TW", "US", "GB",
                                   "AU", "SG", "JP", "KR", "DE", "FR"};

// Documents are full of numbers that no plan has assigned yet or ever will (555-0147).
// One that is dialled with a 0 before its area and is as long as such numbers are
// will do.
bool is_long_enough(const PhoneNumberUtil& util, const PhoneNumber& parsed,
                    std::u32string_view number) {
  constexpr std::size_t LEAST_DIGITS = 10;
  const bool dialled = number.starts_with(U'0') && !number.starts_with(U"00");
  return dialled && util.IsPossibleNumber(parsed) &&
         static_cast<std::size_t>(
             std::count_if(number.begin(), number.end(), text::is_ascii_digit)) >= LEAST_DIGITS;
}

}  // namespace

bool is_phone_number(std::u32string_view number) {
  const std::string written = text::encode_utf8(number);
  const PhoneNumberUtil& util = *PhoneNumberUtil::GetInstance();
  return std::any_of(std::begin(REGIONS), std::end(REGIONS), [&](const char* region) {
    PhoneNumber parsed;
    return util.Parse(written, region, &parsed) == PhoneNumberUtil::NO_PARSING_ERROR &&
           (util.IsValidNumber(parsed) || is_long_enough(util, parsed, number));
  });
}

}  // namespace core::recognition
