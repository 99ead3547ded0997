#include <cstdint>
#include <iterator>
#include <span>
#include <vector>

#include "core/nlp/character_table.hpp"
#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_lexicon.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/nlp/name_pieces.hpp"
#include "core/nlp/rare_characters.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/regex.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
using text::Regex;

constexpr double PLACE_SCORE = 0.7;
constexpr double ADDRESS_SCORE = 0.85;

// Between a label and an address
const Regex RE_ADDRESS_SEPARATOR(
    "RE_ADDRESS_SEPARATOR",
    UR"((?:[ ]?(?:\([^()\n]{1,12}\)|[A-Za-z. ]{2,24}(?=:)))?[ ]{0,3}(?:为|是|:|在)?[ ]{0,8})");

// Behind a street: 与西苑路交叉口东北角
const Regex RE_CROSSING(
    "RE_CROSSING",
    UR"((?:(?:与|和|、|-)[\u4e00-\u9fff]{2,6}?[路街道])?(?:交叉路口|交叉口|交汇处|交界处|交会处|路口)(?:往?[东南西北]{1,2}[侧角]?(?:\d{1,4}米)?)?)");

// 东至, 北接: a side of a parcel, and what lies there
const Regex RE_BOUNDARY(
    "RE_BOUNDARY",
    UR"((?<![\u4e00-\u9fff])[东南西北]{1,2}(?:侧)?(?:至|临|接|抵|靠|邻|起)([\u4e00-\u9fff]{2,12})(?=[,，、。;；)\n]|\d|[A-Z]))",
    Regex::Scanned::YES);

// Behind a street: 以北、深圳路以东
const Regex RE_SIDES("RE_SIDES",
                     UR"(以[东南西北](?:[、,，][\u4e00-\u9fff]{2,8}?[路街道河]以[东南西北]){0,3})");

// Behind a town or a village: 王家沟, 二社
const Regex RE_HAMLET(
    "RE_HAMLET",
    UR"((?:[\u4e00-\u9fff]{1,4}?(?:嘎查|[沟坪湾坝寨堡屯庄坡垸塆队组])|[\u4e00-\u9fff]{0,4}?[一二三四五六七八九十\d]{1,2}[社队]))");

// Behind a floor or a house: 之一, (自编2号), (集群注册)
const Regex RE_HOUSE_REMARK(
    "RE_HOUSE_REMARK",
    UR"(之[一二三四五六七八九十\d]{1,2}(?:[号室])?|之?\((?:自编|自主申报|集群|一照多址|仅限办公|住所申报|入驻|托管)[^()\n]{0,24}\)|\(自编[^()\n]{1,12}\))");

// In an address: (东疆综合保税区)亚洲路
const Regex RE_BRACKETED_PART(
    "RE_BRACKETED_PART",
    UR"(\(([\u4e00-\u9fff]{2,14}(?:区|园|镇|村|街道|城|基地|港|中心|大厦|广场|大楼|厂))\))");

// 位于土塘村的宿舍, 到杨浦站: behind such a word a name of that shape is a place.
const Regex RE_VISITED(
    "RE_VISITED",
    UR"((?:位于|坐落于|坐落在|地处|驻地|常驻|前往|途经|途径|发至|发往|运至|运往|送至|送往|抵达|到达|开往|驶往|迁至|搬至|落户|毗邻|紧邻|临近|靠近|[在到至赴经往驻临沿自从、和及与])([\u4e00-\u9fff]{2,5}?(?:大道|工业园区|工业园|工业区|产业园|科技园|科技城|物流园|开发区|农场|林场|水库|火车站|高铁站|客运站|服务区|收费站|社区|街道|嘎查|苏木|[村镇乡])))",
    Regex::Scanned::YES);

// 哈大高速, 京沪铁路: two towns or provinces, each by one character
const Regex RE_ROUTE(
    "RE_ROUTE",
    UR"((?:(?<![A-Za-z0-9])[GS]\d{1,4})?([京津沪渝冀豫云辽黑湘皖鲁新苏浙赣鄂桂甘晋蒙陕吉闽贵粤青藏川宁琼港澳台鹤珲霍瑞汕呼伦绍嘉湖苏通锡常溧宜盐靖泰镇丹启崇舟甬温丽龙衢景千开焦洛平商周驻信叶鹿大哈沈长广深珠杭甬成绵郑汉蓉昆福厦泉济连徐宣包银兰西武宜荣乌太石海秦绥满丹锡呼洛乐雅巴达遂沿梅汕湛茂阳惠莞佛虎连衡邵怀张常岳襄随孝黄安合芜宁马铜池滁蚌淮阜六亳]{2,3})(?:高速公路|高速|高铁|铁路|城际))",
    Regex::Scanned::YES);

// 318国道K2810+300处, G60高速
const Regex RE_NUMBERED_ROAD(
    "RE_NUMBERED_ROAD",
    UR"((?<![A-Za-z0-9.-])((?:[GSX]\d{1,4}|\d{2,3})(?:国道|省道|县道|高速公路|高速)(?:K?\d{1,5}\+\d{1,4}(?:米)?处?)?))",
    Regex::Scanned::YES);

// Behind a room: 、1908
const Regex RE_MORE_ROOMS("RE_MORE_ROOMS", UR"((?:[、/-]\d{3,4}){1,4}(?![\d.])(?:室|号|房)?)");

// 1897公里+400米, K12+350 behind a road
const Regex RE_KILOMETRE(
    "RE_KILOMETRE",
    UR"((?:K?\d{1,5}(?:公里|千米|km)?\+\d{1,4}(?:米|m)?|\d{1,5}(?:公里|千米)(?:处)?)(?:处)?)");

// What ends a part of an address. Longer words first.
constexpr std::u32string_view ADDRESS_UNITS[] = {
    U"特别行政区", U"自治区", U"自治州", U"自治县", U"开发区", U"工业园区", U"产业园区", U"产业园",
    U"工业园",     U"科技园", U"创业园", U"度假区", U"示范区", U"合作区",   U"保税区",   U"经济区",
    U"新区",       U"园区",   U"街道",   U"社区",   U"地区",   U"大街",     U"大道",     U"公路",
    U"大厦",       U"广场",   U"中心",   U"公寓",   U"花园",   U"小区",     U"单元",     U"厂房",
    U"底商",       U"商城",   U"国际城", U"号楼",   U"会议室", U"实验楼",   U"办公楼",   U"仓库",
    U"丁目",       U"番地",   U"码头",   U"小镇",   U"街坊",   U"路段",     U"地块",     U"农庄",
    U"号房",       U"号门",   U"号库",   U"号馆",   U"号铺",   U"号仓库",   U"号仓",     U"号厂房",
    U"号车间",     U"号商铺", U"号院",   U"号档",   U"号摊位", U"号门面",   U"号宿舍",   U"号公寓",
    U"号写字楼",   U"商铺",   U"门面",   U"摊位",   U"试验区", U"家属院",   U"东户",     U"西户",
    U"机场",       U"东段",   U"西段",   U"南段",   U"北段",   U"村部",     U"村口",     U"中段",
    U"一段",       U"二段",   U"三段",   U"四段",   U"五段",   U"省",       U"市",       U"区",
    U"县",         U"旗",     U"盟",     U"州",     U"镇",     U"乡",       U"村",       U"路",
    U"街",         U"道",     U"巷",     U"弄",     U"胡同",   U"号",       U"幢",       U"栋",
    U"座",         U"楼",     U"层",     U"室",     U"组",     U"院",       U"园",       U"苑",
    U"庄",         U"里",     U"港",     U"岛",     U"屯",     U"段",       U"期",       U"城",
    U"汇",         U"塔",     U"馆",     U"厦",     U"河北岸", U"岸",       U"町",       U"厅",
    U"门",         U"东户",   U"西户"};

// Units that a place may be followed by without being an address: 无锡路 is one, 无锡的路 is not.
constexpr std::u32string_view ADMINISTRATIVE = U"省市区县旗盟州镇乡村港岛";
constexpr std::u32string_view STREETS = U"路街道巷弄";

// Characters of sentences; no name of a street or a building holds them.
constexpr std::u32string_view STOPS =
    U"的与由在于为将应须及或并且该其是有被向对按就自至到从已未不无可给让使此各每因若则即但而也还内跨";

// ADDRESS_UNITS by their first characters, each group in their order.
class AddressUnits {
 public:
  static const AddressUnits& instance() {
    static const AddressUnits units;
    return units;
  }

  std::span<const std::u32string_view> beginning_with(char32_t c) const {
    return groups_[group_.of(c)];
  }

 private:
  static_assert(std::size(ADDRESS_UNITS) < 0xFF);

  AddressUnits() : groups_(1) {
    for (const auto unit : ADDRESS_UNITS) {
      if (group_.of(unit.front()) == 0) {
        group_.add(unit.front(), static_cast<std::uint8_t>(groups_.size()));
        groups_.emplace_back();
      }
      groups_[group_.of(unit.front())].push_back(unit);
    }
  }

  CharacterBits<std::uint8_t> group_{};
  std::vector<std::vector<std::u32string_view>> groups_;  // the first one is empty
};

const CharacterTable STOP_TABLE(STOPS);

bool is_room_character(char32_t c) { return text::is_ascii_alnum(c) || c == U'-' || c == U'#'; }

class ChinesePlaceSearch {
 public:
  explicit ChinesePlaceSearch(const NlpArtifacts& a)
      : a_(a), t_(a.folded), reader_(a), begins_(a.folded.size()) {
    for (const auto& word : a.of(WordClass::CLAUSE_WORD)) begins_[word.start] |= CLAUSE_WORD;
    for (const auto& body : a.of(WordClass::PUBLIC_BODY)) begins_[body.start] |= BODY;
  }

  std::vector<RecognizerResult> run() {
    from_places();
    from_labels();
    from_boundaries();
    by_shape();
    from_house_numbers();
    from_villages();
    from_prepositions();
    return std::move(out_);
  }

 private:
  struct Address {
    std::size_t end = 0;
    int units = 0;
    bool has_number = false;
  };

  void add(std::size_t start, std::size_t end, double score) {
    out_.push_back(make_hit(anonymization::entity_type::LOCATION, start, end, score));
  }

  void from_places() {
    std::size_t done = 0;
    for (const auto& place : places()) {
      if (place.start < done || is_covered(a_.of(WordClass::SHIELD), place.start, place.end) ||
          is_covered(a_.of(WordClass::CURRENCY), place.start, place.end)) {
        continue;
      }
      const Address address = read(place.start, place.end);
      add(place.start, address.end, address.units > 0 ? ADDRESS_SCORE : PLACE_SCORE);
      done = address.end;
    }
  }

  // The words of the list of places, and the divisions among the words of the text.
  std::vector<WordHit> places() const {
    std::vector<WordHit> all = a_.of(WordClass::PLACE);
    for (const auto& word : a_.chinese_words) {
      if (is_division_name(word) || is_shaped_division(word)) {
        all.push_back({word.start, word.end});
      }
    }
    std::sort(all.begin(), all.end(), [](const WordHit& x, const WordHit& y) {
      return x.start != y.start ? x.start < y.start : x.end > y.end;
    });
    return all;
  }

  // 东乡县: a place of the dictionary that says what it is
  bool is_shaped_division(const recognition::ChineseWord& word) const {
    constexpr std::u32string_view UNITS = U"市县区旗镇乡";
    constexpr std::size_t SHORTEST = 3;
    return word.word_class == recognition::ChineseWordClass::PLACE && word.length() >= SHORTEST &&
           UNITS.find(t_[word.end - 1]) != UNITS.npos &&
           !is_generic_division(t_.substr(word.start, word.length()));
  }

  static bool is_generic_division(std::u32string_view name) {
    static constexpr auto GENERIC =
        text::words({U"东城区", U"西城区", U"上城区", U"新城区", U"小城镇", U"新市区", U"市中区",
                     U"各乡镇", U"全县",   U"全市",   U"各县",   U"各县区", U"该县",   U"本县",
                     U"解放区", U"港口区", U"站前区", U"老边区", U"开发区", U"新区",   U"城镇"});
    return GENERIC.contains(name);
  }

  // 到天柱, 从五常: what is an everyday word as well is a place behind such a word.
  bool is_gone_to(const recognition::ChineseWord& word) const {
    constexpr std::u32string_view LINKS = U"到赴往驻抵从自至在于";
    constexpr unsigned RARE = 13;
    return word.start > 0 && LINKS.find(t_[word.start - 1]) != LINKS.npos &&
           word.frequency <= RARE && is_word_boundary(a_.chinese_words, word.start - 1);
  }

  // 连云港或日照, 广州—白银, 装货港：日照: what is an everyday word as well is a place beside
  // one, or alone behind the label of an address.
  bool stands_with_place(const recognition::ChineseWord& word) const {
    constexpr std::u32string_view LINKS = U"或和及与、/-~至到";
    constexpr std::u32string_view SIGNS = U"、/-~";
    const auto is_link = [&](std::size_t i) {
      return LINKS.find(t_[i]) != LINKS.npos &&
             (SIGNS.find(t_[i]) != SIGNS.npos || is_word_boundary(a_.chinese_words, i + 1));
    };
    const std::size_t start = word.start;
    const std::size_t end = word.end;
    if (is_signed_there(start, end)) return true;
    const bool opens = start == 0 || !is_han(t_[start - 1]) || is_link(start - 1);
    const bool closes = end >= t_.size() || !is_han(t_[end]) || is_link(end);
    if (!opens || !closes) return false;
    if (start > 1 && is_link(start - 1) && ends_place(start - 1)) return true;
    if (end + 1 < t_.size() && is_link(end) && reader_.place_end(end + 1) > end + 1) return true;
    if (end < t_.size() && is_link(end)) return false;
    std::size_t label = start;
    while (label > 0 && (t_[label - 1] == U':' || t_[label - 1] == U' ')) --label;
    return label < start && ends_word_of(WordClass::ADDRESS_LABEL, label);
  }

  // 在白银签署, 于日照交货
  bool is_signed_there(std::size_t start, std::size_t end) const {
    static constexpr auto ACTS =
        text::words({U"签署", U"签订", U"签约", U"订立", U"签字", U"举行", U"召开", U"交货",
                     U"交付", U"开庭", U"仲裁", U"装货", U"卸货", U"装船", U"登船", U"注册",
                     U"设立", U"成立", U"居住", U"工作", U"办公", U"施工", U"收货", U"提货"});
    constexpr std::u32string_view IN = U"在于";
    return start > 0 && IN.find(t_[start - 1]) != IN.npos && ACTS.contains(t_.substr(end, 2)) &&
           is_word_boundary(a_.chinese_words, start);
  }

  bool ends_place(std::size_t at) const {
    if (ends_word_of(WordClass::PLACE, at)) return true;
    const auto* const word = word_at(a_.chinese_words, at - 1);
    if (word == nullptr || word->end != at) return false;
    return word->word_class == recognition::ChineseWordClass::PLACE ||
           word->division != Division::NONE;
  }

  bool ends_word_of(WordClass c, std::size_t at) const {
    const auto it = first_from(a_.of(c), at);
    return it != a_.of(c).begin() && std::prev(it)->end == at;
  }

  // 屏山县; also 扬中, where nothing that could make it part of a longer name stands beside it.
  bool is_division_name(const recognition::ChineseWord& word) const {
    if (word.division == Division::NONE) return false;
    if (word.length() > 2 && !word.bare_division) {
      return !is_generic_division(t_.substr(word.start, word.length()));
    }
    constexpr unsigned RARE = 9;
    if (word.ambiguous_division && word.frequency > RARE) {
      return is_gone_to(word) || stands_with_place(word);
    }
    if (!reader_.is_right_edge(word.end)) return false;
    const auto left = reader_.before(word.start, word.start - std::min<std::size_t>(word.start, 4));
    // 福建|平潭
    return left.empty() || (left.pieces.size() == 1 && left.at_edge &&
                            left.pieces.front().kind == PieceKind::PLACE);
  }

  // 规划路, 人民路: any such thing.
  bool is_any(std::size_t start, std::size_t end) const {
    constexpr std::u32string_view PLAIN = U"村土公马水田机便小大老新乡石";
    if (end == start + 2 && PLAIN.find(t_[start]) != PLAIN.npos) return true;
    // 文化大道 is one, 规划大道 any.
    if (end >= start + 4 && t_.substr(end - 2, 2) == U"大道") {
      return t_.substr(start, end - start - 2) == U"规划";
    }
    return are_ordinary_words(a_.chinese_words, start, end) ||
           is_ordinary_word(t_.substr(start, end - start - 1), 16);
  }

  // 东至打邦河, 北接白岩脚: what bounds a parcel, unless it is any road or field.
  void from_boundaries() {
    for (const auto& m : RE_BOUNDARY.find_all(t_, a_.index)) {
      const std::size_t start = m.start(1);
      const Address address = read(start, reader_.place_end(start));
      std::size_t end = std::max(address.end, start);
      if (address.units == 0) end = m.end(1);
      constexpr std::u32string_view FEATURES =
          U"河江湖海港湾沟渠坝塘库泉溪涧山岭坡岩崖峰洞路街巷道桥村屯寨坪垭坳堤圩场";
      const bool feature = FEATURES.find(t_[end - 1]) != FEATURES.npos;
      if (end < start + 2 || is_any(start, end)) continue;
      if (address.units > 0 || feature || unknown_run(a_.chinese_words, start).end > start + 1) {
        add(start, end, PLACE_SCORE);
      }
    }
  }

  void from_labels() {
    for (const auto& label : a_.of(WordClass::ADDRESS_LABEL)) {
      const auto m = RE_ADDRESS_SEPARATOR.match_at(t_, label.end);
      const std::size_t at = m ? m->end() : label.end;
      constexpr std::u32string_view ANY = U"本该各我贵";
      if (at >= t_.size() || !is_han(t_[at]) || ANY.find(t_[at]) != ANY.npos) continue;
      const Address address = read(at, end_of_word_at(a_.of(WordClass::PLACE), at));
      if (address.units >= 2 || (address.units == 1 && address.has_number)) {
        add(at, address.end, ADDRESS_SCORE);
      }
    }
  }

  // 尚志大街158号: a street with its number, whose name is no everyday word. 人民路 is one by
  // its number.
  void from_house_numbers() {
    for (const auto& run : a_.numbers) {
      if (!is_house_number(run)) continue;
      const std::size_t unit = run.start - 1;
      const std::size_t start = street_start(unit);
      if (start == unit) continue;
      const bool ordinal = text::is_ascii_digit(t_[start]) || t_[start] == U'第';
      if (ordinal || is_ordinary_street(t_.substr(start, unit + 1 - start))) continue;
      const Address address = read(start, start);
      if (address.units > 0 && address.has_number) add(start, address.end, ADDRESS_SCORE);
    }
  }

  // 158号, 12-3号 behind 街
  bool is_house_number(const recognition::NumberRun& run) const {
    constexpr std::size_t LONGEST_NUMBER = 5;
    std::size_t end = run.end;
    if (run.start < 3 || run.end - run.start > LONGEST_NUMBER || end >= t_.size()) return false;
    if (t_[end] == U'-' || t_[end] == U'号') {
      while (end < t_.size() && is_room_character(t_[end])) ++end;
    }
    return end < t_.size() && t_[end] == U'号' && STREETS.find(t_[run.start - 1]) != STREETS.npos;
  }

  // Where the name of the street that ends with the character at `unit` begins: the whole
  // phrase, or what stands behind a word such as 在. `unit` if there is none.
  std::size_t street_start(std::size_t unit) const {
    constexpr std::size_t LONGEST_STREET = 5;
    constexpr std::u32string_view LEADS = U"原现即沿";
    std::size_t start = unit;
    while (start > 0 && unit - start < LONGEST_STREET && is_han(t_[start - 1]) &&
           !stops_part(start - 1)) {
      --start;
    }
    const bool whole = start == 0 || !is_han(t_[start - 1]) || stops_part(start - 1);
    if (!whole || unit < start + 2) return unit;
    return unit > start + 2 && LEADS.find(t_[start]) != LEADS.npos ? start + 1 : start;
  }

  // 生产线路3号, 电路2号, 管道1号: no street
  static bool is_ordinary_street(std::u32string_view street) {
    static constexpr auto THINGS =
        text::words({U"线路", U"电路", U"回路", U"管道", U"通道", U"轨道", U"车道", U"匝道",
                     U"隧道", U"水路", U"油路", U"气路", U"支路", U"管路", U"弱电", U"巷道",
                     U"频道", U"渠道", U"航道", U"跑道", U"街道", U"赛道", U"专线", U"道路"});
    return THINGS.contains(street.substr(street.size() - 2));
  }

  // A cell or a phrase that is a single word such as 鼠浪湖岛, 洛社镇. Not 目的港.
  void by_shape() {
    constexpr std::u32string_view GENERIC = U"装卸目的运起中转到达本各该进出口空海群半";
    const auto next = [&](std::size_t from) {
      return find_rare(t_, from, {U'岛', U'港', U'镇', U'县'});
    };
    for (std::size_t i = next(2); i < t_.size(); i = next(i + 1)) {
      if (is_word_behind(i + 1)) continue;
      std::size_t start = i;
      while (start > 0 && i - start < 5 && is_han(t_[start - 1])) --start;
      const std::size_t length = i - start;
      if (length < 2 || length > 4 || (start > 0 && is_han(t_[start - 1]))) continue;
      // 晋泓香港
      const auto* const word = word_at(a_.chinese_words, i);
      if (word != nullptr && word->start > start &&
          end_of_word_at(a_.of(WordClass::PLACE), word->start) == i + 1) {
        continue;
      }
      const auto name = t_.substr(start, length);
      if (name.find_first_of(GENERIC) == name.npos && name.find_first_of(STOPS) == name.npos)
        add(start, i + 1, PLACE_SCORE);
    }
  }

  // 柳林村三组, 颍上县江店孜镇...: the phrase begins with a division that is not known, and
  // more of an address follows.
  void from_villages() {
    constexpr std::u32string_view DIVISIONS = U"县镇乡村";
    constexpr std::u32string_view ENDS = U"组号室队村部社";
    constexpr std::u32string_view GENERIC = U"本该各全某农乡行山住居现在位往去";
    std::size_t end_before = t_.size();
    for (const auto& word : a_.chinese_words) {
      const std::size_t i = word.start;
      const bool begins_run = i != end_before;
      end_before = word.end;
      if (!begins_run || i + 3 >= t_.size()) continue;
      std::size_t unit = i + 2;
      while (unit < i + 5 && unit < t_.size() && DIVISIONS.find(t_[unit]) == DIVISIONS.npos) ++unit;
      if (unit >= t_.size() || unit == i + 5 || GENERIC.find(t_[i]) != GENERIC.npos) continue;
      if (t_.substr(i, unit - i).find_first_of(STOPS) != t_.npos) continue;
      const Address address = read(i, unit + 1);
      if (address.units > 0 && ENDS.find(t_[address.end - 1]) != ENDS.npos) {
        add(i, address.end, ADDRESS_SCORE);
      }
    }
  }

  // 位于土塘村的, 到杨浦站, 经哈大高速: no list has the place, but how it is spoken of tells.
  void from_prepositions() {
    for (const auto& m : RE_VISITED.find_all(t_, a_.index)) {
      const std::size_t start = behind_links(m.start(1));
      if (m.end(1) >= start + 3 && is_own_name(start, m.end(1)) && ends_there(m.end(1))) {
        add(start, m.end(1), PLACE_SCORE);
      }
    }
    for (const auto& m : RE_NUMBERED_ROAD.find_all(t_, a_.index)) {
      add(m.start(), m.end(), PLACE_SCORE);
    }
    constexpr unsigned COMMON_PAIR = 12;
    for (const auto& m : RE_ROUTE.find_all(t_, a_.index)) {
      if (!is_ordinary_word(m.text(1), COMMON_PAIR) &&
          is_word_boundary(a_.chinese_words, m.start())) {
        add(m.start(), m.end(), PLACE_SCORE);
      }
    }
    for (const auto& word : a_.chinese_words) {
      const auto at = static_cast<std::size_t>(word.end);
      const bool place = word.division != Division::NONE ||
                         word.word_class == recognition::ChineseWordClass::PLACE;
      if (!place || word.length() < 2 || at >= t_.size()) continue;
      const auto* const station = word_at(a_.chinese_words, at);
      if (station == nullptr || !is_station(t_.substr(at, station->length()))) continue;
      add(word.start, station->end, PLACE_SCORE);
    }
  }

  // 土塘村|的, 虹桥火车站|见过; no word begins before the end.
  bool ends_there(std::size_t end) const {
    constexpr std::u32string_view BEHIND = U"的等及和与设办有内处开发生之西东南北一附境沿周建项";
    constexpr std::u32string_view UNITS = U"村镇乡";
    if (end >= t_.size() || !is_han(t_[end])) return true;
    if (BEHIND.find(t_[end]) != BEHIND.npos) return true;
    return is_word_boundary(a_.chinese_words, end) &&
           (UNITS.find(t_[end - 1]) == UNITS.npos || reader_.is_right_edge(end));
  }

  // 五常|站, 郑州|东站
  static bool is_station(std::u32string_view word) {
    constexpr std::u32string_view SIDES = U"东西南北";
    return word == U"站" || word == U"港" || word == U"口岸" || word == U"机场" ||
           word == U"火车站" || word == U"高铁站" ||
           (word.size() == 2 && word[1] == U'站' && SIDES.find(word[0]) != SIDES.npos);
  }

  // The end of the words such as 在 that an alternative of the pattern has left.
  std::size_t behind_links(std::size_t at) const {
    constexpr std::u32string_view LINKS = U"在到至赴经往驻临沿自从、和及与于";
    for (const std::u32string_view lead : {U"位于", U"坐落", U"地处", U"常驻", U"前往", U"毗邻"}) {
      if (t_.substr(at).starts_with(lead)) at += lead.size();
    }
    while (at < t_.size() && LINKS.find(t_[at]) != LINKS.npos) ++at;
    return at;
  }

  // 土塘村, 联山工业园; not 农村, 各乡镇, 新农村, 现代工业园.
  bool is_own_name(std::size_t start, std::size_t end) const {
    constexpr std::u32string_view GENERIC =
        U"本该各全某农乡行新老两几多每同一二三四五六七八九十外邻";
    constexpr std::size_t FEWEST = 2;
    const auto name = t_.substr(start, end - start);
    if (name.find_first_of(STOPS) != name.npos || GENERIC.find(name.front()) != GENERIC.npos ||
        !is_word_boundary(a_.chinese_words, start) || is_ordinary_word(name)) {
      return false;
    }
    // The name proper holds no word of more than one character that is an everyday one.
    std::size_t own = 0;
    for (std::size_t i = word_index(a_.chinese_words, start);
         i < a_.chinese_words.size() && a_.chinese_words[i].start < end; ++i) {
      const auto& word = a_.chinese_words[i];
      constexpr unsigned COMMON = 17;
      const bool everyday = word.word_class == recognition::ChineseWordClass::ORDINARY &&
                            word.length() > 1 && word.frequency > COMMON;
      if (everyday && word.end < end && word.division == Division::NONE) return false;
      if (word.start < end - 1) own += word.length();
    }
    return own >= FEWEST;
  }

  bool is_word_behind(std::size_t at) const {
    constexpr std::u32string_view PARTICLES = U"的等及和与";
    return at < t_.size() && is_han(t_[at]) && PARTICLES.find(t_[at]) == PARTICLES.npos;
  }

  // Reads the parts of an address from `start`; up to `known` it is known.
  Address read(std::size_t start, std::size_t known) const {
    Address address{known};
    bool division = known > start && is_division(known);
    const bool free = known == start;
    read_units(address, division, free);
    const bool town = address.end > start && is_division(address.end);
    if (town && address.units == 0) read_bracket(address);
    if (address.units > 0 || (town && t_[address.end - 1] == U'镇')) {
      const std::size_t before = address.end;
      read_tail(address);
      // 交叉口西北角 + 汽配城C区07号
      if (address.end > before) {
        division = true;
        read_units(address, division, free);
        read_room(address);
      }
    }
    return address;
  }

  // `free`: no place begins the address; `division`: one is known by what it says it is.
  void read_units(Address& address, bool& division, bool free) const {
    while (true) {
      const std::size_t place = address_place_end(address.end);
      if (place > address.end) {
        address.end = place;
        division = division || is_division(place);
        continue;
      }
      const std::size_t end = unit_end(address.end, address.units == 0 && !free && !division);
      if (end == address.end) break;
      address.has_number |= text::is_ascii_digit(t_[address.end]) || number_before(end);
      address.end = end;
      ++address.units;
    }
  }

  // 桂城街道|(三山新城)|港口路
  void read_bracket(Address& address) const {
    const auto m = RE_BRACKETED_PART.match_at(t_, address.end);
    if (!m || unit_end(m->end(), false) == m->end()) return;
    address.end = m->end();
    bool division = true;
    read_units(address, division, false);
  }

  // What may stand behind the last part: a hamlet, kilometres, a crossing, a room.
  void read_tail(Address& address) const {
    if (const auto m = RE_HAMLET.match_at(t_, address.end); m && is_hamlet(*m)) {
      address.end = m->end();
    }
    read_bracket(address);
    for (const Regex* regex : {&RE_SIDES, &RE_KILOMETRE, &RE_CROSSING}) {
      // 县城|12公里 is a distance.
      constexpr std::u32string_view ROADS = U"路道线速段桥";
      if (regex == &RE_KILOMETRE && is_han(t_[address.end - 1]) &&
          ROADS.find(t_[address.end - 1]) == ROADS.npos) {
        continue;
      }
      if (const auto m = regex->match_at(t_, address.end)) address.end = m->end();
    }
    read_room(address);
    if (const auto m = RE_HOUSE_REMARK.match_at(t_, address.end)) address.end = m->end();
  }

  void read_room(Address& address) const {
    const std::size_t room = room_end(address.end);
    if (room > address.end || t_[room - 1] == U'室') {
      const auto more = RE_MORE_ROOMS.match_at(t_, room);
      address.end = more ? more->end() : room;
    }
  }

  // The end of the place at `at`; of the names of towns only those that say what they are.
  std::size_t address_place_end(std::size_t at) const {
    const std::size_t listed = end_of_word_at(a_.of(WordClass::PLACE), at);
    if (listed > at) return listed;
    const auto* const word = word_at(a_.chinese_words, at);
    if (word == nullptr || word->start != at ||
        word->word_class != recognition::ChineseWordClass::PLACE || word->length() < 3) {
      return at;
    }
    return word->division != Division::NONE ? word->end : at;
  }

  // 江苏省, 吴中区: more of an address is to be expected than behind 无锡.
  bool is_division(std::size_t end) const {
    constexpr std::u32string_view DIVISIONS = U"省市区县盟旗镇乡道州";
    // 台州 and 广州 go on like any city; 自治州 is a division.
    if (t_[end - 1] == U'州') return end >= 2 && t_[end - 2] == U'治';
    return DIVISIONS.find(t_[end - 1]) != DIVISIONS.npos;
  }

  bool number_before(std::size_t end) const {
    return end >= 2 && text::is_ascii_alnum(t_[end - 2]);
  }

  // The end of the part that begins at `at`; `at` if none does.
  std::size_t unit_end(std::size_t at, bool first) const {
    constexpr std::size_t LONGEST_PART = 12;
    std::size_t best = at;
    // 诸城-广州: a route, no address
    if (at + 1 < t_.size() && t_[at] == U'-' && is_han(t_[at + 1])) return at;
    for (std::size_t i = at; i < t_.size() && i - at < LONGEST_PART; ++i) {
      const char32_t c = t_[i];
      if (stops_part(i)) break;
      if (const std::size_t unit = unit_at(i);
          unit > 0 && (i > at || unit > 1 || ADMINISTRATIVE.find(t_[i]) != ADMINISTRATIVE.npos ||
                       STREETS.find(t_[i]) != STREETS.npos)) {
        if (!ends_organization(i + unit)) best = i + unit;
        break;
      }
      if (!is_han(c) && !is_room_character(c)) break;
    }
    if (best == at || !first) return best;
    return goes_on_well(at, best) ? best : at;
  }

  // Whether no part of an address goes on at `i`.
  bool stops_part(std::size_t i) const {
    if (ends_in_body(i) || begins_other_address(i)) return true;
    return (STOP_TABLE.contains(t_[i]) && !is_inside_name(i) && !opens_street(i)) ||
           is_clause_at(i);
  }

  // 开通镇|向海大街, 城关镇|和顺路: behind a town a street may begin with such a word.
  bool opens_street(std::size_t i) const {
    constexpr std::u32string_view WORDS = U"向同自为";
    constexpr std::u32string_view TOWNS = U"镇乡区县市道";
    constexpr std::size_t LONGEST = 5;
    if (i == 0 || WORDS.find(t_[i]) == WORDS.npos || TOWNS.find(t_[i - 1]) == TOWNS.npos) {
      return false;
    }
    for (std::size_t at = i + 2; at < std::min(t_.size(), i + LONGEST); ++at) {
      if (STREETS.find(t_[at]) != STREETS.npos) return true;
      if (!is_han(t_[at]) || STOPS.find(t_[at]) != STOPS.npos) return false;
    }
    return false;
  }

  // 高酿镇|和石洞镇
  bool begins_other_address(std::size_t at) const {
    constexpr std::u32string_view LINKS = U"和同";
    if (at >= t_.size() || LINKS.find(t_[at]) == LINKS.npos) return false;
    const auto* const word = word_at(a_.chinese_words, at);
    return word != nullptr && word->length() == 1 && address_place_end(at + 1) > at + 1;
  }

  // 秦州区|市场监督|管理局: no part of an address goes on there.
  bool ends_in_body(std::size_t at) const {
    constexpr std::u32string_view ENDS = U"局院厅署会关庭";
    if ((begins_[at] & BODY) == 0) return false;
    const std::size_t end = end_of_word_at(a_.of(WordClass::PUBLIC_BODY), at);
    return end > at && ENDS.find(t_[end - 1]) != ENDS.npos;
  }

  bool is_hamlet(const text::Match& m) const {
    constexpr std::u32string_view ABOVE = U"镇乡村";
    constexpr std::u32string_view GROUPS = U"社队组";
    return ABOVE.find(t_[m.start() - 1]) != ABOVE.npos && reader_.is_right_edge(m.end()) &&
           m.text().find_first_of(STOPS) == std::u32string_view::npos &&
           !is_ordinary_word(m.text()) &&
           (GROUPS.find(m.text().back()) == GROUPS.npos || is_numbered(m.text()) ||
            !are_ordinary_words(a_.chinese_words, m.start(), m.end()));
  }

  // 七社
  static bool is_numbered(std::u32string_view hamlet) {
    constexpr std::u32string_view NUMERALS = U"一二三四五六七八九十0123456789";
    return NUMERALS.find(hamlet.front()) != NUMERALS.npos;
  }

  // 自 in 自流井, 向 in 向阳路: no word of running text.
  bool is_inside_name(std::size_t i) const {
    if (t_.substr(i).starts_with(U"自贸") || t_.substr(i).starts_with(U"自由贸易") ||
        t_.substr(i).starts_with(U"由贸易"))
      return true;
    const auto* const word = word_at(a_.chinese_words, i);
    return word != nullptr && word->length() > 1 &&
           (word->word_class == recognition::ChineseWordClass::PLACE ||
            word->word_class == recognition::ChineseWordClass::PERSON);
  }

  bool is_clause_at(std::size_t i) const {
    return (begins_[i] & CLAUSE_WORD) != 0 &&
           end_of_word_at(a_.of(WordClass::CLAUSE_WORD), i) > i + 1;
  }

  std::size_t unit_at(std::size_t i) const {
    if (i >= t_.size()) return 0;
    const auto rest = t_.substr(i);
    for (const auto unit : units_.beginning_with(t_[i])) {
      if (rest.starts_with(unit)) return is_no_part(unit, i) ? 0 : unit.size();
    }
    return 0;
  }

  // 江苏省建筑科学研究|院: no yard with houses.
  bool ends_organization(std::size_t end) const {
    constexpr std::u32string_view ENDS = U"院馆局";
    if (ENDS.find(t_[end - 1]) == ENDS.npos || end < 3) return false;
    return is_covered(a_.of(WordClass::INSTITUTION), end - 2, end) ||
           is_covered(a_.of(WordClass::PUBLIC_BODY), end - 2, end);
  }

  // 景谷县供水二期工程; 1门4号 but no other 门
  bool is_no_part(std::u32string_view unit, std::size_t i) const {
    const char32_t next = i + 1 < t_.size() ? t_[i + 1] : U' ';
    // 东新路|仓库 is any, 2号仓库 and 仓库3 are not.
    for (const std::u32string_view building :
         {U"仓库", U"厂房", U"会议室", U"实验楼", U"办公楼", U"商铺", U"门面", U"摊位"}) {
      if (unit != building) continue;
      const char32_t behind = i + unit.size() < t_.size() ? t_[i + unit.size()] : U' ';
      const bool numbered = i > 0 && (text::is_ascii_alnum(t_[i - 1]) || t_[i - 1] == U'号');
      return !numbered && !text::is_ascii_alnum(behind);
    }
    // 秦州区|市场: a single character is a word of its own, or ends one.
    if (unit == U"市" && next == U'场') return true;
    // 县城|12公里
    constexpr std::u32string_view MILES = U"公英海";
    if (unit == U"里" && i > 0 && MILES.find(t_[i - 1]) != MILES.npos) return true;
    if (unit == U"门") return !text::is_ascii_digit(next) || !text::is_ascii_digit(t_[i - 1]);
    return unit == U"期" && (next == U'工' || next == U'项');
  }

  // Whether the first part behind a place makes the two an address.
  bool goes_on_well(std::size_t at, std::size_t end) const {
    constexpr std::size_t LONGEST_NAME = 7;
    const char32_t last = t_[end - 1];
    if (t_.substr(at, end - at).ends_with(U"开发区")) return true;
    if (ADMINISTRATIVE.find(last) != ADMINISTRATIVE.npos) return end - at <= LONGEST_NAME;
    if (STREETS.find(last) == STREETS.npos && !text::is_ascii_digit(t_[at])) {
      return end < t_.size() && text::is_ascii_alnum(t_[end]);
    }
    return end - at <= LONGEST_NAME && end < t_.size() &&
           (is_room_character(t_[end]) || RE_SIDES.match_at(t_, end) ||
            RE_CROSSING.match_at(t_, end));
  }

  // A room or a house behind the last part: B座1203, 6层608, 大厦A1506
  std::size_t room_end(std::size_t at) const {
    std::size_t end = at;
    constexpr std::size_t LONGEST_ROOM = 8;
    while (end < t_.size() && end - at < LONGEST_ROOM && is_room_character(t_[end])) ++end;
    const bool goes_on = end < t_.size() && (is_room_character(t_[end]) || t_[end] == U'.');
    // 1203, 1703A, 7F
    const bool number = end > at && (text::is_ascii_digit(t_[end - 1]) ||
                                     (end > at + 1 && text::is_ascii_digit(t_[end - 2])));
    return number && !goes_on ? end : at;
  }

  // What begins at a place of the text
  static constexpr std::uint8_t CLAUSE_WORD = 1U << 0U;
  static constexpr std::uint8_t BODY = 1U << 1U;

  const NlpArtifacts& a_;
  std::u32string_view t_;
  NamePieceReader reader_;
  std::vector<std::uint8_t> begins_;
  const AddressUnits& units_ = AddressUnits::instance();
  std::vector<RecognizerResult> out_;
};

}  // namespace

ChinesePlaceFinder::ChinesePlaceFinder()
    : EntityRecognizer("ChinesePlaceFinder", {std::string(anonymization::entity_type::LOCATION)}) {}

std::vector<RecognizerResult> ChinesePlaceFinder::analyze(const NlpArtifacts& artifacts) const {
  return ChinesePlaceSearch(artifacts).run();
}

}  // namespace core::nlp
