#include "core/nlp/spacy/suffix_search.hpp"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/text/pattern_syntax.hpp"

namespace core::nlp::spacy {
namespace {

using text::PatternNode;
using Kind = PatternNode::Kind;

// Half of what is looked at first: the longest short suffix, the line feed that may
// stand behind `$`, and what comes before a run.
constexpr std::size_t LONGEST_SHORT = 32;

// The length of the longest match; nothing if it is above LONGEST_SHORT.
std::optional<std::size_t> longest_match(const PatternNode& node) {
  std::size_t length = 0;
  switch (node.kind) {
    case Kind::EMPTY:
    case Kind::AHEAD:
    case Kind::BEHIND:
    case Kind::NOT_BEHIND:
      return 0;
    case Kind::SET:
      return 1;
    case Kind::SEQUENCE:
    case Kind::CHOICE:
      for (const auto& part : node.parts) {
        const auto longest = longest_match(part);
        if (!longest) return std::nullopt;
        length = node.kind == Kind::SEQUENCE ? length + *longest : std::max(length, *longest);
      }
      break;
    case Kind::REPEAT: {
      const auto longest = longest_match(node.parts.front());
      if (!longest || node.max > LONGEST_SHORT) return std::nullopt;
      length = *longest * node.max;
      break;
    }
    case Kind::UNKNOWN:
      return std::nullopt;
  }
  return length <= LONGEST_SHORT ? std::optional(length) : std::nullopt;
}

// Whether it is characters of one set, any number of them, and something short: `\.\.+$`.
// Where such a match goes on for long, one begins at each of its characters.
bool is_run(const PatternNode& node) {
  const auto is_repeat = [](const PatternNode& part) {
    return part.kind == Kind::REPEAT && part.max == PatternNode::UNLIMITED &&
           part.min <= LONGEST_SHORT && part.parts.front().kind == Kind::SET;
  };
  if (node.kind != Kind::SEQUENCE) return is_repeat(node);
  const auto run = std::find_if(node.parts.begin(), node.parts.end(), is_repeat);
  if (run == node.parts.end() || run - node.parts.begin() > 8) return false;
  const auto& set = run->parts.front().set;
  const bool same = std::all_of(node.parts.begin(), run, [&](const PatternNode& part) {
    return part.kind == Kind::SET && part.set == set;
  });
  PatternNode rest{.kind = Kind::SEQUENCE};
  rest.parts.assign(run + 1, node.parts.end());
  return same && longest_match(rest).has_value();
}

bool is_short_or_run(const PatternNode& node) {
  if (node.kind == Kind::CHOICE) {
    return std::all_of(node.parts.begin(), node.parts.end(), is_short_or_run);
  }
  return longest_match(node).has_value() || is_run(node);
}

// Whether every alternative ends with `$`, so that its matches reach to the end.
bool is_anchored_at_end(std::u32string_view pattern) {
  unsigned depth = 0;
  bool in_class = false;
  bool anchored = false;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char32_t c = pattern[i];
    if (c == U'|' && depth == 0 && !in_class && !anchored) return false;
    anchored = c == U'$' && depth == 0 && !in_class;
    if (c == U'\\') {
      ++i;
    } else if (in_class) {
      in_class = c != U']';
    } else if (c == U'[') {
      in_class = true;
      if (i + 1 < pattern.size() && pattern[i + 1] == U'^') ++i;
      if (i + 1 < pattern.size() && pattern[i + 1] == U']') ++i;
    } else if (c == U'(') {
      ++depth;
    } else if (c == U')' && depth > 0) {
      --depth;
    }
  }
  return anchored;
}

bool may_be_windowed(std::u32string_view pattern) {
  if (!is_anchored_at_end(pattern)) return false;
  const auto tree = text::read_pattern(pattern);
  return tree && is_short_or_run(*tree);
}

}  // namespace

SuffixSearch::SuffixSearch(std::unique_ptr<const text::Regex> pattern)
    : pattern_(std::move(pattern)),
      windowed_(pattern_ != nullptr && may_be_windowed(pattern_->pattern())) {}

std::size_t SuffixSearch::match_length(std::u32string_view text) const {
  if (pattern_ == nullptr) return 0;
  for (auto window = 4 * LONGEST_SHORT;; window *= 2) {
    const auto from = windowed_ && text.size() > window ? text.size() - window : 0;
    const auto match = pattern_->search(text, from);
    if (!match) return 0;
    // A match that begins where the window does may begin before it.
    if (from == 0 || match->start() > from) return match->end() - match->start();
  }
}

}  // namespace core::nlp::spacy
