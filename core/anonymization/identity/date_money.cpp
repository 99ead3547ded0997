#include "core/anonymization/identity/date_money.hpp"

#include <algorithm>

#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/rules/helpers.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {

using text::Regex;

// Ordinary and financial numerals: 壹拾万元, 100万元
const Regex RE_CN_UPPER_DIGITS_MIX(
    "RE_CN_UPPER_DIGITS_MIX",
    UR"([零〇一二三四五六七八九十百千万亿兆两兩壹贰叁肆伍陆柒捌玖拾佰仟])");

namespace {

// 2023年
const Regex RE_YEAR("RE_YEAR", UR"((\d{4})年)");
constexpr std::size_t YEAR_SIZE = 5;

// 角 or 5 分钱 directly behind the figure. "分之" is a fraction and stays.
const Regex RE_SMALL_UNIT_TAIL("RE_SMALL_UNIT_TAIL", UR"(\s*(?:角|分|毛)(?:钱)?(?!之))");

bool is_any_of(char32_t c, std::u32string_view set) {
  return set.find(c) != std::u32string_view::npos;
}

// U' ' if there is nothing else.
char32_t first_behind_space(std::u32string_view s) {
  const auto* found = std::find_if_not(s.begin(), s.end(), text::is_space);
  return found == s.end() ? U' ' : *found;
}

bool joins_digits(char32_t c) { return is_any_of(c, U",，. \t\u00A0"); }

// The figure's start with its sign, and then its opening bracket, included.
std::size_t with_sign_and_bracket(std::u32string_view frag, std::size_t start) {
  if (start > 0 && is_any_of(frag[start - 1], U"-−")) --start;
  if (start > 0 && is_any_of(frag[start - 1], U"(（")) --start;
  return start;
}

}  // namespace

std::u32string _datetime_identity_key(std::u32string_view text, Offset start, Offset end) {
  const auto t = text::fold_parentheses(text::remove_space(text::slice(text, start, end)));
  if (t.size() == YEAR_SIZE) {
    if (const auto year = RE_YEAR.full_match(t)) return text::case_fold(year->text(1));
  }
  return text::case_fold(t);
}

std::optional<std::pair<std::size_t, std::size_t>> _money_digit_run_span(std::u32string_view frag) {
  const auto first = std::find_if(frag.begin(), frag.end(), text::is_digit);
  if (first == frag.end()) return std::nullopt;
  const auto start = static_cast<std::size_t>(first - frag.begin());
  auto end = start;
  while (end < frag.size()) {
    const bool goes_on =
        text::is_digit(frag[end]) ||
        (joins_digits(frag[end]) && end + 1 < frag.size() && text::is_digit(frag[end + 1]));
    if (!goes_on) break;
    ++end;
  }
  return std::pair(start, end);
}

std::u32string _money_replacement_phrase(std::u32string_view frag, std::u32string_view money_ph) {
  const bool has_decimal = std::any_of(frag.begin(), frag.end(), text::is_decimal_digit);
  if (!has_decimal || RE_CN_UPPER_DIGITS_MIX.search(frag)) return std::u32string(money_ph);
  const auto run = _money_digit_run_span(frag);
  if (!run) return std::u32string(money_ph);
  auto prefix = frag.substr(0, with_sign_and_bracket(frag, run->first));
  auto tail = frag.substr(run->second);
  // What the two begin with, behind white space, tells of most tails that they are neither.
  if (is_any_of(first_behind_space(tail), U"角分毛")) {
    if (const auto unit = RE_SMALL_UNIT_TAIL.match(tail)) tail.remove_prefix(unit->end());
  }
  if (is_any_of(first_behind_space(tail), U"(（") &&
      RE_EN_WRITTEN_CURRENCY_IN_PARENS.full_match(tail)) {
    tail = {};
  }
  if (!prefix.empty() && is_any_of(prefix.back(), U"【［")) prefix.remove_suffix(1);
  if (!tail.empty() && is_any_of(tail.front(), U"】］")) tail.remove_prefix(1);
  return std::u32string(prefix) + ensure_ascii_placeholder_brackets(money_ph) +
         std::u32string(tail);
}

}  // namespace core::anonymization
