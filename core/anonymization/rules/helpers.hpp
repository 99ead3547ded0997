// What the document readers and the rules share: the paragraph joiners, and
// the pattern of an amount written out in English.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/regex.hpp"

namespace core::anonymization {

// What a document reader puts between paragraphs, cells and stories that it
// pastes into one text. Each is framed by private-use characters, so that no
// document holds one by accident, and none is part of another.
inline constexpr std::u32string_view PARAGRAPH_JOINER = U"\uE000¶\uE001";
inline constexpr std::u32string_view CELL_JOINER = U"\uE000¤\uE001";
inline constexpr std::u32string_view STORY_JOINER = U"\uE000§\uE001";
inline constexpr std::array DOCX_PARA_JOINER_SEQUENCES = {PARAGRAPH_JOINER, CELL_JOINER,
                                                          STORY_JOINER};

// The joiners in force: those above, or the application's own. Throws what its
// setting throws. May be called from any thread.
std::vector<std::u32string> docx_para_joiner_sequences();

// Joiners of an application with document readers of its own: asked at each
// call; nothing leaves those above in force. An empty function removes it.
using JoinerSetting = std::function<std::optional<std::vector<std::u32string>>()>;
void set_joiner_setting(JoinerSetting setting);

// An amount in English words, in parentheses, as it follows a figure:
// " (US Dollars One Million Only)", "（SAY EUR TWELVE THOUSAND ONLY）", with or
// without a currency. For full matches; "(excluding VAT)" and "(one)" are none.
// Linear in the text.
extern const text::Regex RE_EN_WRITTEN_CURRENCY_IN_PARENS;

}  // namespace core::anonymization
