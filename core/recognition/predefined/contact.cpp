#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"
#include "core/text/unicode.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// yuchijz@ruiji-bearing.com.cn. Not 3@5, not a handle such as @qinyu.
const Regex RE_EMAIL(
    "RE_EMAIL",
    UR"([A-Za-z0-9][A-Za-z0-9._%+-]{0,63}@(?:[A-Za-z0-9-]{1,63}\.){1,6}[A-Za-z]{2,24}(?![A-Za-z0-9]))");

// https://vpn.cangpo-dairy.cn:8443/x?y=1, www.hengshanyu-data.com, sftp.alpenrose.ch. Not e.g., not 3.2.
// The end of a sentence and a bracket around it stay outside.
const Regex RE_URL(
    "RE_URL",
    UR"((?i)(?<![A-Za-z0-9@._-])(?:(?:https?|s?ftps?)://[A-Za-z0-9._~%:/?#@!$&'*+=-]{2,300})"
    UR"(|(?:[a-z0-9][a-z0-9-]{0,62}\.){1,5}(?:com|cn|net|org|gov|edu|io|co|info|biz|eu|uk|de|fr|hk|sg|jp|kr|ch|nl|it|no|se|dk|fi|au|ca|us|ru|in|ae|top|xyz|vip|shop|tech|cloud|app|dev)(?:\.[a-z]{2})?(?::\d{1,5})?(?:/[A-Za-z0-9._~%:/?#@!$&'*+=-]{0,300})?)(?<![.,:?!'])(?![A-Za-z0-9@]))");

// 198.51.100.24. Not a version or a clause: 12.10.1.2 needs a word such as IP before it.
const Regex RE_IPV4(
    "RE_IPV4",
    UR"((?<![\d.])(?:(?:25[0-5]|2[0-4]\d|1?\d?\d)\.){3}(?:25[0-5]|2[0-4]\d|1?\d?\d)(?!\d|\.\d))");

// 2001:db8:4f0:2::15. Not the time 12:30:45.
const Regex RE_IPV6(
    "RE_IPV6",
    UR"((?<![A-Za-z0-9:])(?=[0-9A-Fa-f:]{0,40}::|(?:[0-9A-Fa-f]{1,4}:){7})(?:[0-9A-Fa-f]{1,4}::?){2,7}[0-9A-Fa-f]{1,4}(?![A-Za-z0-9:]))");

// 13951208846, 137 5718 0426, +86 186-5712-0934; of (13951208846) without the brackets
const Regex RE_CN_MOBILE(
    "RE_CN_MOBILE",
    UR"((?<![\dA-Za-z.])(?:\((?=1))?((?:\(?\+?86\)?[- ]?)?1[3-9]\d(?:[- ]?\d{4}){2})(?![\dA-Za-z]))");

// 0512-66283917, (0755) 8359 2206, 0311-66107924转803, 021-5298 7410-12. Not 0512 alone.
const Regex RE_CN_LANDLINE(
    "RE_CN_LANDLINE",
    UR"((?<![\dA-Za-z.])(?:\((?=0\d{2,3}[- ]))?((?:\(?\+?86\)?[- ]?)?(?:\(0\d{2,3}\) ?|0\d{2,3}[- ]{1,2})\d{3,4}[- ]?\d{3,4}(?!\d)(?:(?: ?(?:转|ext\.?|分机) ?|-)\d{1,5}(?!\d))?))");

// 400-820-8820, 8008208820
const Regex RE_CN_SERVICE_LINE("RE_CN_SERVICE_LINE",
                               UR"((?<![\dA-Za-z.,])[48]00[- ]?\d{3,4}[- ]?\d{3,4}(?![\dA-Za-z]))");

// +49 40 5550 1847, +1 (604) 555-0174, +971-50-555-0142, (+852) 2793 6481
const Regex RE_INTERNATIONAL(
    "RE_INTERNATIONAL",
    UR"(\(?\+\d{1,3}\)?(?:[ .-]{0,2}\(?\d{1,5}\)?){2,6}(?<=\d)(?!\d)(?: ?(?:转|ext\.?|x) ?\d{1,5})?)");

// (852) 9555 0146, (03) 5550 7714, (86-21) 6288 0911
const Regex RE_BRACKETED_CODE(
    "RE_BRACKETED_CODE",
    UR"(\(\d{2,4}(?:-\d{1,4})?\) ?\d{3,4}[ -]?\d{3,4}(?![\dA-Za-z])(?: ?(?:转|ext\.?|x) ?\d{1,5})?)");

// (201) 555-0138, 617-555-0119
const Regex RE_US_PHONE(
    "RE_US_PHONE",
    UR"((?<![\dA-Za-z.-])(?:\((?=[2-9]\d{2}[-. ]))?((?:\([2-9]\d{2}\)[-. ]{0,2}|[2-9]\d{2}[-. ]{1,2})\d{3}[-.]\d{4})(?![\dA-Za-z]|-\d))");

// 0932-118-560 in Taiwan, 04 72 55 01 88 in France, 082 555 0147 in South Africa
const Regex RE_NATIONAL_PHONE(
    "RE_NATIONAL_PHONE",
    UR"((?<![\dA-Za-z.,/-])(?<!\d )(?:09\d{2}[- ]\d{3}[- ]\d{3}|0[1-9](?:[ .]\d{2}){4}|0[6-8]\d \d{3} \d{4})(?![\dA-Za-z]|[ ,.-]\d))");

// 电话：2793 6481, Tel: 6555 0148, Fax 0113 496 0457
const Regex RE_LABELLED_PHONE(
    "RE_LABELLED_PHONE",
    UR"((?i)[ \t]{0,4}\.?(?:号码|no\.?|number)?(?:\((?![\d+])[^()\n]{1,12}\))?[ \t]{0,2}[:.]?[ \t]{0,4}([+(]{0,2}\d[\d ()/.-]{5,22}\d(?: ?(?:转|ext\.?) ?\d{1,5})?)(?![\dA-Za-z]|\.\d))");

// 微信：zgwq_0822, QQ群 782046619, Telegram @rdcsantillan
const Regex RE_LABELLED_SOCIAL(
    "RE_LABELLED_SOCIAL",
    UR"((?i)[ \t]{0,3}(?:号|账号|id)?[ \t]{0,2}:?[ \t]{0,3}(@?[A-Za-z][A-Za-z0-9_-]{4,30}|\d{5,13})(?![A-Za-z0-9@]|\.[A-Za-z0-9]))");

// @qinyu_hainan, @北境长歌手游. Not the @ of a mail address.
const Regex RE_HANDLE(
    "RE_HANDLE",
    UR"((?<![A-Za-z0-9.])@(?:[A-Za-z_][A-Za-z0-9_]{2,30}|[\u4e00-\u9fff]{2,12})(?![A-Za-z0-9]|\.[A-Za-z0-9]))");

// A clause has no such high number, an address of the network nearly always.
std::optional<bool> validate_ip(std::u32string_view surface) {
  constexpr int HIGHEST_SECTION = 30;
  if (surface.find(U':') != surface.npos) return true;
  int value = 0;
  for (const char32_t c : surface) {
    value = text::is_ascii_digit(c) ? value * 10 + static_cast<int>(c - U'0') : 0;
    if (value > HIGHEST_SECTION) return true;
  }
  return std::nullopt;
}

// Seven digits at least: 转 and brackets alone make no number.
std::optional<bool> validate_phone(std::u32string_view surface) {
  constexpr int FEWEST = 7;
  int digits = 0;
  for (const char32_t c : surface) digits += text::is_ascii_digit(c) ? 1 : 0;
  return digits < FEWEST ? std::optional(false) : std::nullopt;
}

}  // namespace

void add_contact_recognizers(RecognizerRegistry& registry) {
  const auto add = [&](PatternRecognizerConfig config) {
    registry.add_recognizer(std::make_shared<PatternRecognizer>(std::move(config)));
  };
  add({"EmailRecognizer",
       std::string(entity_type::EMAIL_ADDRESS),
       {{"e-mail", &RE_EMAIL, 0.95, AT_SIGN}}});
  add({"UrlRecognizer", std::string(entity_type::URL), {{"URL", &RE_URL, 0.8, {}}}});
  add({"IpRecognizer",
       std::string(entity_type::IP_ADDRESS),
       {{"IPv4", &RE_IPV4, 0.2, AT_NUMBER}, {"IPv6", &RE_IPV6, 0.8, AT_NUMBER}},
       {U"ip", U"地址", U"网段", U"服务器", U"主机", U"server", U"host", U"address"},
       validate_ip});
  add({"PhoneRecognizer",
       std::string(entity_type::PHONE_NUMBER),
       {{"international", &RE_INTERNATIONAL, 0.8, AT_PHONE},
        {"mobile (CN)", &RE_CN_MOBILE, 0.8, AT_PHONE},
        {"landline (CN)", &RE_CN_LANDLINE, 0.75, AT_PHONE},
        {"400 and 800 (CN)", &RE_CN_SERVICE_LINE, 0.6, AT_NUMBER},
        {"bracketed code", &RE_BRACKETED_CODE, 0.6, AT_PHONE},
        {"US", &RE_US_PHONE, 0.6, AT_PHONE},
        {"national", &RE_NATIONAL_PHONE, 0.55, AT_NUMBER},
        {"behind a label", &RE_LABELLED_PHONE, 0.85, after(WordClass::PHONE_LABEL)}},
       {},
       validate_phone});
  add({"SocialAccountRecognizer",
       std::string(entity_type::SOCIAL_ACCOUNT),
       {{"behind a label", &RE_LABELLED_SOCIAL, 0.8, after(WordClass::SOCIAL_LABEL)},
        {"handle", &RE_HANDLE, 0.7, AT_SIGN}}});
}

}  // namespace core::recognition
