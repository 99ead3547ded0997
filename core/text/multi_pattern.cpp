#include "core/text/multi_pattern.hpp"

#include <algorithm>
#include <bit>

namespace core::text {
MultiPattern::MultiPattern(std::span<const std::u32string_view> patterns) { build(patterns); }

MultiPattern::MultiPattern(std::initializer_list<std::u32string_view> patterns) {
  build({patterns.begin(), patterns.size()});
}

void MultiPattern::build(std::span<const std::u32string_view> patterns) {
  std::vector<Edge> edges;
  nodes_.emplace_back();
  roots_.push_back(0);
  classes_.resize(std::size_t{1} << PAGE_BITS);
  for (std::size_t i = 0; i < patterns.size(); ++i) {
    if (!patterns[i].empty()) insert(patterns[i], static_cast<std::uint32_t>(i), edges);
  }
  link(std::move(edges));
}

std::uint32_t MultiPattern::intern(char32_t c) {
  constexpr std::size_t PAGE = std::size_t{1} << PAGE_BITS;
  const std::size_t page = c >> PAGE_BITS;
  if (page >= pages_.size()) pages_.resize(page + 1);
  if (pages_[page] == 0) {
    pages_[page] = static_cast<std::uint32_t>(classes_.size());
    classes_.resize(classes_.size() + PAGE);
  }
  auto& cls = classes_[pages_[page] + c % PAGE];
  if (cls == 0) {
    cls = static_cast<std::uint32_t>(roots_.size());
    roots_.push_back(0);
  }
  return cls;
}

void MultiPattern::insert(std::u32string_view word, std::uint32_t index, std::vector<Edge>& edges) {
  std::uint32_t state = 0;
  for (const char32_t c : word) {
    const std::uint32_t cls = intern(c);
    std::uint32_t next = child(state, cls);
    if (next == 0) {
      next = static_cast<std::uint32_t>(nodes_.size());
      nodes_.push_back({.depth = nodes_[state].depth + 1});
      if (state == 0) {
        roots_[cls] = next;
      } else {
        edges_.insert(state, cls, next);
        edges.push_back({state, cls, next});
      }
    }
    state = next;
  }
  if (nodes_[state].pattern == NO_PATTERN) nodes_[state].pattern = index;
}

// Breadth first, so that the node a failure leads to is linked already.
void MultiPattern::link(std::vector<Edge> edges) {
  std::stable_sort(edges.begin(), edges.end(), [this](const Edge& a, const Edge& b) {
    return nodes_[a.node].depth < nodes_[b.node].depth;
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

void MultiPattern::EdgeTable::insert(std::uint32_t node, std::uint32_t cls, std::uint32_t child) {
  if (2 * (used_ + 1) > slots_.size()) grow();
  const std::uint64_t key = key_of(node, cls);
  std::size_t i = place_of(key);
  while (slots_[i].key != FREE) i = (i + 1) & (slots_.size() - 1);
  slots_[i] = {key, child};
  ++used_;
}

void MultiPattern::EdgeTable::grow() {
  constexpr std::size_t LEAST = 16;
  const auto old = std::move(slots_);
  slots_.assign(std::max(LEAST, 2 * old.size()), Slot{});
  shift_ = 64 - static_cast<unsigned>(std::countr_zero(slots_.size()));
  used_ = 0;
  for (const Slot& slot : old) {
    if (slot.key == FREE) continue;
    insert(static_cast<std::uint32_t>(slot.key >> 32U), static_cast<std::uint32_t>(slot.key),
           slot.child);
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
