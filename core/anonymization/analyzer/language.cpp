#include "core/anonymization/analyzer/language.hpp"

#include <algorithm>

#include "core/anonymization/constants.hpp"
#include "core/errors.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"
#include "core/text/word_set.hpp"

namespace core::anonymization {
namespace {

using text::Regex;

constexpr char32_t FULL_WIDTH_COLON = U'：';

// E-mail, e - MAIL, anywhere.
const Regex RE_EMAIL_WORD("RE_EMAIL_WORD", UR"((?i)e\s*-\s*mail|e-mail)");

// The whole label before the colon, blanks removed. "Email" has no hyphen and is not one.
const Regex RE_EMAIL_LABEL("RE_EMAIL_LABEL", UR"((?i)(?:e\s*-\s*mail|e-mail(?:\s+address)?))");

// Counted as Chinese although the two quotes are ASCII: contracts typed with a
// Chinese input method are full of them.
constexpr auto CHINESE_PUNCTUATION = text::words({U"\"", U"'", U"·", U"、", U"。", U"《", U"》",
                                                  U"【", U"】", U"（", U"）", U"，", U"：", U"；"});

constexpr auto ZH_REQUESTS = text::words({U"zh", U"cn", U"chinese", U"中文"});
constexpr auto EN_REQUESTS = text::words({U"en", U"english", U"英文"});

bool is_email_field(std::u32string_view t) {
  const auto colon = t.find(FULL_WIDTH_COLON);
  if (colon == std::u32string_view::npos || !RE_EMAIL_WORD.search(t)) return false;
  return RE_EMAIL_LABEL.full_match(text::remove_space(t.substr(0, colon))).has_value();
}

bool counts_as_chinese(char32_t c) {
  return text::is_ideograph(c) || CHINESE_PUNCTUATION.contains({&c, 1});
}

// A request that is no UTF-8 is one that nobody knows.
std::u32string normalized_request(std::string_view requested) {
  try {
    const auto decoded = text::decode_utf8(requested);
    return text::to_lower(text::strip(decoded));
  } catch (const text::DecodeError&) {
    return U"auto";
  }
}

}  // namespace

std::string resolve_analyze_language(std::string_view requested, std::u32string_view text) {
  const auto request = normalized_request(requested);
  if (ZH_REQUESTS.contains(request)) return "zh";
  if (EN_REQUESTS.contains(request)) return "en";
  return infer_language_from_text(text);
}

std::string infer_language_from_text(std::u32string_view text) {
  const auto t = text::strip(text);
  if (t.empty()) return "en";
  if (text::contains_ideograph(t) && RE_ZH_CONTRACT_FIELD_LABEL.search(t)) return "zh";
  if (is_email_field(t)) return "zh";
  const auto chinese = std::count_if(t.begin(), t.end(), counts_as_chinese);
  const double ratio = static_cast<double>(chinese) / static_cast<double>(t.size());
  return ratio >= AUTO_LANG_CJK_RATIO ? "zh" : "en";
}

}  // namespace core::anonymization
