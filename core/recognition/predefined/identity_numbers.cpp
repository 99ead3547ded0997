#include "core/recognition/checksums.hpp"
#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// 331003199306177181, 510104 19760822 2123. Not an account of 18 digits without a date inside.
const Regex RE_RESIDENT_IDENTITY(
    "RE_RESIDENT_IDENTITY",
    UR"([1-9]\d{5} ?(?:19|20)\d{2} ?(?:0[1-9]|1[0-2])(?:0[1-9]|[12]\d|3[01]) ?\d{3}[\dXx](?![0-9A-Za-z]))");

// 身份证号码：130204197401199741, 身份证（1101 0519 9003 0723 38）, 15 digits of the first
// generation; A123456(3) in Hong Kong, 1234567(8) or 5/123456/7 in Macau, A123456789 in Taiwan,
// USA110074010101 of a permanent resident; cards of other countries
const Regex RE_LABELLED_RESIDENT_IDENTITY(
    "RE_LABELLED_RESIDENT_IDENTITY",
    UR"((?i)[ \t]{0,4}(?:号码|编号|号|nos?\.?|number|#)?(?:\([^()\n\d]{1,16}\))?[ \t]{0,2}(?:为|是|:|,)?[ \t([【“"]{0,4})"
    UR"((\d(?:[ -]?\d){16}[ -]?[\dX](?![0-9A-Z])|\d{15}(?![0-9A-Z])|[A-Z]{1,2}[ -]?\d{6} ?\([\dA]\)|[A-Z]{1,2}\d{6}[\dA](?![0-9A-Z])|\d/\d{6}/\d(?!\d)|\d{7} ?\(\d\)|[A-Z]{3}\d{12}(?!\d)|[A-Z][1289]\d{8}(?![0-9A-Z])|\d{8}-?[A-Z](?![0-9A-Z])|\d{3}\.\d{3}\.\d{3}-\d{2}|784-?\d{4}-?\d{7}-?\d|\d{6}-\d{2}-\d{4}(?!\d)|\d{6}-[1-4]\d{6}(?!\d)|\d{6}-\d{4}(?!\d)|\d{8,14}(?![0-9A-Z])))");

// A123456(3) alone, with its check digit; A123456789 of Taiwan with the word 身份
const Regex RE_HONG_KONG_IDENTITY("RE_HONG_KONG_IDENTITY", UR"([A-Z]{1,2}\d{6} ?\([\dA]\))");
const Regex RE_TAIWAN_IDENTITY("RE_TAIWAN_IDENTITY", UR"([A-Z][1289]\d{8}(?![0-9A-Za-z]))");

// S1234567D; 2345 6789 0124; QQ 12 34 56 C
const Regex RE_SINGAPORE_IDENTITY("RE_SINGAPORE_IDENTITY", UR"([STFGM]\d{7}[A-Z](?![0-9A-Za-z]))");
const Regex RE_LABELLED_SINGAPORE_IDENTITY(
    "RE_LABELLED_SINGAPORE_IDENTITY",
    UR"((?i)[ \t]{0,2}(?:no\.?|number)?[ \t]{0,2}:?[ \t]{0,4}((?-i)[STFGM]\d{7}[A-Z])(?![0-9A-Za-z]))");
const Regex RE_LABELLED_AADHAAR(
    "RE_LABELLED_AADHAAR",
    UR"((?i)(?<=aadhaar|haar no|aar no\.|r number)[ \t]{0,2}:?[ \t]{0,4}([2-9]\d{3}(?:[ -]?\d{4}){2})(?!\d))");
const Regex RE_UK_INSURANCE(
    "RE_UK_INSURANCE",
    UR"((?<![A-Za-z])(?!BG|GB|NK|KN|TN|NT|ZZ)[A-CEGHJ-PR-TW-Z][A-CEGHJ-NPR-TW-Z](?: ?\d{2}){3} ?[A-D](?![0-9A-Za-z]))");

// 91330106MAK6LAAL6B. The letters I, O, S, V, Z never stand in it.
const Regex RE_CREDIT_CODE("RE_CREDIT_CODE",
                           UR"([0-9A-HJ-NP-RTUWXY]{2}\d{6}[0-9A-HJ-NP-RTUWXY]{10}(?![0-9A-Za-z]))");

// 统一社会信用代码：9132 0506 MAWU BMLD 2Q, 纳税人识别号：15 to 20 characters, 组织机构代码：55138508-2
const Regex RE_LABELLED_CREDIT_CODE(
    "RE_LABELLED_CREDIT_CODE",
    UR"((?i)[ \t]{0,4}(?:号码|编号|证号|号|nos?\.?|number)?(?:[(/](?![^()\n:]{0,8}\d[^()\n:]{4})[^()\n:]{1,16}\)?)?[ \t]{0,2}(?:为|是|:)?[ \t([【“"]{0,4}((?=[A-Z]{0,3}\d)[0-9A-Z](?:[ -]?[0-9A-Z]){13,19}|(?=[A-Z]{0,2}\d)[0-9A-Z]{8}-[0-9X])(?![0-9A-Z]))");

// 护照号码：TR4820916, passport, currently no. 19FV04418, 护照75 4418320, 护照（号码G12345678）,
// passport of the holder: EJ1234567
const Regex RE_LABELLED_PASSPORT(
    "RE_LABELLED_PASSPORT",
    UR"((?i)(?:,? ?(?:currently|with|bearing))?[ \t]{0,3}(?:号码|编号|号|nos?\.?|number|n°|nr\.?|#)?[ \t]{0,2}(?:\((?![^()\n]{0,4}\d)[^()\n]{1,16}\))?(?: ?of [A-Z][^:\n]{1,24})?[ \t]{0,2}(?:为|是|:|,)?[ \t([【“"]{0,4}(?:号码|no\.?|number)?[ \t:]{0,3}((?-i)(?=[A-Z0-9 ]{0,6}\d)(?:[A-Z0-9]{1,4} )?[A-Z0-9]{5,12})(?![0-9A-Za-z]|年))");
// 证件号码：H01234567: a travel document behind a label for any
const Regex RE_OTHER_DOCUMENT(
    "RE_OTHER_DOCUMENT",
    UR"((?i)[ \t]{0,4}(?:号码|编号|号|no\.?|number)?(?:\([^()\n\d]{1,16}\))?[ \t]{0,2}(?:为|是|:|,)?[ \t([【“"]{0,4}((?-i)[A-Z]{1,2} ?\d{7,10})(?![0-9A-Za-z]|\([\dA]\)))");

// E12345678 with the word passport before it
const Regex RE_PASSPORT("RE_PASSPORT", UR"([A-Z]{1,2}\d{7,8}(?![0-9A-Za-z]))");

// 浙L·6Q90F, 渝BF62108, 湘A 7K26D, 京 A 12345, 粤Z·1234港, 京A1234挂, 沪A1234领, 京A12345警.
// Not 京B2-20200011 (a licence).
const Regex RE_CN_PLATE(
    "RE_CN_PLATE",
    UR"([京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼](?:[A-HJ-NP-Z][·•・‧ -]{0,2}| [A-HJ-NP-Z][·•・‧ -]{1,2})(?:(?=[A-Z]{0,5}\d)[A-HJ-NP-Z0-9]{5,6}(?:(?=警)警)?|[A-HJ-NP-Z0-9]{4}[挂学警港澳领])(?![A-Za-z0-9-]))");

// YD19 KLX in the United Kingdom, 使014578 of an embassy, WJ京1234X of the armed police
const Regex RE_SPECIAL_PLATE(
    "RE_SPECIAL_PLATE",
    UR"((?<=[\s,，。;；:：、(])使\d{6}(?!\d)|WJ ?[\u4e00-\u9fff]?[·•・ -]?\d{4}[\dA-Z](?![A-Za-z0-9])|^使\d{6}(?!\d)|(?<![A-Za-z0-9])[A-Z]{2}[0-7]\d [A-Z]{3}(?![A-Za-z0-9]))");

// plate 4KTX 918, plate Dubai R 48213, 车牌：MN-12-34, vehicle no. 7ABC123
const Regex RE_LABELLED_PLATE(
    "RE_LABELLED_PLATE",
    UR"([ \t]{0,3}(?:号码|号|[Nn]o\.?)?[ \t]{0,2}(?:\([^()\n\d]{1,12}\))?[ \t]{0,2}(?:为|是|:)?[ \t([【“"]{0,3}((?:[A-Z][a-z]{2,12} )?(?=[A-Z0-9 -]{0,8}\d)[A-Z0-9]{1,4}(?:[ -]?[A-Z0-9]{1,6}){1,2})(?![A-Za-z0-9]|年))");

// lorry JSB 4417, van GBC 7702 M, KDA 417X, 842 XKP, with a word for vehicles near. Not ISO 9001.
const Regex RE_PLATE_ABROAD(
    "RE_PLATE_ABROAD",
    UR"((?<![A-Za-z0-9./-])(?<![A-Z] )(?:(?!ISO|DIN|SAE|USD|EUR|AUD|GBP|RMB|CNY|SGD|HKD|JPY|INR|ZAR|CAD|NZD|CHF|ACN|ABN|SKU|QTY|FOB|CIF|NOS)[A-Z]{3} \d{3,4}(?: ?[A-Z])?|\d{3} [A-Z]{3})(?![A-Za-z0-9/-]|[ .,]\d))");

// 股票代码：301999.SZ, NYSE: QXVL, NYSE American: BXTR, symbol “SKJH”, LSE: BP.
const Regex RE_LABELLED_TICKER(
    "RE_LABELLED_TICKER",
    UR"((?: (?:American|Arca|Global|Select|Capital|Main|Market|Board|symbol|code|ticker)){0,4}(?:代码|代号)?[ \t]{0,2}(?:为|是|:|\))?[ \t:“\"'(]{0,3}(\d{4,6}(?:\.[A-Z]{2})?|(?:SH|SZ|BJ|HK)\d{4,6}|[A-Z]{2}[A-Z0-9]{9}\d|[A-Z]{2,5}(?:\.[A-Z]{1,2})?)(?![A-Za-z0-9年]))");

// 605991.SH, 0700.HK, SZ300750
const Regex RE_TICKER(
    "RE_TICKER",
    UR"((?<![\d.])(?:\d{6}\.(?:SH|SZ|BJ|OC|SS|NQ|XSHG|XSHE)|0?\d{4}\.HK|S[HZ][0368]\d{5}|BJ[489]\d{5})(?![A-Za-z0-9]))");

// US0378331005, with its check digit
const Regex RE_SECURITIES_ID("RE_SECURITIES_ID", UR"([A-Z]{2}[A-Z0-9]{9}\d(?![A-Za-z0-9]))");

// 751-40-9926. Not 000-..., 666-..., 9..-...
const Regex RE_US_SSN("RE_US_SSN",
                      UR"((?<![\d-])(?!000|666|9)\d{3}-(?!00)\d{2}-(?!0000)\d{4}(?![\d-]))");
const Regex RE_LABELLED_US_SSN(
    "RE_LABELLED_US_SSN",
    UR"((?i)[ \t]{0,2}(?:no\.?|number)?[ \t]{0,2}:?[ \t]{0,4}(\d{3}[- ]?\d{2}[- ]?\d{4})(?!\d))");

// 912-73-4486
const Regex RE_US_ITIN("RE_US_ITIN",
                       UR"((?<![\d-])9\d{2}-(?:5\d|6[0-5]|[78]\d|9[0-24-9])-\d{4}(?![\d-]))");

// Driver's License (MA): S41873025, 驾驶证号：058214639, driver's license number is 27719043
const Regex RE_LABELLED_DRIVER_LICENSE(
    "RE_LABELLED_DRIVER_LICENSE",
    UR"((?i)[ \t]{0,2}(?:no\.?|number|号)?[ \t]{0,2}(?:\([^()\n]{1,12}\))?[ \t]{0,2}(?::|为|是|is(?= ))?[ \t]{0,4}((?-i)[A-Z]{0,2}\d[\dA-Z-]{5,17})(?![0-9A-Za-z]))");

std::optional<bool> validate_resident_identity(std::u32string_view s) {
  return is_resident_identity_valid(s);
}
std::optional<bool> validate_credit_code(std::u32string_view s) { return is_credit_code_valid(s); }
std::optional<bool> validate_hong_kong_identity(std::u32string_view s) {
  return is_hong_kong_identity_valid(s);
}
std::optional<bool> validate_taiwan_identity(std::u32string_view s) {
  return is_taiwan_identity_valid(s) ? std::optional<bool>() : std::optional(false);
}
std::optional<bool> validate_securities_id(std::u32string_view s) {
  return is_securities_identification_valid(s);
}

void add_person_numbers(RecognizerRegistry& registry) {
  const auto add = [&](PatternRecognizerConfig config) {
    registry.add_recognizer(std::make_shared<PatternRecognizer>(std::move(config)));
  };
  add({"ResidentIdentityRecognizer",
       std::string(entity_type::CHINA_ID_CARD),
       {{"18 characters", &RE_RESIDENT_IDENTITY, 0.5, AT_NUMBER},
        {"behind a label", &RE_LABELLED_RESIDENT_IDENTITY, 0.9, after(WordClass::ID_CARD_LABEL)}},
       {},
       validate_resident_identity});
  add({"HongKongIdentityRecognizer",
       std::string(entity_type::CHINA_ID_CARD),
       {{"letters and digits", &RE_HONG_KONG_IDENTITY, 0.5, AT_NUMBER}},
       {},
       validate_hong_kong_identity});
  add({"TaiwanIdentityRecognizer",
       std::string(entity_type::CHINA_ID_CARD),
       {{"letter and digits", &RE_TAIWAN_IDENTITY, 0.1, AT_NUMBER}},
       {U"身份", U"身分", U"证件", U"统一编号", U"identity", U"id no"},
       validate_taiwan_identity});
  add({"SingaporeIdentityRecognizer",
       "SG_NRIC_FIN",
       {{"behind a label", &RE_LABELLED_SINGAPORE_IDENTITY, 0.95, after(WordClass::ID_CARD_LABEL)},
        {"letters and digits", &RE_SINGAPORE_IDENTITY, 0.1, AT_NUMBER}},
       {U"nric", U"fin", U"singapore", U"新加坡"}});
  add({"AadhaarRecognizer",
       "IN_AADHAAR",
       {{"behind a label", &RE_LABELLED_AADHAAR, 0.95, after(WordClass::ID_CARD_LABEL)}}});
  add({"NationalInsuranceRecognizer",
       "UK_NINO",
       {{"letters and digits", &RE_UK_INSURANCE, 0.6, {}}}});
  add({"PassportRecognizer",
       std::string(entity_type::PASSPORT_NUMBER),
       {{"behind a label", &RE_LABELLED_PASSPORT, 0.85, after(WordClass::PASSPORT_LABEL)},
        {"behind another label", &RE_OTHER_DOCUMENT, 0.8, after(WordClass::ID_CARD_LABEL)},
        {"letters and digits", &RE_PASSPORT, 0.1, AT_NUMBER}},
       {U"护照", U"通行证", U"passport"}});
  add({"UsSsnRecognizer",
       std::string(entity_type::US_SSN),
       {{"hyphens", &RE_US_SSN, 0.5, AT_NUMBER},
        {"behind a label", &RE_LABELLED_US_SSN, 0.85, after(WordClass::SSN_LABEL)}}});
  add({"UsItinRecognizer",
       std::string(entity_type::US_ITIN),
       {{"hyphens", &RE_US_ITIN, 0.5, AT_NUMBER},
        {"behind a label", &RE_LABELLED_US_SSN, 0.85, after(WordClass::ITIN_LABEL)}}});
  add({"DriverLicenseRecognizer",
       std::string(entity_type::US_DRIVER_LICENSE),
       {{"behind a label", &RE_LABELLED_DRIVER_LICENSE, 0.8,
         after(WordClass::DRIVER_LICENSE_LABEL)}}});
}

void add_company_numbers(RecognizerRegistry& registry) {
  const auto add = [&](PatternRecognizerConfig config) {
    registry.add_recognizer(std::make_shared<PatternRecognizer>(std::move(config)));
  };
  add({"CreditCodeRecognizer",
       std::string(entity_type::CHINA_USCC),
       {{"18 characters", &RE_CREDIT_CODE, 0.5, AT_NUMBER},
        {"behind a label", &RE_LABELLED_CREDIT_CODE, 0.9, after(WordClass::USCC_LABEL)}},
       {},
       validate_credit_code});
  add({"PlateRecognizer",
       std::string(entity_type::VEHICLE_PLATE),
       {{"China", &RE_CN_PLATE, 0.8, {}},
        {"embassy and police", &RE_SPECIAL_PLATE, 0.8, {}},
        {"behind a label", &RE_LABELLED_PLATE, 0.8, after(WordClass::PLATE_LABEL)},
        {"letters and digits", &RE_PLATE_ABROAD, 0.1, {}}},
       {U"lorry", U"truck", U"vehicle", U"van", U"trailer", U"pickup", U"plate", U"rego"}});
  add({"StockTickerRecognizer",
       std::string(entity_type::STOCK_TICKER),
       {{"behind a label", &RE_LABELLED_TICKER, 0.8, after(WordClass::TICKER_LABEL)},
        {"exchange", &RE_TICKER, 0.8, AT_NUMBER}}});
  add({"SecuritiesIdentificationRecognizer",
       std::string(entity_type::STOCK_TICKER),
       {{"ISIN", &RE_SECURITIES_ID, 0.5, AT_NUMBER}},
       {},
       validate_securities_id});
}

}  // namespace

void add_identity_number_recognizers(RecognizerRegistry& registry) {
  add_person_numbers(registry);
  add_company_numbers(registry);
}

}  // namespace core::recognition
