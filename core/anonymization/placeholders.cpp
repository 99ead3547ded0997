#include "core/anonymization/placeholders.hpp"

#include <algorithm>
#include <array>
#include <charconv>

#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace core::anonymization {
namespace {

// Tags that read differently in Chinese text.
struct Label {
  std::string_view tag;
  std::u32string_view zh;
};
constexpr Label LABELS[] = {{tag::ORG, U"机构"}, {tag::ADDRESS, U"地址"}};

// Pairs stand at equal places.
constexpr std::u32string_view OPENING = U"[［【";
constexpr std::u32string_view CLOSING = U"]］】";
constexpr std::u32string_view FULL_WIDTH_BRACKETS = U"［］【】";

constexpr std::u32string_view CARD_PREFIX = U"CARD_****";
constexpr std::size_t CARD_DIGITS = 4;

constexpr bool is_bracket(char32_t c) {
  return c == U'[' || c == U']' || FULL_WIDTH_BRACKETS.find(c) != text::NPOS;
}

constexpr bool are_a_pair(char32_t open, char32_t close) {
  const auto kind = OPENING.find(open);
  return kind != text::NPOS && CLOSING[kind] == close;
}

bool may_stand_in_tag(char32_t c) {
  if (text::is_ascii_alnum(c) || text::is_ideograph(c) || c == U'_') return true;
  if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return false;
  return c != U'*' && !is_bracket(c) && !text::is_space(c);
}

bool is_chinese_label(std::u32string_view shown) {
  return std::any_of(std::begin(LABELS), std::end(LABELS),
                     [shown](const Label& label) { return shown == label.zh; });
}

constexpr bool is_sign(char32_t c) { return std::u32string_view(U"+-−＋－").find(c) != text::NPOS; }

// Whether an underscore stands between a tag and its number: a tag that ends in
// a digit or a sign would run into the number, and a tag that is spelled like a
// Chinese label would be read as the tag behind the label. Underscores at the end
// of the tag do not count, so that one of them can always be taken off again.
bool is_set_off(std::u32string_view tag) {
  while (tag.ends_with(U'_')) tag.remove_suffix(1);
  if (tag.empty()) return false;
  return text::is_ascii_digit(tag.back()) || is_sign(tag.back()) || is_chinese_label(tag);
}

bool is_ascii(std::string_view s) {
  return std::all_of(s.begin(), s.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// What stands between the brackets, taken apart.
struct Body {
  std::u32string_view tag;
  bool is_label = false;  // the tag is a Chinese label
  std::int64_t number = 0;

  bool has_tag(std::string_view name) const {
    if (is_label) {
      return std::any_of(std::begin(LABELS), std::end(LABELS),
                         [&](const Label& l) { return l.tag == name && l.zh == tag; });
    }
    if (!is_ascii(name)) return tag == text::decode_utf8(name);
    return std::equal(tag.begin(), tag.end(), name.begin(), name.end(),
                      [](char32_t a, char b) { return a == static_cast<unsigned char>(b); });
  }
};

std::optional<std::int64_t> parse_number(std::u32string_view digits) {
  std::array<char, 19> ascii{};  // as many digits as the largest number has
  if (digits.empty() || digits.front() == U'0' || digits.size() > ascii.size()) return {};
  std::transform(digits.begin(), digits.end(), ascii.begin(),
                 [](char32_t c) { return static_cast<char>(c); });
  std::int64_t number = 0;
  const auto result = std::from_chars(ascii.data(), ascii.data() + digits.size(), number);
  if (result.ec != std::errc()) return {};
  return number;
}

std::optional<Body> parse_body(std::u32string_view body) {
  std::size_t split = body.size();
  while (split > 0 && text::is_ascii_digit(body[split - 1])) --split;
  auto tag = body.substr(0, split);
  if (tag.empty() || is_sign(tag.back())) return {};
  const auto number = parse_number(body.substr(split));
  if (!number || !std::all_of(tag.begin(), tag.end(), may_stand_in_tag)) return {};
  const bool is_label = is_chinese_label(tag);
  if (!is_label && tag.ends_with(U'_') && is_set_off(tag)) tag.remove_suffix(1);
  return Body{tag, is_label, *number};
}

std::optional<Body> parse_placeholder(std::u32string_view s) {
  if (s.size() < 2 || !are_a_pair(s.front(), s.back())) return {};
  return parse_body(s.substr(1, s.size() - 2));
}

// The label in which a placeholder such as [机构12] is written, or nullptr for one that
// takes more reading.
const Label* label_of_plain(std::u32string_view placeholder) {
  constexpr std::size_t MOST_DIGITS = 18;  // that fit any number
  const auto is_plain = [placeholder](const Label& label) {
    if (placeholder.front() != U'[' || placeholder.back() != U']') return false;
    const auto body = placeholder.substr(1, placeholder.size() - 2);
    if (!body.starts_with(label.zh)) return false;
    const auto digits = body.substr(label.zh.size());
    return !digits.empty() && digits.size() <= MOST_DIGITS && digits.front() != U'0' &&
           std::all_of(digits.begin(), digits.end(), text::is_ascii_digit);
  };
  const auto* label = std::find_if(std::begin(LABELS), std::end(LABELS), is_plain);
  return label == std::end(LABELS) ? nullptr : label;
}

bool is_card_body(std::u32string_view body) {
  if (!body.starts_with(CARD_PREFIX)) return false;
  body.remove_prefix(CARD_PREFIX.size());
  return body.size() <= CARD_DIGITS && std::all_of(body.begin(), body.end(), text::is_ascii_digit);
}

// Calls visit(open, close) for every pair of matching brackets that holds no
// other bracket.
template <class Visit>
void for_each_innermost_pair(std::u32string_view text, Visit visit) {
  std::size_t open = text::NPOS;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!is_bracket(text[i])) continue;
    if (open != text::NPOS && are_a_pair(text[open], text[i])) visit(open, i);
    open = OPENING.find(text[i]) != text::NPOS ? i : text::NPOS;
  }
}

// The digit that an ASCII or full-width digit is, in ASCII; 0 for another character.
constexpr char32_t ascii_digit_of(char32_t c) {
  if (text::is_ascii_digit(c)) return c;
  return c >= U'０' && c <= U'９' ? c - U'０' + U'0' : 0;
}

void append_tag(std::u32string& out, std::string_view tag, std::string_view locale) {
  const auto* label = std::find_if(std::begin(LABELS), std::end(LABELS),
                                   [tag](const Label& l) { return l.tag == tag; });
  if (locale == "zh" && label != std::end(LABELS)) {
    out += label->zh;
    return;
  }
  const std::size_t at = out.size();
  if (is_ascii(tag)) {
    out.append(tag.begin(), tag.end());
  } else {
    out += text::decode_utf8(tag);
  }
  if (is_set_off(std::u32string_view(out).substr(at))) out += U'_';
}

}  // namespace

std::u32string format_numbered_placeholder(std::string_view tag, std::int64_t number,
                                           std::string_view locale) {
  std::array<char, 20> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  std::u32string out;
  out.reserve(tag.size() + digits.size());
  out += U'[';
  append_tag(out, tag, locale);
  out.append(digits.data(), end);
  out += U']';
  return out;
}

std::optional<NumberedPlaceholder> parse_numbered_placeholder(std::u32string_view placeholder) {
  const auto body = parse_placeholder(placeholder);
  if (!body) return {};
  if (!body->is_label) return NumberedPlaceholder{text::encode_utf8(body->tag), body->number};
  const auto* label = std::find_if(std::begin(LABELS), std::end(LABELS),
                                   [&](const Label& l) { return l.zh == body->tag; });
  return NumberedPlaceholder{std::string(label->tag), body->number};
}

bool is_numbered_placeholder_of(std::u32string_view placeholder, std::string_view tag) {
  // Most are told by their first letter, or are of a tag that has a label.
  const bool may_be =
      placeholder.size() > 1 && !tag.empty() &&
      (placeholder[1] >= 0x80 || placeholder[1] == static_cast<unsigned char>(tag[0]));
  if (!may_be) return false;
  if (const auto* label = label_of_plain(placeholder)) return label->tag == tag;
  const auto body = parse_placeholder(placeholder);
  return body && body->has_tag(tag);
}

std::vector<std::pair<Offset, Offset>> find_numbered_placeholders(std::u32string_view text) {
  std::vector<std::pair<Offset, Offset>> found;
  for_each_innermost_pair(text, [&](std::size_t open, std::size_t close) {
    if (!parse_body(text.substr(open + 1, close - open - 1))) return;
    found.emplace_back(static_cast<Offset>(open), static_cast<Offset>(close + 1));
  });
  return found;
}

bool has_full_width_brackets(std::u32string_view placeholder) {
  return std::any_of(placeholder.begin(), placeholder.end(), [](char32_t c) {
    return c == U'［' || c == U'］' || c == U'【' || c == U'】';
  });
}

std::u32string ensure_ascii_placeholder_brackets(std::u32string_view placeholder) {
  std::u32string out(placeholder);
  if (!has_full_width_brackets(placeholder)) return out;
  for_each_innermost_pair(placeholder, [&](std::size_t open, std::size_t close) {
    const auto body = placeholder.substr(open + 1, close - open - 1);
    const bool is_whole = body.size() + 2 == placeholder.size();
    if (!is_whole && !is_card_body(body) && !parse_body(body)) return;
    out[open] = U'[';
    out[close] = U']';
  });
  return out;
}

std::u32string format_card_last4_placeholder(std::u32string_view surface) {
  std::u32string digits;
  for (const char32_t c : surface) {
    if (const char32_t digit = ascii_digit_of(c)) digits += digit;
  }
  if (digits.size() > CARD_DIGITS) digits.erase(0, digits.size() - CARD_DIGITS);
  std::u32string out = U"[";
  return out.append(CARD_PREFIX).append(digits).append(U"]");
}

std::pair<Offset, Offset> expand_span_to_absorb_wrapping_brackets(std::u32string_view text,
                                                                  Offset start, Offset end) {
  const auto size = static_cast<Offset>(text.size());
  if (start < 1 || start >= end || end >= size) return {start, end};
  const auto at = [text](Offset i) { return text[static_cast<std::size_t>(i)]; };
  if (!are_a_pair(at(start - 1), at(end))) return {start, end};
  return {start - 1, end + 1};
}

}  // namespace core::anonymization
