// What follows once each token has its head: heads of tokens that cross others, and
// where sentences begin.
#include <algorithm>
#include <string_view>
#include <utility>

#include "core/nlp/spacy/dependency_parser.hpp"

namespace core::nlp::spacy {
namespace {

constexpr std::string_view DECORATION = "||";

using Tokens = std::vector<std::uint32_t>;

// The first and the last token below each token, itself included.
struct Edges {
  Tokens left;
  Tokens right;
};

// Whether each head lies in its sentence, a sentence beginning at the left edge of
// each root.
bool heads_lie_in_sentences(const Tokens& heads, const Edges& edges) {
  const auto count = heads.size();
  std::vector<bool> cuts(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (heads[i] == i) cuts[edges.left[i]] = true;
  }
  std::size_t begin = 0;
  for (std::size_t i = 1; i < count; ++i) {
    if (!cuts[i] && i + 1 != count) continue;
    for (auto j = begin; j < i; ++j) {
      if (heads[j] < begin || heads[j] > i) return false;
    }
    begin = i;
  }
  return true;
}

Edges edges_of(const Tokens& heads) {
  constexpr int MOST_ROUNDS = 12;  // one is enough unless arcs cross
  Edges out;
  for (std::uint32_t i = 0; i < heads.size(); ++i) out.left.push_back(i);
  out.right = out.left;
  const auto widen = [&](std::size_t i) {
    const auto head = heads[i];
    out.left[head] = std::min(out.left[head], out.left[i]);
    out.right[head] = std::max(out.right[head], out.right[i]);
  };
  for (int round = 0; round < MOST_ROUNDS; ++round) {
    for (std::size_t i = 0; i < heads.size(); ++i) widen(i);
    for (std::size_t i = heads.size(); i-- > 0;) widen(i);
    if (heads_lie_in_sentences(heads, out)) break;
  }
  return out;
}

// Finds new heads for tokens with decorated labels.
class Reattachment {
 public:
  Reattachment(DependencyTrees& trees, const TypedTokens& tokens)
      : trees_(trees), tokens_(tokens), edges_(edges_of(trees.heads)), children_(tokens.size()) {
    for (std::uint32_t i = 0; i < trees.heads.size(); ++i) {
      if (trees.heads[i] != i) children_[trees.heads[i]].push_back(i);
    }
  }

  void run() {
    for (std::uint32_t i = 0; i < trees_.heads.size(); ++i) {
      auto& label = trees_.labels[i];
      const auto bars = label.find(DECORATION);
      if (bars == label.npos) continue;
      const auto wanted = label.substr(bars + DECORATION.size());
      label.erase(bars);
      move(i, new_head(i, wanted));
    }
  }

 private:
  bool is_space(std::uint32_t token) const {
    return tokens_.types[tokens_.type_of[token]].is_space;
  }

  // Breadth first below the present head.
  std::uint32_t new_head(std::uint32_t token, std::string_view wanted) const {
    Tokens level = {trees_.heads[token]};
    while (!level.empty()) {
      Tokens below;
      for (const auto q : level) {
        for (const auto child : children_[q]) {
          if (child < edges_.left[q] || child > edges_.right[q]) continue;
          if (child == token || is_space(child)) continue;
          if (trees_.labels[child] == wanted) return child;
          below.push_back(child);
        }
      }
      level = std::move(below);
    }
    return trees_.heads[token];
  }

  void move(std::uint32_t token, std::uint32_t head) {
    const auto before = trees_.heads[token];
    if (before == head) return;
    std::erase(children_[before], token);
    auto& siblings = children_[head];
    siblings.insert(std::upper_bound(siblings.begin(), siblings.end(), token), token);
    trees_.heads[token] = head;
  }

  DependencyTrees& trees_;
  const TypedTokens& tokens_;
  Edges edges_;
  std::vector<Tokens> children_;  // in the order of the text
};

}  // namespace

void finish_trees(DependencyTrees& trees, const TypedTokens& tokens) {
  const bool decorated = std::any_of(trees.labels.begin(), trees.labels.end(),
                                     [](const auto& l) { return l.find(DECORATION) != l.npos; });
  if (decorated) Reattachment(trees, tokens).run();
  const auto edges = edges_of(trees.heads);
  trees.sentence_starts.assign(trees.heads.size(), false);
  for (std::size_t i = 0; i < trees.heads.size(); ++i) {
    if (trees.heads[i] == i) trees.sentence_starts[edges.left[i]] = true;
  }
}

}  // namespace core::nlp::spacy
