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

// 身份证号码：130204197401199741, 身份证 (15 digits of the first generation)
const Regex RE_LABELLED_RESIDENT_IDENTITY(
    "RE_LABELLED_RESIDENT_IDENTITY",
    UR"((?i)[ \t]{0,4}(?:号码|号|no\.?)?(?:\([^()\n]{1,12}\))?[ \t]{0,2}(?:为|是|:|,)?[ \t]{0,4}(\d{6}[ -]?\d{4}[ -]?\d{4}[ -]?\d{3}[\dX]|\d{15})(?![0-9A-Z]))");

// 91330106MAK6LAAL6B. The letters I, O, S, V, Z never stand in it.
const Regex RE_CREDIT_CODE("RE_CREDIT_CODE",
                           UR"([0-9A-HJ-NP-RTUWXY]{2}\d{6}[0-9A-HJ-NP-RTUWXY]{10}(?![0-9A-Za-z]))");

// 统一社会信用代码：9132 0506 MAWU BMLD 2Q, 纳税人识别号：15 to 20 characters
const Regex RE_LABELLED_CREDIT_CODE(
    "RE_LABELLED_CREDIT_CODE",
    UR"((?i)[ \t]{0,4}(?:号码|号|no\.?)?(?:[(/][^()\n:]{1,16}\)?)?[ \t]{0,2}(?:为|是|:)?[ \t(]{0,4}((?=[A-Z]{0,3}\d)[0-9A-Z](?:[ -]?[0-9A-Z]){13,19})(?![0-9A-Z]))");

// 护照号码：TR4820916, passport, currently no. 19FV04418, 护照75 4418320
const Regex RE_LABELLED_PASSPORT(
    "RE_LABELLED_PASSPORT",
    UR"((?i)(?:,? ?(?:currently|with|bearing))?[ \t]{0,3}(?:号码|号|no\.?|number)?[ \t]{0,2}(?:为|是|:)?[ \t]{0,4}((?-i)(?=[A-Z0-9 ]{0,6}\d)(?:[A-Z0-9]{1,4} )?[A-Z0-9]{5,10})(?![0-9A-Za-z]))");

// E12345678 with the word passport before it
const Regex RE_PASSPORT("RE_PASSPORT", UR"([A-Z]{1,2}\d{7,8}(?![0-9A-Za-z]))");

// 浙L·6Q90F, 渝BF62108, 湘A 7K26D. Not 京B2-20200011 (a licence).
const Regex RE_CN_PLATE(
    "RE_CN_PLATE",
    UR"([京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼][A-HJ-NP-Z][·•・‧ -]?(?=[A-Z]{0,5}\d)[A-HJ-NP-Z0-9]{5,6}(?![A-Za-z0-9-]))");

// plate 4KTX 918, plate Dubai R 48213
const Regex RE_LABELLED_PLATE(
    "RE_LABELLED_PLATE",
    UR"([ \t]{0,3}(?:号码|号|[Nn]o\.?)?[ \t]{0,2}:?[ \t]{0,3}((?:[A-Z][a-z]{2,12} )?(?=[A-Z0-9 -]{0,8}\d)[A-Z0-9]{1,4}(?:[ -]?[A-Z0-9]{1,6}){1,2})(?![A-Za-z0-9]))");

// 许可证号：370212202309150101, 渝交运管许可字500112013476号, (鲁)JZ安许证字〔2021〕010637,
// org. no. 918 552 758, CHE-114.286.903, GB 412 8830 62. Not 许可证由2024年起…
const Regex RE_LABELLED_QUAL_CODE(
    "RE_LABELLED_QUAL_CODE",
    UR"((?i)\.?[ \t]{0,3}(?:号码|编号|号|nos?\.?|number|#)?(?:\((?![^()\n]{0,8}\d[^()\n]{3})[^()\n]{1,12}\))?[ \t]{0,2}(?:为|是|[:/])?[ \t]{0,4}(?:\((?![^()\n]{1,4}\)))?((?:[A-Z]{1,4} )?[^\s\d由的在和与应于须将不为后前及自至到或对,，。；;:、“”"<>《》#]{0,14}\d(?:[\dA-Z]|[-./,](?=[\dA-Z])| (?=\d{2})|[〔〕\[\]()]|[证字第备号文](?=[\d〔(\[-])){3,40}号?(?:-\d{1,2})?)(?<![(\[〔)〕])(?!年|月|日|\d|〕|\(以下))");

// ZL202114933491.0
const Regex RE_PATENT("RE_PATENT", UR"((?:ZL|CN) ?\d{4}[1-389]\d{7}\.[\dX](?![0-9A-Za-z]))");

// EP 3517294 B1, US 10,988,417, WO 2019/123456
const Regex RE_FOREIGN_PATENT(
    "RE_FOREIGN_PATENT",
    UR"((?<![A-Za-z])(?:EP ?\d{7}|US ?\d{1,2},\d{3},\d{3}|(?:WO|PCT/[A-Z]{2}) ?(?:19|20)\d{2}/\d{6})(?: ?[AB]\d)?(?![\dA-Za-z]))");

// (number OC418820; no. IS 784120
const Regex RE_LETTERED_NUMBER(
    "RE_LETTERED_NUMBER",
    UR"((?<![A-Za-z])(?:[Nn]umber|[Nn]o\.) ([A-Z]{2,4} ?\d{5,10})(?![\dA-Za-z]))");

// 川(2018)成都市不动产权第0317726号
const Regex RE_PROPERTY_TITLE(
    "RE_PROPERTY_TITLE", UR"([\u4e00-\u9fff]\((?:19|20)\d{2}\)[\u4e00-\u9fff]{2,14}第\d{5,9}号)");

// 京ICP备2020047183号-2, 京ICP证030173号
const Regex RE_ICP("RE_ICP", UR"([\u4e00-\u9fff][A-Z]?\d?-?ICP[备证]\d{6,10}号?(?:-\d{1,3})?)");

// 川网文〔2023〕1187-046号, 国药准字H20210001. Not 国发〔2023〕 of a title in 《》.
const Regex RE_BRACKETED_YEAR_NUMBER(
    "RE_BRACKETED_YEAR_NUMBER",
    UR"([\u4e00-\u9fff]{1,8}(?:字第?)?[〔\[(](?:19|20)\d{2}[〕\])][A-Z]?\d{3,6}-\d{3,6}号?|国[药械食]?[准注进]字?[A-Z]\d{8})");

// 豫（2018）杞县农村土地承包经营权第0012457号, (京)字第12345号, 影剧备字[2024]第1087号
const Regex RE_NUMBERED_CERTIFICATE(
    "RE_NUMBERED_CERTIFICATE",
    UR"((?:\([\u4e00-\u9fff]{1,3}\)|[\u4e00-\u9fff]{1,12})(?:[字证](?:[〔\[(](?:19|20)\d{2}[〕\])])?|[〔\[(](?:19|20)\d{2}[〕\])][\u4e00-\u9fff]{0,16}(?<!函字)) ?第 ?[A-Z]{0,3}\d{3,12} ?号(?! ?(?:令|公告|文|楼|院)))");

// 健康证（编号沪健20230918007）, 上门服务证SH-JZ-0098213, 资质证书：A231008866. Not 签证2024年.
const Regex RE_CERTIFICATE_CODE(
    "RE_CERTIFICATE_CODE",
    UR"((?<!身份)(?<!驾驶)(?<!通行)(?<!护)[证照](?:书|明|件)? ?\(?(?:编号|号码?|编码|字号)?[:：]? ?((?:[\u4e00-\u9fff]{1,3})?(?=[A-Z/-]{0,12}\d)[A-Z0-9][A-Z0-9/.-]{5,24}(?<![/.-]))(?![A-Za-z0-9年%]))");

// HRB 114372 B, RCS Paris B 512 345 678, CIPC reg. 2014/118273/07, DE281554903, ABN 51 824 753 556
const Regex RE_REGISTER_NUMBER(
    "RE_REGISTER_NUMBER",
    UR"((?<![A-Za-z])(?:(?:HR[AB] ?\d{2,6}(?: ?[A-Z])?|(?:19|20)\d{2}/\d{6}/\d{2}|(?:DE|FR|NL|AT|BE|ES|IT|DK|SE|PL) ?\d{3} ?\d{3} ?\d{3}(?: ?\d{2})?)(?![A-Za-z0-9])|RCS [A-Z][A-Za-z-]{2,20} (?:[A-Z] )?(\d{3} ?\d{3} ?\d{3})(?!\d)))");

// Reference Number 482917, licence: UK/INS/2019-0457, Reg. No. 201934567K
const Regex RE_NUMBERED_LICENCE(
    "RE_NUMBERED_LICENCE",
    UR"((?i)(?<![A-Za-z])(?:licen[cs]e|permit|certificate|registration|firm reference|bar|badge|reg\.|steuernummer|ust-idnr\.?|handelsregister)(?: (?:nos?\.?|number|ref\.?))? ?[:#]? ?((?-i)(?=[A-Z/-]{0,8}\d)[A-Z0-9][A-Z0-9/.-]{4,22}(?<![/.-]))(?![A-Za-z0-9%]))");

// 股票代码：301999.SZ, NYSE: QXVL, NYSE American: BXTR, symbol “SKJH”
const Regex RE_LABELLED_TICKER(
    "RE_LABELLED_TICKER",
    UR"((?: (?:American|Arca|Global|Select|Capital|Main|Market|Board|symbol|code|ticker)){0,4}[ \t]{0,2}(?:为|是|:|\))?[ \t:“\"']{0,3}(\d{4,6}(?:\.[A-Z]{2})?|(?:SH|SZ|BJ|HK)\d{4,6}|[A-Z]{2,5}(?:\.[A-Z]{1,2})?)(?![A-Za-z0-9]))");

// 605991.SH, 0700.HK
const Regex RE_TICKER("RE_TICKER",
                      UR"((?<![\d.])(?:\d{6}\.(?:SH|SZ|BJ|OC)|\d{4,5}\.HK)(?![A-Za-z0-9]))");

// 751-40-9926. Not 000-..., 666-..., 9..-...
const Regex RE_US_SSN("RE_US_SSN",
                      UR"((?<![\d-])(?!000|666|9)\d{3}-(?!00)\d{2}-(?!0000)\d{4}(?![\d-]))");
const Regex RE_LABELLED_US_SSN(
    "RE_LABELLED_US_SSN",
    UR"((?i)[ \t]{0,2}(?:no\.?|number)?[ \t]{0,2}:?[ \t]{0,4}(\d{3}[- ]?\d{2}[- ]?\d{4})(?!\d))");

// 912-73-4486
const Regex RE_US_ITIN("RE_US_ITIN",
                       UR"((?<![\d-])9\d{2}-(?:5\d|6[0-5]|[78]\d|9[0-24-9])-\d{4}(?![\d-]))");

// Driver's License (MA): S41873025, 驾驶证号：058214639
const Regex RE_LABELLED_DRIVER_LICENSE(
    "RE_LABELLED_DRIVER_LICENSE",
    UR"((?i)[ \t]{0,2}(?:no\.?|number|号)?[ \t]{0,2}(?:\([^()\n]{1,12}\))?[ \t]{0,2}:?[ \t]{0,4}((?-i)[A-Z]{0,2}\d[\dA-Z-]{5,17})(?![0-9A-Za-z]))");

std::optional<bool> validate_resident_identity(std::u32string_view s) {
  return is_resident_identity_valid(s);
}
std::optional<bool> validate_credit_code(std::u32string_view s) { return is_credit_code_valid(s); }

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
  add({"PassportRecognizer",
       std::string(entity_type::PASSPORT_NUMBER),
       {{"behind a label", &RE_LABELLED_PASSPORT, 0.85, after(WordClass::PASSPORT_LABEL)},
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
        {"behind a label", &RE_LABELLED_PLATE, 0.8, after(WordClass::PLATE_LABEL)}}});
  add({"QualificationCodeRecognizer",
       std::string(entity_type::QUAL_CODE),
       {{"behind a label", &RE_LABELLED_QUAL_CODE, 0.75, after(WordClass::QUAL_LABEL)},
        {"patent", &RE_PATENT, 0.9, AT_NUMBER},
        {"patent abroad", &RE_FOREIGN_PATENT, 0.8, {}},
        {"letters and digits", &RE_LETTERED_NUMBER, 0.6, {}},
        {"title of property", &RE_PROPERTY_TITLE, 0.9, {}},
        {"ICP", &RE_ICP, 0.9, {}},
        {"number of a certificate", &RE_NUMBERED_CERTIFICATE, 0.8, {}},
        {"certificate and code", &RE_CERTIFICATE_CODE, 0.7, {}},
        {"register", &RE_REGISTER_NUMBER, 0.6, {}},
        {"licence and number", &RE_NUMBERED_LICENCE, 0.6, {}},
        {"number of a year", &RE_BRACKETED_YEAR_NUMBER, 0.6, {}}}});
  add({"StockTickerRecognizer",
       std::string(entity_type::STOCK_TICKER),
       {{"behind a label", &RE_LABELLED_TICKER, 0.8, after(WordClass::TICKER_LABEL)},
        {"exchange", &RE_TICKER, 0.8, AT_NUMBER}}});
}

}  // namespace

void add_identity_number_recognizers(RecognizerRegistry& registry) {
  add_person_numbers(registry);
  add_company_numbers(registry);
}

}  // namespace core::recognition
