#include "core/nlp/chinese_prose_persons.hpp"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "core/nlp/character_table.hpp"
#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_names.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/name_evidence.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/view_set.hpp"
#include "core/text/word_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view japanese_surnames;
}  // namespace core::text::lexicon_data

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::WordClass;

constexpr double PROSE_PERSON_SCORE = 0.6;

// What speaks for a name besides its characters, in the steps of Evidence.
constexpr Evidence ROLE_BEFORE = 14;    // 项目经理王建国
constexpr Evidence OFFICE_BEFORE = 11;  // 信号工, 仓库管理员
constexpr Evidence PARTY_BEFORE = 6;    // 受让方
constexpr Evidence VERB_BEFORE = 9;     // 委托, 通知
constexpr Evidence UNIT_BEFORE = 7;     // 设备科, 有限公司
constexpr Evidence LINK_BEFORE = 7;     // 由, 与
constexpr Evidence MARK_BEFORE = 6;
constexpr Evidence IN_LIST = 7;
constexpr Evidence MENTION_SIGN = 14;  // @
constexpr Evidence TITLE_BEHIND = 10;
constexpr Evidence VERB_BEHIND = 7;
constexpr Evidence LINK_BEHIND = 6;
constexpr Evidence MARK_BEHIND = 6;
constexpr Evidence WORD_AROUND = 1;
constexpr Evidence UNKNOWN_AROUND = -4;
constexpr Evidence UNLIKELY = -14;
constexpr Evidence UNLISTED_SURNAME = -4;
constexpr Evidence PLACE_INSIDE = -10;
constexpr Evidence EVERYDAY_WORD = -14;
constexpr Evidence LINKING_SURNAME = -6;
constexpr Evidence JOINING_SURNAME = -20;
constexpr Evidence VERB_INSIDE = -5;
constexpr Evidence AGAIN = 3;
constexpr Evidence NEVER = NO_NAME;
constexpr Evidence ENOUGH = 19;
constexpr Evidence POSSIBLE = 10;
constexpr Evidence JAPANESE = 16;

// Characters that names hardly hold.
constexpr std::u32string_view NOT_IN_NAMES =
    U"的了是在不与或及等于由应须将被把为并而但且从对向给就都也还要会该此每各某另至因所其他她它们这那个项款条件期限额价费率表单据证书"
    U"合同协议约签章账户号码办处部门院局所司厂店社会议员工者时间内外上下前后左右量数度级类型种式样品质物料付收缴纳违责任务权利义租赁借贷还买卖购销运输"
    U"送货提供使施用途验检测试修理管控制造产设计划算结拟拒按照如若除非经";

// Single characters that may stand directly before a name in a sentence.
constexpr std::u32string_view LINKS_BEFORE =
    U"由与向和及跟给被让对请为至从据如因经或同即系将以指找交归若仅凭叫是在并而但则使替代约称问送付报请派雇聘托陪帮邀推选举欠借还赔致转询诉告";
// And behind one.
constexpr std::u32string_view LINKS_BEHIND =
    U"与和及或向对将应须于因可已未仅曾均在的之为系是也从由持称诉辩述等经把被让就按承签自不拟故无有代以所到负同任须得家需给说指如若现仍至均各先再";

// Surnames that follow a role or a name as words: 主任应指定, 张三和李四.
constexpr std::u32string_view LINKING_SURNAMES = U"应于时向任经能有后";
constexpr std::u32string_view JOINING_SURNAMES = U"和从由同对将及须";

// What often stands behind a name in a sentence and seldom ends one.
constexpr std::u32string_view FIRST_OF_VERBS = U"任兼代如需须应均各先再又才已未曾仅现至若按";

// Words that end like the names of offices and are none.
constexpr auto NO_OFFICES = text::words(
    {U"施工", U"竣工", U"开工", U"加工", U"完工", U"分工", U"用工", U"手工",   U"复工", U"停工",
     U"误工", U"增长", U"延长", U"成长", U"全长", U"加长", U"着手", U"入手",   U"他人", U"本人",
     U"个人", U"人工", U"收入", U"二人", U"三人", U"两人", U"法人", U"自然人", U"化工", U"动工"});

constexpr auto VERBS_BEFORE = text::words(
    {U"告知", U"通知", U"委托", U"指定", U"聘任", U"聘请", U"选举", U"推荐", U"免去", U"任命",
     U"授权", U"包括", U"邀请", U"查明", U"归还", U"返还", U"偿还", U"判令", U"委派", U"提名",
     U"增补", U"罢免", U"判决", U"责令", U"以及", U"客户", U"员工", U"教师", U"原名", U"曾用",
     U"指派", U"安排", U"抄送", U"要求", U"通过", U"回复", U"转让", U"转给", U"交给", U"交由",
     U"支付", U"付给", U"联系", U"聘用", U"雇用", U"任用", U"派遣", U"派出", U"撤换", U"更换",
     U"配合", U"协助", U"会同", U"陪同", U"代表", U"代替", U"接替", U"顶替", U"邻居", U"同事",
     U"业主", U"客人", U"起诉", U"依据", U"根据", U"按照", U"经由", U"汇报", U"关于", U"认定",
     U"确认", U"其中", U"名下", U"系由", U"改由", U"均由", U"先由", U"应由", U"须经", U"报经",
     U"并与", U"应向", U"应与", U"介绍", U"收到", U"未经", U"委任", U"选任", U"改派", U"加派",
     U"提请", U"报请", U"还给", U"退还", U"赠与", U"赔偿", U"补偿", U"起草", U"现金", U"原告",
     U"被告", U"因为", U"由于", U"除了", U"只有", U"仅有", U"还有", U"没有", U"没收", U"如果",
     U"配偶", U"丈夫", U"妻子", U"儿子", U"女儿", U"父亲", U"母亲", U"长子", U"次子", U"长女",
     U"次女", U"兄弟", U"胞兄", U"胞弟", U"胞姐", U"胞妹", U"哥哥", U"弟弟", U"姐姐", U"妹妹",
     U"岳父", U"岳母", U"公公", U"婆婆", U"之子", U"之女", U"之妻", U"之夫", U"之父", U"之母",
     U"其夫", U"其妻", U"其子", U"其女", U"其父", U"其母", U"其弟", U"其兄", U"其姐", U"其妹",
     U"之弟", U"之兄", U"之姐", U"之妹", U"之孙", U"其孙", U"或其"});

constexpr auto VERBS_BEHIND = text::words(
    {U"担任", U"签字", U"签署", U"签名", U"提供", U"诉称", U"辩称", U"表示", U"认为", U"主张",
     U"出具", U"支付", U"偿还", U"归还", U"承诺", U"同意", U"负责", U"持有", U"委托", U"作为",
     U"名下", U"负担", U"承担", U"独任", U"出庭", U"到庭", U"到场", U"通过", U"确认", U"放弃",
     U"修改", U"替代", U"牵头", U"主持", U"记录", U"发言", U"提出", U"介绍", U"汇报", U"任职",
     U"出资", U"认缴", U"实缴", U"转让", U"受让", U"借款", U"购买", U"出售", U"取得", U"继承",
     U"占有", U"居住", U"地界", U"宅基", U"户主", U"本人", U"夫妇", U"夫妻", U"一家", U"之间",
     U"双方", U"二人", U"两人", U"三人", U"四人", U"共同", U"分别", U"发放", U"家中", U"签收",
     U"领取", U"交付", U"代为", U"补充", U"退休", U"入职", U"离职", U"辞去", U"财务", U"自愿",
     U"承包", U"租赁", U"所有", U"提交", U"证明", U"陈述", U"申请", U"起诉", U"上诉", U"曾任",
     U"现任", U"本金", U"民间", U"房屋", U"离婚", U"股权", U"女士", U"先生", U"男方", U"女方",
     U"之子", U"之女", U"之妻", U"之夫", U"之父", U"之母", U"配合", U"协助", U"审核", U"审批",
     U"批准", U"复核", U"签发", U"验收", U"清点", U"完成", U"组成", U"参加", U"出席", U"缺席",
     U"强调", U"指出", U"反映", U"通报", U"回复", U"要求", U"书面", U"知悉", U"驾驶", U"垫付",
     U"所在", U"住所", U"户籍", U"身份", U"受伤", U"死亡", U"去世", U"已故", U"予以", U"代理",
     U"没有", U"不得", U"有权", U"无权", U"应当", U"须在", U"处理", U"召集", U"组织", U"协调",
     U"协商", U"解决", U"经手", U"代收", U"代签", U"收取", U"收到", U"报警", U"均已", U"已经",
     U"承运", U"送达", U"送货", U"过磅", U"保管", U"管理", U"监督", U"无关", U"有关", U"及其",
     U"以外", U"任何", U"尚未", U"未能", U"按期", U"按月", U"逾期", U"违约", U"口头", U"电话",
     U"办理", U"施工", U"许可", U"共管", U"随时", U"驻店", U"安装", U"制作", U"设计", U"编写",
     U"翻译", U"演唱", U"拍摄", U"养护", U"维修", U"看管", U"照看", U"陪同", U"抚养", U"赡养",
     U"之弟", U"之兄", U"之姐", U"之妹", U"之孙", U"姐妹", U"兄弟", U"父子", U"母子", U"父女"});

// The last characters of units whose members are named behind them: 设备科王建国.
constexpr std::u32string_view MEASURE_UNITS = U"科部组处室队厂村家店院所局司行站班中心";

// The last characters of words for offices, and those that are such words alone: 泥工.
constexpr std::u32string_view OFFICES = U"员师工长手匠";
constexpr std::u32string_view SHORT_OFFICES = U"员师工";

// Behind a place.
constexpr std::u32string_view PLACE_UNITS = U"省市县区镇乡村路街巷道号";

const text::ViewSet& japanese_surnames() {
  static const text::ViewSet names = [] {
    auto list = text::lexicon_words(text::lexicon_data::japanese_surnames);
    return text::ViewSet(list.begin(), list.end());
  }();
  return names;
}

// What the lists above say of a character.
enum Sign : std::uint16_t {
  IN_NO_NAME = 1U << 0U,
  LINK_BEFORE_NAME = 1U << 1U,
  LINK_BEHIND_NAME = 1U << 2U,
  LINKING = 1U << 3U,
  JOINING = 1U << 4U,
  BEGINS_VERB = 1U << 5U,
  UNIT = 1U << 6U,
  OFFICE = 1U << 7U,
  SHORT_OFFICE = 1U << 8U,
  PLACE_UNIT = 1U << 9U,
  BEGINS_JAPANESE_SURNAME = 1U << 10U,
  BEFORE_JAPANESE_NAME = 1U << 11U,
  BEGINS_SURNAME = 1U << 12U
};

const CharacterBits<std::uint16_t>& signs() {
  static const auto table = [] {
    CharacterBits<std::uint16_t> out({{NOT_IN_NAMES, IN_NO_NAME},
                                      {LINKS_BEFORE, LINK_BEFORE_NAME},
                                      {LINKS_BEHIND, LINK_BEHIND_NAME},
                                      {LINKING_SURNAMES, LINKING},
                                      {JOINING_SURNAMES, JOINING},
                                      {FIRST_OF_VERBS, BEGINS_VERB},
                                      {MEASURE_UNITS, UNIT},
                                      {OFFICES, OFFICE},
                                      {SHORT_OFFICES, SHORT_OFFICE},
                                      {PLACE_UNITS, PLACE_UNIT},
                                      {U"由与和向对经及请", BEFORE_JAPANESE_NAME}});
    for (const auto& name : japanese_surnames()) out.add(name.front(), BEGINS_JAPANESE_SURNAME);
    NameCharacters::instance().each_surname_beginning(
        [&](char32_t c) { out.add(c, BEGINS_SURNAME); });
    return out;
  }();
  return table;
}

struct Candidate {
  std::size_t start = 0;
  std::size_t end = 0;
  Evidence weight = 0;
};

class ChineseProseSearch {
 public:
  explicit ChineseProseSearch(const NlpArtifacts& a)
      : a_(a),
        t_(a.folded),
        names_(NameCharacters::instance()),
        signs_(signs()),
        edges_(a.folded.size() + 1) {
    for (const auto c :
         {WordClass::COMPANY_FORM, WordClass::BANK, WordClass::BRANCH, WordClass::PUBLIC_NAME,
          WordClass::SHIELD, WordClass::INSTITUTION, WordClass::PUBLIC_BODY, WordClass::CURRENCY}) {
      cover(c);
    }
    for (std::size_t c = 0; c < recognition::LABEL_CLASSES; ++c) cover(static_cast<WordClass>(c));
    for (const auto& place : a.of(WordClass::PLACE)) note_all(place.start, place.end, IN_PLACE);
    for (const auto& word : a.of(WordClass::TRADE_WORD)) {
      note_all(word.start, word.end, IN_TRADE_WORD);
    }
    for (const auto c : {WordClass::COMPANY_FORM, WordClass::PLAIN_COMPANY, WordClass::BRANCH,
                         WordClass::BANK, WordClass::INSTITUTION, WordClass::PUBLIC_BODY}) {
      for (const auto& unit : a.of(c)) note(unit.end, UNIT_ENDS);
    }
    for (const auto c : {WordClass::INSTITUTION, WordClass::COMPANY_FORM, WordClass::PLAIN_COMPANY,
                         WordClass::BANK, WordClass::TRADE_WORD}) {
      note_beginnings(c, FORM_BEGINS);
    }
    note_beginnings(WordClass::PERSON_TITLE, TITLE_BEGINS);
    note_beginnings(WordClass::CLAUSE_WORD, CLAUSE_WORD_BEGINS);
    for (const auto& label : a.of(WordClass::PERSON_LABEL)) add_role_end(label);
    for (const auto& title : a.of(WordClass::PERSON_TITLE)) add_role_end(title);
    for (const auto& party : a.of(WordClass::ORGANIZATION_LABEL)) {
      if (!party.from_table) note(party.end, PARTY_ENDS);
    }
  }

  void run(std::vector<anonymization::RecognizerResult>& out) {
    collect();
    weigh_repeats();
    spaced_names(out);
    std::erase_if(candidates_, [](const Candidate& c) { return c.weight < ENOUGH; });
    // The likeliest first; what overlaps it is no name.
    std::stable_sort(candidates_.begin(), candidates_.end(),
                     [](const auto& x, const auto& y) { return x.weight > y.weight; });
    std::vector<bool> taken(t_.size());
    for (const Candidate& c : candidates_) {
      const auto first = taken.begin() + static_cast<std::ptrdiff_t>(c.start);
      const auto last = taken.begin() + static_cast<std::ptrdiff_t>(c.end);
      if (std::find(first, last, true) != last) continue;
      std::fill(first, last, true);
      out.push_back(
          make_hit(anonymization::entity_type::PERSON, c.start, c.end, PROSE_PERSON_SCORE));
    }
  }

 private:
  // Names may hold the characters of short words by accident, of longer ones not.
  void cover(WordClass c) {
    for (const auto& hit : a_.of(c)) {
      if (hit.end - hit.start > 1) note_all(hit.start, hit.end, TAKEN);
    }
  }

  // What begins or ends at a place of the text, or goes on there.
  using Edges = std::uint16_t;
  static constexpr Edges ROLE_ENDS = 1U << 0U;   // a word for a person
  static constexpr Edges PARTY_ENDS = 1U << 1U;  // one for a party
  static constexpr Edges UNIT_ENDS = 1U << 2U;   // a company or an office
  static constexpr Edges FORM_BEGINS = 1U << 3U;
  static constexpr Edges TITLE_BEGINS = 1U << 4U;
  static constexpr Edges CLAUSE_WORD_BEGINS = 1U << 5U;
  static constexpr Edges TAKEN = 1U << 6U;  // by a word that is no part of a name
  static constexpr Edges IN_PLACE = 1U << 7U;
  static constexpr Edges IN_TRADE_WORD = 1U << 8U;

  void note(std::size_t at, Edges edge) { edges_[at] = static_cast<Edges>(edges_[at] | edge); }
  void note_all(std::size_t start, std::size_t end, Edges edge) {
    for (std::size_t i = start; i < end; ++i) note(i, edge);
  }
  // What any of the characters of start..end has.
  Edges all_of(std::size_t start, std::size_t end) const {
    Edges edges = 0;
    for (std::size_t i = start; i < end; ++i) edges = static_cast<Edges>(edges | edges_[i]);
    return edges;
  }
  bool has(std::size_t at, Edges edge) const { return (edges_[at] & edge) != 0; }

  void note_beginnings(WordClass c, Edges edge) {
    for (const auto& hit : a_.of(c)) {
      if (!hit.from_table && hit.end > hit.start) note(hit.start, edge);
    }
  }

  void add_role_end(const recognition::WordHit& hit) {
    if (hit.from_table || hit.end == hit.start || !is_han(t_[hit.end - 1])) return;
    // 会计 in 会计师 is none.
    if (is_word_boundary(a_.chinese_words, hit.end)) note(hit.end, ROLE_ENDS);
  }

  void collect() {
    for (std::size_t at = 0; at + 1 < t_.size(); ++at) {
      const unsigned signs = signs_.of(t_[at]);
      if ((signs & (BEGINS_SURNAME | BEGINS_JAPANESE_SURNAME)) == 0) continue;
      if (is_han(t_[at]) && is_han(t_[at + 1])) collect_at(at);
    }
  }

  void collect_at(std::size_t at) {
    const bool japanese = is(t_[at], BEGINS_JAPANESE_SURNAME);
    std::size_t surname = has(at, TAKEN) ? 0 : names_.surname_length(t_, at);
    if (!japanese && (surname == 0 || (surname == 1 && !may_be_given(at + 1)))) return;
    const Evidence left = left_weight(at);
    if (left == NEVER || (japanese && try_japanese(at, left))) return;
    for (; surname > 0; --surname) {
      for (std::size_t given = 1; given <= 2; ++given) try_name(at, surname, given, left);
    }
  }

  // 由宫本正雄（: a Japanese name up to the mark, if one is near
  bool up_to_mark(std::size_t at, std::size_t surname, Evidence left) {
    for (std::size_t end = at + surname + 1; end <= at + surname + 3 && end <= t_.size(); ++end) {
      if (end < t_.size() && is_han(t_[end])) continue;
      const auto given = t_.substr(at + surname, end - at - surname);
      if (std::any_of(given.begin(), given.end(),
                      [this](char32_t c) { return !is_han(c) || is(c, IN_NO_NAME); })) {
        return false;
      }
      candidates_.push_back({at, end, left + MARK_BEHIND + JAPANESE});
      return true;
    }
    return false;
  }

  bool up_to_word(std::size_t at, std::size_t surname, Evidence left) {
    for (std::size_t end = at + surname; end <= at + surname + 3 && end <= t_.size(); ++end) {
      const bool title = has(end, TITLE_BEGINS);
      const Evidence right = right_weight(end);
      const bool alone = end == at + surname && !title;
      if (!alone && right != NEVER) {
        candidates_.push_back({at, end, left + right + JAPANESE});
        return true;
      }
      if (end >= t_.size() || !is_han(t_[end]) || is(t_[end], IN_NO_NAME)) break;
    }
    return false;
  }

  // 佐藤健一, 长谷川优子: a surname and one to three characters up to a mark or a verb
  bool try_japanese(std::size_t at, Evidence left) {
    for (std::size_t surname = 3; surname >= 2; --surname) {
      if (!japanese_surnames().contains(t_.substr(at, surname))) continue;
      if (at > 0 && is_han(t_[at - 1]) && !has(at, ROLE_ENDS) &&
          !is(t_[at - 1], BEFORE_JAPANESE_NAME)) {
        return false;
      }
      if (up_to_mark(at, surname, left) || up_to_word(at, surname, left)) return true;
    }
    return false;
  }

  // What name_evidence refuses at once, and what a longer word has taken.
  bool may_be_given(std::size_t at) const {
    return is_han(t_[at]) && !names_.of(t_[at]).never_in_name && !has(at, TAKEN);
  }

  void try_name(std::size_t at, std::size_t surname, std::size_t given, Evidence left) {
    const std::size_t end = at + surname + given;
    if (end > t_.size() || !may_be_given(end - 1) || (all_of(at, end) & TAKEN) != 0) return;
    const Evidence right = right_weight(end);
    if (right == NEVER) return;
    const Evidence inside = inner_weight(at, surname, end, POSSIBLE - left - right);
    if (inside == NEVER) return;
    const Evidence weight = left + inside + right;
    if (weight >= POSSIBLE) candidates_.push_back({at, end, weight});
  }

  Evidence left_weight(std::size_t at) const {
    if (has(at, ROLE_ENDS)) return ROLE_BEFORE;
    if (at == 0) return MARK_BEFORE;
    const char32_t c = t_[at - 1];
    if (c == U'、') return IN_LIST;
    if (c == U'@') return MENTION_SIGN;
    if (is_latin_letter(c) || text::is_ascii_digit(c)) return 0;
    if (c == U'·') return NEVER;
    if (!is_han(c)) return MARK_BEFORE;
    if (has(at, PARTY_ENDS)) return PARTY_BEFORE;
    if (at > 1 && VERBS_BEFORE.contains(t_.substr(at - 2, 2))) {
      return t_[at] == U'方' ? UNKNOWN_AROUND : VERB_BEFORE;
    }
    return left_word_weight(at);
  }

  // What the word before the name says.
  Evidence left_word_weight(std::size_t at) const {
    const auto* word = word_at(a_.chinese_words, at - 1);
    const char32_t c = t_[at - 1];
    const bool alone = word == nullptr || word->start == at - 1;
    if (alone && is(c, LINK_BEFORE_NAME)) return LINK_BEFORE;
    if (has(at, UNIT_ENDS)) return UNIT_BEFORE;
    // 收货方 is no person of the surname 方.
    if (t_[at] == U'方') return UNKNOWN_AROUND;
    if (word == nullptr || word->end > at) return 0;
    const auto text = t_.substr(word->start, word->end - word->start);
    if (text.size() > 1 && word->known() && !NO_OFFICES.contains(text)) {
      if (is(c, OFFICE)) return OFFICE_BEFORE;
      if (c == U'人' || c == U'方') return PARTY_BEFORE;
    }
    if (text.size() == 1 && is(c, SHORT_OFFICE)) return PARTY_BEFORE;  // 泥工
    if (is(c, UNIT)) return UNIT_BEFORE;
    return word->known() ? WORD_AROUND : UNKNOWN_AROUND;
  }

  Evidence right_weight(std::size_t end) const {
    if (end >= t_.size()) return MARK_BEHIND;
    const char32_t c = t_[end];
    if (c == U'、') return IN_LIST;
    if (is_latin_letter(c)) return 0;
    if (!is_han(c)) return MARK_BEHIND;
    if (has(end, FORM_BEGINS)) return NEVER;
    if (has(end, TITLE_BEGINS)) return TITLE_BEHIND;
    if (VERBS_BEHIND.contains(t_.substr(end, 2))) return VERB_BEHIND;
    if (is(c, PLACE_UNIT)) return UNLIKELY;
    if (is(c, LINK_BEHIND_NAME)) return LINK_BEHIND;
    if (has(end, CLAUSE_WORD_BEGINS)) return LINK_BEHIND;
    const auto* word = word_at(a_.chinese_words, end);
    if (word != nullptr && word->word_class == recognition::ChineseWordClass::PLACE &&
        word->length() > 1) {
      return UNLIKELY;
    }
    return word == nullptr || word->known() ? WORD_AROUND : UNKNOWN_AROUND;
  }

  // Of the characters themselves, which nothing raises; NEVER if they weigh less than `least`.
  Evidence inner_weight(std::size_t at, std::size_t surname, std::size_t end,
                        Evidence least) const {
    const auto name = t_.substr(at, end - at);
    Evidence weight = 0;
    const Edges inside = all_of(at, end);
    if ((inside & IN_PLACE) != 0) weight += PLACE_INSIDE;
    if ((inside & IN_TRADE_WORD) != 0) weight += PLACE_INSIDE;
    if (surname == 1 && !names_.of(name.front()).listed_surname) weight += UNLISTED_SURNAME;
    if (at > 0 && is_han(t_[at - 1])) {
      if (is(t_[at], JOINING)) weight += JOINING_SURNAME;
      if (is(t_[at], LINKING)) weight += LINKING_SURNAME;
    }
    if (end < t_.size() && is_han(t_[end]) && is(t_[end - 1], BEGINS_VERB)) weight += VERB_INSIDE;
    const Evidence evidence = name_evidence_from(a_, at, end, surname, least - weight);
    if (evidence == NEVER || evidence < least - weight) return NEVER;
    weight += evidence;
    for (std::size_t length = 2; length <= name.size() && weight >= least; ++length) {
      if (is_everyday_word(name.substr(0, length))) weight += EVERYDAY_WORD;
    }
    return weight >= least ? weight : NEVER;
  }

  // 万 春 生, 付　敏 on a line of signatures
  void spaced_names(std::vector<anonymization::RecognizerResult>& out) const {
    for (std::size_t at = 0; at + 2 < t_.size(); ++at) {
      if (t_[at + 1] != U' ' || !is_han(t_[at]) || !stands_alone(at)) continue;
      if (!is_chinese_surname(t_.substr(at, 1))) continue;
      if (at > 1 && t_[at - 1] == U' ' && is_han(t_[at - 2]) && !has(at - 1, ROLE_ENDS)) continue;
      const std::size_t second = next_alone(at);
      if (second == at || !is_given(t_[second])) continue;
      const std::size_t third = next_alone(second);
      const std::size_t last = third;
      const bool more = next_alone(last) != last && next_alone(last) - last == second - at;
      if (more || (last != second && !is_given(t_[last]))) continue;
      if (is_everyday_word(std::u32string{t_[at], t_[second]})) continue;
      out.push_back(make_hit(anonymization::entity_type::PERSON, at, last + 1, PROSE_PERSON_SCORE));
    }
  }

  static bool is_given(char32_t c) { return given_evidence(c) > 0; }

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
      c.weight += AGAIN * std::min(more, 2);
    }
  }

  bool is(char32_t c, Sign sign) const { return (signs_.of(c) & sign) != 0; }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  const NameCharacters& names_;
  const CharacterBits<std::uint16_t>& signs_;
  std::vector<Edges> edges_;  // of each place, also the end of the text
  std::vector<Candidate> candidates_;
};

}  // namespace

void find_prose_persons(const NlpArtifacts& artifacts,
                        std::vector<anonymization::RecognizerResult>& out) {
  ChineseProseSearch(artifacts).run(out);
}

}  // namespace core::nlp
