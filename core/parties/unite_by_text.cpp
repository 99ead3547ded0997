#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "core/parties/adjacent_names.hpp"
#include "core/parties/party_names.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"

namespace core::parties {
namespace {

using text::Regex;

// A definition reaches back over this much text and this many names, at most.
constexpr Offset WIDEST_DEFINITION = 300;
constexpr std::size_t NEAREST_NAMES = 8;

// Where a definition does not reach over: a line, a sentence.
constexpr std::u32string_view ENDS = U"\n。；！？\uE000";

// What tells that the name behind is another one's parent, child or owner, so
// that a definition may be meant for either.
const Regex RE_RELATION(
    "RE_RELATION",
    UR"((?i)subsidiar|parent|affiliate|owned|controlled|branch|division|successor|assign|behalf|formerly|子公司|母公司|控股|下属|旗下|所属|关联|分公司|集团成员|股东|实际控制|受托|委托|代表|原名|更名)");

// What may stand between a name and its definition when nothing else is said: the
// name's own bracket. …有限公司（Daiyue Co., Ltd.）（以下简称“岱岳”）
const Regex RE_NOTHING("RE_NOTHING", UR"((?:\s|["”」』,，]|[(（][^()（）\n]{0,80}[)）]|[)）])*+)");

// In folded case; shorter rows end with empty names, which nobody bears.
constexpr std::size_t MOST_NAMES = 7;
constexpr std::u32string_view KNOWN_NAMES[][MOST_NAMES] = {
    {U"hkiac", U"hong kong international arbitration centre", U"香港国际仲裁中心",
     U"香港國際仲裁中心"},
    {U"cietac", U"china international economic and trade arbitration commission",
     U"中国国际经济贸易仲裁委员会", U"贸仲", U"贸仲委"},
    {U"siac", U"singapore international arbitration centre", U"新加坡国际仲裁中心"},
    {U"icc", U"international chamber of commerce", U"国际商会"},
    {U"lcia", U"london court of international arbitration", U"伦敦国际仲裁院"},
    {U"cmac", U"china maritime arbitration commission", U"中国海事仲裁委员会", U"海仲委"},
    {U"shiac", U"shanghai international arbitration center", U"上海国际仲裁中心",
     U"上海国际经济贸易仲裁委员会"},
    {U"scia", U"shenzhen court of international arbitration", U"深圳国际仲裁院"},
    {U"fda", U"food and drug administration", U"u.s. food and drug administration",
     U"美国食品药品监督管理局"},
    {U"fifa", U"国际足联", U"国际足球联合会"},
    {U"wipo", U"world intellectual property organization", U"世界知识产权组织"},
    {U"cas", U"court of arbitration for sport", U"国际体育仲裁院"},
    {U"cnipa", U"china national intellectual property administration", U"国家知识产权局"},
    {U"csrc", U"china securities regulatory commission", U"中国证监会", U"中国证券监督管理委员会"},
    {U"nmpa", U"national medical products administration", U"国家药品监督管理局", U"国家药监局"},
    {U"ndrc", U"national development and reform commission", U"国家发展和改革委员会",
     U"国家发改委"},
    {U"mofcom", U"ministry of commerce of the people's republic of china", U"商务部"},
    {U"miit", U"工业和信息化部", U"工信部"},
    {U"samr", U"国家市场监督管理总局", U"市场监管总局"},
    {U"pboc", U"people's bank of china", U"中国人民银行", U"人民银行", U"央行"},
    {U"nfra", U"national financial regulatory administration", U"国家金融监督管理总局",
     U"金融监管总局"},
    {U"cac", U"cyberspace administration of china", U"国家互联网信息办公室", U"国家网信办"},
    {U"sasac", U"国务院国有资产监督管理委员会", U"国务院国资委"},
    {U"sehk", U"hkex", U"stock exchange of hong kong limited", U"hong kong stock exchange",
     U"香港联合交易所有限公司", U"香港联交所", U"联交所"},
    {U"sfc", U"securities and futures commission", U"香港证监会", U"证券及期货事务监察委员会"},
    {U"hkma", U"hong kong monetary authority", U"香港金融管理局", U"金管局"},
    {U"mas", U"monetary authority of singapore", U"新加坡金融管理局"},
    {U"sgx", U"singapore exchange", U"新加坡交易所"},
    {U"sse", U"shanghai stock exchange", U"上海证券交易所", U"上交所"},
    {U"szse", U"shenzhen stock exchange", U"深圳证券交易所", U"深交所"},
    {U"bse", U"北京证券交易所", U"北交所"},
    {U"nyse", U"new york stock exchange", U"纽约证券交易所", U"纽交所"},
    {U"sec", U"securities and exchange commission", U"美国证券交易委员会", U"美国证交会"},
    {U"pmda", U"pharmaceuticals and medical devices agency"},
    {U"ema", U"european medicines agency", U"欧洲药品管理局"},
    {U"epo", U"european patent office", U"欧洲专利局"},
    {U"uspto", U"united states patent and trademark office", U"美国专利商标局"},
    {U"jcaa", U"japan commercial arbitration association", U"日本商事仲裁协会"},
    {U"kcab", U"korean commercial arbitration board", U"大韩商事仲裁院"},
    {U"aiac", U"asian international arbitration centre", U"亚洲国际仲裁中心"},
    {U"scc", U"arbitration institute of the stockholm chamber of commerce", U"斯德哥尔摩商会仲裁院",
     U"瑞典斯德哥尔摩商会仲裁院"},
    {U"viac", U"vienna international arbitral centre", U"维也纳国际仲裁中心"},
    {U"aaa", U"american arbitration association", U"美国仲裁协会"},
    {U"imo", U"international maritime organization", U"国际海事组织"},
    {U"iso", U"international organization for standardization", U"国际标准化组织"},
    {U"fidic", U"international federation of consulting engineers", U"国际咨询工程师联合会"}};

class TextReader {
 public:
  TextReader(std::u32string_view text, const std::vector<Mention>& mentions, PartyNames& names)
      : text_(text), mentions_(mentions), names_(names), settled_(names.size()) {}

  std::vector<bool> run() {
    unite_spellings();
    unite_known();
    define_aliases();
    unite_pairs();
    return std::move(settled_);
  }

 private:
  std::u32string_view between(Offset start, Offset end) const {
    return text::slice(text_, start, end);
  }

  // The punctuation of a legal form, and vs &.
  void unite_spellings() {
    std::unordered_map<std::u32string, std::size_t> by_words;
    for (std::size_t i = 0; i < names_.size(); ++i) {
      const auto& name = names_.name(i);
      if (name.script != Script::LATIN) continue;
      std::u32string spelling = name.form + U"|";
      for (const auto& word : name.words) spelling += U" " + word;
      const auto [found, is_new] = by_words.try_emplace(std::move(spelling), i);
      if (!is_new && is_same_name(name, names_.name(found->second))) {
        names_.unite(found->second, i);
      }
    }
  }

  // Public bodies that go by names which no rule tells
  void unite_known() {
    std::unordered_map<std::u32string_view, std::size_t> group_of;
    for (std::size_t i = 0; i < std::size(KNOWN_NAMES); ++i) {
      for (const auto name : KNOWN_NAMES[i]) group_of.emplace(name, i);
    }
    std::unordered_map<std::size_t, std::size_t> first_of;
    for (std::size_t i = 0; i < names_.size(); ++i) {
      std::u32string key = text::case_fold(names_.surface(i));
      if (key.starts_with(U"the ")) key.erase(0, 4);
      const auto found = group_of.find(key);
      if (found == group_of.end()) continue;
      const auto [first, is_new] = first_of.try_emplace(found->second, i);
      if (!is_new) names_.unite(first->second, i);
    }
  }

  void define_aliases() {
    // An alias that is defined for two stays by itself.
    std::unordered_map<std::size_t, std::unordered_set<std::size_t>> meant;
    for (std::size_t i = 0; i < mentions_.size(); ++i) {
      if (!mentions_[i].is_alias()) continue;
      const auto found = antecedents(i);
      meant[mentions_[i].name].insert(found.begin(), found.end());
    }
    for (std::size_t i = 0; i < names_.size(); ++i) {
      const auto found = meant.find(i);
      if (found == meant.end() || found->second.empty()) continue;
      settled_[i] = true;
      if (found->second.size() == 1) names_.unite(*found->second.begin(), i);
    }
  }

  // The parties that the alias may be defined for; none if nothing tells.
  std::vector<std::size_t> antecedents(std::size_t alias) const {
    const auto& defined = mentions_[alias];
    std::vector<std::size_t> alike;
    std::optional<std::size_t> direct;
    bool is_related = false;
    Offset from = defined.defined_at;
    for (std::size_t n = 0; n < NEAREST_NAMES && n < alias; ++n) {
      const auto& before = mentions_[alias - 1 - n];
      if (before.name == defined.name) continue;
      const bool in_bracket = before.end > defined.defined_at;
      if (!in_bracket) {
        const auto gap = between(before.end, from);
        if (ends_definition(before, defined, gap)) break;
        is_related |= RE_RELATION.search(gap).has_value();
        from = before.start;
        if (!direct && is_direct(before, defined)) direct = before.name;
      }
      // An alias that stands in the same bracket is not what another one is for.
      const bool may_be_meant = !in_bracket || !before.is_alias();
      if (may_be_meant && abbreviates(names_.surface(defined.name), names_.surface(before.name))) {
        alike.push_back(before.name);
      }
    }
    if (alike.empty() && direct && !is_related) alike.push_back(*direct);
    for (auto& name : alike) name = names_.party(name);
    return alike;
  }

  static bool ends_definition(const Mention& before, const Mention& defined,
                              std::u32string_view gap) {
    return defined.defined_at - before.end > WIDEST_DEFINITION ||
           gap.find_first_of(ENDS) != gap.npos;
  }

  bool is_direct(const Mention& before, const Mention& defined) const {
    return RE_NOTHING.full_match(between(before.end, defined.defined_at)).has_value();
  }

  struct Pair {
    std::size_t a;
    std::size_t b;
    Adjacency how;
  };

  void unite_pairs() {
    std::vector<Pair> pairs;
    std::unordered_map<std::size_t, std::vector<std::size_t>> partners;
    for (std::size_t i = 0; i + 1 < mentions_.size(); ++i) {
      const auto& a = mentions_[i];
      const auto& b = mentions_[i + 1];
      // What a definition stands for is decided by then.
      if (a.name == b.name || b.is_alias()) continue;
      const auto next =
          i + 2 < mentions_.size() ? mentions_[i + 2].start : static_cast<Offset>(text_.size());
      const auto how = adjacency(text_, {a.start, a.end, b.start, b.end, next});
      if (how == Adjacency::NONE || !is_pair(a.name, b.name, how)) continue;
      pairs.push_back({a.name, b.name, how});
      partners[a.name].push_back(b.name);
      partners[b.name].push_back(a.name);
    }
    for (const auto how : {Adjacency::BRACKET, Adjacency::SLASH}) {
      for (const auto& pair : pairs) {
        if (pair.how != how || has_rivals(partners[pair.a]) || has_rivals(partners[pair.b])) {
          continue;
        }
        names_.unite(pair.a, pair.b);
      }
    }
  }

  // Whether the two are one name in two languages, or a name and its abbreviation.
  bool is_pair(std::size_t a, std::size_t b, Adjacency how) const {
    const auto& x = names_.name(a);
    const auto& y = names_.name(b);
    if (x.script == Script::NONE || y.script == Script::NONE) return false;
    if (x.is_branch != y.is_branch) return false;
    if (x.script != y.script) return true;
    if (how != Adjacency::BRACKET || y.is_full()) return false;
    return abbreviates(names_.surface(b), names_.surface(a)) || are_seats(x, y);
  }

  // 海南国际仲裁院（海南仲裁委员会）: bodies of arbitration go by several names.
  static bool are_seats(const OrganizationName& a, const OrganizationName& b) {
    constexpr std::u32string_view ARBITRATION = U"仲裁";
    constexpr std::size_t PLACE = 2;
    const auto x = a.place + a.core;
    const auto y = b.place + b.core;
    return a.is_institution && b.is_institution && x.substr(0, PLACE) == y.substr(0, PLACE) &&
           x.find(ARBITRATION) != x.npos && y.find(ARBITRATION) != y.npos;
  }

  // Names beside which two unlike names of one script stand: a list, not a pair.
  bool has_rivals(const std::vector<std::size_t>& partners) const {
    for (const auto script : {Script::CHINESE, Script::LATIN}) {
      std::optional<std::size_t> first;
      for (const auto name : partners) {
        if (names_.name(name).script != script) continue;
        if (!first) first = name;
        if (!are_alike(*first, name)) return true;
      }
    }
    return false;
  }

  bool are_alike(std::size_t a, std::size_t b) const {
    if (names_.party(a) == names_.party(b)) return true;
    const auto& x = names_.name(a);
    const auto& y = names_.name(b);
    return likeness(x, y) == Likeness::SHORT || likeness(y, x) == Likeness::SHORT ||
           abbreviates(names_.surface(a), names_.surface(b)) ||
           abbreviates(names_.surface(b), names_.surface(a));
  }

  std::u32string_view text_;
  const std::vector<Mention>& mentions_;
  PartyNames& names_;
  std::vector<bool> settled_;
};

}  // namespace

std::vector<bool> unite_by_text(std::u32string_view text, const std::vector<Mention>& mentions,
                                PartyNames& names) {
  return TextReader(text, mentions, names).run();
}

}  // namespace core::parties
