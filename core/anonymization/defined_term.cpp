#include "core/anonymization/defined_term.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/text/lexicon.hpp"
#include "core/text/multi_pattern.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/word_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view defined_terms_en;
extern const std::string_view defined_terms_zh;
}  // namespace core::text::lexicon_data

namespace core::anonymization {
namespace {

using text::MultiPattern;
using text::Regex;

constexpr std::size_t MIN_LENGTH = 2;
// The longest short names have about a dozen ideographs or four English words.
constexpr std::size_t MAX_ZH_LENGTH = 20;
constexpr std::size_t MAX_EN_LENGTH = 40;
constexpr std::size_t MAX_EN_WORDS = 5;
constexpr std::size_t TITLE_REACH = 24;

// Countries and regions of law, which contracts define as well.
constexpr auto ZH_TERRITORIES = text::words({U"中国", U"香港", U"澳门", U"台湾", U"内地", U"大陆"});

// Written as names are: 华信科技, 晋泓香港, ABC科技, 卡尔·蔡司, 天域（上海）.
const Regex RE_ZH_NAME_SHAPE("RE_ZH_NAME_SHAPE",
                             UR"([\u4e00-\u9fffA-Za-z0-9\u3040-\u30ff·&（）() -]+)");

// What no short name of an organization begins with: 该房屋, 上述资产, 本次交易.
const Regex RE_ZH_POINTING_WORD(
    "RE_ZH_POINTING_WORD",
    UR"(该|上述|前述|下列|本[次合协条款项人院行]|此[次类等]|任何|每一|全部|所有)");

// What no short name of an organization ends in: a role (披露方, 债务人, 经营者), a
// document (…合同), a thing (…房屋, …账户, …号). Not 东方, 四方.
const Regex RE_ZH_ROLE_OR_THING_AT_END(
    "RE_ZH_ROLE_OR_THING_AT_END",
    UR"((?:(?<![东西南北四八大远])方|[人者轮号法权价额期函]|(?<![朝旭今春东])日|合同书?|协议书?|章程|法典|条例|办法|规定|规则|细则|条款|公约|准则|房屋|[账帐]户|[账帐]号|期限|期间|费用|价款|款项|股权|债权|债务|产权|地块|项目|产品|商标|专利|货物|标的物?|系统|平台|报告|清单|成果|作品|业务|条件|承诺|影响|义务|责任|要求|事项|材料|资料|文件)$)");

// 《…》, …协议, …条例 in front of a definition.
const Regex RE_DOCUMENT_TITLE_AT_END(
    "RE_DOCUMENT_TITLE_AT_END",
    UR"((?:[》〉]|合同书?|协议书?|章程|法|法典|条例|办法|规定|规则|细则|准则|公约)[\s,，]{0,4}$)"
    UR"(|(?i)\b(?:agreements?|contracts?|deed|laws?|act|code|regulations?|rules?|convention|treaty|directive|protocol|terms|conditions|policy|policies|standards?|statement|memorandum|order|plan|tax)[\s,，]{0,4}$)");

// Whether all of `term` is made of words of roles and things: 目标|公司, 许可|产品.
bool is_made_of_zh_definition_words(std::u32string_view term) {
  static const std::vector<std::u32string> list =
      text::lexicon_words(text::lexicon_data::defined_terms_zh);
  static const MultiPattern words(std::vector<std::u32string_view>(list.begin(), list.end()));
  std::array<bool, MAX_ZH_LENGTH + 1> reached{};
  reached[0] = true;
  words.scan(term, [&reached](const MultiPattern::Hit& hit) {
    if (reached[hit.start]) reached[hit.end] = true;
  });
  return reached[term.size()];
}

bool is_zh_name(std::u32string_view term) {
  if (term.size() > MAX_ZH_LENGTH || !RE_ZH_NAME_SHAPE.full_match(term)) return false;
  if (RE_ZH_POINTING_WORD.match(term) || RE_ZH_ROLE_OR_THING_AT_END.search(term)) return false;
  const auto compact = text::remove_space(term);
  return !ZH_TERRITORIES.contains(compact) && !is_made_of_zh_definition_words(compact);
}

enum class WordKind { NAME, ALONE, NEVER };

WordKind kind_of_en_word(std::u32string_view word) {
  static const auto kinds = [] {
    std::unordered_map<std::u32string, WordKind> out;
    for (const auto& row : text::lexicon_rows(text::lexicon_data::defined_terms_en)) {
      out.emplace(row.at(0), row.at(1) == U"never" ? WordKind::NEVER : WordKind::ALONE);
    }
    return out;
  }();
  const auto found = kinds.find(text::case_fold(word));
  return found == kinds.end() ? WordKind::NAME : found->second;
}

bool is_upper(char32_t c) { return c >= U'A' && c <= U'Z'; }
bool is_lower(char32_t c) { return c >= U'a' && c <= U'z'; }

// Acme, 3M, A.P., eBay; not acme. Letters beyond ASCII (Øresund, 한강) count as capitals.
bool begins_like_a_name(std::u32string_view word) {
  if (!is_lower(word.front())) return word.front() >= 0xC0 || text::is_ascii_alnum(word.front());
  return word.size() > 1 && is_upper(word[1]);
}

// Whether c stands between the words of a term.
bool parts_words(char32_t c) { return text::is_space(c) || c == U'-' || c == U'/'; }

bool may_stand_in_en_name(char32_t c) {
  static constexpr std::u32string_view MARKS = U"&.,'’+!-/()";
  return text::is_ascii_alnum(c) || text::is_space(c) || MARKS.find(c) != MARKS.npos ||
         (c >= 0xC0 && c < 0x2000) || (c >= 0xAC00 && c < 0xD7B0) || (c >= 0x3040 && c < 0x3100);
}

// The words of a term, without the marks around them.
std::vector<std::u32string_view> words_of(std::u32string_view term) {
  static constexpr std::u32string_view MARKS = U".,'’()";
  std::vector<std::u32string_view> words;
  for (std::size_t from = 0; from < term.size();) {
    std::size_t to = from;
    while (to < term.size() && !parts_words(term[to])) ++to;
    auto word = term.substr(from, to - from);
    while (!word.empty() && MARKS.find(word.front()) != MARKS.npos) word.remove_prefix(1);
    while (!word.empty() && MARKS.find(word.back()) != MARKS.npos) word.remove_suffix(1);
    if (!word.empty()) words.push_back(word);
    from = to + 1;
  }
  return words;
}

bool is_number(std::u32string_view word) {
  return std::all_of(word.begin(), word.end(), text::is_ascii_digit);
}

bool is_en_name(std::u32string_view term) {
  if (term.size() > MAX_EN_LENGTH || !begins_like_a_name(term)) return false;
  if (!std::all_of(term.begin(), term.end(), may_stand_in_en_name)) return false;
  const auto words = words_of(term);
  bool named = false;
  for (const auto word : words) {
    const auto kind = kind_of_en_word(word);
    if (kind == WordKind::NEVER) return false;
    named |= kind == WordKind::NAME && !is_number(word);
  }
  return named && words.size() <= MAX_EN_WORDS;
}

}  // namespace

bool is_name_like_term(std::u32string_view term) {
  if (term.size() < MIN_LENGTH) return false;
  return text::contains_ideograph(term) ? is_zh_name(term) : is_en_name(term);
}

bool ends_in_document_title(std::u32string_view text) {
  if (text.size() > TITLE_REACH) text.remove_prefix(text.size() - TITLE_REACH);
  return RE_DOCUMENT_TITLE_AT_END.search(text).has_value();
}

}  // namespace core::anonymization
