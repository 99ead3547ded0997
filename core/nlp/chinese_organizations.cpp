#include <array>
#include <optional>

#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_lexicon.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/more_organizations.hpp"
#include "core/nlp/name_evidence.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/nlp/name_pieces.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;

constexpr double CHINESE_ORGANIZATION_SCORE = 0.85;
constexpr std::size_t LONGEST_ORGANIZATION = 40;
constexpr std::size_t SHORTEST_BRAND = 2;
// What may stand between a company and its branch: 苏州吴中
constexpr std::size_t LONGEST_BRANCH_PLACE = 14;

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
     U"买方", U"人民",       U"各",         U"双方",     U"评估",     U"审计",     U"造价咨询",
     U"国有", U"股份制",     U"地方",       U"大型",     U"全国性",   U"国内",     U"国外",
     U"正规", U"本地",       U"外地",       U"相应",     U"有关",     U"电影",     U"农业",
     U"村镇", U"乡镇",       U"出借",       U"合作的",   U"中资",     U"外国",     U"离岸",
     U"私人", U"原审",       U"上级",       U"基层",     U"专门",     U"普通高等", U"职业",
     U"成人", U"专科",       U"社区",       U"民办"});

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
  explicit Search(const NlpArtifacts& a) : a_(a), t_(a.folded), reader_(a) {}

  std::vector<RecognizerResult> run() {
    for (const Ending& ending : endings()) take(ending);
    front_forms();
    std::vector<RecognizerResult> out;
    for (const Span& s : found_) {
      out.push_back(make_hit(anonymization::entity_type::ORGANIZATION, s.start, s.end,
                             CHINESE_ORGANIZATION_SCORE));
    }
    for (const auto& hit : a_.of(WordClass::PUBLIC_NAME)) {
      if (is_department(hit)) continue;
      out.push_back(make_hit(anonymization::entity_type::ORGANIZATION, hit.start, hit.end,
                             CHINESE_ORGANIZATION_SCORE));
    }
    add_listed(out);
    return out;
  }

 private:
  // 株式会社北斗精工: forms of Japan stand before the name as well.
  void front_forms() {
    constexpr std::u32string_view STOPS = U"的与和及由向为在于将应须对以从至或经并提";
    constexpr std::size_t LONGEST = 10;
    constexpr std::size_t SHORTEST = 2;
    for (const auto& form : a_.of(WordClass::COMPANY_FORM)) {
      if (!t_.substr(form.start, form.end - form.start).ends_with(U"会社")) continue;
      if (form.start > 0 && (is_han(t_[form.start - 1]) || is_kana(t_[form.start - 1]))) continue;
      std::size_t end = form.end;
      while (end < t_.size() && end - form.end < LONGEST && (is_han(t_[end]) || is_kana(t_[end])) &&
             STOPS.find(t_[end]) == STOPS.npos && !is_clause_at(end)) {
        ++end;
      }
      if (end >= form.end + SHORTEST) found_.push_back({form.start, end});
    }
  }

  static bool is_kana(char32_t c) { return c >= 0x3041 && c <= 0x30FF; }
  bool is_clause_at(std::size_t at) const {
    return end_of_word_at(a_.of(WordClass::CLAUSE_WORD), at) > at + 1;
  }

  // 甲方商务部, 我公司教育部: no ministry.
  bool is_department(const WordHit& hit) const {
    constexpr std::u32string_view PARTIES = U"方司团行";
    if (t_[hit.end - 1] != U'部' || hit.start == 0) return false;
    // 财务部、商务部
    const bool listed = hit.start > 1 && t_[hit.start - 1] == U'、' && t_[hit.start - 2] == U'部' &&
                        !is_covered(a_.of(WordClass::PUBLIC_NAME), hit.start - 2, hit.start - 1);
    return listed || PARTIES.find(t_[hit.start - 1]) != PARTIES.npos;
  }

  // 中国足球协会: the dictionary has the name as one word.
  void add_listed(std::vector<RecognizerResult>& out) const {
    constexpr std::size_t SHORTEST = 5;
    for (const auto& word : a_.chinese_words) {
      if (word.word_class != recognition::ChineseWordClass::ORGANIZATION ||
          word.length() < SHORTEST) {
        continue;
      }
      for (const auto c : {WordClass::PUBLIC_BODY, WordClass::INSTITUTION}) {
        const auto it = first_from(a_.of(c), word.end);
        const bool ends = it != a_.of(c).begin() && std::prev(it)->end == word.end;
        if (ends && end_of_word_at(a_.of(WordClass::PLACE), word.start) > word.start) {
          out.push_back(make_hit(anonymization::entity_type::ORGANIZATION, word.start, word.end,
                                 CHINESE_ORGANIZATION_SCORE));
        }
      }
    }
  }

  // The words that end a name, the longer ones before those within them.
  std::vector<Ending> endings() const {
    std::vector<Ending> all;
    for (const auto kind : {WordClass::COMPANY_FORM, WordClass::PLAIN_COMPANY, WordClass::BRANCH,
                            WordClass::BANK, WordClass::INSTITUTION, WordClass::PUBLIC_BODY}) {
      for (const auto& hit : a_.of(kind)) {
        if (!is_shielded(hit) && !is_place_of_work(hit) &&
            !is_covered(a_.of(WordClass::CLAUSE_WORD),
                        hit.start - std::min<std::size_t>(hit.start, 1), hit.end)) {
          all.push_back({hit.start, hit.end, kind});
        }
      }
    }
    add_short_endings(all);
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

  // 海关监管, but not 大连海关监管
  bool is_shielded(const WordHit& hit) const {
    if (!is_covered(a_.of(WordClass::SHIELD), hit.start, hit.end)) return false;
    const auto kind = t_.substr(hit.start, hit.end - hit.start);
    if (kind != U"海关" && kind != U"法院") return true;
    const NamePieces name =
        reader_.before(hit.start, hit.start - std::min<std::size_t>(hit.start, 4));
    return name.empty() || name.pieces.back().kind != PieceKind::PLACE ||
           t_.substr(hit.start - 2, 2) == U"中国";
  }

  // 出厂价, 进店, 返厂: no name ends there.
  bool is_place_of_work(const WordHit& hit) const {
    constexpr std::u32string_view MOVES = U"出进入到离返驻送回在";
    constexpr std::u32string_view PLACES = U"厂院馆所站场";
    return hit.end == hit.start + 1 && hit.start > 0 && PLACES.find(t_[hit.start]) != PLACES.npos &&
           MOVES.find(t_[hit.start - 1]) != MOVES.npos;
  }

  // 石料|行, 卤味|店, but not 进行, 店面, 二社: a character that is a word of its own.
  void add_short_endings(std::vector<Ending>& all) const {
    constexpr std::u32string_view SHORT = U"店铺坊行社寺";
    constexpr std::u32string_view NUMERALS = U"一二三四五六七八九十";
    // 驻店, 到店, 每店: no name ends there.
    constexpr std::u32string_view VERBS = U"驻到至往入进开带本该闭每分离返在回各两多整住逛探首";
    for (const auto& word : a_.chinese_words) {
      if (word.length() != 1 || word.start == 0 || SHORT.find(t_[word.start]) == SHORT.npos ||
          NUMERALS.find(t_[word.start - 1]) != NUMERALS.npos ||
          VERBS.find(t_[word.start - 1]) != VERBS.npos) {
        continue;
      }
      all.push_back({word.start, word.end, WordClass::PLAIN_COMPANY});
    }
    add_offices_of_bureaus(all);
  }

  // 海盐县自然资源和规划局|澉浦所: an office in a town
  void add_offices_of_bureaus(std::vector<Ending>& all) const {
    constexpr std::u32string_view BUREAUS = U"局处";
    constexpr std::size_t LONGEST_TOWN = 4;
    for (const auto& body : a_.of(WordClass::PUBLIC_BODY)) {
      if (BUREAUS.find(t_[body.end - 1]) == BUREAUS.npos) continue;
      for (std::size_t i = body.end + 2; i < std::min(t_.size(), body.end + LONGEST_TOWN + 1);
           ++i) {
        if (!is_han(t_[i]) || !is_han(t_[i - 1])) break;
        if (t_[i] != U'所' || !is_word_boundary(a_.chinese_words, i + 1)) continue;
        all.push_back({i, i + 1, WordClass::PUBLIC_BODY});
        break;
      }
    }
  }

  void take(const Ending& ending) {
    if (extend_last(ending)) return;
    const std::size_t floor = found_.empty() ? 0 : found_.back().end;
    const bool body =
        ending.kind == WordClass::PUBLIC_BODY || ending.kind == WordClass::INSTITUTION;
    NamePieces name = reader_.before(ending.start, floor, body);
    if (const auto start = name_start(ending, name)) found_.push_back({*start, ending.end});
  }

  // 江澜银行股份有限公司 + 苏州吴中支行, 江夏东澜大学 + 附属协济医院: one organization.
  bool extend_last(const Ending& ending) {
    if (found_.empty()) return false;
    Span& last = found_.back();
    if (ending.kind == WordClass::PLAIN_COMPANY && !is_shop_of(last, ending)) return false;
    if (ending.end - last.start > 2 * LONGEST_ORGANIZATION) return false;
    if (ending.start < last.end || ending.start - last.end > LONGEST_BRANCH_PLACE) return false;
    const bool adjacent = ending.start == last.end;
    const bool blank = ending.start == last.end + 1 && t_[last.end] == U' ';
    // 中国检验认证集团 + 辽宁有限公司
    const bool place = reader_.place_end(last.end) == ending.start;
    if (ending.kind == WordClass::COMPANY_FORM && !adjacent && !blank && !place) return false;
    if (ending.kind == WordClass::BANK) return false;
    if (is_faculty(last, ending)) {
      last.end = ending.end;
      return true;
    }
    if (!blank && !adjacent && !reader_.is_name_text(last.end, ending.start)) return false;
    last.end = ending.end;
    return true;
  }

  // …有限公司|道里尚志店: a shop of the company before it, and nothing but its name between them
  bool is_shop_of(const Span& last, const Ending& ending) const {
    constexpr std::size_t LONGEST_SHOP = 10;
    if (ending.start < last.end || ending.start - last.end > LONGEST_SHOP ||
        t_[ending.end - 1] != U'店' || ending.start == last.end) {
      return false;
    }
    const auto& forms = a_.of(WordClass::COMPANY_FORM);
    const auto it = first_from(forms, last.end);
    return it != forms.begin() && std::prev(it)->end == last.end &&
           reader_.is_name_text(last.end, ending.start);
  }

  // 西陵理工大学机械与动力学院
  bool is_faculty(const Span& last, const Ending& ending) const {
    constexpr std::u32string_view AND = U"与和及";
    const auto between = t_.substr(last.end, ending.start - last.end);
    return t_.substr(last.start, last.end - last.start).ends_with(U"大学") &&
           t_.substr(ending.start, ending.end - ending.start) == U"学院" && !between.empty() &&
           AND.find(between.front()) == AND.npos &&
           std::all_of(between.begin(), between.end(), is_han);
  }

  std::optional<std::size_t> name_start(const Ending& ending, NamePieces& name) const {
    trim_front(ending, name);
    if (name.empty()) return std::nullopt;
    switch (ending.kind) {
      case WordClass::PUBLIC_BODY:
        return public_start(ending, name);
      case WordClass::PLAIN_COMPANY:
      case WordClass::BRANCH:
        return plain_start(ending, name);
      default:
        cut_to_place(ending, name);
        if (is_trade_alone(name)) return std::nullopt;
        return is_particular(name, ending) ? std::optional(name.pieces.front().start)
                                           : std::nullopt;
    }
  }

  // 贸易|有限公司 behind 在深圳成立: none in particular
  bool is_trade_alone(const NamePieces& name) const {
    if (name.empty()) return false;
    const std::size_t start = name.pieces.front().start;
    const bool goes_on = !found_.empty() && found_.back().end == start;
    return !goes_on && start > 0 && is_han(t_[start - 1]) &&
           std::all_of(name.pieces.begin(), name.pieces.end(),
                       [](const auto& p) { return p.kind == PieceKind::TRADE; });
  }

  // Blanks and words such as 应, 在 before the name.
  void trim_front(const Ending& ending, NamePieces& name) const {
    constexpr std::u32string_view LEADS = U"应须可已曾拟其该后前报即于在至";
    auto& pieces = name.pieces;
    std::size_t n = 0;
    while (n < pieces.size()) {
      const NamePiece& piece = pieces[n];
      const bool lead = piece.kind != PieceKind::PLACE && piece.end - piece.start == 1 &&
                        LEADS.find(t_[piece.start]) != LEADS.npos;
      // 甲方(盖章)西安…
      if (!lead && piece.kind != PieceKind::OTHER) break;
      ++n;
    }
    pieces.erase(pieces.begin(), pieces.begin() + static_cast<std::ptrdiff_t>(n));
    if (pieces.empty() || pieces.front().start >= ending.start) pieces.clear();
  }

  // 货物供应商苏州澜迅…有限公司: everyday words before a place are no part of the name.
  void cut_to_place(const Ending& ending, NamePieces& name) const {
    auto& pieces = name.pieces;
    constexpr std::size_t SHORTEST_REST = 2;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      const NamePiece& piece = pieces[i];
      if (piece.kind == PieceKind::PLACE) {
        if (i > 0 && ending.start - piece.end >= SHORTEST_REST) {
          pieces.erase(pieces.begin(), pieces.begin() + static_cast<std::ptrdiff_t>(i));
        }
        return;
      }
      if (piece.kind != PieceKind::WORD && !leads_to_role(pieces)) return;
    }
  }

  // 经纪公司|上海, 食材供应商|四川: whom the name stands for.
  bool ends_in_role(const NamePiece& piece) const {
    static constexpr auto ROLES = text::words(
        {U"公司",   U"供应商", U"客户",   U"企业",   U"单位",   U"厂家",   U"厂商",   U"机构",
         U"股东",   U"经销商", U"代理商", U"承包商", U"分包商", U"服务商", U"运营商", U"开发商",
         U"施工方", U"合作方", U"合作社", U"商户",   U"商家",   U"房东",   U"承运商", U"制造商",
         U"生产商", U"集成商", U"加盟商", U"批发商", U"债务人"});
    return ROLES.contains(t_.substr(piece.start, piece.end - piece.start));
  }

  bool leads_to_role(const std::vector<NamePiece>& pieces) const {
    const auto place = std::find_if(pieces.begin(), pieces.end(),
                                    [](const auto& p) { return p.kind == PieceKind::PLACE; });
    return place != pieces.begin() && place != pieces.end() && ends_in_role(*std::prev(place));
  }

  std::optional<std::size_t> public_start(const Ending& ending, const NamePieces& name) const {
    const std::size_t first = name.pieces.front().start;
    std::size_t place = first_place(name, ending.start);
    for (std::size_t i = first; i < std::min(place, ending.start); ++i) {
      const auto rest = t_.substr(i, ending.start - i);
      for (const std::u32string_view national :
           {U"国家", U"全国", U"中华", U"最高人民", U"国务院", U"华南", U"华东", U"华北", U"华中",
            U"中亚", U"亚洲", U"大韩"}) {
        if (rest.starts_with(national) && rest.size() > national.size()) return i;
      }
    }
    if (place == ending.start) place = shaped(first, ending.start);
    if (place >= ending.start) {
      const bool brand = name.at_edge && NamePieceReader::brand_length(name) >= SHORTEST_BRAND;
      return brand && is_particular(name, ending) ? std::optional(first) : std::nullopt;
    }
    // 上海中心 and 北京机场 are places, 中国政府 is none in particular.
    const auto end = reader_.place_end(place);
    const std::size_t own = ending.start - std::min(ending.start, std::max(end, place));
    const bool short_kind = ending.end - ending.start <= 2;
    const auto kind = t_.substr(ending.start, ending.end - ending.start);
    if (kind == U"办公室" && is_only_places(name)) return std::nullopt;
    if (own == 0 && short_kind && kind != U"海关" && kind != U"中院" && kind != U"高院") {
      return std::nullopt;
    }
    return place;
  }

  // 上海|张江|办公室: where somebody works
  static bool is_only_places(const NamePieces& name) {
    return std::all_of(name.pieces.begin(), name.pieces.end(),
                       [](const auto& p) { return p.kind == PieceKind::PLACE; });
  }

  // 景洪市, 柯桥区 at the start of the name without being in the lexicon.
  std::size_t shaped(std::size_t start, std::size_t end) const {
    constexpr std::u32string_view UNITS = U"市县区州盟旗镇乡村";
    for (std::size_t i = start + 2; i < std::min(end, start + 7); ++i) {
      if (UNITS.find(t_[i]) != UNITS.npos && is_han(t_[start])) return start;
    }
    return end;
  }

  std::optional<std::size_t> plain_start(const Ending& ending, const NamePieces& name) const {
    const std::size_t place = first_place(name, ending.start);
    if (place == ending.start) return anchored(ending, name);
    if (begins_with_brand(name, place) ||
        (ending.kind == WordClass::BRANCH && begins_with_trade_name(name, place))) {
      return name.pieces.front().start;
    }
    const std::size_t place_end = reader_.place_end(place);
    // 银川分公司, but not 上海办事处 or 分店
    const bool alone = name.pieces.front().start == place && ending.start == place_end;
    if (alone && is_bare_branch(ending)) return place;
    if (ending.start < place_end + SHORTEST_BRAND) return std::nullopt;
    // 上海直营|店, 华东经销|社: a single character needs a brand.
    if (ending.end - ending.start == 1 && t_[ending.start] != U'厂' &&
        NamePieceReader::brand_length(name) == 0) {
      return std::nullopt;
    }
    if (GENERIC_NAMES.contains(t_.substr(place_end, ending.start - place_end))) {
      return std::nullopt;
    }
    return place;
  }

  bool is_bare_branch(const Ending& ending) const {
    static constexpr auto BRANCHES =
        text::words({U"分公司", U"支公司", U"支行", U"分行", U"中心支公司"});
    return BRANCHES.contains(t_.substr(ending.start, ending.end - ending.start));
  }

  // 众橙洛阳分公司: a brand before the place, and nothing before the brand.
  static bool begins_with_brand(const NamePieces& name, std::size_t place) {
    constexpr std::size_t LONGEST = 8;
    const std::size_t start = name.pieces.front().start;
    std::size_t brand = start;
    for (const NamePiece& piece : name.pieces) {
      if (piece.kind != PieceKind::BRAND) break;
      brand = piece.end;
    }
    return name.at_edge && brand >= start + SHORTEST_BRAND && place <= start + LONGEST;
  }

  // 平安产险大连分公司: a company without a legal form, and its branch.
  static bool begins_with_trade_name(const NamePieces& name, std::size_t place) {
    constexpr std::size_t LONGEST = 8;
    const auto& pieces = name.pieces;
    const auto at =
        std::find_if(pieces.begin(), pieces.end(), [&](const auto& p) { return p.start == place; });
    return name.at_edge && at - pieces.begin() >= 2 && place <= pieces.front().start + LONGEST &&
           std::prev(at)->kind == PieceKind::TRADE && pieces.front().kind != PieceKind::TRADE;
  }

  // 瑞泰企业社, 大地院线: no place in it, but nothing else in the phrase either. 公司 and
  // 酒店 say too little for that, unless the brand is no everyday word.
  std::optional<std::size_t> anchored(const Ending& ending, const NamePieces& name) const {
    constexpr std::size_t LONGEST_BRAND = 10;
    constexpr unsigned RARE = 8;
    const std::size_t start = name.pieces.front().start;
    if (!is_particular(name, ending)) return std::nullopt;
    const auto kind = t_.substr(ending.start, ending.end - ending.start);
    const bool fits = ending.start - start <= LONGEST_BRAND && name.at_edge;
    // 东软, 海|澜 + 集团: a rare word, or single characters that make none
    const bool rare = kind == U"集团" && ending.start - start == SHORTEST_BRAND &&
                      (name.pieces.size() == SHORTEST_BRAND ||
                       !is_ordinary_word(t_.substr(start, SHORTEST_BRAND), RARE));
    const bool brand = rare || NamePieceReader::brand_length(name) >= SHORTEST_BRAND;
    if (fits && (brand || ANCHORED_KINDS.contains(kind))) return start;
    if (fits && is_shop_name(t_.substr(start, ending.start - start))) return start;
    const bool county = shaped(start, ending.start) == start && ending.start > start + 3;
    return county && ANCHORED_KINDS.contains(kind) ? std::optional(start) : std::nullopt;
  }

  // 老李|面馆, 王记|烧烤店, 年年有余|超市
  static bool is_shop_name(std::u32string_view own) {
    constexpr std::u32string_view BEFORE_SURNAMES = U"老小阿";
    constexpr std::u32string_view BEHIND_SURNAMES = U"记氏家";
    constexpr std::size_t SAYING = 4;
    if (own.size() == 2) {
      return (BEFORE_SURNAMES.find(own[0]) != BEFORE_SURNAMES.npos && is_listed_surname(own[1])) ||
             (BEHIND_SURNAMES.find(own[1]) != BEHIND_SURNAMES.npos && is_listed_surname(own[0]));
    }
    return own.size() == SAYING && is_ordinary_word(own);
  }

  static std::size_t first_place(const NamePieces& name, std::size_t none) {
    const auto it = std::find_if(name.pieces.begin(), name.pieces.end(),
                                 [](const auto& p) { return p.kind == PieceKind::PLACE; });
    return it == name.pieces.end() ? none : it->start;
  }

  bool is_particular(const NamePieces& name, const Ending& ending) const {
    if (name.empty()) return false;
    const auto own = t_.substr(name.pieces.front().start, ending.start - name.pieces.front().start);
    if (own.size() < SHORTEST_BRAND || GENERIC_NAMES.contains(own) || is_of_a_level(own) ||
        ends_in_rank(name, own)) {
      return false;
    }
    return std::any_of(own.begin(), own.end(), [](char32_t c) { return c != U' '; });
  }

  // 近三个月内三甲|医院, 当地公立|医院: any of that rank
  static bool ends_in_rank(const NamePieces& name, std::u32string_view own) {
    constexpr std::size_t RANK = 2;
    static constexpr auto RANKS =
        text::words({U"三甲", U"二甲", U"三级", U"二级", U"甲等", U"公立", U"私立", U"民营",
                     U"定点", U"正规", U"指定", U"当地", U"附近", U"就近", U"专科", U"综合"});
    return own.size() > RANK && RANKS.contains(own.substr(own.size() - RANK)) &&
           first_place(name, 0) == 0 && NamePieceReader::brand_length(name) < SHORTEST_BRAND;
  }

  // 省级检测中心
  static bool is_of_a_level(std::u32string_view own) {
    constexpr std::u32string_view LEVELS = U"省市区县部各州国高初";
    return own.size() > 1 && own[1] == U'级' && LEVELS.find(own[0]) != LEVELS.npos;
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  NamePieceReader reader_;
  std::vector<Span> found_;
};

}  // namespace

ChineseOrganizationFinder::ChineseOrganizationFinder()
    : EntityRecognizer("ChineseOrganizationFinder",
                       {std::string(anonymization::entity_type::ORGANIZATION)}) {}

std::vector<RecognizerResult> ChineseOrganizationFinder::analyze(
    const NlpArtifacts& artifacts) const {
  std::vector<RecognizerResult> out = Search(artifacts).run();
  add_trade_named_organizations(artifacts, out);
  return out;
}

}  // namespace core::nlp
