// The language in which a text is analysed: "en" or "zh".
#pragma once

#include <string>
#include <string_view>

namespace core::anonymization {

// Settles a request (UTF-8, in any letter case, blanks around it allowed):
// "zh", "cn", "chinese", "中文" and "en", "english", "英文" stand for themselves,
// everything else, "auto" and "" included, is inferred from the text.
std::string resolve_analyze_language(std::string_view requested, std::u32string_view text);

// "zh" for a text with an ideograph and a Chinese field label, for an e-mail
// field with a full-width colon (E-mail：), and for one whose share of
// ideographs and Chinese punctuation reaches AUTO_LANG_CJK_RATIO; otherwise "en".
std::string infer_language_from_text(std::u32string_view text);

}  // namespace core::anonymization
