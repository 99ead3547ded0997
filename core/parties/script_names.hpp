// What organization_name does for names of one script.
#pragma once

#include <string>
#include <string_view>

#include "core/parties/organization_name.hpp"
#include "core/text/view_set.hpp"

namespace core::parties {

using Words = text::ViewSet;

// The first column of a word list, in folded case.
Words words_of(std::string_view list);

// The words from..to-1 with blanks between them.
std::u32string joined(const std::vector<std::u32string>& words, std::size_t from, std::size_t to);

// A plain 公司: a legal form that does not make a full name.
inline constexpr std::u32string_view COMPANY = U"公司";

OrganizationName parse_chinese(std::u32string_view surface);
Likeness chinese_likeness(const OrganizationName& name, const OrganizationName& longer);
// 北京 of 北京市
std::u32string_view bare_place(std::u32string_view place);
// Whether the characters of `part` stand in `whole` in this order.
bool is_subsequence(std::u32string_view part, std::u32string_view whole);

OrganizationName parse_latin(std::u32string_view surface);
Likeness latin_likeness(const OrganizationName& name, const OrganizationName& longer);
// Whether `alias` is made of the first letters of the words of `name`.
bool is_acronym(std::u32string_view alias, std::u32string_view name);
// Whether the words of `alias` stand in `name` one after the other.
bool has_words_of(std::u32string_view alias, std::u32string_view name);

}  // namespace core::parties
