#include "core/recognition/deny_list.hpp"

#include <algorithm>

#include "core/recognition/word_edges.hpp"

namespace core::recognition {
namespace {

text::MultiPattern make_search(std::span<const std::u32string> words) {
  std::vector<std::u32string> keys(words.begin(), words.end());
  for (auto& key : keys) std::transform(key.begin(), key.end(), key.begin(), fold_letter);
  return text::MultiPattern(std::vector<std::u32string_view>(keys.begin(), keys.end()));
}

}  // namespace

DenyList::DenyList(std::span<const std::u32string> words) : words_(make_search(words)) {}

std::vector<std::pair<std::size_t, std::size_t>> DenyList::find(std::u32string_view text) const {
  std::vector<std::pair<std::size_t, std::size_t>> found;
  if (words_.empty()) return found;
  const auto take = [&](const text::MultiPattern::Hit& hit) {
    if (!stands_alone(text, hit.start, hit.end, fold_letter)) return;
    if (!found.empty() && found.back().second == hit.end) return;  // the longest came first
    while (!found.empty() && found.back().first >= hit.start) found.pop_back();
    found.emplace_back(hit.start, hit.end);
  };
  words_.scan(text, take, fold_letter);
  return found;
}

}  // namespace core::recognition
