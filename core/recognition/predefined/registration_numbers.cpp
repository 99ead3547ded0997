#include "core/recognition/checksums.hpp"
#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// 许可证号：370212202309150101, 渝交运管许可字500112013476号, (鲁)JZ安许证字〔2021〕010637,
// org. no. 918 552 758, CHE-114.286.903, GB 412 8830 62, 〔2022〕京01民初12号.
// Not 许可证由2024年起…, not 专利共12项.
const Regex RE_LABELLED_QUAL_CODE(
    "RE_LABELLED_QUAL_CODE",
    UR"((?i)\.?[ \t]{0,3}(?:号码|编号|号|nos?\.?|number|#)?(?:\((?![^()\n]{0,8}\d[^()\n]{3})[^()\n]{1,12}\))?[ \t]{0,2}(?:为|是|is(?= )|[:/#])?[ \t]{0,4}(?:\((?![^()\n]{1,4}\)))?(?:第(?=\d{4}))?)"
    UR"(((?:[A-Z]{1,4} )?[^\s\d由的在和与应于须将不为后前及自至到或对共有，。；;:、“”"<>《》#()\[\]〔〕【】]{0,14}(?:[(\[〔【](?:[\u4e00-\u9fff]{1,3}|(?:19|20)\d{2})[)\]〕】])?[^\s\d由的在和与应于须将不为后前及自至到或对共有，。；;:、“”"<>《》#【】]{0,14}\d)"
    UR"((?:[\dA-Z]|[-./,:](?=[\dA-Z])| (?=\d{2})|[〔〕\[\]()]|[证字第备号文](?=[\d〔(\[-])){3,40}号?(?:-\d{1,2})?)(?<![(\[〔)〕])(?!年|月|日|\d|〕|\(以下|[个名项]))");

// ZL202114933491.0, ZL 2018 1 0123456.5, CN202310123456.7, 201810123456.5
const Regex RE_PATENT(
    "RE_PATENT",
    UR"((?<![\dA-Za-z.])(?:(?:ZL|CN) ?)?(?:19[89]\d|20\d{2}) ?[1-389] ?\d{7} ?\. ?[\dX](?![0-9A-Za-z.]))");

// The same numbers with the letters before a blank, and those of the time before 2003.
const Regex RE_SPACED_PATENT(
    "RE_SPACED_PATENT",
    UR"((?<![A-Za-z])(?:ZL|CN)[ .]{0,2}(?:(?:19[89]\d|20\d{2}) ?[1-389] ?\d{7}(?: ?\. ?[\dX])?|\d{8}\.[\dX])(?![0-9A-Za-z]))");

// GB 2571904, DE 10 2015 123 456, KR 10-1234567, EP 3517294 B1, US 10,988,417, WO 2019/123456, PCT/CN2023/123456, CN 109876543 B, JP 2019-123456,
// U.S. Patent 11,234,567 B2
const Regex RE_FOREIGN_PATENT(
    "RE_FOREIGN_PATENT",
    UR"((?<![A-Za-z])(?:EP ?\d ?\d{3} ?\d{3}|US ?\d{1,2},\d{3},\d{3}|US ?20\d{2}/\d{7}|WO ?(?:19|20)\d{2}/\d{6}|PCT/[A-Z]{2} ?(?:19|20)\d{2}/\d{5,6}|CN ?[12]\d{8}(?= ?[ABCSUY])|(?:JP|KR|TW|AU|GB|DE|FR|CA) ?(?:19|20)\d{2}[-/]\d{5,7}|(?:GB|JP|FR|CA|DE) ?\d{7}(?![-/]\d)|DE ?10 ?(?:19|20)\d{2} ?\d{3} ?\d{3}|KR ?10-\d{7}|AU ?(?:19|20)\d{8}|TW ?I\d{6}|RU ?2\d{6}|IN ?\d{6}(?= ?[ABC]?\b)|BR ?(?:PI|10|11) ?\d{4,7}-\d)(?: ?[ABCSUY]\d?)?(?![\dA-Za-z]))");
const Regex RE_US_PATENT(
    "RE_US_PATENT",
    UR"(Patents? (?:Application )?(?:Nos?\. |No |Number )?((?:D?\d{1,2},\d{3},\d{3}|\d{2}/\d{3},\d{3})(?: ?[ABES]\d)?)(?![\dA-Za-z]))");

// (RC 1448203), PESEL 81071463820; BEM 14417: the short name of a register before its number.
// Not ISO 27001, not TOTAL 50000.
const Regex RE_REGISTER_NAME(
    "RE_REGISTER_NAME",
    UR"((?![A-Z]{2} \d{5}(?:-\d{4})?(?!\d))(?:^|(?<=[(,;:|\n\t，；、])|(?<=[(,;:|\n，；] )|(?<=under )|(?<=with ))(?!(?:ISO|IEC|EN|DIN|GB|JIS|ASTM|ASME|API|UL|IEEE|RFC|JGJ|CJJ|BS|AS|ANSI|HS|CAS|UN|RAL|TOTAL|ABOUT|MAX|MIN|QTY|UP|TO|OF|AND|OR|MT|DWT|GT|NT|TEU|FEU|RPM|PSI|MW|KW|KWH|KG|MM|HP|BTU|BBL|LBS|CBM|PCS|CTNS|FY|BOX|HRB|UDP|TCP|PORT|GCC|SCC|DN|PN|RMB|USD|EUR|CNY|HKD|GBP)[ .:])[A-Z]{2,8}(?:/[A-Z]{2})?(?: PIN| [Nn]o\.?)?[ :]{1,2}((?:[A-Z]{1,2})?\d(?:\d|[/-](?=\d)|\.(?=\d{3}(?!\d))){4,15}[A-Z]?|\d{2}[A-Z]\d{4}[A-Z])(?=[),;.|\n\t，；、）]|$| \())");

// GOASHK2607719, SM-25/007718, 川B19020013377, OG-25-1901-1018-00000047, 1EG4-TE5-MK73:
// letters and six digits or more in one word. Not XK-2000A, not TS400E.
const Regex RE_LONG_CODE(
    "RE_LONG_CODE",
    UR"((?<![A-Za-z0-9./@_-])(?:[京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼黔](?=[A-Z]?\d{8}))?(?=[A-Z0-9/-]{7,32}(?![A-Za-z0-9_@]))(?=[A-Z0-9/-]{0,24}\d{6}|(?:[A-Z0-9]*[/-]){2}[A-Z0-9/-]{0,12}\d{5}|[A-Z]{1,3}/[A-Z]{1,3}/\d{3}|[A-Z]{1,4}-(?:19|20)\d{2}-\d{3})(?=[\dA-Z/-]{0,16}[A-Z]|(?<=[京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼黔])\d)(?:[A-Z0-9]|[/-](?=[A-Z0-9]))+)"
    UR"(|(?<=[京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼])\d{12}(?![\dA-Za-z]))");

// 784-1969-4417702-3 in the Emirates, 728.950.402-06 and 12.345.678/0001-90 in Brazil
const Regex RE_FOREIGN_IDENTITY(
    "RE_FOREIGN_IDENTITY",
    UR"((?<![\d.-])(?:784-\d{4}-\d{7}-\d|\d{3}\.\d{3}\.\d{3}-\d{2}|\d{2}\.\d{3}\.\d{3}/\d{4}-\d{2}|\d{2}\.\d{3}\.\d{3}-[\dX])(?![\d-]))");

// 发票36062600 88140923, 收据NO.0037715, 投标保函 NB2025LG004417, 对外贸易经营者备案 04128837
const Regex RE_PAPER_NUMBER(
    "RE_PAPER_NUMBER",
    UR"((?:发票|收据|收 ?据|保函|备案|登记|保单|提单|订单|运单|凭证|摘要|执照|票据|汇票|支票)(?:表|书)?[ 　]{0,2}(?:N[Oo]\.?|№|:)?[ ]{0,2}((?=[A-Z/]{0,6}\d)[A-Z0-9][A-Z0-9/-]{5,24}(?: \d{8})?)(?![A-Za-z0-9%年月日元]))");

// (number OC418820; no. IS 784120
const Regex RE_LETTERED_NUMBER(
    "RE_LETTERED_NUMBER",
    UR"((?<![A-Za-z])(?:[Nn]umber|[Nn]o\.) ([A-Z]{2,4} ?\d{5,10})(?![\dA-Za-z]))");

// 京ICP备2020047183号-2, 京ICP证030173号
const Regex RE_ICP("RE_ICP", UR"([\u4e00-\u9fff][A-Z]?\d?-?ICP[备证] ?\d{6,10} ?号?(?:-\d{1,3})?)");

// 京公网安备11010502030143号
const Regex RE_NETWORK_POLICE("RE_NETWORK_POLICE",
                              UR"([\u4e00-\u9fff]公网安备 ?\d{10,16} ?号?(?:-\d{1,3})?)");

// 国药准字H20210001, 国械注准20233010123, 国食健字G20110123, 兽药字110251234, 农药登记 PD20151234
const Regex RE_NATIONAL_APPROVAL(
    "RE_NATIONAL_APPROVAL",
    UR"((?:国(?:药[准证]字|械[注备][准进许]?|妆[特备][字进网]{0,2}|食[健注]字?[注备]?|卫食健字|药械?[食准注进]字?)(?:\(?(?:进|备)\)?)?[ 字]?|兽药字|(?<![A-Za-z])[PW][DP](?=20))[A-Z]{0,2}\d{6,12}(?!\d)号?)");
const Regex RE_LOCAL_APPROVAL(
    "RE_LOCAL_APPROVAL",
    UR"([京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼][\u4e00-\u9fff]{0,3}(?:械注准|械备|建安[ABC]\d?|药监械(?:生产|经营)[许备]?|药制字|妆网?备字?|卫消证字|兽药字|饲证|农药准字)(?:\((?:19|20)\d{2}\))?第?[A-Z]{0,2}\d{4,14}(?!\d)号?)");

// 健康证（编号沪健20230918007）, 上门服务证SH-JZ-0098213, 资质证书：A231008866. Not 签证2024年.
const Regex RE_CERTIFICATE_CODE(
    "RE_CERTIFICATE_CODE",
    UR"((?<!身份)(?<!驾驶)(?<!通行)(?<!护)[证照](?:书|明|件)? ?\(?(?:编号|号码?|编码|字号)?[:：]? ?((?:[京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼黔滇陇秦港澳台国军第][\u4e00-\u9fff]{0,3})?(?:[A-Z]{2,5} (?=[A-Z]?\d{4}))?(?=[A-Z/-]{0,12}\d)[A-Z0-9][A-Z0-9/.-]{5,24}(?<![/.-])(?:\(\d{2}\))?)(?![A-Za-z0-9年%]))");

// 使用登记证 梯11京F12345(20)
const Regex RE_EQUIPMENT_REGISTRATION(
    "RE_EQUIPMENT_REGISTRATION",
    UR"([容锅管瓶梯起索游车]\d{1,2}[\u4e00-\u9fff][A-Z]{1,2}\d{4,6}\(\d{2}\))");

// HRB 114372 B, RCS Paris B 512 345 678, CIPC reg. 2014/118273/07, DE281554903, ABN 51 824 753 556
const Regex RE_REGISTER_NUMBER(
    "RE_REGISTER_NUMBER",
    UR"((?<![A-Za-z])(?:(?:HR[AB] \d{2,6}(?: ?[A-Z])?|(?<=FN )\d{5,6} ?[a-z]|NCT\d{8}|jRCTs?\d{9,10}|ChiCTR-?(?:[A-Z]{2,4}-)?\d{8,10}|ISRCTN\d{8}|ACTRN\d{14}|UMIN\d{9}|CTRI/(?:19|20)\d{2}/\d{2}/\d{6}|(?<=CE No\. |CE No |CE no\. |CE no |CE Number |CE Ref |CE Ref\. |CE No: |CE No\.: )[A-Z]{3}\d{3}|(?:19|20)\d{2}/\d{6}/\d{2}|(?:DE|FR|NL|AT|BE|ES|IT|DK|SE|PL) ?\d{3} ?\d{3} ?\d{3}(?: ?\d{2})?)(?![A-Za-z0-9])|RCS [A-Z][A-Za-z-]{2,20} (?:[A-Z] )?(\d{3} ?\d{3} ?\d{3})(?!\d)))");

// Reference Number 482917, licence: UK/INS/2019-0457, Reg. No. 201934567K, License #C-10 123456
const Regex RE_NUMBERED_LICENCE(
    "RE_NUMBERED_LICENCE",
    UR"((?i)(?<![A-Za-z])(?:licen[cs]es?|lic\.|permits?|certificate|cert\.?|policy|seal|guarantee|deed|file|ref\.|bond|invoice|voucher|booking|waybill|claim|grant|serial|tender|mbi is|pin|residence|registration|firm reference|bar|badge|reg\.|steuernummer|ust-idnr\.?|handelsregister)(?: (?:nos?\.?|number|ref\.?))? ?[:#]? ?\(?((?-i)(?:[A-Z]-\d{1,3} (?=\d{5})|[A-Z]{2,4} (?=\d{4}))?(?=[A-Z/-]{0,8}\d)[A-Z0-9][A-Z0-9/.-]{4,22}(?<![/.-]))(?![A-Za-z0-9%]))");

// 软件著作权 2023SR0123456; 国作登字-2023-F-00012345
const Regex RE_COPYRIGHT(
    "RE_COPYRIGHT",
    UR"((?<![\dA-Za-z])(?:19|20)\d{2}SR[\dA-Z]{6,8}(?![\dA-Za-z])|(?<=作登字-)(?:19|20)\d{2}-[A-L]-\d{8}(?!\d))");
const Regex RE_WORK_REGISTRATION("RE_WORK_REGISTRATION",
                                 UR"([\u4e00-\u9fff]作登字-(?:19|20)\d{2}-[A-L]-\d{8}(?!\d))");

// 注册第12345678号商标, 特许第6543210号. Not 第279号令.
const Regex RE_ORDINAL_NUMBER("RE_ORDINAL_NUMBER",
                              UR"(第 ?([A-Z]?\d{5,10}[A-Z]?) ?号(?!楼|院|线|公告|令))");

// 粤B2-20090059, the telecommunications licence of a province. Not the plate 粤B20090.
const Regex RE_TELECOM_LICENCE(
    "RE_TELECOM_LICENCE",
    UR"([京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼A][AB][12]\.?[A-Z]{0,2}-(?:19|20)\d{6}(?!\d))");

// 1:24-cv-00123-ABC before a court of the United States, HCA 1234/2023 in Hong Kong
const Regex RE_US_CASE(
    "RE_US_CASE",
    UR"((?i)(?<![\d:.])\d{1,2}:\d{2}-(?:cv|cr|mc|bk|ap|md|mj|po|cv)-\d{4,6}(?:-[A-Z]{2,5}){0,3}(?![\dA-Za-z]))");
const Regex RE_HK_CASE(
    "RE_HK_CASE",
    UR"((?<![A-Za-z])(?:HC[A-Z]{1,3}|CACV|CACC|FACV|FACC|DC[A-Z]{2}|LDPE|LDBM|FCMC) ?(?:No\. ?)?\d{1,5}/(?:19|20)\d{2}(?!\d))");

// U72200MH2000PTC123456 and 27AAPFU0939F1ZV in India, T08LL1234A and 201912345K in Singapore
const Regex RE_ASIAN_COMPANY(
    "RE_ASIAN_COMPANY",
    UR"((?:[LU]\d{5}[A-Z]{2}(?:19|20)\d{2}(?:PTC|PLC|FTC|GOI|NPL|OPC|SGC|GAP|GAT|ULL|ULT|FLC)\d{6}|\d{2}[A-Z]{5}\d{4}[A-Z][1-9A-Z]Z[\dA-Z]|[TSR]\d{2}(?:LP|LL|FC|PF|RF|MQ|MM|NB|CC|CS|MB|FM|GS|GA|GB|DP|CP|NR|CM|CD|MD|HS|VH|CH|MH|CL|XL|CX|RP|TU|TC|FB|FN|PA|PB|SS|MC|SM)\d{4}[A-Z]|(?:19[6-9]|20[0-3])\d{6}[A-Z])(?![\dA-Za-z]))");

// MSCU1234566, LSVAM4187C2184847, 5299000J2N45DDNE4Y28: codes with a check character
const Regex RE_CONTAINER("RE_CONTAINER", UR"([A-Z]{3}[UJZ] ?\d{6} ?-?\d(?![\dA-Za-z]))");
const Regex RE_VEHICLE_ID(
    "RE_VEHICLE_ID",
    UR"([A-HJ-NPR-Z0-9]{9}[A-HJ-NPR-TV-Y1-9][A-HJ-NPR-Z0-9]{3}\d{4}(?![\dA-Za-z]))");
const Regex RE_LEGAL_ENTITY("RE_LEGAL_ENTITY", UR"([A-Z0-9]{18}\d{2}(?![\dA-Za-z]))");

// IMO 9074729. The seventh digit checks the six before it.
const Regex RE_SHIP("RE_SHIP",
                    UR"(IMO(?: ?[Nn]o\.?| ?[Nn]umber|编号|号码?)?[ :-]{0,2}(\d{7})(?!\d))");

// 贵1522016201703358, 闽1352014201506627: the province and the number of who is registered
// there. Not 云123456 of any cloud.
const Regex RE_PROVINCE_NUMBER(
    "RE_PROVINCE_NUMBER",
    UR"((?<![\u4e00-\u9fff])[京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼]\d{12,17}(?![\dA-Za-z]))");

// 51 824 753 556: a business in Australia
const Regex RE_AUSTRALIAN_BUSINESS(
    "RE_AUSTRALIAN_BUSINESS",
    UR"((?<![\d.,-])(?<!\d )\d{2} \d{3} \d{3} \d{3}(?![\dA-Za-z]|[ .,]\d))");

std::optional<bool> validate_australian_business(std::u32string_view s) {
  return is_australian_business_number_valid(s);
}
std::optional<bool> validate_ship(std::u32string_view s) {
  return is_ship_number_valid(s.substr(s.size() - 7)) ? std::optional(true) : std::nullopt;
}
std::optional<bool> validate_container(std::u32string_view s) {
  return is_container_number_valid(s);
}
std::optional<bool> validate_vehicle_id(std::u32string_view s) {
  return is_vehicle_identification_valid(s) ? std::optional<bool>() : std::optional(false);
}
std::optional<bool> validate_legal_entity(std::u32string_view s) {
  return is_legal_entity_identifier_valid(s);
}

}  // namespace

void add_registration_number_recognizers(RecognizerRegistry& registry) {
  const auto add = [&](std::string name, std::vector<Pattern> patterns,
                       Validate validate = nullptr) {
    registry.add_recognizer(std::make_shared<PatternRecognizer>(PatternRecognizerConfig{
        std::move(name), std::string(entity_type::QUAL_CODE), std::move(patterns), {}, validate}));
  };
  add("QualificationCodeRecognizer",
      {{"behind a label", &RE_LABELLED_QUAL_CODE, 0.75, after(WordClass::QUAL_LABEL)},
       {"letters and digits", &RE_LETTERED_NUMBER, 0.6, {}},
       {"ICP", &RE_ICP, 0.9, {}},
       {"network police", &RE_NETWORK_POLICE, 0.9, {}},
       {"national approval", &RE_NATIONAL_APPROVAL, 0.9, {}},
       {"local approval", &RE_LOCAL_APPROVAL, 0.9, {}},
       {"certificate and code", &RE_CERTIFICATE_CODE, 0.7, {}},
       {"equipment", &RE_EQUIPMENT_REGISTRATION, 0.8, {}},
       {"ordinal", &RE_ORDINAL_NUMBER, 0.6, {}},
       {"telecommunications", &RE_TELECOM_LICENCE, 0.8, {}},
       {"register", &RE_REGISTER_NUMBER, 0.6, {}},
       {"licence and number", &RE_NUMBERED_LICENCE, 0.6, {}},
       {"company (IN, SG)", &RE_ASIAN_COMPANY, 0.8, AT_NUMBER},
       {"name of a register", &RE_REGISTER_NAME, 0.5, {}},
       {"letters and many digits", &RE_LONG_CODE, 0.45, {}},
       {"identity (AE, BR)", &RE_FOREIGN_IDENTITY, 0.7, AT_NUMBER},
       {"province and digits", &RE_PROVINCE_NUMBER, 0.7, {}},
       {"paper", &RE_PAPER_NUMBER, 0.6, {}}});
  add("ShipRecognizer", {{"IMO", &RE_SHIP, 0.8, {}}}, validate_ship);
  add("AustralianBusinessRecognizer", {{"mod 89", &RE_AUSTRALIAN_BUSINESS, 0.5, AT_NUMBER}},
      validate_australian_business);
  add("PatentRecognizer", {{"patent", &RE_PATENT, 0.9, AT_NUMBER},
                           {"patent in groups", &RE_SPACED_PATENT, 0.9, {}},
                           {"patent abroad", &RE_FOREIGN_PATENT, 0.8, {}},
                           {"patent (US)", &RE_US_PATENT, 0.8, {}},
                           {"copyright", &RE_COPYRIGHT, 0.9, AT_NUMBER},
                           {"work", &RE_WORK_REGISTRATION, 0.9, {}}});
  add("CaseNumberRecognizer",
      {{"United States", &RE_US_CASE, 0.8, AT_NUMBER}, {"Hong Kong", &RE_HK_CASE, 0.8, {}}});
  add("ContainerRecognizer", {{"ISO 6346", &RE_CONTAINER, 0.5, {}}}, validate_container);
  add("VehicleIdentificationRecognizer", {{"17 characters", &RE_VEHICLE_ID, 0.5, AT_NUMBER}},
      validate_vehicle_id);
  add("LegalEntityRecognizer", {{"LEI", &RE_LEGAL_ENTITY, 0.5, AT_NUMBER}}, validate_legal_entity);
}

}  // namespace core::recognition
