#include "core/parties/adjacent_names.hpp"

#include <algorithm>

#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"

namespace core::parties {
namespace {

using anonymization::Offset;
using text::Regex;

// What opens the second name: （, （英文名称：, ("
const Regex RE_OPENING(
    "RE_OPENING",
    UR"(["”’」]?\s{0,4}[(（]\s{0,4}(?:(?i:中文|英文|外文|中英文|即|又称|又名|亦称|译名|in\s(?:Chinese|English)|Chinese\sname|English\sname)(?:译名|名称|名字|姓名|全称|名)?\s?[:：为是]?\s{0,2})?["“「『]?)");

// The same without a bracket, where words must say so: ，中文名称：
const Regex RE_WORDS(
    "RE_WORDS",
    UR"(["”’」]?\s{0,4}[,，]?\s{0,2}(?:(?:其)?(?:中文|英文|外文)(?:译名|名称|名字|姓名|名)\s?(?:[:：]|为|是)\s{0,2}|即\s?)["“「『]?)");

// Behind a name in the same bracket: ", 国家互联网信息办公室)
const Regex RE_NEXT_IN_BRACKET("RE_NEXT_IN_BRACKET", UR"(["”」]?\s{0,2}[,，、;；]\s{0,2}["“「]?)");

const Regex RE_SLASH("RE_SLASH", UR"(\h{0,2}[/／|｜]\h{0,2})");

// What closes it, the bracket at once or after a comma.
const Regex RE_CLOSING("RE_CLOSING", UR"(["”」』]?\s{0,4}[)）])");
const Regex RE_COMMA("RE_COMMA", UR"(["”」』]?\s{0,4}[,，;；、])");

constexpr Offset WIDEST_GAP = 24;
constexpr Offset WIDEST_BRACKET = 200;

std::size_t index(Offset at) { return static_cast<std::size_t>(at); }

// A definition that follows in the same bracket is no further name: ，以下称“瑾樘生物”.
bool is_defined_at(std::u32string_view text, Offset at) {
  constexpr std::u32string_view MARKS = U"\"“‘「『称为";
  return at > 0 && index(at) <= text.size() && MARKS.find(text[index(at) - 1]) != MARKS.npos;
}

bool closes(std::u32string_view text, const NamePair& pair) {
  const auto behind = index(pair.second_end);
  if (RE_CLOSING.match_at(text, behind)) return true;
  if (!RE_COMMA.match_at(text, behind)) return false;
  const auto rest = text::slice(text, pair.second_end, pair.second_end + WIDEST_BRACKET);
  const auto close = rest.find_first_of(U")）\n");
  if (close == rest.npos) return false;
  const auto bracket = pair.second_end + static_cast<Offset>(close);
  return pair.next >= bracket || is_defined_at(text, pair.next);
}

bool is_in_chain(std::u32string_view text, const NamePair& pair) {
  constexpr std::u32string_view SLASHES = U"/／|｜";
  const auto is_slash = [&](char32_t c) { return SLASHES.find(c) != SLASHES.npos; };
  const auto before =
      text::strip(text::slice(text, std::max<Offset>(0, pair.first_start - 3), pair.first_start));
  const auto behind = text::strip(text::slice(text, pair.second_end, pair.second_end + 3));
  return (!before.empty() && is_slash(before.back())) ||
         (!behind.empty() && is_slash(behind.front()));
}

}  // namespace

Adjacency adjacency(std::u32string_view text, const NamePair& pair) {
  const auto width = pair.second_start - pair.first_end;
  if (width < 1 || width > WIDEST_GAP) return Adjacency::NONE;
  const auto gap = text::slice(text, pair.first_end, pair.second_start);
  if (gap.find(U'\n') != gap.npos) return Adjacency::NONE;
  if (RE_SLASH.full_match(gap)) {
    return is_in_chain(text, pair) ? Adjacency::NONE : Adjacency::SLASH;
  }
  if (RE_WORDS.full_match(gap)) return Adjacency::BRACKET;
  if (RE_OPENING.full_match(gap)) {
    return closes(text, pair) ? Adjacency::BRACKET : Adjacency::NONE;
  }
  if (RE_NEXT_IN_BRACKET.full_match(gap) && is_defined_at(text, pair.first_start) &&
      RE_CLOSING.match_at(text, index(pair.second_end))) {
    return Adjacency::BRACKET;
  }
  return Adjacency::NONE;
}

bool is_chinese(std::u32string_view name) { return text::contains_ideograph(name); }

bool is_latin(std::u32string_view name) {
  return !is_chinese(name) && std::any_of(name.begin(), name.end(), text::is_ascii_alpha);
}

}  // namespace core::parties
