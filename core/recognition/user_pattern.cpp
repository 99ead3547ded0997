#include "core/recognition/user_pattern.hpp"

#include <algorithm>

#include "core/recognition/word_edges.hpp"

namespace core::recognition {
namespace {

using Spans = std::vector<std::pair<std::size_t, std::size_t>>;

std::unique_ptr<const text::Regex> compile(std::string_view recognizer,
                                           const UserPattern& pattern) {
  const std::string name =
      "\"" + pattern.name + "\" of recognizer \"" + std::string(recognizer) + "\"";
  // Alone first: the offset of an error is then one in the user's text.
  const text::Regex alone(name, pattern.regex);
  return std::make_unique<const text::Regex>(name, U"(?i)" + pattern.regex);
}

// Adds the matches in the cell, `base` is its offset. A piece gives those that
// begin before the next piece does; what stands before it is seen by look-behind.
void find_in_cell(const text::Regex& regex, std::u32string_view cell, std::size_t base,
                  Spans& out) {
  constexpr std::size_t STEP = CompiledUserPattern::MAX_PIECE - CompiledUserPattern::OVERLAP;
  std::size_t from = 0;
  for (std::size_t at = 0; at < cell.size(); at += STEP) {
    const bool last = cell.size() - at <= CompiledUserPattern::MAX_PIECE;
    const auto seen = cell.substr(0, at + CompiledUserPattern::MAX_PIECE);
    const std::size_t next = last ? cell.size() : at + STEP;
    while (from < next) {
      const auto match = regex.search(seen, from);
      if (!match || match->start() >= next) break;
      const bool empty = match->end() <= match->start();
      if (!empty) out.emplace_back(base + match->start(), base + match->end());
      from = std::max(match->end() + (empty ? 1 : 0), from + 1);
    }
    if (last) return;
    from = std::max(from, next);
  }
}

}  // namespace

CompiledUserPattern::CompiledUserPattern(std::string_view recognizer, const UserPattern& pattern)
    : name_(pattern.name), score_(pattern.score), regex_(compile(recognizer, pattern)) {}

Spans CompiledUserPattern::find(std::u32string_view text) const {
  Spans out;
  for (std::size_t start = 0; start < text.size();) {
    const auto end = static_cast<std::size_t>(
        std::find_if(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), is_cell_end) -
        text.begin());
    if (end > start) find_in_cell(*regex_, text.substr(start, end - start), start, out);
    start = end + 1;
  }
  return out;
}

}  // namespace core::recognition
