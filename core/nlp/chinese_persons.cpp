#include <algorithm>
#include <cstdint>
#include <unordered_set>

#include "core/nlp/character_table.hpp"
#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_lexicon.hpp"
#include "core/nlp/chinese_names.hpp"
#include "core/nlp/chinese_prose_persons.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/name_evidence.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/nlp/rare_characters.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/regex.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
using text::Regex;

constexpr double LABEL_SCORE = 0.9;
constexpr double PROSE_SCORE = 0.6;

// Between a label and a name: 法定代表人（主要负责人）：, 联系人 PIC, 联系人为. The colon
// or the tab, if there is one, is group 1.
const Regex RE_NAME_SEPARATOR(
    "RE_NAME_SEPARATOR",
    UR"((?:[ ]?(?:姓名|/[^\s:]{1,8}|\([^()\n]{1,16}\)|[A-Za-z. ]{2,24}(?=:)))?\)?[ ]{0,4}(?:为|是)?(:|(?<=为)|(?<=是)|由|系|,|，)?[ ]{0,8}(?:_{1,40}[ ]{0,4})?[「『“"]?)");

// Between the label of a party and its name: 保证人二：, 出租方(甲方)：
const Regex RE_PARTY("RE_PARTY",
                     UR"([一二三四五\d]?[ ]{0,2}(?:\([^()\n]{1,16}\))?[ ]{0,2}:[ ]{0,8})");

// Titles that stand behind persons only; 经理 or 主任 may stand behind 项目 as well.
constexpr auto SURE_TITLES =
    text::words({U"先生", U"女士", U"小姐", U"律师", U"博士", U"教授", U"老师", U"同志", U"法官"});

// Titles of one character: 周总, 李工
constexpr std::u32string_view SHORT_TITLES = U"总工哥姐董局叔姨嫂";

// What of a form of address a character may be: 老王, 周工
enum AddressPart : std::uint8_t { NICKNAME = 1U << 0U, SHORT_TITLE = 1U << 1U };

// What ends a label before a person's name.
constexpr auto PERSON_ACTS =
    text::words({U"代表", U"经办", U"联系", U"签字", U"签名", U"签收", U"审核", U"复核", U"制单",
                 U"制表", U"记录", U"主持", U"核对", U"审批", U"批准", U"校对", U"编制", U"填表",
                 U"验收", U"见证", U"抄送", U"经手", U"主任", U"经理", U"主管", U"会计", U"出纳",
                 U"签发", U"拟稿", U"核稿", U"承办", U"丈夫", U"妻子", U"儿子", U"女儿"});

// Compound surnames that are also places or everyday words.
constexpr auto AMBIGUOUS_SURNAMES =
    text::words({U"东方", U"西门", U"南门", U"东门", U"百里", U"第五", U"微生", U"公上", U"公门",
                 U"公山", U"公玉", U"公坚", U"公仪", U"公户", U"东里", U"东宫", U"南荣", U"子书",
                 U"乐正", U"濮阳", U"南宫", U"贺兰", U"公西", U"公祖", U"太叔", U"公伯", U"子桑",
                 U"公仲", U"东郭", U"公乘", U"公良", U"即墨", U"万俟", U"钟离", U"长孙"});

// The characters of transliterated names; those of product names are others.
constexpr std::u32string_view TRANSLITERATION =
    U"阿埃艾爱安昂奥巴白拜班邦保堡贝本比彼边别宾波伯博布查柴达大戴丹德登迪蒂丁东杜敦多俄厄恩尔法凡范菲费芬丰弗福夫佛盖甘冈高戈哥格葛根古瓜圭哈海"
    U"汉赫亨胡华怀惠霍基吉加贾杰金居卡凯坎康科克肯库昆拉莱兰朗劳勒雷黎里利莉丽林琳列卢鲁路伦罗洛吕马玛迈麦曼芒梅门蒙孟米密明摩莫默穆木娜纳南内"
    U"尼年涅宁努诺欧帕潘佩彭皮平珀普奇齐契恰乔切让荣茹瑞若萨塞桑森沙莎山尚舍申圣施史舒斯丝苏索塔泰坦汤唐陶特腾图土吐托瓦万威维韦温翁沃得乌吾武西"
    U"力卜希锡夏肖辛休许雅亚延扬耶叶伊依因英约云赞泽扎詹珍芝朱兹佐合热不都艾买江提孜则肉汗"
    U"逊庆巴仁旺措珠次嘎强";

bool transliterates(std::u32string_view part) {
  std::size_t known = 0;
  for (const char32_t c : part) {
    known += TRANSLITERATION.find(c) != TRANSLITERATION.npos ? 1U : 0U;
  }
  return !part.empty() && known * 4 >= part.size() * 3;
}

class ChinesePersonSearch {
 public:
  explicit ChinesePersonSearch(const NlpArtifacts& a) : a_(a), t_(a.folded) {}

  std::vector<RecognizerResult> run() {
    behind_labels();
    before_colons();
    parties();
    before_titles();
    before_identity_numbers();
    compound_surnames();
    dotted_names();
    find_minority_names(a_, out_);
    find_prose_persons(a_, out_);
    lists();
    surnames_with_titles();
    return std::move(out_);
  }

 private:
  void add(std::size_t start, std::size_t end, double score) {
    out_.push_back(make_hit(anonymization::entity_type::PERSON, start, end, score));
  }

  void behind_labels() {
    for (const auto& label : a_.of(WordClass::PERSON_LABEL)) {
      if (label.from_table) {
        in_cell(label.end);
        continue;
      }
      const auto m = RE_NAME_SEPARATOR.match_at(t_, label.end);
      if (!m) continue;
      const bool quoted = m->end() > label.end && is_quote(t_[m->end() - 1]);
      const bool marked = quoted || (m->has(1) && (m->text(1).empty() || m->text(1) == U":"));
      const std::size_t at = behind_department(m->end());
      // A name is set off by blanks as well, but a sentence that goes on is none.
      const bool blank =
          at > label.end + 1 && t_[at - 1] == U' ' && at < t_.size() && has_surname(at);
      // Of a sentence that goes on, the words decide.
      if (at == label.end && at < t_.size() && !is_word_boundary(a_.chinese_words, at)) continue;
      if (add_foreign_list(at)) continue;
      const bool name = marked || blank || is_run_like_name(at);
      add_list(at, name ? NameContext::LABEL : NameContext::PROSE);
    }
  }

  // 收货人：设备科 古丽娜尔: the department stands before the name, with a blank between them.
  std::size_t behind_department(std::size_t at) const {
    constexpr std::u32string_view UNITS = U"部处科室组队办院";
    constexpr std::size_t LONGEST = 8;
    std::size_t end = at;
    while (end < t_.size() && end - at < LONGEST && is_han(t_[end])) ++end;
    const bool unit = end > at + 1 && end + 1 < t_.size() && t_[end] == U' ' &&
                      UNITS.find(t_[end - 1]) != UNITS.npos && is_han(t_[end + 1]);
    return unit ? end + 1 : at;
  }

  void in_cell(std::size_t at) {
    const std::size_t end = chinese_name_end(a_, at, NameContext::LABEL);
    const bool named = has_surname(at) || transliterates(t_.substr(at, end - at));
    if (end > at && ends_cell(end) && named) add(at, end, LABEL_SCORE);
  }

  static bool is_quote(char32_t c) { return c == U'「' || c == U'『' || c == U'“' || c == U'"'; }

  // 技师孟根图雅（…）, 研究生巴特尔等: the sounds of another language up to a mark
  bool add_foreign_list(std::size_t at) {
    std::size_t end = at;
    constexpr std::size_t LONGEST = 7;
    while (end < t_.size() && end - at < LONGEST && sounds(t_[end])) ++end;
    if (end - at < 3 || is_chinese_surname(t_.substr(at, 2))) return false;
    const bool ends = end >= t_.size() || !is_han(t_[end]) || t_[end] == U'等';
    const bool place = end_of_word_at(a_.of(WordClass::PLACE), at) > at;
    if (!ends || place || (end < t_.size() && is_dot(t_[end]))) return false;
    add(at, end, PROSE_SCORE);
    return true;
  }

  // 出席：甲、巴特尔、扎西次仁: where two entries of a list are names, short entries are
  void lists() {
    std::vector<RecognizerResult> known = out_;
    std::sort(known.begin(), known.end(),
              [](const auto& x, const auto& y) { return x.start < y.start; });
    std::size_t next = 0;
    for (std::size_t at = 0; at < t_.size();) {
      const std::size_t stop = list_end(at);
      std::size_t names = 0;
      while (next < known.size() && static_cast<std::size_t>(known[next].start) < stop) {
        const auto start = static_cast<std::size_t>(known[next].start);
        const auto end = static_cast<std::size_t>(known[next].end);
        const bool before = start > 0 && (t_[start - 1] == U'、' || t_[start - 1] == U':');
        names += before || (end < t_.size() && t_[end] == U'、') ? 1U : 0U;
        ++next;
      }
      if (names > 0) add_entries(at, stop, names > 1);
      at = stop + 1;
    }
  }

  // The end of the stretch without a mark that ends a list.
  std::size_t list_end(std::size_t at) const {
    constexpr std::u32string_view ENDS = U"，。；;\n\t(";
    while (at < t_.size() && (text::is_ideograph(t_[at]) || ENDS.find(t_[at]) == ENDS.npos)) ++at;
    return at;
  }

  // `many`: of two names or more; beside one only words count that are names as well
  void add_entries(std::size_t from, std::size_t stop, bool many) {
    const std::size_t colon = t_.substr(from, stop - from).find(U':');
    if (colon != t_.npos) from += colon + 1;
    for (std::size_t at = from; at < stop;) {
      const std::size_t comma = at + std::min(t_.substr(at, stop - at).find(U'、'), stop - at);
      const std::size_t end = many ? before_count(at, comma) : comma;
      std::size_t han = at;
      while (han < end && (is_han(t_[han]) || is_dot(t_[han]))) ++han;
      const auto entry = t_.substr(at, end - at);
      const bool listed = at > 0 && (t_[at - 1] == U'、' || t_[at - 1] == U':' || comma < stop);
      const bool fits = many ? is_entry(at, end, entry) : is_word_as_name(entry);
      if (han == end && listed && fits) add(at, end, PROSE_SCORE);
      at = comma + 1;
    }
  }

  // 单既明|三人组成: the end of the last name of a list
  std::size_t before_count(std::size_t at, std::size_t stop) const {
    constexpr std::size_t LONGEST_NAME = 4;
    for (std::size_t i = at + 2; i + 1 < stop && i <= at + LONGEST_NAME; ++i) {
      constexpr std::u32string_view COUNTS = U"二两三四五六七八九十";
      if (t_[i] == U'等' || (COUNTS.find(t_[i]) != COUNTS.npos && t_[i + 1] == U'人')) return i;
    }
    return stop;
  }

  bool is_entry(std::size_t at, std::size_t end, std::u32string_view entry) const {
    if (entry.size() < 2 || entry.size() > 12) return false;
    if (is_word_as_name(entry)) return true;
    if (is_everyday_word(entry)) return false;
    const bool short_enough = entry.size() <= 5 || entry.find_first_of(U"·•・") != entry.npos;
    for (const auto c : {WordClass::COMPANY_FORM, WordClass::PLAIN_COMPANY, WordClass::INSTITUTION,
                         WordClass::PUBLIC_BODY, WordClass::BANK, WordClass::PLACE,
                         WordClass::CLAUSE_WORD, WordClass::PERSON_TITLE, WordClass::PERSON_LABEL,
                         WordClass::TRADE_WORD, WordClass::ORGANIZATION_LABEL}) {
      if (is_touched(a_.of(c), at, end)) return false;
    }
    return short_enough && !is_name_with_words(a_, at, end);
  }

  // 保证人二：田小妹, 承租人：张三. The party is a person when all of it is a name.
  void parties() {
    for (const auto& label : a_.of(WordClass::ORGANIZATION_LABEL)) {
      if (label.from_table) {
        const std::size_t end = chinese_name_end(a_, label.end, NameContext::PROSE);
        if (end > label.end && end - label.end <= 4 && ends_cell(end)) {
          add(label.end, end, LABEL_SCORE);
        }
        continue;
      }
      const auto m = RE_PARTY.match_at(t_, label.end);
      if (!m || m->end() >= t_.size()) continue;
      const std::size_t end = chinese_name_end(a_, m->end(), NameContext::LABEL);
      const bool dotted = t_.substr(m->end(), end - m->end()).find_first_of(U"·•・") != t_.npos;
      if (!dotted && !has_surname(m->end())) continue;
      if (end > m->end() && (dotted || end - m->end() <= 9) && ends_cell(end))
        add(m->end(), end, LABEL_SCORE);
    }
  }

  // The name and further ones behind commas: 张三、李四
  void add_list(std::size_t at, NameContext context) {
    while (true) {
      const std::size_t end = chinese_name_end(a_, at, context);
      if (end == at) return;
      at = behind_unit(at, end);
      add(at, end, context == NameContext::LABEL ? LABEL_SCORE : PROSE_SCORE);
      if (end + 1 >= t_.size() || (t_[end] != U'、' && t_[end] != U'/')) return;
      at = end + 1;
      context = NameContext::PROSE;
    }
  }

  // 联系人冯所娟，: between a label and a mark, a surname and what is no word
  bool is_run_like_name(std::size_t at) const {
    constexpr Evidence LEAST = -16;
    const std::size_t surname = surname_length(t_, at);
    std::size_t end = at;
    while (end < t_.size() && end - at < 5 && is_han(t_[end])) ++end;
    const std::size_t given = end - at - std::min(surname, end - at);
    if (surname == 0 || given == 0 || given > 2) return false;
    const auto* word = word_at(a_.chinese_words, at + surname);
    // 司机尚可，手机: the next field begins behind it.
    if (is_word_as_name(t_.substr(at, end - at))) {
      return end + 1 < t_.size() && (is_label(WordClass::PHONE_LABEL, end + 1) ||
                                     is_label(WordClass::ID_CARD_LABEL, end + 1));
    }
    const bool words = word != nullptr && word->length() > 1 && word->known() &&
                       word->word_class != recognition::ChineseWordClass::PERSON;
    if (words && word->end >= end) return false;
    // 冯所娟: what ends like few words do may hold any character
    constexpr Evidence SURELY_LAST = 5;
    const Evidence last = given_evidence(t_[end - 1]);
    if (given == 2 && last >= SURELY_LAST && is_listed_surname(t_[at])) return true;
    return last > 0 && name_evidence(a_, at, end, surname) >= LEAST;
  }

  bool is_label(WordClass c, std::size_t at) const { return end_of_word_at(a_.of(c), at) > at; }

  // 工程部库尔班江·吐尔逊: the name begins behind the department.
  std::size_t behind_unit(std::size_t at, std::size_t end) const {
    constexpr std::u32string_view UNITS = U"部处科室组队办";
    const std::size_t dot = t_.substr(at, end - at).find_first_of(U"·•・");
    if (dot == t_.npos) return at;
    for (std::size_t i = at + dot - 1; i > at + 1; --i) {
      if (UNITS.find(t_[i - 1]) != UNITS.npos && is_word_boundary(a_.chinese_words, i)) return i;
    }
    return at;
  }

  bool has_surname(std::size_t at) const {
    return is_chinese_surname(t_.substr(at, 1)) || is_chinese_surname(t_.substr(at, 2));
  }

  bool ends_cell(std::size_t at) const {
    return at >= t_.size() || is_cell_end(t_[at]) || t_[at] == U'(' || t_[at] == U' ' ||
           t_[at] == U'/' || t_[at] == U'、' || t_[at] == U'，' || t_[at] == U',';
  }

  void before_titles() {
    for (const auto& title : a_.of(WordClass::PERSON_TITLE)) {
      const std::size_t start = chinese_name_start(a_, title.start);
      if (start == title.start) continue;
      const bool sure = SURE_TITLES.contains(t_.substr(title.start, title.end - title.start));
      const bool bounded = start == 0 || !is_han(t_[start - 1]);
      constexpr std::u32string_view BEFORE_NAME = U"科部处室司院所局会系组队与由和向的及对经请";
      const bool department = !bounded && BEFORE_NAME.find(t_[start - 1]) != BEFORE_NAME.npos;
      const bool full = title.start - start >= 3;
      if (bounded || (full && (sure || department))) add(start, title.start, PROSE_SCORE);
    }
  }

  // 郑经理, 周工, 老王 where the text names somebody of that surname in full
  void surnames_with_titles() {
    std::unordered_set<std::u32string_view> surnames;
    SpanCover named;
    for (const auto& r : out_) {
      const auto start = static_cast<std::size_t>(r.start);
      const std::size_t surname = surname_length(t_, start);
      if (surname > 0) surnames.insert(t_.substr(start, surname));
      named.add(r.start, r.end);
    }
    named.finish();
    for (const auto& title : a_.of(WordClass::PERSON_TITLE)) {
      for (std::size_t length = 2; length > 0; --length) {
        if (title.start < length) continue;
        const std::size_t start = title.start - length;
        if (!surnames.contains(t_.substr(start, length)) || !is_free(named, start, title.end)) {
          continue;
        }
        add_whole_word(start, title.end);
        break;
      }
    }
    if (!surnames.empty()) forms_of_address(surnames, named);
  }

  void forms_of_address(const std::unordered_set<std::u32string_view>& surnames,
                        const SpanCover& named) {
    static const CharacterBits<std::uint8_t> parts(
        {{U"老小", NICKNAME}, {SHORT_TITLES, SHORT_TITLE}});
    for (std::size_t at = 0; at + 1 < t_.size(); ++at) {
      const bool nickname = (parts.of(t_[at]) & NICKNAME) != 0;
      const bool title = (parts.of(t_[at + 1]) & SHORT_TITLE) != 0;
      if (!nickname && !title) continue;
      if (is_form_of_address(at, nickname, surnames) && is_free(named, at, at + 2)) {
        add_whole_word(at, at + 2);
      }
    }
  }

  // 周工, 老周
  bool is_form_of_address(std::size_t at, bool nickname,
                          const std::unordered_set<std::u32string_view>& surnames) const {
    return surnames.contains(t_.substr(nickname ? at + 1 : at, 1)) &&
           !is_ordinary_word(t_.substr(at, 2));
  }

  void add_whole_word(std::size_t start, std::size_t end) {
    if (begins_word(start) && ends_word(end)) add(start, end, PROSE_SCORE);
  }

  static bool is_free(const SpanCover& named, std::size_t start, std::size_t end) {
    return !named.touches(static_cast<std::ptrdiff_t>(start), static_cast<std::ptrdiff_t>(end));
  }

  bool begins_word(std::size_t at) const {
    if (at == 0 || !is_han(t_[at - 1])) return true;
    const auto* before = word_at(a_.chinese_words, at - 1);
    return before != nullptr && before->known() && before->end == at;
  }

  bool ends_word(std::size_t at) const {
    if (at >= t_.size() || !is_han(t_[at])) return true;
    const auto* behind = word_at(a_.chinese_words, at);
    return behind != nullptr && behind->known() && behind->start == at;
  }

  // 在场人：谭明, 交底人：…: what ends like a word for persons, before a whole name
  void before_colons() {
    for (std::size_t colon = t_.find(U':'); colon != t_.npos; colon = t_.find(U':', colon + 1)) {
      if (!is_person_word(colon)) continue;
      std::size_t at = colon + 1;
      while (at < t_.size() && t_[at] == U' ') ++at;
      const std::size_t surname = surname_length(t_, at);
      std::size_t end = at;
      while (end < t_.size() && is_han(t_[end])) ++end;
      if (surname == 0 || end <= at + surname || end > at + surname + 2 || !ends_cell(end))
        continue;
      constexpr Evidence LEAST = -15;
      if (name_evidence(a_, at, end, surname) < LEAST) continue;
      if (chinese_name_end(a_, at, NameContext::LABEL) == end) add(at, end, LABEL_SCORE);
    }
  }

  bool is_person_word(std::size_t end) const {
    std::size_t start = end;
    while (start > 0 && is_han(t_[start - 1])) --start;
    constexpr std::size_t LONGEST_LABEL = 10;
    if (end - start < 2 || end - start > LONGEST_LABEL) return false;
    constexpr std::u32string_view PERSONS = U"人员者师长手";
    return PERSONS.find(t_[end - 1]) != PERSONS.npos || PERSON_ACTS.contains(t_.substr(end - 2, 2));
  }

  // 田小妹（身份证号…）, 王大勇，居民身份证…
  void before_identity_numbers() {
    for (const auto c : {WordClass::ID_CARD_LABEL, WordClass::PASSPORT_LABEL}) {
      for (const auto& label : a_.of(c)) {
        if (label.from_table || label.start < 3) continue;
        const char32_t mark = t_[label.start - 1];
        if (mark != U'(' && mark != U'，' && mark != U',') continue;
        const std::size_t start = chinese_name_start(a_, label.start - 1);
        if (start < label.start - 1) add(start, label.start - 1, PROSE_SCORE);
      }
    }
  }

  void compound_surnames() {
    for (const auto& surname : a_.of(WordClass::SURNAME)) {
      const std::size_t end = chinese_name_end(a_, surname.start, NameContext::PROSE);
      if (end <= surname.end) continue;
      const bool ambiguous =
          AMBIGUOUS_SURNAMES.contains(t_.substr(surname.start, surname.end - surname.start));
      if (ambiguous && end < t_.size() && is_han(t_[end])) continue;
      // 工长孙晨 is no 长孙.
      if (!is_word_boundary(a_.chinese_words, surname.start)) continue;
      add(surname.start, end, PROSE_SCORE);
    }
  }

  // 伊万·彼得罗维奇·索科洛夫 in a sentence. Not 沁屿·石梅度假村.
  // Where a name with its first dot at `dot` begins, not before `done`.
  std::size_t dotted_start(std::size_t dot, std::size_t done) const {
    constexpr std::size_t LONGEST_PART = 8;
    std::size_t start = dot;
    while (start > done && dot - start < LONGEST_PART && sounds(t_[start - 1])) --start;
    // 佟加·庆夫: a surname before one sound
    if (start + 1 == dot && start > done && is_chinese_surname(t_.substr(start - 1, 1))) --start;
    return start;
  }

  std::size_t dotted_end(std::size_t start, std::size_t dot) const {
    constexpr std::size_t LONGEST_DOTTED_NAME = 40;
    constexpr std::size_t LONGEST_PART = 7;
    std::size_t end = dot;
    while (end < t_.size() && end - start < LONGEST_DOTTED_NAME && is_dot(t_[end])) {
      std::size_t part = end + 1;
      while (part < t_.size() && part - end <= LONGEST_PART && sounds(t_[part]) &&
             !begins_verb(part)) {
        ++part;
      }
      if (part == end + 1) break;
      end = part;
    }
    return end;
  }

  void dotted_names() {
    const auto next = [&](std::size_t from) {
      return find_rare(t_, from, {U'·', U'•', U'・', 0x2027});  // see is_dot
    };
    std::size_t done = 0;
    for (std::size_t i = next(1); i + 1 < t_.size(); i = next(i + 1)) {
      if (i < done) continue;
      const std::size_t start = dotted_start(i, done);
      std::size_t end = dotted_end(start, i);
      if (start < i && end > i && end - start >= 4) {
        add(start, end, PROSE_SCORE);
      } else {
        end = labelled_dotted_name(i, done);
      }
      done = std::max(done, end);
    }
  }

  // 译者佟加·庆夫，: behind a word for persons and up to a mark, whatever it sounds like
  std::size_t labelled_dotted_name(std::size_t dot, std::size_t done) {
    constexpr std::size_t LONGEST_DOTTED_PART = 5;
    constexpr std::u32string_view WORDS_FOR_PERSONS = U"者员师人工手长";
    std::size_t end = dot + 1;
    while (end < t_.size() && is_han(t_[end]) && end - dot <= LONGEST_DOTTED_PART) ++end;
    if (end - dot < 3 || (end < t_.size() && is_han(t_[end]))) return dot;
    for (std::size_t start = dot - 1; start > done && dot - start <= LONGEST_DOTTED_PART; --start) {
      const char32_t before = t_[start - 1];
      if (!is_han(before)) break;
      if (dot - start < 2 || WORDS_FOR_PERSONS.find(before) == WORDS_FOR_PERSONS.npos) continue;
      if (!is_word_boundary(a_.chinese_words, start) || is_touched_by_names(start, end)) continue;
      add(start, end, PROSE_SCORE);
      return end;
    }
    return dot;
  }

  bool is_touched_by_names(std::size_t start, std::size_t end) const {
    return is_touched(a_.of(WordClass::PLACE), start, end) ||
           is_touched(a_.of(WordClass::TRADE_WORD), start, end) ||
           is_touched(a_.of(WordClass::INSTITUTION), start, end);
  }

  // 提 in 索科洛夫提供
  bool begins_verb(std::size_t at) const {
    const auto* word = word_at(a_.chinese_words, at);
    return word != nullptr && word->start == at && word->length() > 1 &&
           word->word_class == recognition::ChineseWordClass::ORDINARY &&
           !sounds(t_[word->end - 1]);
  }

  bool sounds(char32_t c) const { return is_han(c) && transliterates(std::u32string_view(&c, 1)); }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  std::vector<RecognizerResult> out_;
};

}  // namespace

ChinesePersonFinder::ChinesePersonFinder()
    : EntityRecognizer("ChinesePersonFinder", {std::string(anonymization::entity_type::PERSON)}) {}

std::vector<RecognizerResult> ChinesePersonFinder::analyze(const NlpArtifacts& artifacts) const {
  return ChinesePersonSearch(artifacts).run();
}

}  // namespace core::nlp
