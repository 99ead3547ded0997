// Cleans replacement lists between numbering and writing.
//
// Offsets count code points of the source text. Lists may be in any order;
// each function keeps it. Linear, up to a logarithm, in text and list.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/masked_text.hpp"
#include "core/anonymization/result.hpp"
#include "core/text/regex.hpp"
#include "core/text/word_set.hpp"

namespace core::anonymization {

// Organizations that are none, as compact surfaces: 2023年 and 1.2.3 (full matches), 与.
extern const text::Regex RE_FALSE_ORG_YEAR_SPAN;
extern const text::Regex RE_FALSE_ORG_OUTLINE_SECTION;
inline constexpr auto COVER_LINE_ORG_CONNECTIVES =
    text::words({U"与", U"及", U"和", U"同", U"及/或"});
// What stands before the alias of a definition clause (searched), and the alias
// with its closers: groups "body" and "close" (match).
extern const text::Regex RE_DEFINED_ALIAS_ORG_LEFT;
extern const text::Regex RE_DEFINED_ALIAS_ORG_TRAILING_CLOSER;

// Without organizations that are none: a year (2023年), an outline number
// (3.2.1), a lone connective (与).
std::vector<Replacement> _filter_weak_org_replacements(std::vector<Replacement> replacements,
                                                       std::u32string_view src_text);

// Cuts every span around each occurrence of `joiner`; pieces without content go.
//
//   "甲公司¶乙公司" as one span  ->  甲公司 and 乙公司, with the same placeholder
std::vector<Replacement> _split_replacements_at_joiner(std::vector<Replacement> replacements,
                                                       std::u32string_view src_text,
                                                       std::u32string_view joiner);

// The text without paragraph joiners and without the reader's hash markers.
std::u32string _strip_docx_joiner_sequences(std::u32string_view text);

// The same for a text whose placeholders are tracked.
void strip_docx_joiner_sequences(MaskedText& text);

// _split_replacements_at_joiner for each paragraph joiner that the text holds.
std::vector<Replacement> _clip_replacements_at_embedded_docx_joiners(
    std::vector<Replacement> replacements, std::u32string_view text);

// Ends the organization span of a definition clause before the closing quote:
// 以下简称“甲公司”） gives 甲公司.
std::vector<Replacement> _trim_org_replacement_spans_at_defined_alias_closers(
    std::vector<Replacement> replacements, std::u32string_view src_text);

}  // namespace core::anonymization
