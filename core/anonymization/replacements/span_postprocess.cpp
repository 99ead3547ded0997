#include "core/anonymization/replacements/span_postprocess.hpp"

#include <algorithm>

#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/rules/helpers.hpp"
#include "core/text/find_character.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {

using text::Regex;

// 2023年. "2023年度报告" may name something and stays.
const Regex RE_FALSE_ORG_YEAR_SPAN("RE_FALSE_ORG_YEAR_SPAN", UR"(^(?:19|20)\d{2}年$)");

// 3.2, 1.2.3
const Regex RE_FALSE_ORG_OUTLINE_SECTION("RE_FALSE_ORG_OUTLINE_SECTION",
                                         UR"(^\d{1,2}(?:\.\d{1,2}){1,5}$)");

// …以下简称“ directly before the span.
const Regex RE_DEFINED_ALIAS_ORG_LEFT(
    "RE_DEFINED_ALIAS_ORG_LEFT",
    UR"re((?:以下简称为|以下简称(?:为)?|下称(?:为)?)\s*[“\"'「『]?$)re");

// 甲公司”） with the closing quote and bracket of the clause, 甲公司"); too.
const Regex RE_DEFINED_ALIAS_ORG_TRAILING_CLOSER(
    "RE_DEFINED_ALIAS_ORG_TRAILING_CLOSER",
    UR"re(^(?P<body>.+?)(?P<close>[“”"\'「『」][）)][;；]?)$)re");

namespace {

constexpr std::size_t BODY = 1;

constexpr Offset ALIAS_LEFT_CONTEXT = 16;

// What the document reader marks a hashed paragraph with.
const Regex RE_HASH_MARKER("RE_HASH_MARKER", UR"(\uE000[0-9a-f]{64}\uE001)");

// Whether a weak organization may begin like this: with a figure or a connective.
bool begins_weakly(std::u32string_view surface) {
  if (surface.empty()) return false;
  const char32_t first = surface.front();
  return text::is_decimal_digit(first) ||
         std::any_of(COVER_LINE_ORG_CONNECTIVES.begin(), COVER_LINE_ORG_CONNECTIVES.end(),
                     [first](std::u32string_view word) { return word.front() == first; });
}

bool is_weak_org(std::u32string_view src_text, const Replacement& r) {
  if (!is_numbered_placeholder_of(r.placeholder, tag::ORG)) return false;
  const auto surface = text::strip(text::slice(src_text, r.start, r.end));
  if (!begins_weakly(surface)) return false;
  const auto fragment = text::remove_space(surface);
  return RE_FALSE_ORG_YEAR_SPAN.full_match(fragment) ||
         RE_FALSE_ORG_OUTLINE_SECTION.full_match(fragment) ||
         COVER_LINE_ORG_CONNECTIVES.contains(fragment);
}

// What every joiner and marker of the document reader begins with. A plain text has none.
constexpr char32_t MARK = 0xE000;

bool has_marks(std::u32string_view text) { return text::find_character(text, MARK) != text::NPOS; }

// The joiners in force that the text may hold.
std::vector<std::u32string> joiners_of(std::u32string_view text) {
  auto joiners = docx_para_joiner_sequences();
  if (!has_marks(text)) {
    std::erase_if(joiners, [](const auto& joiner) { return joiner.starts_with(MARK); });
  }
  return joiners;
}

// Every occurrence, left to right without overlap; none of the empty word.
std::vector<Edit> occurrences(std::u32string_view text, std::u32string_view word) {
  std::vector<Edit> out;
  for (auto at = text::find_rare(text, word); at != text::NPOS;
       at = text::find_rare(text, word, at + word.size())) {
    out.push_back({static_cast<Offset>(at), static_cast<Offset>(at + word.size()), {}});
  }
  return out;
}

void append_piece(std::vector<Replacement>& out, std::u32string_view src_text,
                  const Replacement& piece) {
  if (piece.start >= piece.end) return;
  if (text::strip(text::slice(src_text, piece.start, piece.end)).empty()) return;
  out.push_back(piece);
}

// The pieces of one replacement between the joiners, which are sorted and disjoint.
void append_pieces(std::vector<Replacement>& out, std::u32string_view src_text,
                   const Replacement& r, const std::vector<Edit>& joiners) {
  Offset start = r.start;
  auto joiner = std::upper_bound(joiners.begin(), joiners.end(), start,
                                 [](Offset at, const Edit& j) { return at < j.end; });
  for (; start < r.end && joiner != joiners.end() && joiner->start < r.end; ++joiner) {
    append_piece(out, src_text, {start, joiner->start, r.placeholder});
    start = joiner->end;
  }
  append_piece(out, src_text, {start, r.end, r.placeholder});
}

// The end of an organization span without the closers of its definition clause.
Offset end_before_closers(std::u32string_view src_text, const Replacement& r) {
  const auto left =
      text::slice(src_text, saturating_subtract(r.start, ALIAS_LEFT_CONTEXT), r.start);
  if (left.find(U'称') == text::NPOS) return r.end;  // which every definition holds
  if (!RE_DEFINED_ALIAS_ORG_LEFT.search(left)) return r.end;
  const auto fragment = text::slice(src_text, r.start, r.end);
  const auto m = RE_DEFINED_ALIAS_ORG_TRAILING_CLOSER.match(fragment);
  if (!m || text::strip(m->text(BODY)).empty()) return r.end;
  return r.start + static_cast<Offset>(m->text(BODY).size());
}

}  // namespace

std::vector<Replacement> _filter_weak_org_replacements(std::vector<Replacement> replacements,
                                                       std::u32string_view src_text) {
  std::erase_if(replacements, [&](const Replacement& r) { return is_weak_org(src_text, r); });
  return replacements;
}

std::vector<Replacement> _split_replacements_at_joiner(std::vector<Replacement> replacements,
                                                       std::u32string_view src_text,
                                                       std::u32string_view joiner) {
  if (joiner.empty()) return replacements;
  const auto joiners = occurrences(src_text, joiner);
  std::vector<Replacement> out;
  out.reserve(replacements.size());
  for (const auto& r : replacements) append_pieces(out, src_text, r, joiners);
  return out;
}

std::u32string _strip_docx_joiner_sequences(std::u32string_view text) {
  MaskedText out(text);
  strip_docx_joiner_sequences(out);
  return out.take_text();
}

void strip_docx_joiner_sequences(MaskedText& text) {
  for (const auto& joiner : joiners_of(text.text())) {
    if (const auto spans = occurrences(text.text(), joiner); !spans.empty()) text.erase(spans);
  }
  if (!has_marks(text.text())) return;
  std::vector<Edit> markers;
  for (const auto& m : RE_HASH_MARKER.find_all(text.text())) {
    markers.push_back({static_cast<Offset>(m.start()), static_cast<Offset>(m.end()), {}});
  }
  if (!markers.empty()) text.erase(markers);
}

std::vector<Replacement> _clip_replacements_at_embedded_docx_joiners(
    std::vector<Replacement> replacements, std::u32string_view text) {
  for (const auto& joiner : joiners_of(text)) {
    if (text::find_rare(text, joiner) == text::NPOS) continue;
    replacements = _split_replacements_at_joiner(std::move(replacements), text, joiner);
  }
  return replacements;
}

std::vector<Replacement> _trim_org_replacement_spans_at_defined_alias_closers(
    std::vector<Replacement> replacements, std::u32string_view src_text) {
  for (auto& r : replacements) {
    if (is_numbered_placeholder_of(r.placeholder, tag::ORG))
      r.end = end_before_closers(src_text, r);
  }
  return replacements;
}

}  // namespace core::anonymization
