#include "core/recognition/context_words.hpp"

#include <algorithm>
#include <utility>

#include "core/recognition/word_edges.hpp"

namespace core::recognition {
namespace {

std::u32string folded(std::u32string_view s) {
  std::u32string out(s);
  std::transform(out.begin(), out.end(), out.begin(), fold_letter);
  return out;
}

bool holds(std::u32string_view text, std::u32string_view word) {
  for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
    const bool inside = at > 0 && is_spaced_letter(text[at - 1]) && is_spaced_letter(word.front());
    if (!inside) return true;
  }
  return false;
}

}  // namespace

ContextWords::ContextWords(std::vector<std::u32string> words, std::size_t before, std::size_t after)
    : words_(std::move(words)), before_(before), after_(after) {
  for (auto& word : words_) word = folded(word);
  std::erase(words_, std::u32string());
}

std::u32string_view ContextWords::find_in(std::u32string_view text) const {
  const auto found = std::find_if(words_.begin(), words_.end(),
                                  [&](const auto& word) { return holds(text, word); });
  return found == words_.end() ? std::u32string_view() : *found;
}

std::u32string_view ContextWords::supporting(const NlpArtifacts& artifacts, std::size_t start,
                                             std::size_t end) const {
  if (words_.empty()) return {};
  const std::u32string_view text = artifacts.folded;
  const std::size_t from = start > before_ ? start - before_ : 0;
  if (const auto word = find_in(folded(text.substr(from, start - from))); !word.empty()) {
    return word;
  }
  if (const auto word = find_in(folded(text.substr(end, after_))); !word.empty()) return word;
  for (const auto& given : artifacts.context) {
    if (const auto word = find_in(folded(given)); !word.empty()) return word;
  }
  return {};
}

double ContextWords::raised(double score) {
  return std::min(1.0, std::max(score + BONUS, LEAST_SCORE));
}

}  // namespace core::recognition
