// The language of contracts in Latin letters, as against names.
#pragma once

#include <string>
#include <string_view>

namespace core::nlp {

// Agreement, SHALL, directors: makes no name by itself, in any letter case and also
// with a full stop or comma behind.
bool is_contract_language(std::u32string_view word);

// AND, WITH, HEREBY: in a text set in capitals, where lower case does not tell these
// small words from a name, no name reaches across one of them. OF and & may stand in one.
bool is_small_word(std::u32string_view word);

// The text with the line ends inside wrapped paragraphs and wrapped addresses as
// blanks, position by position the same length.
std::u32string unwrapped(std::u32string_view folded);

}  // namespace core::nlp
