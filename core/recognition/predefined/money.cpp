#include <algorithm>
#include <utility>

#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/word_set.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// Behind a currency: 人民币1,280,000.00元, US$ 3.5 million, 人民币叁万元整, ￥：25,950.00, 人民币(大写)伍佰万元,
// RMB(1,200.00), 人民币3亿2000万元
const Regex RE_BEHIND_CURRENCY(
    "RE_BEHIND_CURRENCY",
    UR"((\((?:大写|小写)\))?[ :]{0,3}()"
    UR"((?:\d+(?:\.\d+)?亿\d+(?:\.\d+)?(?=万)|\(?(?:(?<=[ (])-)?(?:\d{1,3}(?:[,']\d{2,3})*[,']\d{3}(?!\d)(?:\.\d+)?|\d{1,3}(?:，\d{3})+(?!\d)(?:\.\d+)?|\d{1,3}(?:\.\d{3})+(?:,\d{1,2})?(?!\d)|\d{1,3}(?: \d{3})+(?![\d:])(?:[.,]\d{1,2}(?!\d))?|\d+(?:\.\d+|,\d{1,2}(?!\d))?)))"
    UR"((?!\d)(?: ?(?:万亿|百万|千万|万|亿|千|million|billion|trillion|thousand|Million|Billion|MILLION|BILLION|lakhs?|crores?|Lakhs?|Crores?|mn|bn|m|k|M|K|MM|mil|Mio\.?|Mrd\.?|tn)(?![A-Za-z]))?(?: ?[元圆](?:\d{1,2}角)?(?:\d{1,2}分)?)?[整正]?(?:\.-|,-|/[-=])?(?: \(?(?:USD|RMB|CNY|EUR|GBP|HKD|JPY|SGD|AUD|CHF|NOK|SEK|DKK|AED|SAR|CAD|NZD|TWD|NTD|KRW|INR|ZAR|PLN|CZK|HUF|BRL|MXN|MYR|THB|IDR|PHP|VND|RUB|TRY|ILS|NGN|KES|KZT|MOP|ISK|RON|BGN|UAH|EGP|QAR|KWD|BHD|OMR|PKR|BDT|LKR|CLP|COP|PEN|ARS|USDT|CNH|TZS|UGX|GHS|ETB|MAD|XOF|XAF|MUR|HRK|RSD|GEL|UZS|MNT|KHR|LAK|MMK|BND)(?![A-Za-z])\)?)?(?![年月日%‰])(?!\d))"
    UR"(|[一二三四五六七八九十两零〇壹贰叁肆伍陆柒捌玖拾佰仟百千万亿萬億]{1,24}[元圆](?:[零壹贰叁肆伍陆柒捌玖]{1,2}角)?(?:零?[壹贰叁肆伍陆柒捌玖]分)?[整正]?|[壹贰叁肆伍陆柒捌玖拾][零壹贰叁肆伍陆柒捌玖拾佰仟万亿]{1,24}))");

// What an R before makes an amount: 352 470.00, 1,412, 350k. Not 15.
const Regex RE_RAND_FIGURE("RE_RAND_FIGURE", UR"([,.]\d|\d \d{3}|\d[kmM]$|\d million)");

// The second figure of a range behind a currency: USD 1,000 to 2,000, EUR 85-95k, AED 30-45 million
const Regex RE_RANGE_END(
    "RE_RANGE_END",
    UR"( ?(?:-|~|至|到|to|and|or) ?((?:\d{1,3}(?:[,']\d{2,3})*[,']\d{3}(?!\d)(?:\.\d+)?|\d{1,3}(?:，\d{3})+(?!\d)(?:\.\d+)?|\d{1,3}(?:\.\d{3})+(?:,\d{1,2})?(?!\d)|\d{1,3}(?: \d{3})+(?![\d:])(?:[.,]\d{1,2}(?!\d))?|\d+(?:\.\d+|,\d{1,2}(?!\d))?))"
    UR"((?!\d)(?: ?(?:万亿|百万|千万|万|亿|千|million|billion|trillion|thousand|Million|Billion|MILLION|BILLION|lakhs?|crores?|Lakhs?|Crores?|mn|bn|m|k|M|K|MM|mil|Mio\.?|Mrd\.?|tn)(?![A-Za-z]))?(?: ?[元圆])?(?![\dA-Za-z年月日%‰/-]|\.\d)(?! ?(?:days|months|years|weeks|percent))))");

// What stands behind the figure of RE_BEFORE_CURRENCY.
const std::u32string CURRENCY_BEHIND =
    UR"( ?(?:万亿|百万|千万|万|亿|千|million|billion|trillion|thousand|Million|Billion|MILLION|BILLION|lakhs?|crores?|Lakhs?|Crores?|mn|bn|m|k|M|K|MM|mil|Mio\.?|Mrd\.?|tn)?[多余]? ?(?:美分|欧分|港仙|便士|丹麦克朗|瑞典克朗|挪威克朗|捷克克朗|冰岛克朗|克朗|兹罗提|福林|雷亚尔|墨西哥比索|菲律宾比索|比索|谢克尔|第纳尔|沙特里亚尔|里亚尔|肯尼亚先令|先令|奈拉|塞地|坚戈|图格里克|塔卡|澳门元|澳门币|新西兰元|纽币|马币|令吉|印尼盾|南非兰特|兰特|土耳其里拉|里拉|加币|澳币|韩币|日币|瑞典币|埃及镑|索姆|苏姆|基普|瑞尔|缅元|美元|港元|欧元|日元|日圆|英镑|韩元|美金|港币|港纸|新加坡元|新加坡币|新币|澳元|加元|瑞士法郎|瑞郎|新台币|台币|卢布|卢比|泰铢|林吉特|迪拉姆|越南盾|人民币|元人民币|[元圆](?![件素月旦器])(?:\d{1,2}角)?(?:\d{1,2}分)?|块(?:钱|(?=[，。、；！？,;!?)]))|円|원|엔|억 ?원|만 ?원|(?i:(?:us|u\.s\.|hong kong|singapore|canadian|australian) )?(?i:dollars?|euros?|cents|pence|yuan|renminbi|pounds(?: sterling)?|rand|rupees|swiss francs|francs|kroner|kronor|yen|won|baht|pesos|naira|ringgit|dirhams|riyals|shillings|usd|rmb)(?![A-Za-z])|\(?(?:USD|RMB|CNY|EUR|GBP|HKD|JPY|SGD|AUD|CHF|NOK|SEK|DKK|AED|SAR|CAD|NZD|TWD|NTD|KRW|INR|ZAR|PLN|CZK|HUF|BRL|MXN|MYR|THB|IDR|PHP|VND|RUB|TRY|ILS|NGN|KES|KZT|MOP|ISK|RON|BGN|UAH|EGP|QAR|KWD|BHD|OMR|PKR|BDT|LKR|CLP|COP|PEN|ARS|USDT|CNH|TZS|UGX|GHS|ETB|MAD|XOF|XAF|MUR|HRK|RSD|GEL|UZS|MNT|KHR|LAK|MMK|BND)(?![A-Za-z])\)?|[€£](?!\d))[整正]?)";
const Regex RE_CURRENCY_BEHIND("RE_CURRENCY_BEHIND", CURRENCY_BEHIND);

// Before a currency: 3,450.00元, 500万美元, 4.2亿日元, 5,000 US dollars, 87.500,00 EUR, 125 000 €,
// 1亿2000万元, 5元8角, 5000块. Not 3元件, not 3块板.
const Regex RE_BEFORE_CURRENCY(
    "RE_BEFORE_CURRENCY",
    UR"((?<![\d.])(?<!\d，)(?:\d+(?:\.\d+)? ?亿 ?\d+(?:\.\d+)?(?= ?万)|\d{1,3}(?:[,']\d{2,3})*[,']\d{3}(?!\d)(?:\.\d+)?|\d{1,3}(?:，\d{3})+(?!\d)(?:\.\d+)?|\d{1,3}(?:\.\d{3})+(?:,\d{1,2})?(?!\d)|\d{1,3}(?: \d{3})+(?![\d:])(?:[.,]\d{1,2}(?!\d))?|\d+(?:\.\d+|,\d{1,2}(?!\d))?))" +
        CURRENCY_BEHIND);

// 壹佰贰拾捌万元整, 捌拾叁万壹仟元整, 壹佰万美元. Not 壹式肆份.
const Regex RE_CAPITAL(
    "RE_CAPITAL",
    UR"([壹贰叁肆伍陆柒捌玖拾][零〇壹贰叁肆伍陆柒捌玖拾佰仟万亿萬億]{0,24}(?:美元|港元|港币|欧元|日元|英镑|元|圆)(?:[零壹贰叁肆伍陆柒捌玖]{1,2}角)?(?:零?[壹贰叁肆伍陆柒捌玖]分)?[整正]?)",
    Regex::Scanned::YES);

// 贰万, 贰拾叁万伍仟: capital numerals are for money alone
const Regex RE_CAPITAL_ALONE(
    "RE_CAPITAL_ALONE",
    UR"((?<![零壹贰叁肆伍陆柒捌玖拾佰仟万亿])[壹贰叁肆伍陆柒捌玖拾][零壹贰叁肆伍陆柒捌玖拾佰仟]{0,8}[万亿][零壹贰叁肆伍陆柒捌玖拾佰仟万]{0,16}(?=[，。；、;,)\s]|$))",
    Regex::Scanned::YES);

// 三万元, 二十万元整. Not 二元, 一元化.
const Regex RE_NUMERAL(
    "RE_NUMERAL",
    UR"([一二三四五六七八九十两][一二三四五六七八九十百千万亿两零〇]{1,20}多?(?:美[元金]|港[元币]|欧元|日元|英镑|澳元|加元|新?台币|(?:挪威|瑞典|丹麦)克朗|瑞士法郎|元|块(?:钱|(?=[，。、；！？\s)]|$)))[整正]?)",
    Regex::Scanned::YES);

// The first figure of a range whose currency stands behind the second: 100-200元, 3万至5万元, 85-92k euros
const Regex RE_RANGE_START(
    "RE_RANGE_START",
    UR"((?<![\d.])(?:\d{1,3}(?:,\d{3})+|\d+)(?:\.\d+)?(?: ?[万亿k])?(?= ?(?:-|~|至|到) ?(?:\d{1,3}(?:,\d{3})+|\d+)(?:\.\d+)? ?[万亿千k]?(?:美元|港元|欧元|日元|元|块钱| ?euros?| dollars)(?![件素月旦器A-Za-z])))");

// 偿还5万, 共计3.5万, 定金2万, 注册资本由2000万变更为2600万, 约5300万: ten thousands of yuan as they
// are spoken of. Not 支付5万吨.
const Regex RE_BARE_TEN_THOUSANDS(
    "RE_BARE_TEN_THOUSANDS",
    UR"((?:[偿归返退]还|支付|给付|[已先另再补][付给]|借款?|[共合总]计|收到|欠款?|赔偿|补偿|转账|汇款|合同价|定金|订金|首付|押金|资本|投资额?|工资|资助|配套|自筹|追加|出资|[认实]缴|认|变更为|增加?至|增资|收入|流水|报价|罚款|违约金|损失|预算|限价|[总单]价|价格|费用?|融资|贷款|本金|还?差|到账?|货款|尾款|垫付|金额|额度|奖金|保证金|租金|营收|利润|资产|负债|预付|结算|标的额)(?:款|了|约|为|共|由|仅|是|达|人民币|:|：| ){0,3}(\d{1,6}(?:\.\d{1,4})? ?[万亿](?:\d(?=[，。；、;,)\s]|$))?|[一二三四五六七八九十两][一二三四五六七八九十百千两零]{0,8}[万亿](?:[一二三四五六七八九](?:千|(?=[，。；、;,)\s还]|$)))?)(?:多|余)?(?=[，。；、;,)\s变还由未分的额左以]|$))");

// 2万3, 1万2: as they are spoken of. Not 2万3千, not 2万30.
const Regex RE_SPOKEN_TEN_THOUSANDS(
    "RE_SPOKEN_TEN_THOUSANDS",
    UR"((?<![\d.])\d{1,3}万\d(?=[，。；、;,)\s一]|$)|(?<![一二三四五六七八九十两百千])[一二三四五六七八九十两]{1,3}万[一二三四五六七八九](?=[，。；、还]|$))");

// 65万，, 三十八万多，: an amount where no unit follows and nothing is counted. Not 年产5万，.
const Regex RE_LONE_TEN_THOUSANDS(
    "RE_LONE_TEN_THOUSANDS",
    UR"((?<![\d.,产量户丝放口积读击载程数达])(?:\d{1,6}(?:\.\d{1,4})?|(?<![一二三四五六七八九十两百千])[一二三四五六七八九十两][一二三四五六七八九十百千两]{1,6})万多?(?=[，。；、\n]|$| {3}))");

// What a figure says behind a word for an amount: 合计：69,000.00, Total 1,234.50
const Regex RE_AMOUNT_WORD(
    "RE_AMOUNT_WORD",
    UR"((?i)(?:总价|单价|合价|总额|金额|价款|价税合计|税额|货款|余额|租金|押金|定金|工资|报酬|罚款|欠款|本金|利息|合同价|结算价|[服劳]务费|小计|合计|总计|共计|\bamount|\btotal|\bprice|\bbalance)(?:\((?:含税|不含税|元|税后|税前|due)\))?[ \t]{0,2}[:\t][ \t]{0,2}((?:\d{1,3}(?:,\d{3})+(?:\.\d{1,2})?|\d{3,9}\.\d{2})(?![\d.,%]| ?[\u4e00-\u9fffA-Za-z])))");

// The head of a column of amounts: 金额（元）, 单价, Unit Price (USD). Not 数量.
const Regex RE_MONEY_HEAD(
    "RE_MONEY_HEAD",
    UR"((?i)(?:金额|单价|总价|合价|价款|总额|价格|价税|税额|费用|租金|年费|工资|薪资|应付|实付|付款额|借方|贷方|\((?:人民币)?[万亿]?元\)|\b(?:amount|price|total|subtotal|fee|fees|cost|salary|rent|value)\b|\((?:USD|US\$|RMB|CNY|EUR|GBP|HKD|JPY|SGD|AUD)\)|^(?:USD|RMB|CNY|EUR|GBP|HKD)$))");
const Regex RE_OTHER_HEAD(
    "RE_OTHER_HEAD",
    UR"((?i)(?:数量|比例|比率|税率|费率|重量|面积|编号|号码|日期|年度|次数|工期|\bqty\b|quantity|weight|\bno\b|\bdate\b|\bcode\b|%))");
const Regex RE_CELL_AMOUNT(
    "RE_CELL_AMOUNT",
    UR"(-?(?:\d{1,3}(?:,\d{3})+(?:\.\d{1,4})?|\d{1,9}\.\d{1,4}|\d{3,9})(?:万|k)?)");

// twenty-four million euros, ONE HUNDRED THOUSAND US DOLLARS. Not one hundred days.
const Regex RE_WORDS_BEFORE_CURRENCY(
    "RE_WORDS_BEFORE_CURRENCY",
    UR"((?i)(?<![A-Za-z-])(?:one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|(?:thir|four|fif|six|seven|eigh|nine)teen|twenty|thirty|forty|fifty|sixty|seventy|eighty|ninety)(?:(?:,? |-)(?:and )?(?:one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|(?:thir|four|fif|six|seven|eigh|nine)teen|twenty|thirty|forty|fifty|sixty|seventy|eighty|ninety|hundred|thousand|million|billion)){0,20}(?: and \d{1,2}/100)? (?:(?:us|united states|hong kong|singapore|australian) )?(?:dollars|euros?|pounds(?: sterling)?|yuan|renminbi|rand|yen|won|rupees|(?:swiss )?francs|baht|pesos|naira|ringgit|dirhams|riyals|shillings|kroner|kronor)(?![A-Za-z]))",
    Regex::Scanned::YES);

// US Dollars One Million Only
const Regex RE_WORDS_BEHIND_CURRENCY(
    "RE_WORDS_BEHIND_CURRENCY",
    UR"((?<![A-Za-z])(?:(?:US|U\.S\.|United States|Hong Kong|Singapore|Australian) )?(?:Dollars|Euros?|Renminbi|Yuan|DOLLARS|EUROS?|RENMINBI|RMB|USD)(?i:(?:,? |-)(?:and|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|thirteen|fourteen|fifteen|sixteen|seventeen|eighteen|nineteen|twenty|thirty|forty|fifty|sixty|seventy|eighty|ninety|hundred|thousand|million|billion)\b){1,24}(?: (?:and )?(?:cents )?\d{1,2}/100)?(?i: only)?)",
    Regex::Scanned::YES);

// Codes count in capitals only: "try 3 times" is no amount in lira.
bool is_currency(std::u32string_view word) {
  constexpr std::size_t LONGEST_CODE = 4;
  constexpr auto MIXED =
      text::words({U"Dhs", U"Dhs.", U"KSh", U"KSh.", U"Ksh", U"Ksh.", U"Rs", U"Rs.", U"Rp", U"Fr.",
                   U"Sh.", U"cny", U"eur", U"gbp", U"hkd", U"rmb", U"usd"});
  const bool ascii = std::all_of(word.begin(), word.end(), [](char32_t c) { return c < 0x80; });
  if (!ascii || word.size() > LONGEST_CODE || MIXED.contains(word)) return true;
  return word != U"RS" && word != U"RP" &&
         std::none_of(word.begin(), word.end(), [](char32_t c) { return c >= U'a' && c <= U'z'; });
}

class MoneyRecognizer : public EntityRecognizer {
 public:
  MoneyRecognizer() : EntityRecognizer("MoneyRecognizer", {std::string(entity_type::MONEY)}) {}

  std::vector<RecognizerResult> analyze(const NlpArtifacts& a) const override {
    std::vector<RecognizerResult> out;
    add_behind_currency(a, out);
    add_before_currency(a, out);
    for (const Regex* regex : {&RE_CAPITAL, &RE_CAPITAL_ALONE, &RE_NUMERAL,
                               &RE_WORDS_BEFORE_CURRENCY, &RE_WORDS_BEHIND_CURRENCY}) {
      for (const auto& m : regex->find_all(a.folded, a.index)) add(out, m.start(), m.end());
    }
    add_spoken(a.folded, out);
    add_behind_words(a, out);
    add_columns(a.folded, out);
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
      if (m && rand && !RE_RAND_FIGURE.search(m->text())) continue;
      // 人民币（大写）：壹佰元整: the amount alone, without the label before it
      if (!m) continue;
      add(out, m->has(1) ? m->start(2) : word.start, m->end());
      add_range_end(folded, m->end(), out);
    }
  }

  static void add_range_end(std::u32string_view t, std::size_t at,
                            std::vector<RecognizerResult>& out) {
    if (const auto m = RE_RANGE_END.match_at(window(t, at), at)) add(out, m->start(1), m->end());
  }

  // Whether 万 or 亿 at this place ends a figure or a numeral.
  static bool ends_figure(std::u32string_view t, std::size_t at) {
    constexpr std::u32string_view NUMERALS = U"一二三四五六七八九十百千两零";
    if (at > 0 && t[at - 1] == U' ') --at;
    return at > 0 &&
           (text::is_decimal_digit(t[at - 1]) || NUMERALS.find(t[at - 1]) != NUMERALS.npos);
  }

  // Amounts without a currency, around each 万 and 亿.
  static void add_spoken(std::u32string_view t, std::vector<RecognizerResult>& out) {
    constexpr std::size_t BEFORE = 24;
    constexpr std::size_t BEHIND = 8;
    for (std::size_t at = t.find_first_of(U"万亿"); at != t.npos;
         at = t.find_first_of(U"万亿", at + 1)) {
      if (!ends_figure(t, at)) continue;
      const std::size_t from = at > BEFORE ? at - BEFORE : 0;
      const auto around = t.substr(from, at + BEHIND - from);
      // Another one near has a window of its own, which shows what stands behind it.
      const auto add_here = [&](std::size_t start, std::size_t end) {
        if (from + start < at && at < from + end) add(out, from + start, from + end);
      };
      for (const Regex* regex : {&RE_SPOKEN_TEN_THOUSANDS, &RE_LONE_TEN_THOUSANDS}) {
        for (const auto& m : regex->find_all(around)) add_here(m.start(), m.end());
      }
      for (const auto& m : RE_BARE_TEN_THOUSANDS.find_all(around)) add_here(m.start(1), m.end(1));
    }
  }

  // Where the word of 合计： ends, by its last letter, before a figure at `at`; 0 if
  // nothing of the kind stands there.
  static std::size_t amount_word_end(std::u32string_view t, std::size_t at) {
    constexpr std::u32string_view LAST_OF_WORDS = U"价额计款金资酬息费)tle";
    while (at > 0 && t[at - 1] == U' ') --at;
    if (at == 0 || (t[at - 1] != U':' && t[at - 1] != U'\t')) return 0;
    --at;
    while (at > 0 && (t[at - 1] == U' ' || t[at - 1] == U'\t')) --at;
    return at > 0 && LAST_OF_WORDS.find(t[at - 1]) != LAST_OF_WORDS.npos ? at : 0;
  }

  // 合计：69,000.00: a colon or the end of a cell stands between the word and the figure.
  static void add_behind_words(const NlpArtifacts& a, std::vector<RecognizerResult>& out) {
    constexpr std::size_t LONGEST_WORD = 20;
    constexpr std::size_t LONGEST_FIGURE = 20;  // what may follow its first digits
    const std::u32string_view t = a.folded;
    for (const auto& run : a.numbers) {
      const std::size_t at = amount_word_end(t, run.start);
      if (at == 0) continue;
      const std::size_t from = at > LONGEST_WORD ? at - LONGEST_WORD : 0;
      if (const auto m = RE_AMOUNT_WORD.search(t.substr(0, run.end + LONGEST_FIGURE), from)) {
        if (m->start(1) == run.start) add(out, m->start(1), m->end(1));
      }
    }
  }

  using Cells = std::vector<std::pair<std::size_t, std::size_t>>;

  // The cells of the line start..stop, without the blanks around them.
  static Cells cells_of(std::u32string_view t, std::size_t start, std::size_t stop) {
    Cells cells;
    while (start <= stop) {
      const std::size_t end =
          start + std::min(t.substr(start, stop - start).find(U'\t'), stop - start);
      std::size_t first = start;
      std::size_t last = end;
      while (first < last && t[first] == U' ') ++first;
      while (last > first && t[last - 1] == U' ') --last;
      cells.emplace_back(first, last);
      start = end + 1;
    }
    return cells;
  }

  static bool is_money_head(std::u32string_view cell) {
    constexpr std::size_t LONGEST_HEAD = 24;
    return !cell.empty() && cell.size() <= LONGEST_HEAD && !text::is_ascii_digit(cell.front()) &&
           RE_MONEY_HEAD.search(cell) && !RE_OTHER_HEAD.search(cell);
  }

  // Bare figures below the head of a column of amounts, or in the row behind one.
  static void add_columns(std::u32string_view t, std::vector<RecognizerResult>& out) {
    std::vector<bool> columns;
    for (std::size_t line = 0; line < t.size();) {
      const std::size_t stop = std::min(t.find(U'\n', line), t.size());
      if (t.substr(line, stop - line).find(U'\t') == t.npos) {
        columns.clear();
      } else {
        add_row(t, cells_of(t, line, stop), columns, out);
      }
      line = stop + 1;
    }
  }

  static void add_row(std::u32string_view t, const Cells& row, std::vector<bool>& columns,
                      std::vector<RecognizerResult>& out) {
    const auto cell = [&](std::size_t i) {
      return t.substr(row[i].first, row[i].second - row[i].first);
    };
    std::vector<bool> heads;
    for (std::size_t i = 0; i < row.size(); ++i) heads.push_back(is_money_head(cell(i)));
    bool behind_head = false;
    bool figures = false;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const bool below_head = columns.size() == row.size() && columns[i];
      if ((below_head || behind_head) && RE_CELL_AMOUNT.full_match(cell(i))) {
        add(out, row[i].first, row[i].second);
        figures = true;
      }
      behind_head = heads[i];
    }
    if (!figures && std::find(heads.begin(), heads.end(), true) != heads.end()) columns = heads;
  }

  // Whether a figure that begins at `at` may be an amount. Most are dates and numbers of
  // clauses; no unit begins with what figures are made of, so that it stands behind that.
  static bool may_be_amount(std::u32string_view t, std::size_t at) {
    constexpr std::u32string_view SEPARATORS = U".,' ，";
    while (at < t.size() &&
           (text::is_decimal_digit(t[at]) || SEPARATORS.find(t[at]) != SEPARATORS.npos)) {
      ++at;
    }
    // 1亿2000万元, 100-200元: the figure goes on
    constexpr std::u32string_view GOING_ON = U"亿万k-~至到";
    return at < t.size() && (GOING_ON.find(t[at]) != GOING_ON.npos ||
                             RE_CURRENCY_BEHIND.match_at(t, at).has_value());
  }

  static void add_before_currency(const NlpArtifacts& a, std::vector<RecognizerResult>& out) {
    std::size_t free_from = 0;
    for (const auto& run : a.numbers) {
      std::size_t at = run.start;
      while (at < run.end && !text::is_ascii_digit(a.folded[at])) ++at;
      if (at < free_from) continue;
      const auto seen = window(a.folded, at);
      if (!may_be_amount(seen, at)) continue;
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
