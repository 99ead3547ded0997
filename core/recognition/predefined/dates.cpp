#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// 2024年3月15日, 2024 年 4 月 12 日, 2024年7月16日（周二）上午9时30分, 2024年3月, 2024年度 (the year).
// Not 12024年, not 30年.
const Regex RE_CN_DATE(
    "RE_CN_DATE",
    UR"((?<![\d.,])(?:(?:19|20)\d{2}|(?:1 9|2 0) \d \d) ?年(?: ?(?:1[0-2]|0?[1-9]) ?月(?:份| ?(?:3[01]|[12] ?\d|0?[1-9]) ?[日号](?: ?\((?:星期|周)[一二三四五六日天]\))?(?: ?(?:上午|下午|中午|晚上?|凌晨)? ?(?:[零一二三四五六七八九十]{1,3}时|\d{1,2}(?::\d{2}(?::\d{2})?|[时点](?:\d{1,2}分|整|半)?)))?)?)?)");

// 二〇二四年三月十五日, 二○二四年. Not 一百年.
const Regex RE_CN_NUMERAL_DATE(
    "RE_CN_NUMERAL_DATE",
    UR"([一二][〇○零O一二三四五六七八九]{3} ?年(?: ?[一二三四五六七八九十]{1,2} ?月(?: ?[一二三四五六七八九十廿卅]{1,3} ?[日号])?)?)");

// 民国113年5月2日, 中华民国一一四年七月, 令和6年4月1日
const Regex RE_ERA_DATE(
    "RE_ERA_DATE",
    UR"((?:中[华華]民[国國]|民[国國]|令和|平成|昭和) ?(?:\d{1,3}|[元一二三四五六七八九十百零〇○]{1,5}) ?年)"
    UR"((?: ?(?:\d{1,2}|[一二三四五六七八九十]{1,3}) ?月(?: ?(?:\d{1,2}|[一二三四五六七八九十廿卅]{1,3}) ?日)?)?)");

// 22年12月31日, 113年7月25日. Not 3年6个月.
const Regex RE_CN_SHORT_YEAR(
    "RE_CN_SHORT_YEAR",
    UR"((?<![\d.,])\d{2,3} ?年 ?(?:1[0-2]|0?[1-9]) ?月 ?(?:3[01]|[12]\d|0?[1-9]) ?[日号])");

// 6月30日 alone. Not 每年6月30日, not 3个月.
const Regex RE_CN_MONTH_DAY(
    "RE_CN_MONTH_DAY",
    UR"((?<![\d.,每年])(?<!年 )(?:1[0-2]|0?[1-9])月(?:3[01]|[12]\d|0?[1-9])[日号](?:[上下]午|晚上?)?(?: ?\d{1,2}(?::\d{2}|[时点](?:\d{1,2}分|半)?))?)");

// 2024-03-15, 2024/3/15, 2024.04.28, 2024-03-15 10:30. Not LX-2024-0315.
const Regex RE_ISO_DATE(
    "RE_ISO_DATE",
    UR"((?:(?<![\d./-])|(?<=[./-]\d\d-))(?:19|20)\d{2}(?:-(?:1[0-2]|0?[1-9])-|/(?:1[0-2]|0?[1-9])/|\. ?(?:1[0-2]|0?[1-9])\. ?)(?:3[01]|[12]\d|0?[1-9])(?![\d/]|\.\d|-(?!(?:19|20)\d{2}[-./年])\d)(?:[ T]\d{1,2}:\d{2}(?::\d{2})?)?)");

// 03/04/2024, 28.6.2024, 31-12-2025
const Regex RE_DAY_FIRST_DATE(
    "RE_DAY_FIRST_DATE",
    UR"((?<![\d./-])(?:3[01]|[12]\d|0?[1-9])(?:/(?:3[01]|[12]\d|0?[1-9])/|\.(?:1[0-2]|0?[1-9])\.|-(?:1[0-2]|0?[1-9])-)(?:19|20)\d{2}(?![\d/]|[-.]\d))");

// 31/05/24, 30.09.25. Not clause 1.2.23, not 12.10.10.2.
const Regex RE_SHORT_YEAR_DATE(
    "RE_SHORT_YEAR_DATE",
    UR"((?<![\d./-])(?:(?:3[01]|[12]\d|0?[1-9])/(?:3[01]|[12]\d|0?[1-9])/\d{2}|(?:3[01]|[12]\d|0[1-9])\.(?:1[0-2]|0[1-9])\.\d{2})(?![\d/A-Za-z-]|\.\d))");

// 1er octobre 2024, 15. März 2025, 3 de mayo de 2024, 7 maart 2025
const Regex RE_EUROPEAN_DAY_MONTH(
    "RE_EUROPEAN_DAY_MONTH",
    UR"((?i)(?<![\d./])(?:3[01]|[12]\d|0?[1-9])(?:er|\.|º|°)? ?(?:de |di )?)"
    UR"((?:janvier|février|mars|avril|mai|juin|juillet|août|aout|septembre|octobre|novembre|décembre)"
    UR"(|januari?|jänner|februari?|märz|maart|juni|juli|augustus|oktober|dezember|desember|mei|maj|marts)"
    UR"(|enero|febrero|marzo|abril|mayo|junio|julio|agosto|sep?tiembre|octubre|noviembre|diciembre)"
    UR"(|gennaio|febbraio|aprile|maggio|giugno|luglio|settembre|ottobre|dicembre)"
    UR"(|janeiro|fevereiro|março|maio|junho|julho|setembro|outubro|novembro|dezembro)"
    UR"(|april|august|september|november)(?: del?)? (?:19|20)\d{2}(?!\d))");

// 30 June, 1st of March. Not on 30 June of each year, not 2 May apply.
const Regex RE_EN_DAY_OF_MONTH(
    "RE_EN_DAY_OF_MONTH",
    UR"((?<![\d./,$])(?:3[01]|[12]\d|0?[1-9])(?:st|nd|rd|th)?(?: day)?(?: of)? (?:January|February|March|April|May(?=[.,;)]|$| \d)|June|July|August|September|October|November|December)(?![A-Za-z]|,? (?:(?:of|in) )?(?:each|every|any)\b))");

// 28 June 2024, 18th day of June, 2024, 31-Dec-2025, 30 June 2024, 17:00
const Regex RE_EN_DAY_MONTH(
    "RE_EN_DAY_MONTH",
    UR"((?i)(?<![\d./])(?:3[01]|[12]\d|0?[1-9])(?:st|nd|rd|th)?(?: day)?(?: of|-| )? ?(?:jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?|sept?(?:ember)?|oct(?:ober)?|nov(?:ember)?|dec(?:ember)?)\.?(?:,? ?(?:in the year )?|-)(?:19|20)\d{2}(?!\d)(?:,? (?:at )?\d{1,2}:\d{2}(?::\d{2})?(?: ?[ap]\.?m\.?)?)?)");

// March 4, 2024, Feb 2025, June 30th 2024
const Regex RE_EN_MONTH_DAY(
    "RE_EN_MONTH_DAY",
    UR"((?<![A-Za-z])(?:J(?:an(?:uary)?|une?|uly?|AN(?:UARY)?|UNE?|ULY?)|F(?:eb(?:ruary)?|EB(?:RUARY)?)|M(?:ar(?:ch)?|ay|AR(?:CH)?|AY)|A(?:pr(?:il)?|ug(?:ust)?|PR(?:IL)?|UG(?:UST)?)|S(?:ept?(?:ember)?|EPT?(?:EMBER)?)|O(?:ct(?:ober)?|CT(?:OBER)?)|N(?:ov(?:ember)?|OV(?:EMBER)?)|D(?:ec(?:ember)?|EC(?:EMBER)?))\.?,? ?(?:(?:3[01]|[12]\d|0?[1-9])(?:st|nd|rd|th)?,? ?)?(?:19|20)\d{2}(?!\d)(?:,? (?:at )?\d{1,2}:\d{2}(?: ?[ap]\.?m\.?)?)?)");

// accounts for 2024, in 2023, ___ / ___ / 2023. Not Companies Act 2006, not 2024 units.
const Regex RE_EN_YEAR(
    "RE_EN_YEAR",
    UR"((?i)(?:(?<=\bin )|(?<=\bfor )|(?<=\bduring )|(?<=\bsince )|(?<=\buntil )|(?<=\bend of )|(?<=\byear )|(?<=_ / )|(?<=_/)|(?<=__ )|(?<=   ))(?:19|20)\d{2}(?![\d,]\d|[A-Za-z/%-]| ?(?:act|rules|regulations|units|pcs)\b))");

}  // namespace

void add_date_recognizers(RecognizerRegistry& registry) {
  registry.add_recognizer(std::make_shared<PatternRecognizer>(
      PatternRecognizerConfig{"DateRecognizer",
                              std::string(entity_type::DATE_TIME),
                              {{"Chinese", &RE_CN_DATE, 0.85, AT_INNER_DIGIT},
                               {"Chinese numerals", &RE_CN_NUMERAL_DATE, 0.85, {}},
                               {"era", &RE_ERA_DATE, 0.8, {}},
                               {"short year", &RE_CN_SHORT_YEAR, 0.7, AT_INNER_DIGIT},
                               {"month and day (CN)", &RE_CN_MONTH_DAY, 0.6, AT_INNER_DIGIT},
                               {"year of two digits", &RE_SHORT_YEAR_DATE, 0.6, AT_NUMBER},
                               {"European", &RE_EUROPEAN_DAY_MONTH, 0.85, AT_NUMBER},
                               {"day of a month", &RE_EN_DAY_OF_MONTH, 0.6, AT_NUMBER},
                               {"ISO", &RE_ISO_DATE, 0.85, AT_NUMBER},
                               {"day first", &RE_DAY_FIRST_DATE, 0.7, AT_NUMBER},
                               {"day and month", &RE_EN_DAY_MONTH, 0.85, AT_NUMBER},
                               {"month and day", &RE_EN_MONTH_DAY, 0.85, {}},
                               {"year", &RE_EN_YEAR, 0.5, AT_NUMBER}}}));
}

}  // namespace core::recognition
