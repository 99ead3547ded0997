#include <algorithm>

#include "core/nlp/character_table.hpp"
#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_prose_persons.hpp"
#include "core/nlp/hits.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::WordClass;

constexpr double MINORITY_NAME_SCORE = 0.6;

// What names of Tibetans, Mongols, Uyghurs and Kazakhs are made of, who bear no surname.
constexpr auto ELEMENTS = text::words(
    {U"扎西",     U"次仁",     U"次旺",     U"次旦",     U"次珍",     U"次央",     U"次登",
     U"卓玛",     U"卓嘎",     U"卓央",     U"尼玛",     U"央金",     U"央宗",     U"旺堆",
     U"旺姆",     U"旺杰",     U"旺久",     U"格桑",     U"达瓦",     U"多吉",     U"多杰",
     U"罗布",     U"丹增",     U"旦增",     U"旦巴",     U"拉姆",     U"拉毛",     U"拉珍",
     U"桑珠",     U"桑杰",     U"桑吉",     U"桑姆",     U"顿珠",     U"白玛",     U"洛桑",
     U"罗桑",     U"仁青",     U"仁钦",     U"仁增",     U"平措",     U"彭措",     U"曲珍",
     U"曲扎",     U"曲吉",     U"德吉",     U"边巴",     U"巴桑",     U"索朗",     U"索南",
     U"才让",     U"才旦",     U"强巴",     U"贡布",     U"公保",     U"普布",     U"米玛",
     U"拉巴",     U"其美",     U"班久",     U"加措",     U"嘉措",     U"江措",     U"江央",
     U"降央",     U"益西",     U"阿旺",     U"玉珍",     U"群培",     U"晋美",     U"东珠",
     U"扎巴",     U"德庆",     U"措姆",     U"南杰",     U"朗杰",     U"坚赞",     U"更尕",
     U"更登",     U"尕玛",     U"嘎玛",     U"赤列",     U"土登",     U"占堆",     U"班丹",
     U"俄色",     U"斯朗",     U"泽仁",     U"泽旺",     U"泽翁",     U"四郎",     U"巴特尔",
     U"巴雅尔",   U"巴图",     U"苏和",     U"宝音",     U"宝力德",   U"德力格尔", U"其其格",
     U"其木格",   U"格日勒",   U"图雅",     U"娜仁",     U"萨仁",     U"乌兰",     U"托娅",
     U"孟克",     U"孟和",     U"孟根",     U"朝鲁",     U"敖其尔",   U"那顺",     U"那仁",
     U"布和",     U"吉日嘎拉", U"额尔敦",   U"额尔登",   U"额尔德尼", U"哈斯",     U"斯琴",
     U"高娃",     U"呼和",     U"呼斯楞",   U"呼格吉勒", U"阿古拉",   U"阿拉坦",   U"阿拉腾",
     U"阿木尔",   U"青格勒",   U"青格乐",   U"满都拉",   U"牧仁",     U"毕力格",   U"毕力格图",
     U"达来",     U"特木尔",   U"铁木尔",   U"帖木儿",   U"乌力吉",   U"乌日娜",   U"乌云",
     U"萨如拉",   U"苏日娜",   U"莫日根",   U"朝克",     U"朝格",     U"朝克图",   U"道尔吉",
     U"桑布",     U"丹巴",     U"恩和",     U"照日格图", U"白音",     U"斯日古楞", U"德格吉日呼",
     U"巴音",     U"塔娜",     U"通拉嘎",   U"阿茹娜",   U"娜日苏",   U"查干",     U"巴根",
     U"赛汗",     U"赛罕",     U"吉雅",     U"哈达",     U"呼日勒",   U"巴达玛",   U"奥其尔",
     U"图门",     U"图力古尔", U"才仁",     U"加甫",     U"买买提",   U"麦麦提",   U"艾买提",
     U"买合木提", U"阿不都",   U"阿卜杜",   U"阿布都",   U"库尔班",   U"吐尔逊",   U"吐尔洪",
     U"艾合买提", U"玉素甫",   U"木合塔尔", U"古丽",     U"阿依",     U"热依汗",   U"迪丽",
     U"迪力",     U"阿迪力",   U"艾力",     U"亚森",     U"凯赛尔",   U"帕提",     U"热合曼",
     U"热西提",   U"热西丁",   U"克里木",   U"艾山",     U"依明",     U"伊明",     U"司马义",
     U"牙生",     U"图尔荪",   U"托合提",   U"肉孜",     U"努尔",     U"努尔兰",   U"叶尔",
     U"叶尔江",   U"别克",     U"巴合提",   U"哈力克",   U"沙吾提",   U"阿不来提", U"阿布力",
     U"阿力木",   U"米吉提",   U"依布拉音", U"斯拉木",   U"祖农",     U"再娜",     U"米热",
     U"尼亚孜",   U"木拉提",   U"赛买提",   U"吾买尔",   U"达吾提",   U"居马",     U"哈山"});

// Behind them
constexpr std::u32string_view ENDINGS = U"玛吉娜花汗姆江";

// What tells that a place or a house bears the name.
constexpr std::u32string_view PLACE_ENDINGS = U"省市县区旗镇乡村路街巷道山河湖江州盟寺庙川沟滩苏嘎";

constexpr std::size_t SHORTEST_ELEMENT = 2;
constexpr std::size_t LONGEST_ELEMENT = 5;

std::size_t element_end(std::u32string_view t, std::size_t at) {
  static const auto first = CharacterTable::first_of(ELEMENTS);
  if (at >= t.size() || !first.contains(t[at])) return at;
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
  std::size_t found = 0;  // where the last one ends
  for (std::size_t at = 0; at < t.size();) {
    if (!is_han(t[at])) {
      ++at;
      continue;
    }
    std::size_t end = minority_name_end(t, at);
    // 扎西顿珠、央金: a short one in a list
    if (end == at && found > 0 && at == found + 1 && t[found] == U'、') end = element_end(t, at);
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
