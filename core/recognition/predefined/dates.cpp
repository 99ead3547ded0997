#include <algorithm>
#include <utility>

#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"
#include "core/text/unicode.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// 2024年3月15日, 2024 年 4 月 12 日, 2024年3月, 2024年元月10日, 2024年7月底, 2024年3月上旬,
// 2024年度 (the year), 2024年3月15-25日 (to 15), 2023年农历腊月二十三. Not 12024年, not 30年.
const Regex RE_CN_DATE(
    "RE_CN_DATE",
    UR"((?<![\d.,])(?:(?:19|20)\d{2}|(?:1 9|2 0) \d \d) ?年)"
    UR"((?: ?(?:农历|阴历)? ?(?:1[0-2]|0?[1-9]|[元正冬腊]) ?月)"
    UR"((?:份| ?(?:底|初|末|[上中下]旬)| ?(?:3[01]|[12] ?\d|0?[1-9])(?: ?[日号]|(?= ?[-~至到、] ?\d{1,2} ?[日号]))| ?(?:初[一二三四五六七八九十]|[二三]?十[一二三四五六七八九]?|廿[一二三四五六七八九]?)[日号]?)?)?)");

// The last day of a range whose month stands before the first: 3月15日至25日, 3月15-25日
const Regex RE_CN_LAST_DAY(
    "RE_CN_LAST_DAY",
    UR"((?:(?<=\d[日号][-~至到、])|(?<=\d[日号] [-~至到] )|(?<=月\d[-~至到、])|(?<=月\d\d[-~至到、]))(?:3[01]|[12]\d|0?[1-9]) ?[日号](?!内|历))");

// 二〇二四年三月十五日, 二○二四年, 二0二四年, 贰零贰肆年叁月壹拾伍日, 二〇二六年五月廿一. Not 一百年.
const Regex RE_CN_NUMERAL_DATE(
    "RE_CN_NUMERAL_DATE",
    UR"([一二][〇○零O0一二三四五六七八九]{3} ?年(?: ?(?:[一二三四五六七八九十]{1,2}|[元正冬腊]) ?月(?: ?(?:[一二三四五六七八九十廿卅]{1,3} ?[日号]|初[一二三四五六七八九十]|廿[一二三四五六七八九]?|[上中下]旬|[底初末]))?)?)"
    UR"(|[壹贰][〇零壹贰叁肆伍陆柒捌玖]{3} ?年(?: ?[零壹贰叁肆伍陆柒捌玖拾]{1,3} ?月(?: ?[零壹贰叁肆伍陆柒捌玖拾]{1,4} ?日)?)?)");

// 十二月三十一日, 三月十五日. Not 十月革命, not 每年三月十五日.
const Regex RE_CN_NUMERAL_DAY(
    "RE_CN_NUMERAL_DAY",
    UR"((?<![每年一二三四五六七八九十百个第])(?:十[一二]?|[一二三四五六七八九正冬腊])月(?:[一二三四五六七八九十廿卅]{1,3}[日号]|初[一二三四五六七八九十]))");

// 民国113年5月2日, 中华民国一一四年七月, 令和6年4月1日, 一一三年十二月十九日, 甲辰年正月初一
const Regex RE_ERA_DATE(
    "RE_ERA_DATE",
    UR"((?:中华民国|民国|令和|平成|昭和) ?(?:\d{1,3}|[元一二三四五六七八九十百零〇○]{1,5}) ?年)"
    UR"((?: ?(?:\d{1,2}|[一二三四五六七八九十]{1,3}) ?月(?: ?(?:\d{1,2}|[一二三四五六七八九十廿卅]{1,3}) ?日)?)?)"
    UR"(|(?<![一二三四五六七八九十])[一二三四五六七八九][一二三四五六七八九〇零○]{1,2}年[一二三四五六七八九十]{1,2}月[一二三四五六七八九十]{1,3}日)"
    UR"(|[甲乙丙丁戊己庚辛壬癸][子丑寅卯辰巳午未申酉戌亥]年(?:闰?[正一二三四五六七八九十冬腊]{1,2}月(?:初[一二三四五六七八九十]|[一二三四五六七八九十廿]{1,3}日?)?)?)");

// 22年12月31日, 113年7月25日, 114年3月份. Not 3年6个月.
const Regex RE_CN_SHORT_YEAR(
    "RE_CN_SHORT_YEAR",
    UR"((?<![\d.,])\d{2,3} ?年 ?(?:1[0-2]|0?[1-9]) ?月(?: ?(?:3[01]|[12]\d|0?[1-9]) ?[日号]|份))");

// 6月30日 alone, 8月底, 9月份, 今年3月, 5月、6月. Not 每年6月30日, not 3个月, not 5月内.
const Regex RE_CN_MONTH_DAY(
    "RE_CN_MONTH_DAY",
    UR"((?<![\d.,每])(?<!每年)(?<!年年)(?<!\d年)(?<!\d年 )(?:1[0-2]|0?[1-9]) ?月(?: ?(?:3[01]|[12]\d|0?[1-9])(?: ?[日号](?!内)|(?=[-~至到]\d{1,2} ?[日号]))|份(?!内)|[底初末]|[上中下]旬|(?=、\d{1,2}月)|(?<=[今去前明同当次]年\d月)|(?<=[今去前明同当次]年\d\d月)|(?<=月、\d月)|(?<=月、\d\d月)))");

// 2024-03-15, 2024/3/15, 2024.04.28, 2025-W22. Not LX-2024-0315.
const Regex RE_ISO_DATE(
    "RE_ISO_DATE",
    UR"((?:(?<![\d./-])|(?<=[./-]\d\d-)|(?<=[./-]\d-))(?:19|20)\d{2}(?:(?:-(?:1[0-2]|0?[1-9])-|/(?:1[0-2]|0?[1-9])/|\. ?(?:1[0-2]|0?[1-9])\. ?)(?:3[01]|[12]\d|0?[1-9])|-W(?:[0-4]\d|5[0-3]))(?![\d/]|\.\d(?!\d?[-~])|-(?!(?:19|20)\d{2}[-./年]|\d{1,2}[./]\d{1,2}(?!\d))\d))");

// The month and day that end a range: 2024.3.15-4.15
const Regex RE_LAST_MONTH_DAY(
    "RE_LAST_MONTH_DAY",
    UR"((?<=\d{4}[./]\d[./]\d[-~至]|\d{4}[./]\d[./]\d\d[-~至]|\d{4}[./]\d\d[./]\d[-~至]|\d{4}[./]\d\d[./]\d\d[-~至])(?:1[0-2]|0?[1-9])[./](?:3[01]|[12]\d|0?[1-9])(?![\d./]))");

// A month of a year: 2024.03-2026.07, 2011.09至今, 03/2021 - present, 2014-2016, 2024/03
const Regex RE_RANGE_OF_MONTHS(
    "RE_RANGE_OF_MONTHS",
    UR"((?<![\dA-Za-z./-])(?:19|20)\d{2}[./-](?:1[0-2]|0?[1-9])(?= ?(?:[-~至到] ?(?:(?:19|20)\d{2}[./-]\d|今|现在|(?i:present|now|date)))|起|止)|(?:(?<=\d[-~至到])|(?<=\d [-~] ))(?<=\d{4}[./-]\d[-~至到]|\d{4}[./-]\d\d[-~至到]|\d{4}[./-]\d\d [-~] |\d{4}[./-]\d [-~] )(?:19|20)\d{2}[./-](?:1[0-2]|0?[1-9])(?![\d./-])|(?<![\dA-Za-z./-])(?:19|20)\d{2}/(?:1[0-2]|0[1-9])(?![\d./A-Za-z-]))");
const Regex RE_MONTH_OF_YEAR(
    "RE_MONTH_OF_YEAR", UR"((?<![\dA-Za-z./-])(?:1[0-2]|0[1-9])/(?:19|20)\d{2}(?![\d./A-Za-z]))");
const Regex RE_RANGE_OF_YEARS(
    "RE_RANGE_OF_YEARS",
    UR"((?<![\dA-Za-z./¥$€£,-])(?:19[5-9]\d|20[0-4]\d)(?= ?[-~至到] ?(?:(?:19[5-9]\d|20[0-4]\d)(?![\dA-Za-z./,%-]| ?(?:元|万|亿|吨|米|mm|cm|kg|股|人|平|号|型|件|台|rpm|units))|(?i:present)))|(?:(?<=\d{4}[-~至到])|(?<=\d{4} [-~] ))(?<!\d{5}[-~至到])(?<=(?:19|20)\d\d[-~至到]|(?:19|20)\d\d [-~] )(?<![A-Za-z./-](?:19|20)\d\d[-~至到])(?:19[5-9]\d|20[0-4]\d)(?![\dA-Za-z./,%-]| ?(?:元|万|亿|吨|米|mm|cm|kg|股|人|平|号|型|件|台|rpm|units))|(?<![\dA-Za-z./-])20[0-4]\d(?=/(?:20)?\d{2} ?(?:学年|年度|[产榨赛雪]季|财年|财政年|采暖季|供暖季|种植季|收购季|制糖期|season|crop|fiscal))|(?<=20\d\d/)20[0-4]\d(?= ?(?:学年|年度|[产榨赛雪]季|财年|财政年|采暖季|供暖季|种植季|收购季|制糖期|season|crop|fiscal)))");

// 日期：20240315, date of issue: 250219, 日期：26.10.08, 日期：2024-03: dates by their label alone
const Regex RE_BARE_DATE(
    "RE_BARE_DATE",
    UR"((?<![\dA-Za-z.,/-])(?:(?:19|20)\d{2}(?:0[1-9]|1[0-2])(?:0[1-9]|[12]\d|3[01])|[0-4]\d(?:0[1-9]|1[0-2])(?:0[1-9]|[12]\d|3[01])|(?:19|20)\d{2}[./-](?:0?[1-9]|1[0-2])|\d{1,2}[./](?:0?[1-9]|[12]\d|3[01])[./]\d{2})(?![\dA-Za-z%]|[./,-]\d))");

// 03/04/2024, 28.6.2024, 31-12-2025, 1.IX.2025
const Regex RE_DAY_FIRST_DATE(
    "RE_DAY_FIRST_DATE",
    UR"((?<![\d./-])(?:3[01]|[12]\d|0?[1-9])(?:/(?:3[01]|[12]\d|0?[1-9])/|\.(?:1[0-2]|0?[1-9])\.|-(?:1[0-2]|0?[1-9])-|\. ?(?:I{1,3}|IV|VI{0,3}|IX|XI{0,2}|V|X)\. ?)(?:19|20)\d{2}(?![\d/]|[-.]\d))");

// 31/05/24, 30.09.25, on 14.7.25. Not clause 1.2.23, not 12.10.10.2.
const Regex RE_SHORT_YEAR_DATE(
    "RE_SHORT_YEAR_DATE",
    UR"((?<![\d./-])(?:(?:3[01]|[12]\d|0?[1-9])/(?:3[01]|[12]\d|0?[1-9])/\d{2}|(?:3[01]|[12]\d|0[1-9])\.(?:1[0-2]|0[1-9])\.\d{2}|(?<=on |于|dated |am )(?:3[01]|[12]\d|0?[1-9])\.(?:1[0-2]|0?[1-9])\.\d{2})(?![\d/A-Za-z-]|\.\d))");

// 1er octobre 2024, 15. März 2025, 3 de mayo de 2024, 7 maart 2025
const Regex RE_EUROPEAN_DAY_MONTH(
    "RE_EUROPEAN_DAY_MONTH",
    UR"((?i)(?<![\d./])(?:3[01]|[12]\d|0?[1-9])(?:er|\.|º|°)? ?(?:de |di )?)"
    UR"((?:janvier|février|mars|avril|mai|juin|juillet|août|aout|septembre|octobre|novembre|décembre)"
    UR"(|januari?|jänner|februari?|märz|maart|juni|juli|augustus|oktober|dezember|desember|mei|maj|marts)"
    UR"(|enero|febrero|marzo|abril|mayo|junio|julio|agosto|sep?tiembre|octubre|noviembre|diciembre)"
    UR"(|gennaio|febbraio|aprile|maggio|giugno|luglio|settembre|ottobre|dicembre)"
    UR"(|janeiro|fevereiro|março|maio|junho|julho|setembro|outubro|novembro|dezembro)"
    UR"(|stycznia|lutego|marca|kwietnia|maja|czerwca|lipca|sierpnia|września|października|listopada|grudnia)"
    UR"(|april|august|september|november)(?: del?)? (?:19|20)\d{2}(?!\d))");

// 2024년 3월 15일
const Regex RE_KOREAN_DATE("RE_KOREAN_DATE",
                           UR"((?<!\d)(?:19|20)\d{2} ?년(?: ?\d{1,2} ?월(?: ?\d{1,2} ?일)?)?)");

// 30 June, 1st of March, 24 Feb. Not on 30 June of each year, not 2 May apply.
const Regex RE_EN_DAY_OF_MONTH(
    "RE_EN_DAY_OF_MONTH",
    UR"((?<![\d./,$])(?:3[01]|[12]\d|0?[1-9])(?:st|nd|rd|th)?(?: day)?(?: of)? (?:(?:January|February|March|April|June|July|August|September|October|November|December|May(?=[.,;)]|$| \d))|(?:Jan|Feb|Mar|Apr|Jun|Jul|Aug|Sept?|Oct|Nov|Dec)\.?)(?![A-Za-z]|,? (?:(?:of|in) )?(?:each|every|any)\b))");

// 28 June 2024, 18th day of June, 2024, 31-Dec-2025, 15/Mar/2024, 15MAR2024, 5-Nov-24, 7 Mar 25,
// 3rd day of March, Two Thousand and Twenty-Five
const Regex RE_EN_DAY_MONTH(
    "RE_EN_DAY_MONTH",
    UR"((?i)(?<![\d./])(?:3[01]|[12]\d|0?[1-9])(?:st|nd|rd|th)?(?: day)?(?: of|[-/ .])? ?(?:jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?|sept?(?:ember)?|oct(?:ober)?|nov(?:ember)?|dec(?:ember)?)\.?)"
    UR"((?:(?:,? ?(?:in the year )?(?:of our lord )?|[-/])(?:19|20)\d{2}(?!\d)|(?:[-/ ]'?|')\d{2}(?![\d:%.,]\d|\d|[A-Za-z%]| (?:%|days|months|years|per|hours|minutes))|,? (?:in the year )?two thousand(?:,? and)?(?: (?:(?:twen|thir|for)ty|ten|eleven|twelve|(?:thir|four|fif|six|seven|eigh|nine)teen|one|two|three|four|five|six|seven|eight|nine)(?:[ -](?:one|two|three|four|five|six|seven|eight|nine))?)?(?![a-z])))");

// ninth of June 1998, this third day of March 2025
const Regex RE_EN_ORDINAL_DAY(
    "RE_EN_ORDINAL_DAY",
    UR"((?i)(?<![A-Za-z-])(?:(?:twenty|thirty)[- ])?(?:first|second|third|fourth|fifth|sixth|seventh|eighth|ninth|tenth|eleventh|twelfth|(?:thir|four|fif|six|seven|eigh|nine)teenth|twentieth|thirtieth)(?: day)? of (?:january|february|march|april|may|june|july|august|september|october|november|december)(?:,? (?:in the year )?(?:(?:19|20)\d{2}(?!\d)|two thousand(?:,? and)?(?: [a-z]{3,9}(?:-[a-z]{3,5})?)?))?)");

// March 4, 2024, Feb 2025, June 30th 2024, Mar-25, Feb-2027, Jul '16; March 15-20, 2024 (to 15),
// Oct. 3, November 1. Not March forward, not May 10 employees.
const Regex RE_EN_MONTH_DAY(
    "RE_EN_MONTH_DAY",
    UR"((?<![A-Za-z])(?:J(?:an(?:uary)?|une?|uly?|AN(?:UARY)?|UNE?|ULY?)|F(?:eb(?:ruary)?|EB(?:RUARY)?)|M(?:ar(?:ch)?|ay|AR(?:CH)?|AY)|A(?:pr(?:il)?|ug(?:ust)?|PR(?:IL)?|UG(?:UST)?)|S(?:ept?(?:ember)?|EPT?(?:EMBER)?)|O(?:ct(?:ober)?|CT(?:OBER)?)|N(?:ov(?:ember)?|OV(?:EMBER)?)|D(?:ec(?:ember)?|EC(?:EMBER)?)))"
    UR"((?:\.?,? ?(?:(?:3[01]|[12]\d|0?[1-9])(?:st|nd|rd|th)?,? ?)?(?:19|20)\d{2}(?!\d)|[-/](?:19|20)?\d{2}(?![\d/-])| ?'\d{2}(?!\d)|(?<!May)(?<!MAY)\.? (?:3[01]|[12]\d|0?[1-9])(?:st|nd|rd|th)?(?![\dA-Za-z%]|[.:,]\d|,? (?:of )?(?:each|every|any)\b| (?:units|days|months|pcs|shares))|(?<=May|MAY) (?:3[01]|[12]\d|0?[1-9])(?:st|nd|rd|th|(?=[,.;)]|$| (?:to|at|and|through|until|or)\b|-\d))))");

// The last day of a range behind its month: March 15-20, 2024
const Regex RE_EN_LAST_DAY(
    "RE_EN_LAST_DAY",
    UR"((?:uary|arch|pril|June|July|gust|mber|ober|May) \d\d?-((?:3[01]|[12]\d|0?[1-9])(?:,? (?:19|20)\d{2})?)(?![\d.:]))");

// The first day of a range before its month: 15-20 March 2024
const Regex RE_EN_FIRST_DAY(
    "RE_EN_FIRST_DAY",
    UR"((?<![\d./-])(?:3[01]|[12]\d|0?[1-9])(?= ?(?:-|to|and|&) ?(?:3[01]|[12]\d|0?[1-9]) (?:January|February|March|April|May|June|July|August|September|October|November|December)\b))");

// accounts for 2024, in 2023, ___ / ___ / 2023, FY2024, Q1 2024, 2021, 2022 and 2023, summer 2015,
// the 2024 accounts. Not Companies Act 2006, not 2024 units.
const Regex RE_EN_YEAR(
    "RE_EN_YEAR",
    UR"((?i)(?<=[ y/])(?:(?<=\bin )|(?<=\bfor )|(?<=\bduring )|(?<=\bsince )|(?<=\buntil )|(?<=\btill )|(?<=\bfrom )|(?<=\bborn )|(?<=\bbuilt )|(?<=\bfounded )|(?<=\bestablished )|(?<=\bend of )|(?<=\byear )|(?<=\bcrop )|(?<=\bsummer )|(?<=\bwinter )|(?<=\bautumn )|(?<=\bspring )|(?<=\bearly )|(?<=\blate )|(?<=\bcirca )|(?<=\bfy)|(?<=\bfy )|(?<=\bq[1-4] )|(?<=\bh[12] )|(?<=\b(?:19|20)\d\d, )|(?<=\b(?:19|20)\d\d and )|(?<=\b(?:19|20)\d\d, and )|(?<=\b(?:19|20)\d\d or )|(?<=_ / )|(?<=_/)|(?<=__ )|(?<=   )|(?<=  / )|(?<=\.\./))(?:19|20)\d{2}(?:/\d{2}(?!\d))?(?![\d,]\d|\d|[A-Za-z%-]|/\d| ?(?:act|rules|regulations|units|pcs|sqm|kg|mt|shares|words|pages|hours|元|万|吨|平)))"
    UR"(|(?<![\dA-Za-z./$,-])(?:19|20)\d{2}(?=(?:, (?:19|20)\d{2}){0,4},? (?:and|or|to) (?:19|20)\d{2}(?![\d,])))"
    UR"(|(?i)(?<=\bthe )(?:19|20)\d{2}(?= (?:financial|annual|audited|fiscal|season|budget|tax|accounts|crop|harvest|academic|calendar|programme|results|report)\b))");

// 2023-2024年 (the first year)
const Regex RE_CN_FIRST_YEAR("RE_CN_FIRST_YEAR",
                             UR"((?<![\d./-])(?:19|20)\d{2}(?= ?[-~至到、] ?(?:19|20)\d{2} ?年))");

// What belongs to a date behind it: （星期一）, 上午9时30分, 10:30, 下午3点半, 15时30分20秒, at 5:00 p.m.,
// T10:30:00Z, 18:07:44 +0000
const Regex RE_CLOCK_BEHIND(
    "RE_CLOCK_BEHIND",
    UR"((?: ?\((?:星期|周)[一二三四五六日天]\))?)"
    UR"((?:(?:,? ?(?:at )?|T| ?)(?:上午|下午|中午|晚上?|凌晨|早上)? ?(?:(?<![\d.])|(?<=[日号月] )|(?<=\d[ T])|(?<=, )|(?<=at ))(?:[01]?\d|2[0-4]):[0-5]\d(?::[0-5]\d(?:\.\d{1,6})?)?(?: ?(?:[ap]\.m\.|[ap]m\b)| ?(?:[AP]\.M\.|[AP]M\b))?(?:Z|(?: ?(?:[+-]\d{2}:?\d{2}))?(?: \(?(?:UTC|GMT|CST|EST|PST|CET|BST|HKT|SGT|JST)\)?)?)?)"
    UR"(|,? (?:at )?\d{1,2}(?:\.[0-5]\d)? ?(?:[ap]\.m\.|[ap]m\b))"
    UR"(| ?(?:上午|下午|中午|晚上?|凌晨|早上)? ?(?:[零一二三四五六七八九十]{1,3}[时点]|\d{1,2}[时点])(?!间|起计)(?:[零一二三四五六七八九十\d]{1,3}分(?:\d{1,2}秒)?|整|半|许)?)?)");

// What belongs to a date before it: Tuesday 18 March 2025, Mon, 3 Mar 2025
const Regex RE_WEEKDAY_BEFORE(
    "RE_WEEKDAY_BEFORE",
    UR"((?<![A-Za-z])(?:Mon|Tue(?:s)?|Wed(?:nes)?|Thu(?:rs)?|Fri|Sat(?:ur)?|Sun)(?:day)?\.?,? $)");

// 30.09.25, 4.15: a date that reads like the number of a section
const Regex RE_LIKE_SECTION("RE_LIKE_SECTION", UR"(\d{1,2}(?:\.\d{1,2}){1,3})");

// Dates with the weekday before and the time behind them. One that reads like the
// number of a section is reported as YEAR, which is numbered like a date: of a
// DATE_TIME, it would be taken for a section and stay readable.
class DateRecognizer : public EntityRecognizer {
 public:
  explicit DateRecognizer(PatternRecognizerConfig config)
      : EntityRecognizer(config.name, {config.entity, std::string(entity_type::YEAR)}),
        dates_(std::move(config)) {}

  std::vector<RecognizerResult> analyze(const NlpArtifacts& a) const override {
    auto results = dates_.analyze(a);
    for (auto& r : results) complete(a.folded, r);
    return results;
  }
  std::vector<ExplainedResult> explain(const NlpArtifacts& a) const override {
    auto results = dates_.explain(a);
    for (auto& r : results) complete(a.folded, r.result);
    return results;
  }
  std::vector<std::string> pattern_names() const override { return dates_.pattern_names(); }

 private:
  static void complete(std::u32string_view t, RecognizerResult& r) {
    constexpr std::size_t LONGEST_WEEKDAY = 12;
    const auto start = static_cast<std::size_t>(r.start);
    const std::size_t from = start > LONGEST_WEEKDAY ? start - LONGEST_WEEKDAY : 0;
    if (const auto m = RE_WEEKDAY_BEFORE.search(t.substr(0, start), from)) {
      r.start = static_cast<std::ptrdiff_t>(m->start());
    }
    const auto end = static_cast<std::size_t>(r.end);
    const auto seen = t.substr(0, end + PatternRecognizer::WINDOW);
    if (const auto m = RE_CLOCK_BEHIND.match_at(seen, end)) {
      r.end = static_cast<std::ptrdiff_t>(m->end());
    }
    if (RE_LIKE_SECTION.full_match(text::slice(t, r.start, r.end))) {
      r.entity_type = entity_type::YEAR;
    }
  }

  PatternRecognizer dates_;
};

}  // namespace

void add_date_recognizers(RecognizerRegistry& registry) {
  registry.add_recognizer(std::make_shared<DateRecognizer>(
      PatternRecognizerConfig{"DateRecognizer",
                              std::string(entity_type::DATE_TIME),
                              {{"Chinese", &RE_CN_DATE, 0.85, AT_INNER_DIGIT},
                               {"last day (CN)", &RE_CN_LAST_DAY, 0.7, AT_NUMBER},
                               {"Chinese numerals", &RE_CN_NUMERAL_DATE, 0.85, {}},
                               {"day in Chinese numerals", &RE_CN_NUMERAL_DAY, 0.7, {}},
                               {"era", &RE_ERA_DATE, 0.8, {}},
                               {"short year", &RE_CN_SHORT_YEAR, 0.7, AT_INNER_DIGIT},
                               {"month and day (CN)", &RE_CN_MONTH_DAY, 0.6, AT_INNER_DIGIT},
                               {"first year (CN)", &RE_CN_FIRST_YEAR, 0.7, AT_NUMBER},
                               {"year of two digits", &RE_SHORT_YEAR_DATE, 0.6, AT_NUMBER},
                               {"European", &RE_EUROPEAN_DAY_MONTH, 0.85, AT_NUMBER},
                               {"Korean", &RE_KOREAN_DATE, 0.85, AT_NUMBER},
                               {"day of a month", &RE_EN_DAY_OF_MONTH, 0.6, AT_NUMBER},
                               {"ISO", &RE_ISO_DATE, 0.85, AT_NUMBER},
                               {"last month and day", &RE_LAST_MONTH_DAY, 0.6, AT_NUMBER},
                               {"range of months", &RE_RANGE_OF_MONTHS, 0.7, AT_NUMBER},
                               {"month of a year", &RE_MONTH_OF_YEAR, 0.6, AT_NUMBER},
                               {"range of years", &RE_RANGE_OF_YEARS, 0.6, AT_NUMBER},
                               {"day first", &RE_DAY_FIRST_DATE, 0.7, AT_NUMBER},
                               {"day and month", &RE_EN_DAY_MONTH, 0.85, AT_NUMBER},
                               {"ordinal and month", &RE_EN_ORDINAL_DAY, 0.85, {}},
                               {"month and day", &RE_EN_MONTH_DAY, 0.85, {}},
                               {"last day", &RE_EN_LAST_DAY, 0.7, {}},
                               {"first day", &RE_EN_FIRST_DAY, 0.7, AT_NUMBER},
                               {"year", &RE_EN_YEAR, 0.5, AT_INNER_DIGIT}}}));
  registry.add_recognizer(std::make_shared<DateRecognizer>(PatternRecognizerConfig{
      "BareDateRecognizer",
      std::string(entity_type::DATE_TIME),
      {{"digits alone", &RE_BARE_DATE, 0.1, AT_NUMBER}},
      {U"日期", U"时间", U"年月", U"出生", U"生日", U"有效期", U"签发", U"date", U"dated",
       U"expiry", U"expires", U"issued", U"born", U"dob", U"shipment"}}));
}

}  // namespace core::recognition
