#include "core/nlp/characters.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/text/regex.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
using text::Regex;

constexpr double PLACE_SCORE = 0.7;
constexpr double ADDRESS_SCORE = 0.85;

// Between a label and an address
const Regex RE_SEPARATOR(
    "RE_SEPARATOR",
    UR"((?:[ ]?(?:\([^()\n]{1,12}\)|[A-Za-z. ]{2,24}(?=:)))?[ ]{0,3}(?:为|是|:|在)?[ ]{0,8})");

// Behind a street: 与西苑路交叉口东北角
const Regex RE_CROSSING(
    "RE_CROSSING",
    UR"((?:(?:与|和|、|-)[\u4e00-\u9fff]{2,6}?[路街道])?(?:交叉路口|交叉口|交汇处|交界处|交会处|路口)(?:往?[东南西北]{1,2}[侧角]?(?:\d{1,4}米)?)?)");

// What ends a part of an address. Longer words first.
constexpr std::u32string_view UNITS[] = {
    U"特别行政区", U"自治区", U"自治州", U"自治县", U"开发区", U"工业园区", U"产业园区", U"产业园",
    U"工业园",     U"科技园", U"创业园", U"度假区", U"示范区", U"合作区",   U"保税区",   U"经济区",
    U"新区",       U"园区",   U"街道",   U"社区",   U"地区",   U"大街",     U"大道",     U"公路",
    U"大厦",       U"广场",   U"中心",   U"公寓",   U"花园",   U"小区",     U"单元",     U"厂房",
    U"底商",       U"商城",   U"国际城", U"号楼",   U"会议室", U"实验楼",   U"办公楼",   U"仓库",
    U"丁目",       U"番地",   U"码头",   U"小镇",   U"东段",   U"西段",     U"南段",     U"北段",
    U"村部",       U"村口",   U"中段",   U"一段",   U"二段",   U"三段",     U"四段",     U"五段",
    U"省",         U"市",     U"区",     U"县",     U"旗",     U"盟",       U"州",       U"镇",
    U"乡",         U"村",     U"路",     U"街",     U"道",     U"巷",       U"弄",       U"胡同",
    U"号",         U"幢",     U"栋",     U"座",     U"楼",     U"层",       U"室",       U"组",
    U"院",         U"园",     U"苑",     U"庄",     U"里",     U"港",       U"岛",       U"屯",
    U"段",         U"期",     U"城",     U"汇",     U"塔",     U"馆",       U"厦",       U"河北岸",
    U"岸",         U"町",     U"厅"};

// Units that a place may be followed by without being an address: 无锡路 is one, 无锡的路 is not.
constexpr std::u32string_view ADMINISTRATIVE = U"省市区县旗盟州镇乡村港岛";
constexpr std::u32string_view STREETS = U"路街道巷弄";

// Characters of sentences; no name of a street or a building holds them.
constexpr std::u32string_view STOPS =
    U"的与由在于为将应须及或并且该其是有被向对按就自至到从已未不无可给让使此各每因若则即但而也还内";

bool is_room_character(char32_t c) { return text::is_ascii_alnum(c) || c == U'-' || c == U'#'; }

class Search {
 public:
  explicit Search(const NlpArtifacts& a) : a_(a), t_(a.folded) {}

  std::vector<RecognizerResult> run() {
    from_places();
    from_labels();
    by_shape();
    from_villages();
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
    for (const auto& place : a_.of(WordClass::PLACE)) {
      if (place.start < done || is_covered(a_.of(WordClass::SHIELD), place.start, place.end) ||
          is_covered(a_.of(WordClass::CURRENCY), place.start, place.end)) {
        continue;
      }
      const Address address = read(place.start, place.end);
      add(place.start, address.end, address.units > 0 ? ADDRESS_SCORE : PLACE_SCORE);
      done = address.end;
    }
  }

  void from_labels() {
    for (const auto& label : a_.of(WordClass::ADDRESS_LABEL)) {
      const auto m = RE_SEPARATOR.match_at(t_, label.end);
      const std::size_t at = m ? m->end() : label.end;
      if (at >= t_.size() || !is_han(t_[at])) continue;
      const Address address = read(at, end_of_word_at(a_.of(WordClass::PLACE), at));
      if (address.units >= 2 || (address.units == 1 && address.has_number)) {
        add(at, address.end, ADDRESS_SCORE);
      }
    }
  }

  // A cell or a phrase that is a single word such as 鼠浪湖岛, 洛社镇. Not 目的港.
  void by_shape() {
    constexpr std::u32string_view KINDS = U"岛港镇县";
    constexpr std::u32string_view GENERIC = U"装卸目的运起中转到达本各该进出口空海群半";
    for (std::size_t i = 2; i < t_.size(); ++i) {
      if (KINDS.find(t_[i]) == KINDS.npos || is_word_behind(i + 1)) continue;
      std::size_t start = i;
      while (start > 0 && i - start < 5 && is_han(t_[start - 1])) --start;
      const std::size_t length = i - start;
      if (length < 2 || length > 4 || (start > 0 && is_han(t_[start - 1]))) continue;
      const auto name = t_.substr(start, length);
      if (name.find_first_of(GENERIC) == name.npos) add(start, i + 1, PLACE_SCORE);
    }
  }

  // 柳林村三组, 颍上县江店孜镇...: the phrase begins with a division that is not known, and
  // more of an address follows.
  void from_villages() {
    constexpr std::u32string_view DIVISIONS = U"县镇乡村";
    constexpr std::u32string_view ENDS = U"组号室队村部社";
    constexpr std::u32string_view GENERIC = U"本该各全某农乡行山";
    for (std::size_t i = 0; i + 3 < t_.size(); ++i) {
      if (!is_han(t_[i]) || (i > 0 && is_han(t_[i - 1]))) continue;
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

  bool is_word_behind(std::size_t at) const {
    constexpr std::u32string_view PARTICLES = U"的等及和与";
    return at < t_.size() && is_han(t_[at]) && PARTICLES.find(t_[at]) == PARTICLES.npos;
  }

  // Reads the parts of an address from `start`; up to `known` it is known.
  Address read(std::size_t start, std::size_t known) const {
    Address address{known};
    while (true) {
      const std::size_t place = end_of_word_at(a_.of(WordClass::PLACE), address.end);
      if (place > address.end) {
        address.end = place;
        if (address.units == 0 && address.end > known) known = place;
        continue;
      }
      const std::size_t end =
          unit_end(address.end, address.units == 0 && known > start && !is_division(known));
      if (end == address.end) break;
      address.has_number |= text::is_ascii_digit(t_[address.end]) || number_before(end);
      address.end = end;
      ++address.units;
    }
    if (address.units > 0) {
      if (const auto m = RE_CROSSING.match_at(t_, address.end)) address.end = m->end();
      address.end = room_end(address.end);
    }
    return address;
  }

  // 江苏省, 吴中区: more of an address is to be expected than behind 无锡.
  bool is_division(std::size_t end) const {
    constexpr std::u32string_view DIVISIONS = U"省市区县州盟旗镇";
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
    for (std::size_t i = at; i < t_.size() && i - at < LONGEST_PART; ++i) {
      const char32_t c = t_[i];
      if (STOPS.find(c) != STOPS.npos || is_clause_at(i)) break;
      if (const std::size_t unit = unit_at(i);
          unit > 0 && (i > at || unit > 1 || ADMINISTRATIVE.find(t_[i]) != ADMINISTRATIVE.npos ||
                       STREETS.find(t_[i]) != STREETS.npos)) {
        best = i + unit;
        break;
      }
      if (!is_han(c) && !is_room_character(c)) break;
    }
    if (best == at || !first) return best;
    return goes_on_well(at, best) ? best : at;
  }

  bool is_clause_at(std::size_t i) const {
    return end_of_word_at(a_.of(WordClass::CLAUSE_WORD), i) > i + 1;
  }

  std::size_t unit_at(std::size_t i) const {
    const auto rest = t_.substr(i);
    for (const auto unit : UNITS) {
      if (rest.starts_with(unit)) return is_phase_of_works(unit, i) ? 0 : unit.size();
    }
    return 0;
  }

  // 景谷县供水二期工程
  bool is_phase_of_works(std::u32string_view unit, std::size_t i) const {
    return unit == U"期" && i + 1 < t_.size() && (t_[i + 1] == U'工' || t_[i + 1] == U'项');
  }

  // Whether the first part behind a place makes the two an address.
  bool goes_on_well(std::size_t at, std::size_t end) const {
    constexpr std::size_t LONGEST_NAME = 7;
    const char32_t last = t_[end - 1];
    if (ADMINISTRATIVE.find(last) != ADMINISTRATIVE.npos) return end - at <= LONGEST_NAME;
    if (STREETS.find(last) == STREETS.npos && !text::is_ascii_digit(t_[at])) {
      return end < t_.size() && text::is_ascii_alnum(t_[end]);
    }
    return end - at <= LONGEST_NAME && end < t_.size() && is_room_character(t_[end]);
  }

  // A room or a house behind the last part: B座1203, 6层608, 大厦A1506
  std::size_t room_end(std::size_t at) const {
    std::size_t end = at;
    constexpr std::size_t LONGEST_ROOM = 8;
    while (end < t_.size() && end - at < LONGEST_ROOM && is_room_character(t_[end])) ++end;
    const bool goes_on = end < t_.size() && (is_room_character(t_[end]) || t_[end] == U'.');
    const bool number = end > at && text::is_ascii_digit(t_[end - 1]);
    return number && !goes_on ? end : at;
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  std::vector<RecognizerResult> out_;
};

}  // namespace

ChinesePlaceFinder::ChinesePlaceFinder()
    : EntityRecognizer("ChinesePlaceFinder", {std::string(anonymization::entity_type::LOCATION)}) {}

std::vector<RecognizerResult> ChinesePlaceFinder::analyze(const NlpArtifacts& artifacts) const {
  return Search(artifacts).run();
}

}  // namespace core::nlp
