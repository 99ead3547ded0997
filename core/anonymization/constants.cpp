#include "core/anonymization/constants.hpp"

#include <algorithm>
#include <array>

#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

using text::Regex;

// In byte order of the types. Two types share a tag only where a reader would
// call them the same kind of thing: the number in a placeholder counts both.
constexpr EntityTag ENTITY_TAGS[] = {
    {"ADDRESS", "ADDRESS"},
    {"AU_ABN", "AU_ABN"},
    {"AU_ACN", "AU_ACN"},
    {"AU_MEDICARE", "AU_MEDICARE"},
    {"AU_TFN", "AU_TFN"},
    {"BANK_ACCOUNT", "ACCOUNT"},
    {"CARD_LAST4", "CARD_LAST4"},
    {"CHINA_ID_CARD", "ID_CARD"},
    {"CHINA_MOBILE", "PHONE"},
    {"CHINA_PASSPORT", "PASSPORT"},
    {"CHINA_USCC", "USCC"},
    {"CONTRACT_NO", "CONTRACT_NO"},
    {"CREDIT_CARD", "CARD"},
    {"CRYPTO", "CRYPTO"},
    {"DATE", "DATE"},
    {"DATE_TIME", "DATE"},
    {"EMAIL_ADDRESS", "EMAIL"},
    {"ES_NIE", "ES_NIE"},
    {"ES_NIF", "ES_NIF"},
    {"GAME", "GAME"},
    {"GENERIC_INSTITUTION_NOUN", "INSTITUTION"},
    {"GPE", "ADDRESS"},
    {"IBAN_CODE", "IBAN"},
    {"IN_AADHAAR", "IN_AADHAAR"},
    {"IN_PAN", "IN_PAN"},
    {"IN_PASSPORT", "PASSPORT"},
    {"IN_VEHICLE_REGISTRATION", "PLATE"},
    {"IP_ADDRESS", "IP"},
    {"IT_DRIVER_LICENSE", "DRIVER_LICENSE"},
    {"IT_FISCAL_CODE", "IT_FISCAL_CODE"},
    {"IT_IDENTITY_CARD", "ID_CARD"},
    {"IT_PASSPORT", "PASSPORT"},
    {"IT_PROTOCOL", "PROTOCOL"},
    {"IT_VAT_CODE", "IT_VAT_CODE"},
    {"LOCATION", "ADDRESS"},
    {"MAC_ADDRESS", "MAC"},
    {"MEDICAL_LICENSE", "MEDICAL_LICENSE"},
    {"MONEY", "MONEY"},
    {"NRP", "NRP"},
    {"ORGANIZATION", "ORG"},
    {"PASSPORT_NUMBER", "PASSPORT"},
    {"PERCENT", "PERCENT"},
    {"PERSON", "NAME"},
    {"PHONE_NUMBER", "PHONE"},
    {"PL_PESEL", "PL_PESEL"},
    {"POSTAL_CODE", "POSTCODE"},
    {"PRODUCT", "PRODUCT"},
    {"PROJECT", "PROJECT"},
    {"QUAL_CODE", "CERT"},
    {"QUANTITY", "QUANTITY"},
    {"SG_NRIC_FIN", "SG_NRIC_FIN"},
    {"SG_UEN", "SG_UEN"},
    {"SOCIAL_ACCOUNT", "SOCIAL"},
    {"STOCK_TICKER", "TICKER"},
    {"SWIFT_CODE", "SWIFT"},
    {"UK_NHS", "UK_NHS"},
    {"UK_NINO", "UK_NINO"},
    {"URL", "URL"},
    {"US_BANK_NUMBER", "ACCOUNT"},
    {"US_DRIVER_LICENSE", "DRIVER_LICENSE"},
    {"US_ITIN", "ITIN"},
    {"US_PASSPORT", "PASSPORT"},
    {"US_SSN", "SSN"},
    {"VEHICLE_PLATE", "PLATE"},
    {"YEAR", "DATE"},
    // An application's own types of these names would be written as ORG and ADDRESS are.
    {"地址", "ADDRESS"},
    {"机构", "ORG"}};

constexpr bool type_less(const EntityTag& a, const EntityTag& b) {
  return a.entity_type < b.entity_type;
}
static_assert(std::is_sorted(std::begin(ENTITY_TAGS), std::end(ENTITY_TAGS), type_less));

// Two literals as one pattern, put together by the compiler.
template <std::size_t N, std::size_t M>
consteval std::array<char32_t, N + M - 2> joined(const char32_t (&a)[N], const char32_t (&b)[M]) {
  std::array<char32_t, N + M - 2> out{};
  std::copy(a, a + N - 1, out.begin());
  std::copy(b, b + M - 1, out.begin() + N - 1);
  return out;
}

template <std::size_t N>
std::u32string_view view(const std::array<char32_t, N>& pattern) {
  return {pattern.data(), pattern.size()};
}

// A party label up to the blanks behind its colon.
//   甲方：  乙　方（卖方）：  出租方 (Lessor):  保证人一：  开 户 行：  甲方（盖章）：  名称：
//   Party A:  LENDER:  甲方 / Party A:  Borrower's Bank:  Account Name (账户名称)：
// Not 地址：, 如下：, Note: - nobody is named behind those.
constexpr char32_t PARTY_LABEL[] =
    UR"((?:)"
    UR"((?:[方人者主商东行户名称章字致]|单位|机构|机关|企业|公司|集团|学校|医院|抬头|股东|账户|帐户|顾问|代理|见证|担保)(?:[一二三四五六七八九十]|\d{1,2})?)"
    UR"((?:\h{0,4}[/／|]?\h{0,4}[A-Za-z][A-Za-z .'’/&-]{0,40}+)?)"
    UR"(|(?<![A-Za-z])(?i:party\h{1,2}[a-h1-9]|[a-z]{2,14}(?:er|or|ee|ant)|client|customer|principal|agent|respondent|recipient|plaintiff|insured|landlord|bank|branch|beneficiary|company|party|parties|counsel|name|to|title\h{1,2}holder)(?:\(s\)|s|\h{0,2}\d{1,2})?)"
    UR"((?:\h{0,4}[/／|]\h{0,4}[\u4e00-\u9fff]{1,12}+)?)"
    UR"())"
    UR"((?:\h{0,4}[（(【\[][^（）()【】\[\]:：\n\uE000]{0,40}+[）)】\]]){0,2}\h{0,4}[:：](?:[\h_]|户名|名称|全称){0,24}+)";

// The ideographs that a label ends in, of its nouns and of the numerals behind them. Any
// other one stands in a label only behind a stroke, at the end of a translation.
constexpr std::u32string_view PARTY_LABEL_ENDS =
    U"方人者主商东行户名称章字致位构关业司团校院头问理证保一二三四五六七八九十";
constexpr std::u32string_view PARTY_LABEL_STROKES = U"/／|";
constexpr std::size_t PARTY_LABEL_TRANSLATION = 4 + 12;  // blanks and ideographs

const Regex RE_RESEARCH_CENTER("RE_RESEARCH_CENTER", UR"(研(?:究|发|究开发|究与发展)中心)");

// Nothing before the noun that would name a centre: 该研究中心, 各类研究中心,
// 国家级工程技术研究中心, 设立联合研究中心. Not 上海量子研究中心.
const Regex RE_GENERIC_RESEARCH_CENTER(
    "RE_GENERIC_RESEARCH_CENTER",
    UR"((?:该|本|此|各|某(?!某)|其|这|那|些|每|个|[一两多]家|[一两多]个|若干|部分|类|地|有关|相关|上述|前述)"
    UR"(|建设|建立|设立|成立|组建|共建|新建|拟建|筹建|依托|通过|具有|拥有|作为|包括)"
    UR"(|国家|[省市区县部厅校院]?级|[省市]|企业|行业|产业|高校|重点|工程|技术|科学|科技|学术|应用|基础|综合|联合|协同|创新|开放|国际|独立|专业|专门|新型|大型|一流|高水平|现代化)*+)"
    UR"(研(?:究|发|究开发|究与发展)中心)");

// A centre that the sentence goes on to speak about: …研究中心建设, …研究中心的人员.
// Not 上海量子研究中心 alone.
const Regex RE_RESEARCH_CENTER_NARRATIVE(
    "RE_RESEARCH_CENTER_NARRATIVE",
    UR"(研(?:究|发|究开发|究与发展)中心(?:建设|成立|设立|组建|筹建|揭牌|挂牌|运行|运营|管理|发展|等|的|之|及|以及|和|与|是|为|在|将|应|由|项目|工作|任务|人员|专家|成果|经费|负责|承担|开展|进行|提供|主要))");

// The name of a body that a centre is part of: …研究中心建设有限公司, 研究中心（筹）.
const Regex RE_NAMED_BODY_AT_END(
    "RE_NAMED_BODY_AT_END",
    UR"((?:公司|集团|分中心|实验室|医院|大学|学院|研究院|研究所|[（(]筹[）)])$)");

}  // namespace

std::string_view EntityToTag::find(std::string_view entity_type) const {
  const auto* found = std::lower_bound(begin(), end(), EntityTag{entity_type, {}}, type_less);
  return found != end() && found->entity_type == entity_type ? found->tag : std::string_view();
}

const EntityTag* EntityToTag::begin() const { return std::begin(ENTITY_TAGS); }
const EntityTag* EntityToTag::end() const { return std::end(ENTITY_TAGS); }

std::string tag_of_entity_type(std::string_view entity_type) {
  const auto found = ENTITY_TO_TAG.find(entity_type);
  if (!found.empty()) return std::string(found);
  std::string tag(entity_type);
  std::replace(tag.begin(), tag.end(), ' ', '_');
  return tag;
}

// The label of a field of a contract, in Chinese, with its colon: parties
// (甲方：, 乙　方（卖方）：, 发包人 (Employer):), contacts (联系地址:, 电　话：), identity
// (法定代表人：), accounts (开户行（盖章）：, 户名 / Account name:).
// Not 说明：, 如下：, 其中：, which any text has, nor 双方：.
const Regex RE_ZH_CONTRACT_FIELD_LABEL(
    "RE_ZH_CONTRACT_FIELD_LABEL",
    UR"((?:[甲乙丙丁戊己庚]\h{0,4}方)"
    UR"(|[买卖供需]\h{1,4}方|[招投]\h{1,4}标\h{1,4}人|单位|[业货雇船]主)"
    UR"(|[方人商](?<=[买卖供需托包租贷款借保押质证可权让标用聘请货购销理间作揽运存管受露收付资设工计务应发利任事办系责见表].))"
    UR"(|名\h{0,4}称|姓\h{0,4}名|地\h{0,4}[址点]|住\h{0,4}[所址]\h{0,4}地?|电\h{0,4}话|手机(?:号码?)?|传\h{0,4}真|邮\h{0,4}[编箱]|邮政编码|电子邮件)"
    UR"(|代\h{0,4}表|负\h{1,4}责\h{1,4}人|联\h{1,4}系\h{1,4}人|职\h{0,4}务|国\h{0,4}籍|签\h{0,4}[字章名]|[盖公]\h{0,4}章|日\h{0,4}期)"
    UR"(|户\h{0,4}名|[账帐税]\h{0,4}[号户]|开\h{0,4}户\h{0,4}银?\h{0,4}行|识别号|信用代码|身份证(?:件)?(?:号码?)?|证[件照]?号码?|护照号码?|合同\h{0,4}编?\h{0,4}号|编\h{0,4}号))"
    UR"((?:[一二三四五六七八九十]|\d{1,2})?)"
    UR"((?:\h{0,4}[（(][^（）()\n]{0,40}+[）)]){0,2})"
    UR"((?:\h{0,4}[/／|]?\h{0,4}[A-Za-z][A-Za-z .'’/&-]{0,40}+)?\h{0,8}[:：])");

// The name ends where its last company form does:
//   北京华信科技有限公司  晋泓国际（香港）有限公司  华信科技有限公司上海分公司
//   叠嶂投资合伙企业（有限合伙）  Home Décor, LLC  Ningbo Cenyu (Asia) Co., Ltd.
// Not 本公司, the Company; not 华信银行股份有限公司苏州支行, which names a branch of a bank.
constexpr auto PARTY_LABELED_COMPANY_PATTERN = joined(
    PARTY_LABEL,
    UR"((?<name>(?!(?:本|该|贵|我|其|此|各|某|上述|下列|目标|合资|项目|关联|母|子|分|总|任何|一家)*+(?:有限责任公司|股份有限公司|有限公司|公司|集团|合伙企业|厂)(?:[与和及或]|[^\u4e00-\u9fff]|\z)))"
    UR"((?:(?!应当|不得|有权|按照|根据|支付|承担|是指|系指|以下|(?<!美)的|甲方|乙方)[\u4e00-\u9fffA-Za-z0-9·&-]|[（(][\u4e00-\u9fffA-Za-z]{1,16}+[）)]){2,60}?)"
    UR"(\h?(?:有限责任公司|股份有限公司|有限公司|公司|株式会社|有限会社|合伙企业|集团|厂|商行|经营部|门市部|工作室|合作社|商店|商场|酒店|宾馆)(?:[（(](?:有限合伙|普通合伙|特殊普通合伙|集团|筹)[）)])?)"
    UR"((?=[与和及或]|法定代表|统一社会|地址|住所|[^\u4e00-\u9fffA-Za-z0-9]|\z))"
    UR"(|(?!(?i:the|our|your|this|each|any|such|a)\h+(?i:company|corporation|limited)\b))"
    UR"([\p{Lu}\d][\p{L}\p{N}&.'’+/-]{0,40}+)"
    UR"((?:\h{1,2}(?:[(（][\p{L} .]{1,30}+[)）]|[\p{Lu}\d&+][\p{L}\p{N}&.'’+/-]{0,40}+|and|of|the|for|de|der|des|di|du|la|van|von|und|et|y)){0,9})"
    UR"(,?(?:\h{1,2}|(?<=,))(?:(?i:co|company|corp|corporation|inc|incorporated|ltd|limited|llc|l\.l\.c|llp|l\.l\.p|plc|pte|pty|gmbh|sdn|bhd|sarl|s\.?r\.?l|s\.?p\.?a|b\.?v|n\.?v|k\.k|oyj?|a/s|aps|pjsc|ojsc|jsc|tbk)|AG|SE|KG|OHG|SA|S\.A|AB|AS|ASA|NV|LP|L\.P|PC|P\.C|FZE|FZCO|DMCC|SAS|S\.A\.S)\b\.?)"
    UR"((?:,?\h{0,2}(?:&\h?)?(?:(?i:co|corp|inc|ltd|limited|llc|llp|plc|bhd|gmbh)|KG|KGaA|OHG)\b\.?){0,3})"
    UR"((?![\p{L}\p{N}]))"
    UR"())");
const Regex RE_PARTY_LABEL("RE_PARTY_LABEL", PARTY_LABEL);
const Regex RE_PARTY_LABELED_COMPANY("RE_PARTY_LABELED_COMPANY",
                                     view(PARTY_LABELED_COMPANY_PATTERN));

// The name ends where its last institution noun does:
//   江澜银行股份有限公司苏州吴中支行  渭川电子科技大学  青岛市自然资源局  浙江稽山元律师事务所
//   Bank of China  University of Leeds  Hangang Exchange Bank
// Not 银行, 该医院, the Bank.
constexpr auto PARTY_LABELED_INSTITUTION_PATTERN = joined(
    PARTY_LABEL,
    UR"((?<name>(?!(?:本|该|贵|我|其|此|各|某|上述|下列|有关|相关|任何|一家)*+(?:银行|支行|分行|大学|学院|学校|医院|中心|研究院|研究所|局|委员会|协会|事务所|人民政府|人民法院|法院|政府|基金会|基金)(?:[与和及或]|[^\u4e00-\u9fff]|\z)))"
    UR"((?:(?!应当|不得|有权|按照|根据|支付|承担|是指|系指|以下|(?<!美)的|甲方|乙方)[\u4e00-\u9fffA-Za-z0-9·-]|[（(][\u4e00-\u9fff]{1,16}+[）)]){2,60}?)"
    UR"((?:银行|支行|分行|营业[部厅室]|分理处|储蓄所|信用社|联社|大学|学院|学校|中学|小学|幼儿园|医院|卫生院|诊所|研究[院所]|设计院|科学院|实验室|中心|[局厅署]|委员会|办公室|办事处|政府|法院|检察院|[协学商]会|联合会|总会|工会|基金会?|事务所|公证处|出版社|报社|电视台|博物馆|图书馆|监狱|看守所)(?:[（(](?:普通合伙|特殊普通合伙|有限合伙|筹)[）)])?)"
    UR"((?=[与及或]|和(?![平谐田县顺林硕政龙静])|法定代表|统一社会|地址|住所|[^\u4e00-\u9fffA-Za-z0-9]|\z))"
    UR"(|(?!(?i:the|our|your|this|each|any|such|a)\h+(?i:bank|branch|court|university|hospital|college|school|agency|authority|office|fund|trust|partnership|committee|association)\b(?!\h+(?:of|for)\b)))"
    UR"((?:(?:[\p{Lu}\d][\p{L}\p{N}&.'’-]{0,40}+\h{1,2}(?:(?:&|and|of|the|for|de|di)\h{1,2}){0,2}){1,8})"
    UR"((?i:university|college|school|bank|hospital|institute|academy|ministry|department|bureau|authority|commission|committee|council|association|foundation|fund|trust|society|chamber|court|cent(?:er|re)|laborator(?:y|ies)|branch|agency|office|partnership)\b(?:\h{1,2}(?:of|for)(?:\h{1,2}the)?(?:\h{1,2}[\p{Lu}][\p{L}\p{N}&.'’-]{0,40}+){1,5}){0,2})"
    UR"(|(?i:university|bank|ministry|department|bureau|institute|academy|college|school|chamber|court|office)\h{1,2}(?i:of|for)(?:\h{1,2}(?i:the))?(?:\h{1,2}[\p{Lu}][\p{L}\p{N}&.'’-]{0,40}+){1,5}(?:\h{1,2}of(?:\h{1,2}[\p{Lu}][\p{L}\p{N}&.'’-]{0,40}+){1,4})?)"
    UR"()(?![\p{L}\p{N}]))"
    UR"())");
const Regex RE_PARTY_LABELED_INSTITUTION("RE_PARTY_LABELED_INSTITUTION",
                                         view(PARTY_LABELED_INSTITUTION_PATTERN));

bool may_end_party_label(std::u32string_view text) {
  while (!text.empty() && text::is_space(text.back())) text.remove_suffix(1);
  if (text.empty() || !text::is_ideograph(text.back())) return true;
  if (PARTY_LABEL_ENDS.find(text.back()) != text::NPOS) return true;
  const auto reach = std::min(text.size(), PARTY_LABEL_TRANSLATION + 1);
  return text.substr(text.size() - reach).find_first_of(PARTY_LABEL_STROKES) != text::NPOS;
}

bool _is_cn_generic_research_center_narrative(std::u32string_view surface) {
  if (surface.find(U"中心") == surface.npos) return false;  // sooner, of nearly all names
  const auto center = RE_RESEARCH_CENTER.search(surface);
  if (!center || RE_NAMED_BODY_AT_END.search(surface)) return false;
  if (surface.substr(0, center->start()).find(U'的') != std::u32string_view::npos) return true;
  return RE_GENERIC_RESEARCH_CENTER.match(surface) || RE_RESEARCH_CENTER_NARRATIVE.search(surface);
}

}  // namespace core::anonymization
