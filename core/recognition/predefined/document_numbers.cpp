#include <algorithm>

#include "core/recognition/entity_recognizer.hpp"
#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/word_set.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// Behind the bracketed year of a case: 京01民初123号, 最高法民申1234号, 京仲裁字第1234号,
// 粤03执保88号之一, 中国贸仲京裁字第0456号. Not 年度第3号楼.
const Regex RE_CASE_TAIL(
    "RE_CASE_TAIL",
    UR"( ?(?![年月])[\u4e00-\u9fff](?:[\u4e00-\u9fff()A-Z]|\d(?!\d{4})){1,24}? ?(?:第 ?)?\d{1,10}(?:-\d{1,6})? ?号(?:之[一二三四五六七八九十\d]{1,2})?(?!楼|院|令|公告))");

// Behind the bracketed year of a document: 123号, 第012号, 第ZA12345号, 1187-046号, JZ010637
const Regex RE_DOCUMENT_TAIL(
    "RE_DOCUMENT_TAIL",
    UR"( ?(?:第 ?)?(?:[A-Z]{0,6}\d{1,10}(?:-\d{1,6}){0,2} ?号(?:-\d{1,3})?(?!楼|院|令|公告)|[A-Z]{0,4}\d{5,10}(?![\dA-Za-z])|\d{3,6}-\d{3,6}(?!\d)))");

// Behind 字: 第1234567号, 〔2024〕第12号, 2024第012号, 第ZA12345号
const Regex RE_NUMBERED_TAIL(
    "RE_NUMBERED_TAIL",
    UR"([字权许] ?(?:[〔\[(【]?(?:19|20)\d{2}[〕\])】]?)? ?第 ?[A-Z]{0,4}\d{2,20}(?:-\d{1,6})? ?号(?:-\d{1,3})?(?! ?(?:令|公告|文|楼|院)))",
    Regex::Scanned::YES);

// The issuer at the end of the text before a number, without the words that lead
// to it: 取得京建房字 is 京建房字. Capitals and figures belong to it: 梯11京F, B2.
const Regex RE_ISSUER(
    "RE_ISSUER",
    UR"((?:[^\u4e00-\u9fffA-Z\d()]|核发|颁发|签发|下发|印发|出具|作出|取得|获得|持有|根据|依据|按照|报告|批复|通知|决定书?|文件|号码|证书|证明|许可证|拍摄许可|登记证|备案|执照|[号的据为是与及由以即系凭]|(?<!呼)和|^)((?:\([\u4e00-\u9fff]{1,4}\))?(?:[\u4e00-\u9fff]|[A-Z\d](?=[\u4e00-\u9fff])){1,16}+)$)");

// Numbers that everybody may look up: of laws, judicial interpretations, and the
// notices of ministries.
const Regex RE_PUBLIC_ISSUER(
    "RE_PUBLIC_ISSUER",
    UR"((?:国发|国办[发函]|国函|中[办]?发|财[税会建综行企库资预农社教]{0,2}|法释|法发|法|法办发?|建[市标质办科房法城村]{1,3}|[银保证]{1,3}监[办规]?发|银发|证监会公告|国税[发函]|税总[发函]|人社[部厅]?[发规函]|劳社部发|劳部发|国资发[\u4e00-\u9fff]{0,4}|发改[价法规投办]{1,3}[格资]?规?|商[务资合服]{1,2}[发函]?|工信部[\u4e00-\u9fff]{1,4}|环[办]?发|国土资发|自然资[发规]|国知发[\u4e00-\u9fff]{0,3}|高检发[\u4e00-\u9fff]{0,3}|司发通?|公通字|教[\u4e00-\u9fff]{1,3}|国卫[\u4e00-\u9fff]{1,3}发|国市监[\u4e00-\u9fff]{1,3}|汇发|交[\u4e00-\u9fff]{1,3}发|国能发[\u4e00-\u9fff]{0,3}|国家税务总局公告|海关总署公告)$)");

// The title of a rule before its number in brackets: 《关于…的通知》(
const Regex RE_RULE_TITLE(
    "RE_RULE_TITLE",
    UR"((?:法|典|条例|规定|办法|意见|通知|解释|准则|公告|细则|规则|纪要|方案|标准|规范|指引|规程|规划|决定|目录)(?:[(（][^()（）》]{1,12}[)）])?》 ?\(?$)");

constexpr double SCORE = 0.8;

bool opens(char32_t c) { return c == U'(' || c == U'〔' || c == U'[' || c == U'【'; }
bool closes(char32_t c) { return c == U')' || c == U'〕' || c == U']' || c == U'】'; }

bool is_year(std::u32string_view s) {
  return s.size() == 4 && std::all_of(s.begin(), s.end(), text::is_ascii_digit) &&
         (s.starts_with(U"19") || s.starts_with(U"20"));
}

// 京建房字〔2024〕第12号, （2024）京01民初123号, 软著登字第1234567号: the numbers under
// which offices and courts keep what concerns one case or one holder.
class DocumentNumberRecognizer : public EntityRecognizer {
 public:
  DocumentNumberRecognizer()
      : EntityRecognizer("DocumentNumberRecognizer", {std::string(entity_type::QUAL_CODE)}) {}

  std::vector<RecognizerResult> analyze(const NlpArtifacts& a) const override {
    const std::u32string_view t = a.folded;
    std::vector<RecognizerResult> out;
    for (const auto& run : a.numbers) {
      const bool bracketed =
          run.start > 0 && run.end < t.size() && opens(t[run.start - 1]) && closes(t[run.end]);
      if (bracketed && is_year(t.substr(run.start, run.end - run.start))) {
        add_with_year(t, run.start - 1, run.end + 1, out);
      }
    }
    for (const auto& m : RE_NUMBERED_TAIL.find_all(t, a.index)) {
      const std::size_t start = issuer_start(t, m.start() + 1);
      if (start <= m.start() && !is_public(t, start, m.start() + 1)) add(out, start, m.end());
    }
    return out;
  }

 private:
  // What the longest issuer has: 中国国际经济贸易仲裁委员会
  static constexpr std::size_t LONGEST_ISSUER = 20;
  static constexpr std::size_t LONGEST_TITLE_END = 24;

  static std::u32string_view before(std::u32string_view t, std::size_t at, std::size_t length) {
    const std::size_t from = at > length ? at - length : 0;
    return t.substr(from, at - from);
  }

  // Where the issuer that ends at `end` begins; `end` if there is none.
  static std::size_t issuer_start(std::u32string_view t, std::size_t end) {
    const auto head = before(t, end, LONGEST_ISSUER);
    std::size_t start = head.size();
    for (std::size_t from = 0; from <= head.size();) {
      const auto m = RE_ISSUER.search(head, from);
      if (!m) break;
      start = m->start(1);
      from = m->start() + 1;
    }
    return end - (head.size() - start);
  }

  // Whether start..end is the issuer of a number that everybody may look up.
  static bool is_public(std::u32string_view t, std::size_t start, std::size_t end) {
    return RE_PUBLIC_ISSUER.full_match(t.substr(start, end - start)) ||
           RE_RULE_TITLE.search(before(t, start, LONGEST_TITLE_END));
  }

  static void add_with_year(std::u32string_view t, std::size_t open, std::size_t behind,
                            std::vector<RecognizerResult>& out) {
    const auto seen = t.substr(0, behind + PatternRecognizer::WINDOW);
    const std::size_t start = issuer_start(t, open);
    const bool issuer = start < open;
    if (issuer && is_public(t, start, open)) return;
    if (issuer) {
      if (const auto m = RE_DOCUMENT_TAIL.match_at(seen, behind)) return add(out, start, m->end());
    }
    if (const auto m = RE_CASE_TAIL.match_at(seen, behind)) {
      // 京(2024)朝不动产权第0012345号: the province stands before the year
      constexpr std::u32string_view PROVINCES =
          U"京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼";
      const bool province = issuer && PROVINCES.find(t[open - 1]) != PROVINCES.npos;
      add(out, province ? open - 1 : open, m->end());
    }
  }

  static void add(std::vector<RecognizerResult>& out, std::size_t start, std::size_t end) {
    out.push_back({std::string(entity_type::QUAL_CODE), static_cast<std::ptrdiff_t>(start),
                   static_cast<std::ptrdiff_t>(end), SCORE});
  }
};

// What stands behind a label that ends with 号 or 码, with a sign between them:
// 保单号:PDAA202411010000012345, 案件编号为SHEN DX20230456, 报告编号[WT2024-03456]
const Regex RE_BEHIND_NUMBER_SIGN(
    "RE_BEHIND_NUMBER_SIGN",
    UR"((?<=[\u4e00-\u9fff])(?:号码?|编码|代码)[ \t]{0,2}(?:\([^()\n]{1,20}\))?[ \t]{0,2}([:为是#]|(?=[ \t]{0,2}[(\[【“"']?[A-Z\d]))[ \t]{0,3}[(\[【“"']?((?:[A-Z]{1,5} (?=[A-Z]{0,4}\d))?(?=[^\s\u4e00-\u9fff]{0,24}\d)[A-Za-z0-9](?:[A-Za-z0-9]|[-/._:](?=[A-Za-z0-9])|--(?=\d)){3,40}(?: \d{2,8}(?![\d年月日.,%:]))(?:\([A-Z0-9]{1,8}\))?|(?:[A-Z]{1,5} (?=[A-Z]{0,4}\d))?(?=[^\s\u4e00-\u9fff]{0,24}\d)[A-Za-z0-9](?:[A-Za-z0-9]|[-/._:](?=[A-Za-z0-9])){3,40}(?:\([A-Z0-9]{1,8}\))?)(?![A-Za-z0-9%]|[年月]))",
    Regex::Scanned::YES);

// Invoice No. INV-2024-00123, the number of the Supplier is ZB274518, policy number: HO-123456-7, File No E123456, Ref: AB/12/345.
// What comes before the label is looked at apart.
const Regex RE_BEHIND_ENGLISH_LABEL(
    "RE_BEHIND_ENGLISH_LABEL",
    UR"((?i)(?<![A-Za-z\d])(?:nos?\b\.?|number\b|nr\b\.?|ref(?:erence)?\b\.?(?: ?nos?\b\.?| ?number\b)?|id\b|code\b|n°|s/n\b)[ \t]{0,2}(?:\([^()\n]{1,20}\))?(?: of (?:the )?[a-z][a-z' ]{1,30}(?= is ))?[ \t]{0,2}([:#]|is(?= ))?[ \t]{0,3}["“\[]?((?-i)(?:[A-Z]{1,5}[ -](?=[A-Z]{0,4}\d))?(?=[^\s\u4e00-\u9fff]{0,24}\d)(?!\d{1,3}(?:\.\d{1,3}){1,3}(?![\w-])|(?:19|20)\d{2}(?![\w/-]))[A-Za-z0-9](?:[A-Za-z0-9]|[-/._:](?=[A-Za-z0-9])|,(?=\d{3})){3,40}(?: \d{2,8}(?![\w.,%:-]))?)(?![A-Za-z0-9%年月]))",
    Regex::Scanned::YES);

// Labels whose numbers say nothing about anybody, or are no numbers of documents.
const Regex RE_PLAIN_CHINESE_LABEL(
    "RE_PLAIN_CHINESE_LABEL",
    UR"((?:型号|规格|版本号|货号|料号|色号|款号|图号|批号|牌号|章节号|条款号|标准号|序号|楼号|房号|室号|栋号|幢号|单元号|门牌号|楼栋号|房间号|页号|行号|引号|括号|符号|信号|称号|口号|商号|字号|端口号|邮政编码|邮编码|邮区编号|商品编码|税则号|税则号列|品目号|物料编码|分类编码|税收编码|行政区划代码|国别代码|币种代码|货币代码|行业代码|颜色代码|错误代码|源代码|条形码|验证码|提取码|密码|授权码|HS编码|海关编码|国标号|执行标准号|CAS号|UN编号|联合国编号)$)");
const Regex RE_PLAIN_ENGLISH_LABEL(
    "RE_PLAIN_ENGLISH_LABEL",
    UR"((?i)(?:(?:^|[^a-z])(?:model|part|item|drawing|dwg|version|revision|rev|standard|style|size|catalog(?:ue)?|sku|hs|cas|un|ec|eu|ce|lot|batch|page|clause|section|article|annex|schedule|appendix|exhibit|room|unit|flat|floor|house|building|suite|apt|step|phase|level|grade|class|type|table|figure|fig|chapter|paragraph|regulation|directive|law|act|decree|resolution|convention|decision|ordinance|public law|source|qr|bar|zip|post(?:al)?|country|colou?r|error|area|dress|tariff|commodity|promo|verification|\(eu\)|\(ec\)|\(eec\)|total|the|a|large|maximum|minimum|atomic|serial port|port|at|of|to|from|in|on|and|or|by|with|is|are|was)\)?[ .]{0,2}$))");

// Whether a label of a kind of its own ends in from..to: an account, a telephone.
bool is_typed(const NlpArtifacts& a, std::size_t from, std::size_t to) {
  for (std::size_t c = 0; c < LABEL_CLASSES; ++c) {
    const auto word_class = static_cast<WordClass>(c);
    if (word_class <= WordClass::ADDRESS_LABEL || word_class == WordClass::QUAL_LABEL) continue;
    const auto& list = a.words[c];
    const auto it = std::partition_point(list.begin(), list.end(),
                                         [&](const WordHit& w) { return w.end <= from; });
    if (it != list.end() && it->start < to) return true;
  }
  return false;
}

// Numbers behind labels that no list has. Contracts have a kind of their own.
class LabelledNumberRecognizer : public EntityRecognizer {
 public:
  LabelledNumberRecognizer()
      : EntityRecognizer("LabelledNumberRecognizer",
                         {std::string(entity_type::QUAL_CODE), "CONTRACT_NO"}) {}

  std::vector<RecognizerResult> analyze(const NlpArtifacts& a) const override {
    std::vector<RecognizerResult> out;
    for (const auto& m : RE_BEHIND_NUMBER_SIGN.find_all(a.folded, a.index)) {
      const bool signed_label = m.end(1) > m.start(1);
      if (!signed_label && !is_long(m.text(2))) continue;
      add(a, RE_PLAIN_CHINESE_LABEL, m, 2, out);
    }
    for (const auto& m : RE_BEHIND_ENGLISH_LABEL.find_all(a.folded, a.index)) {
      // No. 1205 begins an address, Policy No. 1205 does not.
      const std::size_t from = m.start() > 2 ? m.start() - 2 : 0;
      const auto before = std::u32string_view(a.folded).substr(from, m.start() - from);
      const bool noun = std::any_of(before.begin(), before.end(), text::is_ascii_alpha);
      if (m.has(1) || noun || is_long_number(m.text(2))) {
        add(a, RE_PLAIN_ENGLISH_LABEL, m, 2, out);
      }
    }
    return out;
  }

 private:
  static constexpr double SCORE = 0.55;
  static constexpr double CONTRACT_SCORE = 0.8;  // before a licence behind the same label
  static constexpr std::size_t LONGEST_LABEL = 16;

  // Without a sign between them only what can be nothing else: 发票号24117000.
  static bool is_long(std::u32string_view value) {
    constexpr auto LEAST_DIGITS = 5;
    return std::count_if(value.begin(), value.end(), text::is_ascii_digit) >= LEAST_DIGITS;
  }

  // (No. 11224334000817): no house has such a number.
  static bool is_long_number(std::u32string_view value) {
    constexpr std::size_t LEAST = 8;
    return value.size() >= LEAST && std::all_of(value.begin(), value.end(), text::is_ascii_digit);
  }

  static void add(const NlpArtifacts& a, const Regex& plain, const text::Match& m,
                  std::size_t group, std::vector<RecognizerResult>& out) {
    const std::u32string_view t = a.folded;
    const std::size_t value = m.start(group);
    std::size_t label_end = m.start();
    while (label_end < value && (text::is_ideograph(t[label_end]))) ++label_end;
    const std::size_t from = label_end > LONGEST_LABEL ? label_end - LONGEST_LABEL : 0;
    const auto label = t.substr(from, label_end - from);
    if (plain.search(label) || is_typed(a, m.start(), value)) return;
    const bool contract = is_contract(label);
    out.push_back({contract ? "CONTRACT_NO" : std::string(entity_type::QUAL_CODE),
                   static_cast<std::ptrdiff_t>(value), static_cast<std::ptrdiff_t>(m.end(group)),
                   contract ? CONTRACT_SCORE : SCORE});
  }

  static bool is_contract(std::u32string_view label) {
    static const Regex RE_CONTRACT(
        "RE_CONTRACT", UR"((?i)(?:合同|协议|契约|contract|agreement)[^,;，；。]{0,8}$)");
    return RE_CONTRACT.search(label).has_value();
  }
};

}  // namespace

void add_document_number_recognizers(RecognizerRegistry& registry) {
  registry.add_recognizer(std::make_shared<DocumentNumberRecognizer>());
  registry.add_recognizer(std::make_shared<LabelledNumberRecognizer>());
}

}  // namespace core::recognition
