#include <algorithm>

#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// Behind a currency: 人民币1,280,000.00元, US$ 3.5 million, 人民币叁万元整, ￥：25,950.00, 人民币(大写)伍佰万元
const Regex RE_BEHIND_CURRENCY(
    "RE_BEHIND_CURRENCY",
    UR"((\((?:大写|小写)\))?[ :]{0,3}()"
    UR"((?:\d{1,3}(?:[,']\d{2,3})*[,']\d{3}(?!\d)(?:\.\d+)?|\d{1,3}(?:\.\d{3})+(?:,\d{1,2})?(?!\d)|\d{1,3}(?: \d{3})+(?![\d:])(?:[.,]\d{1,2}(?!\d))?|\d+(?:\.\d+|,\d{1,2}(?!\d))?))"
    UR"((?!\d)(?: ?(?:万亿|百万|千万|万|亿|千|million|billion|thousand|Million|Billion|MILLION|BILLION|lakhs?|crores?|Lakhs?|Crores?|mn|bn|m|k|M|K|MM|Mio\.?|Mrd\.?)(?![A-Za-z]))?(?: ?[元圆])?[整正]?(?: (?:USD|RMB|CNY|EUR|GBP|HKD|JPY|SGD|AUD|CHF|NOK|SEK|DKK|AED|SAR|CAD|NZD|TWD|NTD|KRW|INR|ZAR|PLN|CZK|HUF|BRL|MXN|MYR|THB|IDR|PHP|VND|RUB|TRY|ILS|NGN|KES|KZT|MOP)(?![A-Za-z]))?(?![年月日%‰])(?!\d))"
    UR"(|[一二三四五六七八九十两零〇壹贰叁肆伍陆柒捌玖拾佰仟百千万亿萬億]{1,24}[元圆](?:[零壹贰叁肆伍陆柒捌玖]{1,2}角)?(?:零?[壹贰叁肆伍陆柒捌玖]分)?[整正]?))");

// Before a currency: 3,450.00元, 500万美元, 4.2亿日元, 5,000 US dollars, 87.500,00 EUR, 125 000 €.
// Not 3元件.
const Regex RE_BEFORE_CURRENCY(
    "RE_BEFORE_CURRENCY",
    UR"((?<![\d.])(?:\d{1,3}(?:[,']\d{2,3})*[,']\d{3}(?!\d)(?:\.\d+)?|\d{1,3}(?:\.\d{3})+(?:,\d{1,2})?(?!\d)|\d{1,3}(?: \d{3})+(?![\d:])(?:[.,]\d{1,2}(?!\d))?|\d+(?:\.\d+|,\d{1,2}(?!\d))?))"
    UR"( ?(?:万亿|百万|千万|万|亿|千|million|billion|thousand|lakhs?|crores?|Mio\.|Mrd\.)?余? ?(?:美元|港元|欧元|日元|日圆|英镑|韩元|美金|港币|港纸|新加坡元|新加坡币|新币|澳元|加元|瑞士法郎|瑞郎|新台币|台币|卢布|卢比|泰铢|林吉特|迪拉姆|越南盾|人民币|元人民币|[元圆](?![件素月旦器])|(?i:(?:us|u\.s\.|hong kong|singapore|canadian|australian) )?(?i:dollars?|euros?|yuan|renminbi|pounds(?: sterling)?|rand|rupees|swiss francs|francs|kroner|kronor|yen|won|baht|pesos|naira|ringgit|dirhams|riyals|shillings)(?![A-Za-z])|(?:USD|RMB|CNY|EUR|GBP|HKD|JPY|SGD|AUD|CHF|NOK|SEK|DKK|AED|SAR|CAD|NZD|TWD|NTD|KRW|INR|ZAR|PLN|CZK|HUF|BRL|MXN|MYR|THB|IDR|PHP|VND|RUB|TRY|ILS|NGN|KES|KZT|MOP)(?![A-Za-z])|[€£](?!\d))[整正]?)");

// 壹佰贰拾捌万元整, 捌拾叁万壹仟元整, 壹佰万美元. Not 壹式肆份.
const Regex RE_CAPITAL(
    "RE_CAPITAL",
    UR"([壹贰叁肆伍陆柒捌玖拾][零〇壹贰叁肆伍陆柒捌玖拾佰仟万亿萬億]{0,24}(?:美元|港元|港币|欧元|日元|英镑|元|圆)(?:[零壹贰叁肆伍陆柒捌玖]{1,2}角)?(?:零?[壹贰叁肆伍陆柒捌玖]分)?[整正]?)");

// 三万元, 二十万元整. Not 二元, 一元化.
const Regex RE_NUMERAL(
    "RE_NUMERAL",
    UR"([一二三四五六七八九十两][一二三四五六七八九十百千万亿两零〇]{1,20}(?:美元|港元|欧元|日元|元)[整正]?)");

// The first figure of a range whose currency stands behind the second: 100-200元, 3万至5万元
const Regex RE_RANGE_START(
    "RE_RANGE_START",
    UR"((?<![\d.])(?:\d{1,3}(?:,\d{3})+|\d+)(?:\.\d+)?(?: ?[万亿])?(?= ?(?:-|~|至|到) ?(?:\d{1,3}(?:,\d{3})+|\d+)(?:\.\d+)? ?[万亿千]?(?:美元|港元|欧元|日元|元)(?![件素月旦器])))");

// 偿还5万, 共计3.5万: ten thousands of yuan as they are spoken of. Not 支付5万吨.
const Regex RE_BARE_TEN_THOUSANDS(
    "RE_BARE_TEN_THOUSANDS",
    UR"((?:[偿归返退]还|支付|给付|已付|借款?|[共合总]计|收到|欠款?|赔偿|补偿|转账|汇款)(?:了|人民币)?(\d{1,6}(?:\.\d{1,4})? ?万)(?=[，。；、;,)]|$))");

// twenty-four million euros, ONE HUNDRED THOUSAND US DOLLARS. Not one hundred days.
const Regex RE_WORDS_BEFORE_CURRENCY(
    "RE_WORDS_BEFORE_CURRENCY",
    UR"((?i)(?<![A-Za-z-])(?:one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|(?:thir|four|fif|six|seven|eigh|nine)teen|twenty|thirty|forty|fifty|sixty|seventy|eighty|ninety)(?:(?:,? |-)(?:and )?(?:one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|(?:thir|four|fif|six|seven|eigh|nine)teen|twenty|thirty|forty|fifty|sixty|seventy|eighty|ninety|hundred|thousand|million|billion)){0,20} (?:(?:us|united states|hong kong|singapore|australian) )?(?:dollars|euros?|pounds(?: sterling)?|yuan|renminbi)(?![A-Za-z]))");

// US Dollars One Million Only
const Regex RE_WORDS_BEHIND_CURRENCY(
    "RE_WORDS_BEHIND_CURRENCY",
    UR"((?<![A-Za-z])(?:(?:US|U\.S\.|United States|Hong Kong|Singapore|Australian) )?(?:Dollars|Euros?|Renminbi|Yuan|DOLLARS|EUROS?|RENMINBI|RMB|USD)(?i:(?:,? |-)(?:and|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|thirteen|fourteen|fifteen|sixteen|seventeen|eighteen|nineteen|twenty|thirty|forty|fifty|sixty|seventy|eighty|ninety|hundred|thousand|million|billion)\b){1,20}(?i: only)?)");

// Codes count in capitals only: "try 3 times" is no amount in lira.
bool is_currency(std::u32string_view word) {
  constexpr std::size_t LONGEST_CODE = 4;
  const bool ascii = std::all_of(word.begin(), word.end(), [](char32_t c) { return c < 0x80; });
  if (!ascii || word.size() > LONGEST_CODE) return true;
  return word == U"Rs." ||
         std::none_of(word.begin(), word.end(), [](char32_t c) { return c >= U'a' && c <= U'z'; });
}

class MoneyRecognizer : public EntityRecognizer {
 public:
  MoneyRecognizer() : EntityRecognizer("MoneyRecognizer", {std::string(entity_type::MONEY)}) {}

  std::vector<RecognizerResult> analyze(const NlpArtifacts& a) const override {
    std::vector<RecognizerResult> out;
    add_behind_currency(a, out);
    add_before_currency(a, out);
    for (const Regex* regex :
         {&RE_CAPITAL, &RE_NUMERAL, &RE_WORDS_BEFORE_CURRENCY, &RE_WORDS_BEHIND_CURRENCY}) {
      for (const auto& m : regex->find_all(a.folded)) add(out, m.start(), m.end());
    }
    for (const auto& m : RE_BARE_TEN_THOUSANDS.find_all(a.folded)) add(out, m.start(1), m.end(1));
    return out;
  }

 private:
  static constexpr double SCORE = 0.8;

  static std::u32string_view window(std::u32string_view text, std::size_t at) {
    return text.substr(0, at + PatternRecognizer::WINDOW);
  }

  static void add(std::vector<RecognizerResult>& out, std::size_t start, std::size_t end) {
    out.push_back({std::string(entity_type::MONEY), static_cast<std::ptrdiff_t>(start),
                   static_cast<std::ptrdiff_t>(end), SCORE});
  }

  static void add_behind_currency(const NlpArtifacts& a, std::vector<RecognizerResult>& out) {
    const std::u32string_view folded = a.folded;
    for (const auto& word : a.of(WordClass::CURRENCY)) {
      if (!is_currency(folded.substr(word.start, word.end - word.start))) continue;
      const auto m = RE_BEHIND_CURRENCY.match_at(window(folded, word.end), word.end);
      // R 352 470.00; an R before a bare number is no rand
      const bool rand = word.end - word.start == 1 && folded[word.start] == U'R';
      if (m && rand && m->text().find_first_of(U",.") == std::u32string_view::npos) continue;
      // 人民币（大写）：壹佰元整: the amount alone, without the label before it
      if (m) add(out, m->has(1) ? m->start(2) : word.start, m->end());
    }
  }

  static void add_before_currency(const NlpArtifacts& a, std::vector<RecognizerResult>& out) {
    std::size_t free_from = 0;
    for (const auto& run : a.numbers) {
      std::size_t at = run.start;
      while (at < run.end && !text::is_ascii_digit(a.folded[at])) ++at;
      if (at < free_from) continue;
      const auto seen = window(a.folded, at);
      if (const auto m = RE_RANGE_START.match_at(seen, at)) {
        add(out, m->start(), m->end());
        free_from = m->end();
      } else if (const auto b = RE_BEFORE_CURRENCY.match_at(seen, at)) {
        add(out, b->start(), b->end());
        free_from = b->end();
      }
    }
  }
};

}  // namespace

void add_money_recognizers(RecognizerRegistry& registry) {
  registry.add_recognizer(std::make_shared<MoneyRecognizer>());
}

}  // namespace core::recognition
