#include "core/text/multi_pattern.hpp"

#include <algorithm>

namespace core::text {
namespace {

constexpr std::uint64_t edge_key(std::uint32_t state, std::uint32_t cls) {
  return (static_cast<std::uint64_t>(state) << 32U) | cls;
}

}  // namespace

MultiPattern::MultiPattern(std::span<const std::u32string_view> patterns) { build(patterns); }

MultiPattern::MultiPattern(std::initializer_list<std::u32string_view> patterns) {
  build({patterns.begin(), patterns.size()});
}

void MultiPattern::build(std::span<const std::u32string_view> patterns) {
  nodes_.emplace_back();
  roots_.push_back(0);
  for (std::size_t i = 0; i < patterns.size(); ++i) {
    if (!patterns[i].empty()) insert(patterns[i], static_cast<std::uint32_t>(i));
  }
  link();
}

std::uint32_t MultiPattern::intern(char32_t c) {
  const std::size_t page = c >> PAGE_BITS;
  if (page >= pages_.size()) pages_.resize(page + 1);
  if (pages_[page].empty()) pages_[page].resize(std::size_t{1} << PAGE_BITS);
  auto& cls = pages_[page][c & ((1U << PAGE_BITS) - 1)];
  if (cls == 0) {
    cls = static_cast<std::uint32_t>(roots_.size());
    roots_.push_back(0);
  }
  return cls;
}

std::uint32_t MultiPattern::child(std::uint32_t state, std::uint32_t cls) const {
  if (state == 0) return roots_[cls];
  const auto found = edges_.find(edge_key(state, cls));
  return found == edges_.end() ? 0 : found->second;
}

void MultiPattern::insert(std::u32string_view word, std::uint32_t index) {
  std::uint32_t state = 0;
  for (const char32_t c : word) {
    const std::uint32_t cls = intern(c);
    std::uint32_t next = child(state, cls);
    if (next == 0) {
      next = static_cast<std::uint32_t>(nodes_.size());
      nodes_.push_back({.depth = nodes_[state].depth + 1});
      (state == 0 ? roots_[cls] : edges_[edge_key(state, cls)]) = next;
    }
    state = next;
  }
  if (nodes_[state].pattern == NO_PATTERN) nodes_[state].pattern = index;
}

// Breadth first, so that the node a failure leads to is linked already.
void MultiPattern::link() {
  struct Edge {
    std::uint32_t parent, cls, node;
  };
  std::vector<Edge> edges;
  edges.reserve(edges_.size());
  for (const auto& [key, node] : edges_) {
    edges.push_back(
        {static_cast<std::uint32_t>(key >> 32U), static_cast<std::uint32_t>(key), node});
  }
  std::sort(edges.begin(), edges.end(), [this](const Edge& a, const Edge& b) {
    return std::pair(nodes_[a.node].depth, a.node) < std::pair(nodes_[b.node].depth, b.node);
  });
  const auto set_reports = [this](std::uint32_t node) {
    nodes_[node].reports =
        nodes_[node].pattern != NO_PATTERN ? node : nodes_[nodes_[node].fail].reports;
  };
  for (const std::uint32_t node : roots_) {
    if (node != 0) set_reports(node);
  }
  for (const Edge& edge : edges) {
    std::uint32_t at = nodes_[edge.parent].fail;
    while (at != 0 && child(at, edge.cls) == 0) at = nodes_[at].fail;
    nodes_[edge.node].fail = child(at, edge.cls);
    set_reports(edge.node);
  }
}

MultiPattern::Hit MultiPattern::longest_at(std::u32string_view text, std::size_t at) const {
  Hit best{0, at, at};
  std::uint32_t state = 0;
  for (std::size_t i = at; i < text.size(); ++i) {
    const std::uint32_t cls = class_of(text[i]);
    state = cls == 0 ? 0 : child(state, cls);
    if (state == 0) break;
    if (nodes_[state].pattern != NO_PATTERN) best = {nodes_[state].pattern, at, i + 1};
  }
  return best;
}

}  // namespace core::text
