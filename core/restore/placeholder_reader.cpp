#include "core/restore/placeholder_reader.hpp"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "core/anonymization/constants.hpp"
#include "core/anonymization/overrides.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace core::restore {
namespace {

constexpr std::u32string_view OPENING_BRACKETS = U"[［【〔";
constexpr std::u32string_view CLOSING_BRACKETS = U"]］】〕";

// What is longer between two brackets is a sentence.
constexpr std::size_t LONGEST_BODY = 100;

// What is put between a tag and its number: [ORG-1], [ORG_1], [DATE #3]. The
// asterisks are those of [CARD_****1234], which Markdown takes for emphasis.
constexpr std::u32string_view SEPARATORS = U"-_#.:*·–—";

// Labels that stand for a tag: those that veildoc writes, and those that a
// translation of a masked text puts in their place.
struct TagName {
  std::u32string_view written;
  std::u32string_view tag;
};
constexpr TagName TAG_NAMES[] = {
    {U"机构", U"org"},         {U"機構", U"org"},     {U"organization", U"org"},
    {U"organisation", U"org"}, {U"地址", U"address"}, {U"姓名", U"name"},
    {U"日期", U"date"},        {U"金额", U"money"},   {U"金額", U"money"},
    {U"电话", U"phone"},       {U"電話", U"phone"},   {U"邮箱", U"email"},
};

bool is_opening(char32_t c) { return OPENING_BRACKETS.find(c) != text::NPOS; }
bool is_closing(char32_t c) { return CLOSING_BRACKETS.find(c) != text::NPOS; }

// Empty if it cannot be the body of a placeholder: that is a tag and a number, or
// the card of which no digit is known.
std::u32string key_of_body(std::u32string_view body) {
  if (body.empty() || body.size() > LONGEST_BODY) return {};
  std::u32string folded;
  for (const char32_t c : body) {
    if (const char32_t kept = placeholder_character(c); kept != 0) folded += kept;
  }
  auto digits_at = folded.size();
  while (digits_at > 0 && text::is_ascii_digit(folded[digits_at - 1])) --digits_at;
  auto tag = std::u32string_view(folded).substr(0, digits_at);
  if (digits_at == folded.size() && !tag.ends_with(U"_****")) return {};
  const auto number = std::u32string_view(folded).substr(digits_at);
  tag = tag.substr(0, tag.find_last_not_of(SEPARATORS) + 1);
  if (tag.empty()) return {};
  const auto* name = std::find_if(std::begin(TAG_NAMES), std::end(TAG_NAMES),
                                  [tag](const TagName& known) { return known.written == tag; });
  std::u32string key(name == std::end(TAG_NAMES) ? tag : name->tag);
  return key.append(U"#").append(number);
}

std::unordered_set<std::u32string> own_tags() {
  std::unordered_set<std::u32string> tags;
  const auto add = [&tags](std::string_view tag) {
    std::u32string folded;
    for (const char c : tag) folded += placeholder_character(static_cast<unsigned char>(c));
    tags.insert(std::move(folded));
  };
  for (const auto& row : anonymization::ENTITY_TO_TAG) add(row.tag);
  add(anonymization::entity_type::MASKED);
  add("CARD");
  return tags;
}

}  // namespace

char32_t placeholder_character(char32_t c) {
  constexpr char32_t WIDE_FIRST = U'！';
  constexpr char32_t WIDE_LAST = U'～';
  if (c >= WIDE_FIRST && c <= WIDE_LAST) c = c - WIDE_FIRST + U'!';
  if (c == U'\\' || text::is_space(c) || text::is_control(c)) return 0;
  return text::case_fold_simple(c);
}

std::vector<WrittenPlaceholder> find_written_placeholders(std::u32string_view text) {
  std::vector<WrittenPlaceholder> found;
  std::size_t open = text::NPOS;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (is_opening(text[i])) {
      open = i;
      continue;
    }
    if (!is_closing(text[i])) continue;
    if (open != text::NPOS) {
      const auto body = text.substr(open + 1, i - open - 1);
      if (auto key = key_of_body(body); !key.empty()) {
        const bool escaped = body.ends_with(U'\\') && open > 0 && text[open - 1] == U'\\' &&
                             (found.empty() || found.back().end < open);
        found.push_back({escaped ? open - 1 : open, i + 1, std::move(key)});
      }
    }
    open = text::NPOS;
  }
  return found;
}

std::u32string placeholder_key(std::u32string_view placeholder) {
  auto found = find_written_placeholders(placeholder);
  if (found.size() != 1 || found[0].start != 0 || found[0].end != placeholder.size()) return {};
  return std::move(found[0].key);
}

bool is_own_tag(std::u32string_view folded_tag) {
  static const auto tags = own_tags();
  return tags.contains(std::u32string(folded_tag));
}

}  // namespace core::restore
