// Placeholder strings: [机构1], [地址2], [DATE3], [CARD_****1234].
//
// They are made here and read back here, and nowhere else. Numbers count from 1.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

struct NumberedPlaceholder {
  std::string tag;
  std::int64_t number = 0;

  bool operator==(const NumberedPlaceholder&) const = default;
};

// Locale "zh" writes ORG as 机构 and ADDRESS as 地址; every other locale writes
// the tag. A tag that could not be told from its number or from these labels is
// set off by an underscore: one that ends in a digit or a sign, or is 机构 or 地址
// itself. Throws ValueError if `tag` is not UTF-8.
//
//   ("ORG", 1)        ->  [机构1]        ("ORG", 1, "en")  ->  [ORG1]
//   ("DATE", 3)       ->  [DATE3]        ("CARD_LAST4", 2) ->  [CARD_LAST4_2]
std::u32string format_numbered_placeholder(std::string_view tag, std::int64_t number,
                                           std::string_view locale = "zh");

// The inverse, for every locale and for [ ], ［ ］ and 【 】, of every tag without
// white space, these brackets and asterisks. The whole string must be the
// placeholder; nullopt for any other string.
std::optional<NumberedPlaceholder> parse_numbered_placeholder(std::u32string_view placeholder);

// Whether parse_numbered_placeholder gives `tag`, without making the record.
bool is_numbered_placeholder_of(std::u32string_view placeholder, std::string_view tag);

// Every stretch of `text` that reads as a numbered placeholder, in text order.
std::vector<std::pair<Offset, Offset>> find_numbered_placeholders(std::u32string_view text);

// ［］ and 【】 become [ ] where they directly enclose a placeholder's body, or
// are the ends of the string with no bracket in between. Every other bracket
// stays: in a money phrase the contract's own are kept.
//
//   ［机构1］ -> [机构1]     人民币【MONEY2】元 -> 人民币[MONEY2]元     【注】[DATE1] stays
std::u32string ensure_ascii_placeholder_brackets(std::u32string_view placeholder);
// Whether there is any of these four; what has none stays as it is.
bool has_full_width_brackets(std::u32string_view placeholder);

// A fixed placeholder that shows the last four digits (ASCII or full-width) of
// `surface`: " 12 34" -> [CARD_****1234]. It is not a numbered placeholder.
std::u32string format_card_last4_placeholder(std::u32string_view surface);

// The span widened by the one pair of [ ], ［ ］ or 【 】 that directly encloses
// it; unchanged where there is none or the span is empty. Parentheses are never taken.
std::pair<Offset, Offset> expand_span_to_absorb_wrapping_brackets(std::u32string_view text,
                                                                  Offset start, Offset end);

}  // namespace core::anonymization
