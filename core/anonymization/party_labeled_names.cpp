#include "core/anonymization/party_labeled_names.hpp"

#include <algorithm>
#include <iterator>

#include "core/anonymization/constants.hpp"
#include "core/anonymization/identity/org_identity.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/result.hpp"
#include "core/anonymization/span_index.hpp"
#include "core/anonymization/text_findings.hpp"
#include "core/text/find_character.hpp"
#include "core/text/multi_pattern.hpp"
#include "core/text/rare_words.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/view_map.hpp"

namespace core::anonymization {
namespace {

using text::MultiPattern;
using text::Regex;

// How far a label reaches back from its colon, with both remarks, and a name
// ahead of it. What is longer is neither.
constexpr std::size_t LABEL_REACH = 160;
constexpr std::size_t NAME_REACH = 480;

bool is_colon(char32_t c) { return c == U':' || c == U'：'; }

// A character that no label reaches across.
bool ends_label(char32_t c) { return is_colon(c) || c == U'\n' || is_joiner_fragment(c); }

// The name behind the label that ends in the colon at `colon`; empty if there
// is none. The label is looked for first, and once: colons are many, labels few.
std::u32string_view name_behind(std::u32string_view text, std::size_t colon) {
  static const std::size_t company = RE_PARTY_LABELED_COMPANY.group(U"name");
  static const std::size_t institution = RE_PARTY_LABELED_INSTITUTION.group(U"name");
  if (!may_end_party_label(text.substr(0, colon))) return {};
  std::size_t from = colon;
  while (from > 0 && colon - from < LABEL_REACH && !ends_label(text[from - 1])) --from;
  const auto label = RE_PARTY_LABEL.search(text.substr(0, colon + 1), from);
  if (!label) return {};
  const auto window = text.substr(0, colon + 1 + NAME_REACH);
  if (const auto found = RE_PARTY_LABELED_COMPANY.match_at(window, label->start())) {
    return text::strip(found->text(company));
  }
  const auto found = RE_PARTY_LABELED_INSTITUTION.match_at(window, label->start());
  return found ? text::strip(found->text(institution)) : std::u32string_view();
}

std::vector<std::u32string_view> find_labeled_names(std::u32string_view text) {
  std::vector<std::u32string_view> names;
  text::MetWords seen;
  for (auto colon = text::find_either(text, U':', U'：'); colon != text::NPOS;
       colon = text::find_either(text, U':', U'：', colon + 1)) {
    const auto name = name_behind(text, colon);
    if (!name.empty() && seen.insert(name)) names.push_back(name);
  }
  return names;
}

// Views into `text`.
std::vector<std::u32string_view> labeled_names(std::u32string_view text) {
  return found_once(text, &TextFindingsScope::labeled_names, find_labeled_names);
}

// A Chinese mention is part of a place's name or of an address: 华信集团大厦,
// 华信集团东路, 北京大学东门, 北京大学站. Not …公司道歉, …公司弄清, …公司路演.
const Regex RE_ZH_PLACE_BEHIND(
    "RE_ZH_PLACE_BEHIND",
    UR"([东南西北中]?(?:路(?![演径线由])|街|巷|弄(?![虚清丢错])|胡同|桥|村(?!镇)|道(?![歉义德路理具])|站(?![在点台出]))|大道|大厦|大楼|大桥|广场|[东南西北正侧]门|公寓|宿舍|家属[院区]|小区|社区|新村|[校厂园]区|(?:产业|工业|科技|物流|软件)园|工业区|开发区|地铁|号楼)");

// A Chinese mention goes on as the name of a branch: …有限公司北京分公司, …银行苏州支行.
// Not …有限公司设立北京分公司, …有限公司与其子公司.
const Regex RE_ZH_BRANCH_BEHIND(
    "RE_ZH_BRANCH_BEHIND",
    UR"([（(]?(?:(?!设立|成立|注册|委托|通过|下[设属辖]|所属|旗下|以及|[与和及或的其各之在为是])[\u4e00-\u9fff]){0,10}?[）)]?(?:分公司|子公司|支公司|分行|支行|营业[部厅]|分理处|办事处|代表处|分部|分店|分厂|分院|分校|分中心|分所|分局))");

// A Chinese mention begins a longer name: 华信集团|股份有限公司, 北京大学|第一医院,
// 北京大学|出版社. Not …公司|集团, which is the same party, nor …公司|附属公司.
const Regex RE_ZH_LONGER_NAME_BEHIND(
    "RE_ZH_LONGER_NAME_BEHIND",
    UR"((?:[（(][\u4e00-\u9fff]{1,8}[）)])?(?:(?:集团|控股|股份)?有限(?:责任)?公司|股份公司|(?<!公司)集团|第[一二三四五六七八九十]{1,2}(?:临床|附属)?(?:医院|医学院|中学|小学)|附属[\u4e00-\u9fff]{0,8}?(?:医院|中学|小学|学校|幼儿园)|出版社))");

// The same for English: Acme Ltd| Tower, Acme Ltd| Beijing Branch, Acme Bank|, N.A.
// Not Acme Ltd|. The Company, Acme Ltd| and.
const Regex RE_EN_LONGER_NAME_BEHIND(
    "RE_EN_LONGER_NAME_BEHIND",
    UR"((?:,?\h{1,2}(?=[A-Z])(?i:road|rd|street|avenue|ave|lane|boulevard|blvd|tower|building|plaza|square|park|house|bridge|station|co|corp|corporation|inc|ltd|limited|llc|llp|plc|gmbh|n\.a)\b)"
    UR"(|\h{1,2}\(?(?:(?!The|This|Its|Each|Any|A\b)[A-Z][a-z]{1,20}\)?\h{1,2}){0,2}(?:Branch|BRANCH|Subsidiary|Representative\h+Office)\b))");

// A labelled name and the number that its party has.
struct NumberedName {
  std::u32string_view name;
  std::int64_t number = 0;
};

std::vector<NumberedName> numbered_names(const PartyMentionRequest& request) {
  std::vector<NumberedName> out;
  if (request.org_num_by_key.empty()) return out;
  for (const auto name : labeled_names(request.text)) {
    const auto key = _organization_identity_key(name, 0, static_cast<Offset>(name.size()));
    const auto found = request.org_num_by_key.find(key);
    if (found != request.org_num_by_key.end()) out.push_back({name, found->second});
  }
  return out;
}

// Every occurrence of a name, by start, the longest first.
std::vector<MultiPattern::Hit> occurrences(std::u32string_view text,
                                           const std::vector<NumberedName>& names) {
  std::vector<std::u32string_view> words;
  words.reserve(names.size());
  for (const auto& name : names) words.push_back(name.name);
  std::vector<MultiPattern::Hit> hits;
  text::RareWords(words).scan(text, [&hits](const MultiPattern::Hit& hit) { hits.push_back(hit); });
  std::sort(hits.begin(), hits.end(), [](const auto& a, const auto& b) {
    return a.start != b.start ? a.start < b.start : a.end > b.end;
  });
  return hits;
}

bool is_latin_letter_or_digit(char32_t c) {
  return text::is_ascii_alnum(c) || (c >= 0xC0 && c < 0x250 && c != 0xD7 && c != 0xF7);
}

// Whether a Latin word goes on across the edge of text[at - 1] and text[at].
bool cuts_latin_word(std::u32string_view text, std::size_t at) {
  if (at == 0 || at >= text.size() || !is_latin_letter_or_digit(text[at])) return false;
  if (is_latin_letter_or_digit(text[at - 1])) return true;
  return text[at - 1] == U'-' && at > 1 && is_latin_letter_or_digit(text[at - 2]);
}

// Whether start..end names the party, and not a place or something longer.
bool is_own_mention(std::u32string_view text, std::size_t start, std::size_t end) {
  if (cuts_latin_word(text, start) || cuts_latin_word(text, end)) return false;
  if (!text::contains_ideograph(text.substr(start, end - start))) {
    return !RE_EN_LONGER_NAME_BEHIND.match_at(text, end);
  }
  return !RE_ZH_PLACE_BEHIND.match_at(text, end) && !RE_ZH_BRANCH_BEHIND.match_at(text, end) &&
         !RE_ZH_LONGER_NAME_BEHIND.match_at(text, end);
}

}  // namespace

std::vector<std::u32string> _collect_party_labeled_org_names(std::u32string_view text) {
  const auto names = labeled_names(text);
  return {names.begin(), names.end()};
}

// What stands inside a mention that is left alone is left alone too: 华信公司 in
// 北京华信公司大厦.
std::vector<Replacement> further_party_mentions(const PartyMentionRequest& request) {
  std::vector<Replacement> out;
  const auto names = numbered_names(request);
  if (names.empty()) return out;
  const auto replaced = SpanIndex::of(request.replacements);
  std::size_t read = 0;
  for (const auto& hit : occurrences(request.text, names)) {
    if (hit.start < read) continue;
    read = hit.end;
    const auto start = static_cast<Offset>(hit.start);
    const auto end = static_cast<Offset>(hit.end);
    if (replaced.overlaps(start, end) || !is_own_mention(request.text, hit.start, hit.end))
      continue;
    out.push_back({start, end,
                   format_numbered_placeholder(tag::ORG, names[hit.pattern].number,
                                               request.placeholder_locale)});
  }
  return out;
}

PartyMentions _expand_party_org_mentions(const PartyMentionRequest& request) {
  PartyMentions out{request.replacements, request.org_counter};
  auto further = further_party_mentions(request);
  std::move(further.begin(), further.end(), std::back_inserter(out.replacements));
  return out;
}

}  // namespace core::anonymization
