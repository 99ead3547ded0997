#include "core/nlp/chinese_prose_persons.hpp"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_names.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/word_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view japanese_surnames;
extern const std::string_view given_name_characters;
}  // namespace core::text::lexicon_data

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::WordClass;

constexpr double SCORE = 0.6;

// Weights, in half points.
constexpr int COMMON_SURNAME = 4;
constexpr int RARE_SURNAME = 2;
constexpr int WORD_SURNAME = -1;
constexpr int GIVEN_CHARACTER = 4;
constexpr int ROLE_BEFORE = 8;
constexpr int EDGE = 3;
constexpr int LINK = 2;
constexpr int VERB_BEHIND = 5;
constexpr int IN_LIST = 5;
constexpr int SHORT_NAME = -4;
constexpr int AGAIN = 3;
constexpr int NEVER = -100;
constexpr int ENOUGH = 13;
constexpr int POSSIBLE = 9;

constexpr std::u32string_view COMMON_SURNAMES =
    U"王李张刘陈杨黄赵吴周徐孙马朱胡郭何高林罗郑梁谢宋唐许韩冯邓曹彭曾肖田董袁潘蒋蔡余杜叶程苏魏吕丁任沈姚卢姜崔钟谭陆汪范石廖贾夏韦付傅方白"
    U"邹孟熊秦邱江尹薛闫段雷侯龙史陶黎贺顾毛郝龚邵覃武钱戴严莫孔汤赖庞倪岑符翁柯佟邬祁舒费柴翟苗车洪葛温殷牛庄颜梅盛童翟骆霍邢阮欧聂章岳耿"
    U"詹裴祝尚申屠吉鲍涂靳尤项柳甘骆苑左冉虞冼麦佘蒲";

// Surnames that begin everyday words more often than names.
constexpr std::u32string_view WORD_SURNAMES =
    U"应于和时向任经能有后从成相关同方全都平常单计支包权那明安高通满步强终易万元公由双水力本主工原年法信业商言行农区"
    U"过国家政正用期第保合实定资产管开式当房施收海文车金石田白黄连乐游沙山南门井巴印束空别火池初红色种光";

// Characters of contracts that names hardly hold.
constexpr std::u32string_view NOT_IN_NAMES =
    U"的了是在不与或及等于由应须将被把为并而但且从对向给就都也还要会该此每各某另至因所其他她它们这那个项款条件期限额价费率表单据证书"
    U"合同协议约签章账户号码办处部门院局所司厂店社会议员工者时间内外上下前后左右量数度级类型种式样品质物料付收缴纳违责任务权利义租赁借贷还买卖购销运输"
    U"送货提供使施用途验检测试修理管控制造产设计划算结拟拒按照如若除非经";

// Single characters that may stand directly before a name in a sentence.
constexpr std::u32string_view LINKS_BEFORE = U"由向与和及跟给被让对请为至从据如因经或同即系将以指";
// And behind one.
constexpr std::u32string_view LINKS_BEHIND =
    U"与和及或向对将应须于因可已未仅曾均在的之为系是也从由持称诉辩述等经把被让就按承签自不拟故无有代以所到负同";

// Surnames that follow a role as words: 主任应指定.
constexpr std::u32string_view NO_SURNAME_IN_SENTENCE = U"应于和时向任经能有后从由同对将及";

constexpr auto VERBS_BEFORE = text::words(
    {U"告知", U"通知", U"委托", U"指定", U"聘任", U"聘请", U"选举", U"推荐", U"免去", U"任命",
     U"授权", U"包括", U"邀请", U"查明", U"归还", U"返还", U"偿还", U"判令", U"委派", U"提名",
     U"增补", U"罢免", U"判决", U"责令", U"以及", U"客户", U"员工", U"教师", U"原名", U"曾用",
     U"其夫", U"其妻", U"其子", U"其女", U"其父", U"其母", U"其弟", U"其兄", U"其姐", U"其妹"});

constexpr auto VERBS_BEHIND = text::words(
    {U"担任", U"签字", U"签署", U"签名", U"提供", U"诉称", U"辩称", U"表示", U"认为", U"主张",
     U"出具", U"支付", U"偿还", U"归还", U"承诺", U"同意", U"负责", U"持有", U"委托", U"作为",
     U"名下", U"负担", U"承担", U"独任", U"出庭", U"到庭", U"到场", U"通过", U"确认", U"放弃",
     U"修改", U"替代", U"牵头", U"主持", U"记录", U"发言", U"提出", U"介绍", U"汇报", U"任职",
     U"出资", U"认缴", U"实缴", U"转让", U"受让", U"借款", U"购买", U"出售", U"取得", U"继承",
     U"占有", U"居住", U"地界", U"宅基", U"户主", U"本人", U"夫妇", U"夫妻", U"一家", U"之间",
     U"双方", U"二人", U"两人", U"三人", U"共同", U"分别", U"发放", U"家中", U"签收", U"领取",
     U"交付", U"代为", U"补充", U"退休", U"入职", U"离职", U"辞去", U"财务", U"自愿", U"承包",
     U"租赁", U"所有", U"提交", U"证明", U"陈述", U"申请", U"起诉", U"上诉", U"曾任", U"现任",
     U"本金", U"民间", U"房屋", U"离婚", U"股权", U"女士", U"先生", U"男方", U"女方"});

const std::unordered_set<char32_t>& given_characters() {
  static const std::unordered_set<char32_t> characters = [] {
    std::unordered_set<char32_t> out;
    for (const auto& word : text::lexicon_words(text::lexicon_data::given_name_characters)) {
      out.insert(word.front());
    }
    return out;
  }();
  return characters;
}

const std::unordered_set<std::u32string>& japanese_surnames() {
  static const std::unordered_set<std::u32string> names = [] {
    auto list = text::lexicon_words(text::lexicon_data::japanese_surnames);
    return std::unordered_set<std::u32string>(list.begin(), list.end());
  }();
  return names;
}

bool holds(std::u32string_view set, char32_t c) { return set.find(c) != set.npos; }

struct Candidate {
  std::size_t start = 0;
  std::size_t end = 0;
  int weight = 0;
};

class Search {
 public:
  explicit Search(const NlpArtifacts& a) : a_(a), t_(a.folded) {
    for (const auto c :
         {WordClass::COMPANY_FORM, WordClass::BANK, WordClass::BRANCH, WordClass::PLACE,
          WordClass::PUBLIC_NAME, WordClass::SHIELD, WordClass::INSTITUTION, WordClass::PUBLIC_BODY,
          WordClass::TRADE_WORD, WordClass::CURRENCY}) {
      cover(c);
    }
    for (std::size_t c = 0; c < recognition::LABEL_CLASSES; ++c) cover(static_cast<WordClass>(c));
    taken_.finish();
    for (const auto& label : a.of(WordClass::PERSON_LABEL)) add_role_end(label);
    for (const auto& title : a.of(WordClass::PERSON_TITLE)) add_role_end(title);
    for (const auto& party : a.of(WordClass::ORGANIZATION_LABEL)) add_role_end(party);
  }

  void run(std::vector<anonymization::RecognizerResult>& out) {
    collect();
    weigh_repeats();
    spaced_names(out);
    std::size_t free_from = 0;
    for (std::size_t i = 0; i < candidates_.size();) {
      const std::size_t best = best_of_cluster(i);
      const Candidate& c = candidates_[best];
      if (c.weight >= ENOUGH && c.start >= free_from) {
        out.push_back(make_hit(anonymization::entity_type::PERSON, c.start, c.end, SCORE));
        free_from = c.end;
      }
      i = std::max(next_cluster(i), i + 1);
    }
  }

 private:
  // Names may hold the characters of short words by accident, of longer ones not.
  void cover(WordClass c) {
    for (const auto& hit : a_.of(c)) {
      if (hit.end - hit.start > 1) {
        taken_.add(static_cast<std::ptrdiff_t>(hit.start), static_cast<std::ptrdiff_t>(hit.end));
      }
    }
  }

  void add_role_end(const recognition::WordHit& hit) {
    if (!hit.from_table && hit.end > hit.start && is_han(t_[hit.end - 1])) roles_.insert(hit.end);
  }

  void collect() {
    for (std::size_t at = 0; at + 1 < t_.size(); ++at) {
      if (!is_han(t_[at]) || !is_han(t_[at + 1])) continue;
      const int left = left_weight(at);
      if (left == NEVER) continue;
      if (try_japanese(at, left)) continue;
      const bool in_sentence = at > 0 && is_han(t_[at - 1]);
      if (in_sentence && holds(NO_SURNAME_IN_SENTENCE, t_[at])) continue;
      const bool compound = is_chinese_surname(t_.substr(at, 2));
      if (!compound && !is_chinese_surname(t_.substr(at, 1))) continue;
      const std::size_t surname = compound ? 2 : 1;
      for (std::size_t given = 1; given <= 2; ++given) try_name(at, surname, given, left);
    }
  }

  // 佐藤健一, 长谷川优子: a surname and one to three characters up to a mark or a verb
  bool try_japanese(std::size_t at, int left) {
    for (std::size_t surname = 3; surname >= 2; --surname) {
      if (!japanese_surnames().contains(std::u32string(t_.substr(at, surname)))) continue;
      if (at > 0 && is_han(t_[at - 1]) && !roles_.contains(at)) return false;
      for (std::size_t end = at + surname; end <= at + surname + 3 && end <= t_.size(); ++end) {
        const bool title = end_of_word_at(a_.of(WordClass::PERSON_TITLE), end) > end;
        const int right = right_weight(end);
        const bool alone = end == at + surname && !title;
        if (!alone && right != NEVER) {
          candidates_.push_back({at, end, left + right + COMMON_SURNAME + GIVEN_CHARACTER});
          return true;
        }
        if (end >= t_.size() || !is_han(t_[end]) || holds(NOT_IN_NAMES, t_[end])) break;
      }
    }
    return false;
  }

  void try_name(std::size_t at, std::size_t surname, std::size_t given, int left) {
    const std::size_t end = at + surname + given;
    if (end > t_.size()) return;
    const int inside = name_weight(at, surname, end);
    if (inside == NEVER) return;
    const int right = right_weight(end);
    if (right == NEVER) return;
    const int weight = left + inside + right;
    if (weight >= POSSIBLE) candidates_.push_back({at, end, weight});
  }

  int left_weight(std::size_t at) const {
    if (roles_.contains(at)) return ROLE_BEFORE;
    if (at == 0) return EDGE;
    const char32_t c = t_[at - 1];
    if (c == U'、') return IN_LIST;
    if (!is_han(c)) return is_latin_letter(c) || text::is_ascii_digit(c) ? NEVER : EDGE;
    if (at > 1 && VERBS_BEFORE.contains(t_.substr(at - 2, 2))) return VERB_BEHIND;
    return holds(LINKS_BEFORE, c) ? LINK : NEVER;
  }

  int right_weight(std::size_t end) const {
    if (end >= t_.size()) return EDGE;
    const char32_t c = t_[end];
    if (c == U'、') return IN_LIST;
    if (!is_han(c)) return is_latin_letter(c) || text::is_ascii_digit(c) ? NEVER : EDGE;
    if (end_of_word_at(a_.of(WordClass::INSTITUTION), end) > end) return NEVER;
    if (end_of_word_at(a_.of(WordClass::PERSON_TITLE), end) > end) return VERB_BEHIND;
    if (VERBS_BEHIND.contains(t_.substr(end, 2))) return VERB_BEHIND;
    if (holds(LINKS_BEHIND, c)) return LINK;
    return end_of_word_at(a_.of(WordClass::CLAUSE_WORD), end) > end ? LINK : NEVER;
  }

  int name_weight(std::size_t at, std::size_t surname, std::size_t end) const {
    const auto name = t_.substr(at, end - at);
    for (std::size_t length = 2; length <= name.size(); ++length) {
      if (is_everyday_word(name.substr(0, length))) return NEVER;
    }
    if (name.size() > 2 && is_everyday_word(name.substr(name.size() - 2))) return NEVER;
    if (taken_.touches(static_cast<std::ptrdiff_t>(at), static_cast<std::ptrdiff_t>(end))) {
      return NEVER;
    }
    int weight = COMMON_SURNAME;
    if (surname == 1 && holds(WORD_SURNAMES, name[0])) {
      weight = WORD_SURNAME;
    } else if (surname == 1 && !holds(COMMON_SURNAMES, name[0])) {
      weight = RARE_SURNAME;
    }
    for (const char32_t c : name.substr(surname)) {
      if (!is_han(c) || holds(NOT_IN_NAMES, c)) return NEVER;
      if (given_characters().contains(c)) weight += GIVEN_CHARACTER;
    }
    return end - at - surname == 1 && surname == 1 ? weight + SHORT_NAME + GIVEN_CHARACTER / 2
                                                   : weight;
  }

  // 万 春 生, 付　敏 on a line of signatures
  void spaced_names(std::vector<anonymization::RecognizerResult>& out) const {
    for (std::size_t at = 0; at + 2 < t_.size(); ++at) {
      if (!is_han(t_[at]) || t_[at + 1] != U' ' || !stands_alone(at)) continue;
      if (!is_chinese_surname(t_.substr(at, 1))) continue;
      if (at > 1 && t_[at - 1] == U' ' && is_han(t_[at - 2]) && !roles_.contains(at - 1)) continue;
      const std::size_t second = next_alone(at);
      if (second == at || !given_characters().contains(t_[second])) continue;
      const std::size_t third = next_alone(second);
      const std::size_t last = third;
      const bool more = next_alone(last) != last && next_alone(last) - last == second - at;
      if (more || (last != second && !given_characters().contains(t_[last]))) continue;
      if (is_everyday_word(std::u32string{t_[at], t_[second]})) continue;
      out.push_back(make_hit(anonymization::entity_type::PERSON, at, last + 1, SCORE));
    }
  }

  bool stands_alone(std::size_t at) const {
    return (at == 0 || !is_han(t_[at - 1])) && (at + 1 >= t_.size() || !is_han(t_[at + 1]));
  }

  // The next ideograph behind one to four blanks that stands alone; `at` for none.
  std::size_t next_alone(std::size_t at) const {
    constexpr std::size_t WIDEST = 4;
    std::size_t i = at + 1;
    while (i < t_.size() && i <= at + WIDEST && t_[i] == U' ') ++i;
    return i > at + 1 && i < t_.size() && is_han(t_[i]) && stands_alone(i) ? i : at;
  }

  // What comes back between other neighbours is a word or a name.
  void weigh_repeats() {
    std::unordered_map<std::u32string_view, int> counts;
    for (const auto& c : candidates_) ++counts[t_.substr(c.start, c.end - c.start)];
    for (auto& c : candidates_) {
      const int more = counts[t_.substr(c.start, c.end - c.start)] - 1;
      if (c.end - c.start > 2) c.weight += AGAIN * std::min(more, 2);
    }
  }

  // Behind the candidates that begin where the one at `i` does.
  std::size_t next_cluster(std::size_t i) const {
    std::size_t next = i;
    while (next < candidates_.size() && candidates_[next].start == candidates_[i].start) ++next;
    return next;
  }

  std::size_t best_of_cluster(std::size_t i) const {
    std::size_t best = i;
    for (std::size_t j = i; j < next_cluster(i); ++j) {
      if (candidates_[j].weight >= candidates_[best].weight) best = j;
    }
    return best;
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  SpanCover taken_;
  std::unordered_set<std::size_t> roles_;
  std::vector<Candidate> candidates_;
};

}  // namespace

void find_prose_persons(const NlpArtifacts& artifacts,
                        std::vector<anonymization::RecognizerResult>& out) {
  Search(artifacts).run(out);
}

}  // namespace core::nlp
