// The second pass of the tokenizer: exceptions that blanks or patterns tear apart
// ("inter alia", "and/or") are found among the tokens and put together again.
#include <algorithm>
#include <utility>

#include "core/nlp/spacy/tokenizer.hpp"

namespace core::nlp::spacy {
namespace {

constexpr std::uint32_t ROOT = 0;

// The tokens `first` to `last`, `last` included.
struct TornPlace {
  std::uint32_t first;
  std::uint32_t last;
};

// The longest first, then the leftmost.
void sort_by_length(std::vector<TornPlace>& places) {
  std::stable_sort(places.begin(), places.end(), [](const auto& a, const auto& b) {
    return a.last - a.first > b.last - b.first;
  });
}

// Those that touch none before them. One that is left out keeps others out as well.
std::vector<TornPlace> accepted(std::vector<TornPlace> places, std::size_t tokens) {
  sort_by_length(places);
  std::vector<bool> marked(tokens);
  std::erase_if(places, [&](const TornPlace& place) {
    const bool taken = marked[place.first] || marked[place.last];
    std::fill(marked.begin() + place.first, marked.begin() + place.last + 1, true);
    return taken;
  });
  std::sort(places.begin(), places.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  return places;
}

}  // namespace

bool Tokenizer::may_be_torn(std::u32string_view exception) const {
  if (!rules_.faster_heuristics || exception.find(U' ') != exception.npos) return true;
  const auto finds = [&](const auto& pattern) {
    if (pattern == nullptr) return false;
    const auto match = pattern->search(exception);
    return match && match->end() > match->start();
  };
  return finds(rules_.prefix_search) || rules_.suffix_search.match_length(exception) > 0 ||
         (rules_.infix_finditer != nullptr && rules_.infix_finditer->search(exception));
}

void Tokenizer::read_torn_exceptions() {
  is_torn_exception_.push_back(false);
  for (const auto& [text, tokens] : rules_.exceptions) {
    if (!may_be_torn(text)) continue;
    auto state = ROOT;
    for (const auto& token : first_pass(text, Exceptions::IGNORED)) {
      const auto word =
          words_.try_emplace(std::u32string(token.text(text)), words_.size()).first->second;
      const auto [next, is_new] = steps_.try_emplace({state, word}, is_torn_exception_.size());
      if (is_new) is_torn_exception_.push_back(false);
      state = next->second;
    }
    is_torn_exception_[state] = true;
  }
}

std::vector<Token> Tokenizer::join_torn(std::u32string_view text, std::vector<Token> tokens) const {
  if (steps_.empty()) return tokens;
  constexpr auto UNKNOWN = static_cast<std::uint32_t>(-1);
  std::vector<std::uint32_t> words;
  words.reserve(tokens.size());
  for (const auto& token : tokens) {
    const auto found = words_.find(token.text(text));
    words.push_back(found == words_.end() ? UNKNOWN : found->second);
  }
  std::vector<TornPlace> places;
  for (std::uint32_t first = 0; first < words.size(); ++first) {
    auto state = ROOT;
    for (auto at = first; at < words.size() && words[at] != UNKNOWN; ++at) {
      const auto next = steps_.find({state, words[at]});
      if (next == steps_.end()) break;
      state = next->second;
      if (is_torn_exception_[state]) places.push_back({first, at});
    }
  }
  if (places.empty()) return tokens;
  std::vector<Token> out;
  out.reserve(tokens.size());
  std::size_t copied = 0;
  for (const auto& place : accepted(std::move(places), tokens.size())) {
    out.insert(out.end(), tokens.begin() + static_cast<std::ptrdiff_t>(copied),
               tokens.begin() + place.first);
    replace(text, tokens, place.first, place.last, out);
    copied = place.last + 1;
  }
  out.insert(out.end(), tokens.begin() + static_cast<std::ptrdiff_t>(copied), tokens.end());
  return out;
}

void Tokenizer::replace(std::u32string_view text, const std::vector<Token>& tokens,
                        std::size_t first, std::size_t last, std::vector<Token>& out) const {
  const auto start = tokens[first].start;
  const auto* exception = rules_.exception(text.substr(start, tokens[last].end - start));
  if (exception == nullptr) {  // the same tokens with other spaces between them
    out.insert(out.end(), tokens.begin() + static_cast<std::ptrdiff_t>(first),
               tokens.begin() + static_cast<std::ptrdiff_t>(last + 1));
    return;
  }
  auto at = start;
  for (const auto& token : *exception) {
    out.push_back({at, at + token.length, token.norm, false});
    at += token.length;
  }
  out.back().space_after = tokens[last].space_after;
}

}  // namespace core::nlp::spacy
