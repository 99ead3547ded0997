#include "tests/support/notation.hpp"

#include <stdexcept>

#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace test {
namespace {

using core::anonymization::Offset;

// Takes the marks out of `marked`, calling visit(label, start, end) for each.
template <class Visit>
std::u32string unmark(std::u32string_view marked, Visit visit) {
  std::u32string text;
  while (!marked.empty()) {
    const auto open = marked.find(U'{');
    text.append(marked.substr(0, open));
    if (open == std::u32string_view::npos) break;
    const auto bar = marked.find(U'|', open);
    const auto close = marked.find(U'}', open);
    if (bar == std::u32string_view::npos || close == std::u32string_view::npos || close < bar) {
      throw std::invalid_argument("malformed mark in a test");
    }
    const auto start = static_cast<Offset>(text.size());
    text.append(marked.substr(bar + 1, close - bar - 1));
    visit(marked.substr(open + 1, bar - open - 1), start, static_cast<Offset>(text.size()));
    marked.remove_prefix(close + 1);
  }
  return text;
}

// Writes a text with marks; `items` have start and end, in order of start.
template <class Items, class Label>
std::string mark(std::u32string_view text, const Items& items, Label label) {
  std::string out;
  Offset last = 0;
  for (const auto& item : items) {
    out += u8(core::text::slice(text, last, item.start));
    out += "{" + label(item) + "|" + u8(core::text::slice(text, item.start, item.end)) + "}";
    last = item.end;
  }
  return out + u8(core::text::slice(text, last, static_cast<Offset>(text.size())));
}

}  // namespace

Marked parse(std::string_view marked, double score) {
  Marked out;
  out.text = unmark(u32(marked), [&](std::u32string_view label, Offset start, Offset end) {
    out.results.push_back({u8(label), start, end, score});
  });
  return out;
}

std::string render(const Marked& marked) {
  return mark(marked.text, marked.results, [](const auto& r) { return r.entity_type; });
}

MarkedReplacements parse_replacements(std::string_view marked) {
  MarkedReplacements out;
  out.text = unmark(u32(marked), [&](std::u32string_view label, Offset start, Offset end) {
    out.replacements.push_back({start, end, std::u32string(label)});
  });
  return out;
}

std::string render(const MarkedReplacements& marked) {
  return mark(marked.text, marked.replacements, [](const auto& r) { return u8(r.placeholder); });
}

std::u32string u32(std::string_view utf8) { return core::text::decode_utf8(utf8); }
std::string u8(std::u32string_view text) { return core::text::encode_utf8(text); }

std::vector<core::anonymization::RecognizerResult> ScriptedAnalyzer::analyze(
    std::u32string_view text, std::string_view language) const {
  last_text = text;
  last_language = language;
  return results_;
}

}  // namespace test
