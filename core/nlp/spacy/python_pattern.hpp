// Patterns of Python's module `re`, as Regex takes them.
#pragma once

#include <string>
#include <string_view>

namespace core::nlp::spacy {

// White space as Python's str.isspace() sees it. Unlike text::is_space() it has
// U+001C to U+001F, and not U+180E.
bool is_python_space(char32_t c);

// The same pattern for text::Regex: code points written as \u and \U, white space
// as above, the flag (?u), `\Z`, `{,n}`, and brackets in a class, which mean more
// to PCRE2. What Python does not know is left to fail when it is compiled.
std::u32string from_python_pattern(std::u32string_view pattern);

}  // namespace core::nlp::spacy
