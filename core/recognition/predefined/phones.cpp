#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/phone_numbers.hpp"
#include "core/recognition/predefined/predefined.hpp"
#include "core/text/unicode.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// 13951208846, 137 5718 0426, 138 0813 77 62, +86 186-5712-0934; of (13951208846) without the
// brackets
const Regex RE_CN_MOBILE(
    "RE_CN_MOBILE",
    UR"((?<![\dA-Za-z.])(?:\((?=1))?((?:\(?\+?(?:00)?86\)?[- ]?)?1[3-9]\d(?:(?:[- ]?\d){8}|(?:\.\d{4}){2})(?![\dA-Za-z])))");

// 0512-66283917, (0755) 8359 2206, 0311-66107924转803, 021-5298 7410-12, 0954·6012 338,
// 0755-83592206/07. Not 0512 alone.
const Regex RE_CN_LANDLINE(
    "RE_CN_LANDLINE",
    UR"((?<![\dA-Za-z.])(?:\((?=0\d{2,3}[- ]))?((?:\(?\+?(?:00)?86\)?[- ]?)?(?:\(0\d{2,3}\) ?|0\d{2,3}[- ·]{1,3})(?:\d{3,4}[- ]?\d{3,4}|\d(?:[ -]?\d){6,7})(?!\d)(?:/\d{1,4}(?!\d))?(?: ?(?:转|分机号?|[Ee]xt(?:n|ension)?\.?|EXT\.?|x|#) ?:? ?\d{1,6}(?!\d)|-\d{1,5}(?!\d))?))");

// 400-820-8820, 8008208820, 4006-028-551
const Regex RE_CN_SERVICE_LINE(
    "RE_CN_SERVICE_LINE",
    UR"((?<![\dA-Za-z.,])(?:[48]00[- ]?\d{3,4}[- ]?\d{3,4}|[48]00\d-\d{3}-\d{3})(?![\dA-Za-z])(?: ?转 ?\d{1,5})?)");

// Another number in the same area: 021-52987410，52987411
const Regex RE_CN_NEXT_NUMBER(
    "RE_CN_NEXT_NUMBER",
    UR"((?:(?<=[- )]\d{8}[，、/,])|(?<=[- )]\d{7}[，、/,])|(?<=[- )]\d{8}[，、/,] )|(?<=[- )]\d{4}[ -]\d{4}[，、/]))[2-8]\d{2,3}[ -]?\d{4}(?![\dA-Za-z.,%]))");

// +49 40 5550 1847, +1 (604) 555-0174, +971-50-555-0142, (+852) 2793 6481, +49 (0) 89 / 5550-1420
const Regex RE_INTERNATIONAL(
    "RE_INTERNATIONAL",
    UR"(\(?\+\d{1,3}\)?(?:[ .-]{0,2}(?:/ ?)?\(?\d{1,5}\)?){2,6}(?<=\d)(?!\d)(?: ?(?:转|分机|[Ee]xt(?:n|ension)?\.?|EXT\.?|x|#) ?\d{1,6})?)");

// (852) 9555 0146, (03) 5550 7714, (86-21) 6288 0911, (05)226-8814 分机31
const Regex RE_BRACKETED_CODE(
    "RE_BRACKETED_CODE",
    UR"(\(\d{2,4}(?:-\d{1,4})?\) ?\d{3,4}[ -]?\d{3,4}(?![\dA-Za-z])(?: ?(?:转|分机|[Ee]xt(?:n|ension)?\.?|x|#) ?\d{1,6})?)");

// (201) 555-0138, 617-555-0119, 253/555-0188, 1-800-555-0147 ext. 22, 1-800-FLOWERS
const Regex RE_US_PHONE(
    "RE_US_PHONE",
    UR"((?<![\dA-Za-z.-])(?:\((?=[2-9]\d{2}[-. ]))?((?:(?:\+?1[-. ])?(?:\([2-9]\d{2}\)[-. ]{0,2}|[2-9]\d{2}[-. /]{1,2})\d{3}[-.]\d{4}(?![\dA-Za-z]|[-.]\d)|1-8(?:00|88|77|66|55|44|33)-[A-Z0-9]{3}-?[A-Z0-9]{4}(?![A-Za-z0-9]))(?:,? ?(?:[Ee]xt(?:n|ension)?\.?|x|#) ?\d{1,6})?))");

// 04 72 55 01 88 in France, 082 555 0147 in South Africa, 1300 555 072 in Australia, 98450
// 55127 in India: countries' groups
const Regex RE_NATIONAL_PHONE(
    "RE_NATIONAL_PHONE",
    UR"((?<![\dA-Za-z.,/-])(?<!\d )(?:09\d{2}[- ]\d{3}[- ]\d{3}|0[1-9](?:[ .]\d{2}){4}|0[6-8]\d \d{3} \d{4}|1[38]00 \d{3} \d{3}|[6-9]\d{4} \d{5})(?![\dA-Za-z%]|[ ,.-]\d))");

// 电话：2793 6481, Tel: 6555 0148, Fax 0113 496 0457, 客服热线：95588. Not the day behind a number.
const Regex RE_LABELLED_PHONE(
    "RE_LABELLED_PHONE",
    UR"((?i)[ \t]{0,4}\.?(?:号码|no\.?|number)?(?:\((?![\d+])[^()\n]{1,12}\))?[ \t]{0,2}(?:为|是|[:.])?[ \t]{0,4}([+(]{0,2}\d(?:[\d()/.·-]|(?<! ) (?!(?:19|20)\d{2}[-./年])){5,22}\d(?:(?<!\d{18}))(?: ?(?:转|分机号?|ext(?:n|ension)?\.?|x|#) ?:? ?\d{1,6})?|(?:9[56]\d{3}|1(?:0|1|2)\d{3})(?!\d))(?![\dA-Za-z]|\.\d|[年月日]))");

// Numbers as they are dialled from abroad or from another town, which the numbering
// plans decide on: 0044 20 7946 0312, 02-2345-6789, 03-1234-5678, 030/1234567, 07700 900123.
// Not 01-02-2024.
const Regex RE_DIALLED(
    "RE_DIALLED",
    UR"((?<![\dA-Za-z.,/:¥$€£-])(?<!\d )(?!0\d[-./]\d{1,2}[-./](?:19|20)?\d{2}(?!\d))(?:00[1-9]\d{0,2}[ -]?(?:\(0\) ?)?\d{1,5}(?:[ -]\d{2,5}){1,4}|0[1-9]\d{0,3}(?:[ -]{1,2}|/)\d{2,8}(?:[ -]\d{2,6}){0,3})(?![\dA-Za-z%年月日元万号]|[.,:/-]\d| \d)(?: ?(?:转|分机|[Ee]xt(?:n|ension)?\.?|x|#) ?\d{1,6})?)");

// The same without any sign of dialling; only with a word such as "call" near: 0912345678,
// 2125550147, 2793 6481, 1300 975 707
const Regex RE_LOCAL(
    "RE_LOCAL",
    UR"((?<![\dA-Za-z.,/:¥$€£-])(?<!\d )(?:0\d{8,10}|[2-9]\d{9}|[2-9]\d{3}[ -]?\d{4}|[2-9]\d{2} \d{3} \d{4}|1[38]00 \d{3} \d{3})(?![\dA-Za-z%元万]|[.,:/-]\d| \d))");

// Letters stand for digits: 1-800-FLOWERS.
constexpr std::size_t digits_of(std::u32string_view s) {
  std::size_t digits = 0;
  for (const char32_t c : s) digits += text::is_ascii_digit(c) || (c >= U'A' && c <= U'Z') ? 1 : 0;
  return digits;
}

// Seven digits at least: 转 and brackets alone make no number.
std::optional<bool> validate_phone(std::u32string_view surface) {
  constexpr std::size_t FEWEST = 7;
  return digits_of(surface) < FEWEST ? std::optional(false) : std::nullopt;
}

std::optional<bool> validate_plan(std::u32string_view surface) {
  constexpr std::size_t MOST = 17;  // 15 behind the 00
  return digits_of(surface) <= MOST && is_phone_number(surface) ? std::optional<bool>()
                                                                : std::optional(false);
}

}  // namespace

void add_phone_recognizers(RecognizerRegistry& registry) {
  const auto add = [&](PatternRecognizerConfig config) {
    registry.add_recognizer(std::make_shared<PatternRecognizer>(std::move(config)));
  };
  add({"PhoneRecognizer",
       std::string(entity_type::PHONE_NUMBER),
       {{"international", &RE_INTERNATIONAL, 0.8, AT_PHONE},
        {"mobile (CN)", &RE_CN_MOBILE, 0.8, AT_PHONE},
        {"landline (CN)", &RE_CN_LANDLINE, 0.75, AT_PHONE},
        {"400 and 800 (CN)", &RE_CN_SERVICE_LINE, 0.6, AT_NUMBER},
        {"next number (CN)", &RE_CN_NEXT_NUMBER, 0.6, AT_NUMBER},
        {"bracketed code", &RE_BRACKETED_CODE, 0.6, AT_PHONE},
        {"US", &RE_US_PHONE, 0.6, AT_PHONE},
        {"national", &RE_NATIONAL_PHONE, 0.55, AT_NUMBER},
        {"behind a label", &RE_LABELLED_PHONE, 0.85, after(WordClass::PHONE_LABEL)}},
       {},
       validate_phone});
  add({"PhonePlanRecognizer",
       std::string(entity_type::PHONE_NUMBER),
       {{"as dialled", &RE_DIALLED, 0.5, AT_NUMBER}, {"local", &RE_LOCAL, 0.05, AT_NUMBER}},
       {U"电话", U"致电", U"拨打", U"热线", U"传真", U"手机", U"call", U"tel", U"phone", U"fax",
        U"mobile", U"dial", U"whatsapp", U"text"},
       validate_plan});
}

}  // namespace core::recognition
