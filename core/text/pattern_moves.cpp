#include "core/text/pattern_moves.hpp"

#include <algorithm>

namespace core::text {
namespace {

using Place = PatternMoves::Place;

constexpr std::size_t MAX_PLACES = 3000;

// How many characters it takes at least; what counts for more than PatternMoves::DEPTH is not counted.
unsigned least_length(const PatternNode& node);

unsigned least_length(std::span<const PatternNode> parts) {
  unsigned sum = 0;
  for (const auto& part : parts) sum += least_length(part);
  return std::min(sum, PatternMoves::DEPTH);
}
unsigned least_length(const PatternNode& node) {
  unsigned least = PatternMoves::DEPTH;
  switch (node.kind) {
    case PatternNode::Kind::SET:
      return 1;
    case PatternNode::Kind::SEQUENCE:
      return least_length(std::span(node.parts));
    case PatternNode::Kind::CHOICE:
      for (const auto& part : node.parts) least = std::min(least, least_length(part));
      return least;
    case PatternNode::Kind::REPEAT:
      return std::min(PatternMoves::DEPTH,
                      std::min(node.min, PatternMoves::DEPTH) * least_length(node.parts[0]));
    default:
      return 0;
  }
}

}  // namespace

PatternMoves::PatternMoves(const PatternNode& pattern) {
  start_ = add();
  const Place end = put(pattern, start_);
  places_[end].empty.push_back(END);
  takes_something_ = least_length(pattern) > 0;
  seen_.resize(places_.size());
}

PatternMoves::Places PatternMoves::closure(Places places) {
  Places out;
  ++round_;
  while (!places.empty()) {
    const Place place = places.back();
    places.pop_back();
    if (seen_[place] == round_) continue;
    seen_[place] = round_;
    if (places_[place].set != nullptr || place == END) out.push_back(place);
    const auto& empty = places_[place].empty;
    places.insert(places.end(), empty.begin(), empty.end());
  }
  std::sort(out.begin(), out.end());
  return out;
}

Place PatternMoves::add() {
  if (places_.size() > MAX_PLACES) too_large_ = true;
  places_.emplace_back();
  return static_cast<Place>(places_.size() - 1);
}

Place PatternMoves::put(const PatternNode& node, Place from) {
  if (too_large_) return from;
  switch (node.kind) {
    case PatternNode::Kind::EMPTY:
    case PatternNode::Kind::AHEAD:
    case PatternNode::Kind::BEHIND:
    case PatternNode::Kind::NOT_BEHIND:
      return from;
    case PatternNode::Kind::UNKNOWN:
      places_[from].empty.push_back(END);
      return add();
    case PatternNode::Kind::SET: {
      const Place start = add();
      const Place end = add();
      places_[from].empty.push_back(start);
      places_[start].set = &node.set;
      places_[start].next = end;
      return end;
    }
    case PatternNode::Kind::SEQUENCE:
      return sequence(node.parts, from);
    case PatternNode::Kind::CHOICE: {
      const Place end = add();
      for (const auto& part : node.parts) {
        const Place last = put(part, from);
        places_[last].empty.push_back(end);
      }
      return end;
    }
    case PatternNode::Kind::REPEAT:
      return repeat(node, from);
  }
  return from;
}

// A look-ahead tells what a match begins with as well as what follows it does; the
// longer of the two is taken.
Place PatternMoves::sequence(std::span<const PatternNode> parts, Place from) {
  for (; !parts.empty(); parts = parts.subspan(1)) {
    const auto& part = parts.front();
    if (part.kind == PatternNode::Kind::AHEAD &&
        least_length(part.parts[0]) > least_length(parts.subspan(1))) {
      return put({.kind = PatternNode::Kind::UNKNOWN}, put(part.parts[0], from));
    }
    from = put(part, from);
  }
  return from;
}

Place PatternMoves::repeat(const PatternNode& node, Place from) {
  for (unsigned i = 0; i < std::min(node.min, DEPTH); ++i) from = put(node.parts[0], from);
  if (node.min > DEPTH) return from;
  const Place end = add();
  places_[from].empty.push_back(end);
  if (node.max == PatternNode::UNLIMITED || node.max - node.min > DEPTH) {
    const Place loop = add();
    places_[from].empty.push_back(loop);
    const Place last = put(node.parts[0], loop);
    places_[last].empty.push_back(loop);
    places_[last].empty.push_back(end);
    return end;
  }
  for (unsigned i = node.min; i < node.max; ++i) {
    from = put(node.parts[0], from);
    places_[from].empty.push_back(end);
  }
  return end;
}

}  // namespace core::text
