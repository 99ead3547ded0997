#include <algorithm>
#include <cstdint>
#include <vector>

#include "core/nlp/character_table.hpp"
#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_prose_persons.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::WordClass;

constexpr double MINORITY_NAME_SCORE = 0.6;

// What names of Tibetans, Mongols, Uyghurs and Kazakhs are made of, who bear no surname.
constexpr auto ELEMENTS = text::words(
    {U"扎西",     U"次仁",       U"次旺",     U"次旦",       U"次珍",     U"次央",
     U"次登",     U"卓玛",       U"卓嘎",     U"卓央",       U"尼玛",     U"央金",
     U"央宗",     U"旺堆",       U"旺姆",     U"旺杰",       U"旺久",     U"格桑",
     U"达瓦",     U"多吉",       U"多杰",     U"罗布",       U"丹增",     U"旦增",
     U"旦巴",     U"拉姆",       U"拉毛",     U"拉珍",       U"桑珠",     U"桑杰",
     U"桑吉",     U"桑姆",       U"顿珠",     U"白玛",       U"洛桑",     U"罗桑",
     U"仁青",     U"仁钦",       U"仁增",     U"平措",       U"彭措",     U"曲珍",
     U"曲扎",     U"曲吉",       U"德吉",     U"边巴",       U"巴桑",     U"索朗",
     U"索南",     U"才让",       U"才旦",     U"强巴",       U"贡布",     U"公保",
     U"普布",     U"米玛",       U"拉巴",     U"其美",       U"班久",     U"加措",
     U"嘉措",     U"江措",       U"江央",     U"降央",       U"益西",     U"阿旺",
     U"玉珍",     U"群培",       U"晋美",     U"东珠",       U"扎巴",     U"德庆",
     U"措姆",     U"南杰",       U"朗杰",     U"坚赞",       U"更尕",     U"更登",
     U"尕玛",     U"嘎玛",       U"赤列",     U"土登",       U"占堆",     U"班丹",
     U"俄色",     U"斯朗",       U"泽仁",     U"泽旺",       U"泽翁",     U"四郎",
     U"巴特尔",   U"巴雅尔",     U"巴图",     U"苏和",       U"宝音",     U"宝力德",
     U"德力格尔", U"其其格",     U"其木格",   U"格日勒",     U"图雅",     U"娜仁",
     U"萨仁",     U"乌兰",       U"托娅",     U"孟克",       U"孟和",     U"孟根",
     U"朝鲁",     U"敖其尔",     U"那顺",     U"那仁",       U"布和",     U"吉日嘎拉",
     U"额尔敦",   U"额尔登",     U"额尔德尼", U"哈斯",       U"斯琴",     U"高娃",
     U"呼和",     U"呼斯楞",     U"呼格吉勒", U"阿古拉",     U"阿拉坦",   U"阿拉腾",
     U"阿木尔",   U"青格勒",     U"青格乐",   U"满都拉",     U"牧仁",     U"毕力格",
     U"毕力格图", U"达来",       U"特木尔",   U"铁木尔",     U"帖木儿",   U"乌力吉",
     U"乌日娜",   U"乌云",       U"萨如拉",   U"苏日娜",     U"莫日根",   U"朝克",
     U"朝格",     U"朝克图",     U"道尔吉",   U"桑布",       U"丹巴",     U"恩和",
     U"照日格图", U"白音",       U"斯日古楞", U"德格吉日呼", U"巴音",     U"塔娜",
     U"通拉嘎",   U"阿茹娜",     U"娜日苏",   U"查干",       U"巴根",     U"赛汗",
     U"赛罕",     U"吉雅",       U"哈达",     U"呼日勒",     U"巴达玛",   U"奥其尔",
     U"图门",     U"图力古尔",   U"才仁",     U"加甫",       U"买买提",   U"麦麦提",
     U"艾买提",   U"买合木提",   U"阿不都",   U"阿卜杜",     U"阿布都",   U"库尔班",
     U"吐尔逊",   U"吐尔洪",     U"艾合买提", U"玉素甫",     U"木合塔尔", U"古丽",
     U"阿依",     U"热依汗",     U"迪丽",     U"迪力",       U"阿迪力",   U"艾力",
     U"亚森",     U"凯赛尔",     U"帕提",     U"热合曼",     U"热西提",   U"热西丁",
     U"克里木",   U"艾山",       U"依明",     U"伊明",       U"司马义",   U"牙生",
     U"图尔荪",   U"托合提",     U"肉孜",     U"努尔",       U"努尔兰",   U"叶尔",
     U"叶尔江",   U"别克",       U"巴合提",   U"哈力克",     U"沙吾提",   U"阿不来提",
     U"阿布力",   U"阿力木",     U"米吉提",   U"依布拉音",   U"斯拉木",   U"祖农",
     U"再娜",     U"米热",       U"尼亚孜",   U"木拉提",     U"赛买提",   U"吾买尔",
     U"达吾提",   U"居马",       U"哈山",     U"拉旦",       U"宫保",     U"贡保",
     U"公宝",     U"拉玛",       U"卓么",     U"卓尕",       U"吉毛",     U"措毛",
     U"项秀",     U"项欠",       U"万玛",     U"万德",       U"万代",     U"完么",
     U"完德",     U"完玛",       U"尕藏",     U"桑德",       U"桑周",     U"仁欠",
     U"旦正",     U"旦知",       U"豆改",     U"豆格",       U"豆拉",     U"多旦",
     U"多日",     U"昂杰",       U"昂毛",     U"昂秀",       U"昂智",     U"叶西",
     U"益希",     U"意西",       U"华旦",     U"华青",       U"华毛",     U"华藏",
     U"周毛",     U"周加",       U"交巴",     U"久美",       U"久麦",     U"旦真",
     U"旦珍",     U"丹正",       U"丹珍",     U"冷智",       U"李加",     U"项毛",
     U"切吉",     U"切羊",       U"曲措",     U"确吉",       U"确杰",     U"却杰",
     U"香毛",     U"环毛",       U"夏吾",     U"夏毛",       U"夸吾",     U"普华",
     U"帕毛",     U"彭毛",       U"三知",     U"桑加",       U"索太",     U"端智",
     U"登智",     U"力毛",       U"力吾",     U"拉青",       U"拉日",     U"拉加",
     U"龙珠",     U"龙本",       U"落桑",     U"罗藏",       U"才培",     U"才尼",
     U"才果",     U"才吉",       U"年智",     U"努毛",       U"牛措",     U"南加",
     U"南太",     U"南卡",       U"洛周",     U"洛旦",       U"格来",     U"格勒",
     U"格绒",     U"根秋",       U"根桑",     U"贡秋",       U"贡觉",     U"工布",
     U"工秋",     U"次称",       U"次成",     U"慈成",       U"慈诚",     U"赤来",
     U"赤烈",     U"巴姆",       U"白珍",     U"白姆",       U"边珍",     U"边多",
     U"顿旦",     U"旺青",       U"旺修",     U"旺扎",       U"拥忠",     U"拥措",
     U"拥珍",     U"泽绒",       U"泽郎",     U"泽让",       U"泽真",     U"泽珍",
     U"尼珍",     U"伍金",       U"吴金",     U"乌金",       U"多布杰",   U"多布吉",
     U"欧珠",     U"平错",       U"其加",     U"琼珍",       U"琼达",     U"仓决",
     U"仓木",     U"仓姆",       U"宗吉",     U"宗巴",       U"央吉",     U"央珍",
     U"玉措",     U"云丹",       U"云登",     U"增措",       U"增巴",     U"扎姆",
     U"志玛",     U"志美",       U"珠扎",     U"珠杰",       U"土丹",     U"图旦",
     U"图登",     U"塔青",       U"斯达",     U"斯郎",       U"那日苏",   U"格根",
     U"格日乐",   U"敖登",       U"敖敦",     U"敖特根",     U"阿拉塔",   U"阿荣",
     U"朝乐门",   U"朝洛蒙",     U"达楞",     U"额日",       U"额尔和",   U"哈斯巴",
     U"海日",     U"吉日",       U"吉仁",     U"吉木斯",     U"那木",     U"娜布",
     U"娜日",     U"诺敏",       U"诺明",     U"萨日",       U"赛音",     U"苏德",
     U"苏伦",     U"苏雅",       U"特格",     U"特木",       U"陶格",     U"图布",
     U"乌恩",     U"乌日",       U"乌仁",     U"希吉",       U"锡林",     U"旭日干",
     U"雅茹",     U"满达",       U"敏珠",     U"朝鲁门",     U"查娜",     U"伊德",
     U"红格",     U"其布",       U"琪琪格",   U"其木",       U"日娜",     U"格日措",
     U"格日",     U"乌日汗",     U"乌日根",   U"娜仁花",     U"萨仁花",   U"斯日古冷",
     U"苏布德",   U"阿茹罕",     U"阿木古楞", U"巴雅斯",     U"恩克",     U"格日勒图",
     U"哈斯朝鲁", U"吉日木图",   U"照日格",   U"布仁",       U"布日古德", U"嘎鲁",
     U"胡日查",   U"呼德",       U"毛敖海",   U"那顺乌力吉", U"散丹",     U"苏日嘎拉图",
     U"塔日根",   U"图力嘎",     U"乌尼尔",   U"伊拉图",     U"永梅",     U"阿卜杜热西提",
     U"阿卜都",   U"阿布力孜",   U"吐尔逊江", U"吐逊",       U"吐拉",     U"热依木",
     U"热合木",   U"热孜",       U"热娜",     U"努尔古丽",   U"古丽娜尔", U"叶尔兰",
     U"叶尔肯",   U"叶尔波力",   U"哈布力",   U"海拉提",     U"加尔肯",   U"卡德尔",
     U"卡哈尔",   U"依力哈木",   U"伊力哈木", U"伊力亚尔",   U"玛依拉",   U"迪丽努尔",
     U"迪里夏提", U"帕尔哈提",   U"帕丽达",   U"塔依尔",     U"亚生",     U"亚力坤",
     U"亚库甫",   U"麦合木提",   U"麦尔丹",   U"买尔旦",     U"木沙",     U"穆合塔尔",
     U"尼加提",   U"尼扎木",     U"吾布力",   U"吾斯曼",     U"吾甫尔",   U"西尔艾力",
     U"夏木西",   U"艾则孜",     U"艾尔肯",   U"艾海提",     U"艾斯卡尔", U"巴哈尔",
     U"拜克尔",   U"拜合提",     U"达尔汗",   U"达尼亚尔",   U"居来提",   U"加马力",
     U"杰恩斯",   U"金恩斯",     U"马合木提", U"马木提",     U"赛力克",   U"苏来曼",
     U"苏力坦",   U"托乎提",     U"乌斯曼",   U"肖开提",     U"雪克来提", U"依斯拉木",
     U"再努尔",   U"扎克尔",     U"扎依尔",   U"祖丽",       U"祖力",     U"阿孜古丽",
     U"阿扎提",   U"阿不力",     U"阿里木",   U"阿力甫",     U"阿尼瓦尔", U"安尼瓦尔",
     U"艾尼瓦尔", U"阿依古丽",   U"阿依努尔", U"阿曼古丽",   U"阿米娜",   U"帕提古丽",
     U"汗古丽",   U"古丽巴哈尔", U"古丽扎尔", U"古力",       U"买买提江", U"买买提明",
     U"玉山江",   U"玉苏甫",     U"吐鲁洪",   U"阿不都拉",   U"阿不都热", U"阿布都热",
     U"阿卜杜拉", U"艾合麦提",   U"依拉洪",   U"努尔江",     U"努尔别克", U"木拉提别克",
     U"加那尔",   U"古丽米热",   U"木呷",     U"伍呷",       U"阿呷",     U"尔体",
     U"尔哈",     U"拉黑",       U"依古",     U"布哈",       U"布都",     U"吉克",
     U"沙马",     U"沙玛",       U"曲比",     U"曲木",       U"马海",     U"俄木",
     U"尔古",     U"莫色",       U"阿苦",     U"阿硕",       U"海来",     U"吉差",
     U"勒伍",     U"罗洪",       U"倮伍",     U"且沙",       U"瓦扎",     U"吉伍",
     U"吉候",     U"阿牛",       U"吉木",     U"阿约",       U"木乃",     U"阿西",
     U"阿库"});

// The syllables of Tibetan names; what stands beside a known element may be made of them.
constexpr std::u32string_view TIBETAN =
    U"拉旦才让卓玛措吉毛加杰太知智秀藏华周昂多仁增青日巴贡保宫公确却曲切南尼年洛罗落龙桑索益西叶旺完万夏"
    U"项香嘉江央丹登顿珠扎次珍姆措姐东格勒绒根秋赤来烈尕嘎德德白边普布米久美麦冷环彭力努牛贡";

// Names of Dai, Hani, Lahu and Wa: who it is, and one or two syllables
constexpr std::u32string_view BORDER_FIRST = U"岩玉娜扎艾";
constexpr std::u32string_view BORDER_SYLLABLES =
    U"温罕三香块糯叫坎应拉庄甩燕儿波旺朵戈莫体约妥啊嘎布迫思发丕努列四五六俄尔药克倮海保迪胆光恩楠珍腊帕";

// Behind them
constexpr std::u32string_view ENDINGS = U"玛吉娜花汗姆江";

// What tells that a place or a house bears the name.
constexpr std::u32string_view PLACE_ENDINGS = U"省市县区旗镇乡村路街巷道山河湖江州盟寺庙川沟滩苏嘎";

constexpr std::size_t SHORTEST_ELEMENT = 2;
constexpr std::size_t LONGEST_ELEMENT = 5;

// What the lists above say of a character.
enum Sound : std::uint8_t {
  BEGINS_ELEMENT = 1U << 0U,
  TIBETAN_SYLLABLE = 1U << 1U,
  BEGINS_BORDER_NAME = 1U << 2U,
  BORDER_SYLLABLE = 1U << 3U
};

class Sounds {
 public:
  static const Sounds& instance() {
    static const Sounds sounds;
    return sounds;
  }

  bool has(char32_t c, Sound sound) const { return (bits_.of(c) & sound) != 0; }
  bool begins_name(char32_t c) const {
    return (bits_.of(c) & (BEGINS_ELEMENT | TIBETAN_SYLLABLE | BEGINS_BORDER_NAME)) != 0;
  }
  bool make(std::u32string_view part, Sound sound) const {
    return std::all_of(part.begin(), part.end(), [&](char32_t c) { return has(c, sound); });
  }

 private:
  Sounds()
      : bits_({{TIBETAN, TIBETAN_SYLLABLE},
               {BORDER_FIRST, BEGINS_BORDER_NAME},
               {BORDER_SYLLABLES, BORDER_SYLLABLE}}) {
    for (const auto element : ELEMENTS) bits_.add(element.front(), BEGINS_ELEMENT);
  }

  CharacterBits<std::uint8_t> bits_;
};

std::size_t element_end(std::u32string_view t, std::size_t at) {
  if (at >= t.size() || !Sounds::instance().has(t[at], BEGINS_ELEMENT)) return at;
  for (std::size_t length = std::min(LONGEST_ELEMENT, t.size() - at); length >= SHORTEST_ELEMENT;
       --length) {
    if (ELEMENTS.contains(t.substr(at, length))) return at + length;
  }
  return at;
}

// The end of the name that begins at `at`; `at` if there is none.
std::size_t minority_name_end(std::u32string_view t, std::size_t at) {
  constexpr int MOST_ELEMENTS = 4;
  constexpr std::size_t SHORTEST_NAME = 3;
  std::size_t end = at;
  for (int n = 0; n < MOST_ELEMENTS; ++n) {
    const std::size_t next = element_end(t, end);
    if (next == end) break;
    end = next;
  }
  if (end - at < SHORTEST_NAME) return at;
  const bool ending = end < t.size() && ENDINGS.find(t[end]) != ENDINGS.npos;
  if (ending && (t[end] == U'玛' || end + 1 >= t.size() || !is_han(t[end + 1]))) ++end;
  return end;
}

bool ends_label(const NlpArtifacts& a, std::size_t at) {
  const auto& labels = a.of(WordClass::PERSON_LABEL);
  const auto it = first_from(labels, at);
  return it != labels.begin() && !std::prev(it)->from_table && std::prev(it)->end == at;
}

// Whether a name may begin at `at`: behind a mark, a word for a person, or one such as 由.
bool may_begin(const NlpArtifacts& a, std::size_t at) {
  constexpr std::u32string_view LINKS = U"由与和向对经及请";
  const std::u32string_view t = a.folded;
  return at == 0 || !is_han(t[at - 1]) || LINKS.find(t[at - 1]) != LINKS.npos ||
         ends_label(a, at) ||
         (at > 1 && t[at - 1] == U'民' && is_word_boundary(a.chinese_words, at));
}

// 拉旦才让, 拉毛杰: two syllables of which the list has none beside an element that it has
std::size_t tibetan_name_end(const NlpArtifacts& a, std::size_t at) {
  const std::u32string_view t = a.folded;
  const auto closes = [&](std::size_t end) {
    return end >= t.size() || !is_han(t[end]) || is_word_boundary(a.chinese_words, end);
  };
  const Sounds& sounds = Sounds::instance();
  if (!sounds.has(t[at], TIBETAN_SYLLABLE) || !may_begin(a, at)) return at;
  const std::size_t first = element_end(t, at);
  for (std::size_t more = 2; first == at + 2 && more > 0; --more) {
    const std::size_t end = first + more;
    if (end <= t.size() && sounds.make(t.substr(first, more), TIBETAN_SYLLABLE) && closes(end))
      return end;
  }
  const std::size_t second = at + 2;
  if (second + 2 > t.size() || !sounds.make(t.substr(at, 2), TIBETAN_SYLLABLE)) return at;
  const std::size_t end = element_end(t, second);
  return end == second + 2 && closes(end) ? end : at;
}

// 岩温罕, 娜朵: behind a word for persons, or in a list behind such a name
std::size_t border_name_end(const NlpArtifacts& a, std::size_t at, bool listed) {
  const std::u32string_view t = a.folded;
  const Sounds& sounds = Sounds::instance();
  if (!sounds.has(t[at], BEGINS_BORDER_NAME) || !(listed || ends_label(a, at))) return at;
  for (std::size_t more = 2; more > 0; --more) {
    const std::size_t end = at + 1 + more;
    if (end > t.size() || !sounds.make(t.substr(at + 1, more), BORDER_SYLLABLE)) continue;
    if (end >= t.size() || !is_han(t[end]) || is_word_boundary(a.chinese_words, end)) return end;
  }
  return at;
}

bool is_of_place(const NlpArtifacts& a, std::size_t start, std::size_t end) {
  const std::u32string_view t = a.folded;
  if (end < t.size() && PLACE_ENDINGS.find(t[end]) != PLACE_ENDINGS.npos) return true;
  for (const auto c : {WordClass::PLACE, WordClass::COMPANY_FORM, WordClass::INSTITUTION,
                       WordClass::PUBLIC_BODY, WordClass::BANK}) {
    if (is_touched(a.of(c), start, end + 1)) return true;
  }
  return false;
}

}  // namespace

void find_minority_names(const NlpArtifacts& a, std::vector<anonymization::RecognizerResult>& out) {
  const std::u32string_view t = a.folded;
  const Sounds& sounds = Sounds::instance();
  std::size_t found = 0;  // where the last one ends
  for (std::size_t at = 0; at < t.size();) {
    if (!sounds.begins_name(t[at])) {
      ++at;
      continue;
    }
    std::size_t end = minority_name_end(t, at);
    // 扎西顿珠、央金: a short one in a list
    const bool listed = found > 0 && at == found + 1 && t[found] == U'、';
    if (end == at && listed) end = element_end(t, at);
    if (end == at) end = tibetan_name_end(a, at);
    if (end == at) end = border_name_end(a, at, listed);
    if (end == at) {
      ++at;
      continue;
    }
    const bool dotted = (at > 0 && is_dot(t[at - 1])) || (end < t.size() && is_dot(t[end]));
    if (!dotted && !is_of_place(a, at, end)) {
      out.push_back(make_hit(anonymization::entity_type::PERSON, at, end, MINORITY_NAME_SCORE));
      found = end;
    }
    at = end;
  }
}

}  // namespace core::nlp
