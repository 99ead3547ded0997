// When two dates are one, and what of an amount is replaced.
//
// Offsets count code points.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/anonymization/result.hpp"
#include "core/text/regex.hpp"

namespace core::anonymization {

// A Chinese numeral, ordinary or financial (searched).
extern const text::Regex RE_CN_UPPER_DIGITS_MIX;

// Without blanks, with ASCII parentheses, in folded case; 2023年 keys as 2023.
std::u32string _datetime_identity_key(std::u32string_view text, Offset start, Offset end);

// The first figure of an amount, from its first digit over separators and
// blanks that stand between digits; nullopt without any digit.
//
//   合同总价1,000.50 元 -> 1,000.50     100，元 -> 100
std::optional<std::pair<std::size_t, std::size_t>> _money_digit_run_span(std::u32string_view frag);

// The amount with its figure replaced by `money_ph`: its words stay, so that
// the clause keeps its wording. An amount in Chinese numerals is replaced whole.
//
//   人民币100,000元 -> 人民币[MONEY1]元     壹拾万元 -> [MONEY1]
std::u32string _money_replacement_phrase(std::u32string_view frag, std::u32string_view money_ph);

}  // namespace core::anonymization
