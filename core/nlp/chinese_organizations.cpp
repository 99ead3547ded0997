#include <array>
#include <optional>

#include "core/nlp/characters.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;

constexpr double SCORE = 0.85;
constexpr std::size_t LONGEST_NAME = 40;
// 天津 (滨海) in a name, not a remark
constexpr std::size_t LONGEST_BRACKET = 12;
// What may stand between a company and its branch: 苏州吴中
constexpr std::size_t LONGEST_BRANCH_PLACE = 14;

// Characters that may be part of a name (华为, 和平) but usually link it to the sentence.
constexpr std::u32string_view LINKS =
    U"为至给到在于对从将被是和及经以自按如同请凭就让后前应须可已曾拟其该此系";
// Those that also end a phrase which no clause word announces.
constexpr std::u32string_view FIRM_LINKS = U"为至给到在于对从将被是";

// What stands before the kind of organization when no particular one is meant.
constexpr auto GENERIC_NAMES = text::words(
    {U"合资", U"目标",       U"项目",       U"全资",     U"控股",     U"关联",     U"任何",
     U"其他", U"某",         U"该",         U"本",       U"贵",       U"子",       U"母",
     U"分",   U"总",         U"合作",       U"外资",     U"上市",     U"开户",     U"收款",
     U"付款", U"往来",       U"贷款",       U"商业",     U"政策性",   U"保函",     U"指定",
     U"任一", U"中央",       U"国有商业",   U"相关",     U"境内",     U"境外",     U"托管",
     U"监管", U"保证",       U"开证",       U"议付",     U"通知",     U"交易",     U"知名",
     U"一家", U"城市商业",   U"农村商业",   U"资金监管", U"共管",     U"存管",     U"三级",
     U"三甲", U"定点",       U"附属",       U"高等",     U"重点",     U"综合",     U"公立",
     U"私立", U"民营",       U"公办",       U"二级甲等", U"三级甲等", U"专业",     U"第三方",
     U"独立", U"股份制商业", U"项目所在地", U"物业服务", U"保险",     U"物流",     U"快递",
     U"转账", U"我国",       U"注册",       U"设计",     U"依法",     U"普通",     U"有限",
     U"经办", U"代理",       U"担保",       U"付款人",   U"乙方开户", U"甲方开户", U"卖方",
     U"买方", U"人民",       U"各",         U"双方",     U"评估",     U"审计",     U"造价咨询"});

// Kinds that make a name of any brand.
constexpr auto ANCHORED_KINDS =
    text::words({U"企业社", U"商行",   U"商号",   U"洋行",     U"工程行",     U"实业社",
                 U"院线",   U"影城",   U"工作室", U"家庭农场", U"农场",       U"合作社",
                 U"经营部", U"经销部", U"门市部", U"药房",     U"专业合作社", U"专业合作社联合社",
                 U"养殖场", U"林场",   U"事务部"});

struct Ending {
  std::size_t start;
  std::size_t end;
  WordClass kind;
};

struct Span {
  std::size_t start;
  std::size_t end;
};

class Search {
 public:
  explicit Search(const NlpArtifacts& a) : a_(a), t_(a.folded) {}

  std::vector<RecognizerResult> run() {
    for (const Ending& ending : endings()) take(ending);
    std::vector<RecognizerResult> out;
    for (const Span& s : found_) {
      out.push_back(make_hit(anonymization::entity_type::ORGANIZATION, s.start, s.end, SCORE));
    }
    for (const auto& hit : a_.of(WordClass::PUBLIC_NAME)) {
      out.push_back(make_hit(anonymization::entity_type::ORGANIZATION, hit.start, hit.end, SCORE));
    }
    return out;
  }

 private:
  // The words that end a name, the longer ones before those within them.
  std::vector<Ending> endings() const {
    std::vector<Ending> all;
    for (const auto kind : {WordClass::COMPANY_FORM, WordClass::PLAIN_COMPANY, WordClass::BRANCH,
                            WordClass::BANK, WordClass::INSTITUTION, WordClass::PUBLIC_BODY}) {
      for (const auto& hit : a_.of(kind)) {
        if (!is_covered(a_.of(WordClass::SHIELD), hit.start, hit.end)) {
          all.push_back({hit.start, hit.end, kind});
        }
      }
    }
    std::sort(all.begin(), all.end(), [](const Ending& x, const Ending& y) {
      return x.start != y.start ? x.start < y.start : x.end > y.end;
    });
    std::size_t covered = 0;
    std::erase_if(all, [&](const Ending& e) {
      if (e.end <= covered) return true;
      covered = e.end;
      return false;
    });
    return all;
  }

  void take(const Ending& ending) {
    if (extend_last(ending)) return;
    const std::size_t floor = found_.empty() ? 0 : found_.back().end;
    const std::size_t left = walk_left(ending.start, floor);
    if (const auto start = name_start(ending, left)) found_.push_back({*start, ending.end});
  }

  // 江澜银行股份有限公司 + 苏州吴中支行, 江夏东澜大学 + 附属协济医院: one organization.
  bool extend_last(const Ending& ending) {
    if (found_.empty() || ending.kind == WordClass::PLAIN_COMPANY) return false;
    Span& last = found_.back();
    if (ending.end - last.start > 2 * LONGEST_NAME) return false;
    if (ending.start < last.end || ending.start - last.end > LONGEST_BRANCH_PLACE) return false;
    const bool adjacent = ending.start == last.end;
    const bool blank = ending.start == last.end + 1 && t_[last.end] == U' ';
    if (ending.kind == WordClass::COMPANY_FORM && !adjacent && !blank) return false;
    if (ending.kind == WordClass::BANK) return false;
    // 西陵理工大学机械与动力学院
    const bool faculty = ending.kind == WordClass::INSTITUTION && ending.start > last.end &&
                         t_.substr(last.start, last.end - last.start).ends_with(U"大学") &&
                         t_.substr(ending.start, ending.end - ending.start) == U"学院" &&
                         t_[last.end] != U'与' && t_[last.end] != U'和' && t_[last.end] != U'及';
    if (faculty && is_all_han(last.end, ending.start)) {
      last.end = ending.end;
      return true;
    }
    for (std::size_t i = last.end; i < ending.start && !blank; ++i) {
      if (!is_han(t_[i]) || LINKS.find(t_[i]) != LINKS.npos) return false;
    }
    if (is_touched(a_.of(WordClass::CLAUSE_WORD), last.end, ending.start)) return false;
    last.end = ending.end;
    return true;
  }

  bool is_all_han(std::size_t start, std::size_t end) const {
    const auto part = t_.substr(start, end - start);
    return std::all_of(part.begin(), part.end(), is_han);
  }

  // Where the run of characters that may belong to a name begins.
  std::size_t walk_left(std::size_t from, std::size_t floor) const {
    std::size_t i = from;
    int blanks = 0;
    while (i > floor && from - i < LONGEST_NAME) {
      const char32_t c = t_[i - 1];
      if (is_han(c) || text::is_ascii_alpha(c) || c == U'·') {
        --i;
      } else if (c == U')') {
        const auto open = opening_bracket(i - 1, floor);
        if (!open) break;
        i = *open;
      } else if (c == U' ' && blanks < 2 && i >= floor + 2 && is_han(t_[i - 2]) &&
                 (i == from || t_[i] == U'(')) {
        ++blanks;
        --i;
      } else {
        break;
      }
    }
    return i;
  }

  // The bracket that is closed at `close`, if what it holds may stand in a name.
  std::optional<std::size_t> opening_bracket(std::size_t close, std::size_t floor) const {
    for (std::size_t i = close; i > floor && close - i < LONGEST_BRACKET; --i) {
      const char32_t c = t_[i - 1];
      if (c == U'(') {
        const bool behind_name = i >= floor + 2 && (is_han(t_[i - 2]) || t_[i - 2] == U' ');
        return behind_name && close > i ? std::optional(i - 1) : std::nullopt;
      }
      if (!is_han(c)) return std::nullopt;
    }
    return std::nullopt;
  }

  std::optional<std::size_t> name_start(const Ending& ending, std::size_t left) const {
    std::size_t start = behind_clause(left, ending.start);
    const bool cut = start > left;
    while (start < ending.start && is_lead(start, cut)) ++start;
    // 甲方(盖章)西安…
    if (cut && t_[start] == U'(')
      start = std::min(t_.substr(0, ending.start).find(U')', start), ending.start - 1) + 1;
    switch (ending.kind) {
      case WordClass::PUBLIC_BODY:
        return public_start(start, ending);
      case WordClass::PLAIN_COMPANY:
      case WordClass::BRANCH:
        if (first_place(start, ending.start) == ending.start) return anchored(start, ending);
        start = first_place(start, ending.start);
        return is_plain_name(start, ending) ? std::optional(start) : std::nullopt;
      default:
        start = behind_link(start, ending.start, cut);
        return is_particular(start, ending) ? std::optional(start) : std::nullopt;
    }
  }

  // Blanks and words such as 应, 在 before the name. 为 and the like only behind a clause word.
  bool is_lead(std::size_t at, bool cut) const {
    constexpr std::u32string_view LEADS = U" )应须可已曾拟其该后前报即于在至";
    constexpr std::u32string_view CUT_LEADS = U"为给到对从将被是";
    if (end_of_word_at(a_.of(WordClass::PLACE), at) > at) return false;
    return LEADS.find(t_[at]) != LEADS.npos || (cut && CUT_LEADS.find(t_[at]) != CUT_LEADS.npos);
  }

  // Behind the last word of running text in left..right.
  std::size_t behind_clause(std::size_t left, std::size_t right) const {
    const auto& words = a_.of(WordClass::CLAUSE_WORD);
    for (auto it = first_from(words, right); it != words.begin();) {
      --it;
      if (it->start < left) break;
      if (it->end > right || is_part_of_word(*it)) continue;
      return it->end;
    }
    return left;
  }

  // 自由贸易, 理由: the character is no preposition here.
  bool is_part_of_word(const WordHit& hit) const {
    return hit.end - hit.start == 1 && hit.start > 0 && t_[hit.start] == U'由' &&
           (t_[hit.start - 1] == U'自' || t_[hit.start - 1] == U'理');
  }

  // The first place in start..end that a name may begin with; `end` if there is none.
  std::size_t first_place(std::size_t start, std::size_t end) const {
    const auto& places = a_.of(WordClass::PLACE);
    for (auto it = first_from(places, start); it != places.end() && it->end <= end; ++it) {
      if (!is_covered(a_.of(WordClass::SHIELD), it->start, it->end)) return it->start;
    }
    return end;
  }

  std::size_t behind_link(std::size_t start, std::size_t end, bool cut) const {
    const std::size_t place = first_place(start, end);
    if (place == start) return start;
    if (place < end && LINKS.find(t_[place - 1]) != LINKS.npos) return place;
    constexpr std::size_t SHORTEST_REST = 2;
    const std::u32string_view links = cut ? LINKS : FIRM_LINKS;
    for (std::size_t i = end; i > start + (cut ? 1 : 2); --i) {
      const bool name = t_[i - 1] == U'为' && t_[i - 2] == U'华';
      if (links.find(t_[i - 1]) != links.npos && end - i >= SHORTEST_REST && !name) return i;
    }
    return start;
  }

  std::optional<std::size_t> public_start(std::size_t start, const Ending& ending) const {
    std::size_t place = first_place(start, ending.start);
    for (std::size_t i = start; i < std::min(place, ending.start); ++i) {
      const auto rest = t_.substr(i, ending.start - i);
      for (const std::u32string_view national :
           {U"国家", U"全国", U"中华", U"最高人民", U"国务院", U"华南", U"华东", U"华北", U"华中",
            U"中亚", U"亚洲", U"大韩"}) {
        if (rest.starts_with(national) && rest.size() > national.size()) return i;
      }
    }
    if (place == ending.start) place = shaped(start, ending.start);
    if (place >= ending.start) return std::nullopt;
    // 上海中心 and 北京机场 are places, 中国政府 is none in particular.
    const auto end = end_of_word_at(a_.of(WordClass::PLACE), place);
    const std::size_t own = ending.start - std::min(ending.start, std::max(end, place));
    const bool short_kind = ending.end - ending.start <= 2;
    const auto kind = t_.substr(ending.start, ending.end - ending.start);
    if (own == 0 && short_kind && kind != U"海关" && kind != U"中院" && kind != U"高院") {
      return std::nullopt;
    }
    return place;
  }

  // 景洪市, 柯桥区 at the start of the name without being in the lexicon.
  std::size_t shaped(std::size_t start, std::size_t end) const {
    constexpr std::u32string_view UNITS = U"市县区州盟旗镇乡村";
    for (std::size_t i = start + 2; i < std::min(end, start + 7); ++i) {
      if (UNITS.find(t_[i]) != UNITS.npos && is_han(t_[start])) return start;
    }
    return end;
  }

  // 瑞泰企业社, 大地院线: no place in it, but nothing else in the phrase either. 公司 and
  // 酒店 say too little for that.
  std::optional<std::size_t> anchored(std::size_t start, const Ending& ending) const {
    constexpr std::size_t LONGEST_BRAND = 10;
    const auto kind = t_.substr(ending.start, ending.end - ending.start);
    if (!ANCHORED_KINDS.contains(kind) || !is_particular(start, ending)) return std::nullopt;
    const bool edge = start == 0 || !is_han(t_[start - 1]) ||
                      is_touched(a_.of(WordClass::CLAUSE_WORD), start - 1, start);
    const bool fits = ending.start - start <= LONGEST_BRAND;
    if (fits && edge) return start;
    const std::size_t county = shaped(start, ending.start);
    return county == start && ending.start > start + 3 ? std::optional(start) : std::nullopt;
  }

  bool is_plain_name(std::size_t start, const Ending& ending) const {
    const std::size_t place_end = end_of_word_at(a_.of(WordClass::PLACE), start);
    if (ending.start < place_end + 2) return false;
    return !GENERIC_NAMES.contains(t_.substr(place_end, ending.start - place_end));
  }

  bool is_particular(std::size_t start, const Ending& ending) const {
    const auto name = t_.substr(start, ending.start - start);
    constexpr std::size_t SHORTEST = 2;
    if (name.size() < SHORTEST || GENERIC_NAMES.contains(name)) return false;
    return std::any_of(name.begin(), name.end(), [](char32_t c) { return c != U' '; });
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  std::vector<Span> found_;
};

}  // namespace

ChineseOrganizationFinder::ChineseOrganizationFinder()
    : EntityRecognizer("ChineseOrganizationFinder",
                       {std::string(anonymization::entity_type::ORGANIZATION)}) {}

std::vector<RecognizerResult> ChineseOrganizationFinder::analyze(
    const NlpArtifacts& artifacts) const {
  return Search(artifacts).run();
}

}  // namespace core::nlp
