#include "core/nlp/spacy/dependency_parser.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace core::nlp::spacy {
namespace {

constexpr std::int32_t NONE = -1;

enum Action { SHIFT, REDUCE, LEFT, RIGHT, BREAK, ACTIONS };

constexpr std::size_t FEATURES = 8;
constexpr std::size_t EXTRA_FEATURES = 13;

// A stack of tokens, and a buffer: tokens that were put back, then those not read yet.
class ParseState {
 public:
  explicit ParseState(std::size_t tokens)
      : tokens_(static_cast<std::int32_t>(tokens)),
        heads_(tokens, NONE),
        labels_(tokens, NONE),
        unshiftable_(tokens),
        starts_(tokens) {
    for (auto* children : {&left_, &right_}) children->assign(tokens, {NONE, NONE});
    starts_[0] = true;
  }

  bool is_final() const { return stack_.empty() && buffered() == 0; }

  std::int32_t buffer(std::size_t i) const {
    if (i < back_.size()) return back_[back_.size() - 1 - i];
    const auto token = next_ + static_cast<std::int32_t>(i - back_.size());
    return token < tokens_ ? token : NONE;
  }
  std::int32_t stack(std::size_t i) const {
    return i < stack_.size() ? stack_[stack_.size() - 1 - i] : NONE;
  }

  std::array<bool, ACTIONS> valid() const {
    const auto nb = buffered();
    const auto d = stack_.size();
    const auto b0 = nb > 0 ? at(buffer(0)) : 0;
    const bool arc = d > 0 && nb > 0 && !starts_[b0];
    const bool shift = d == 0 || (nb >= 2 && !starts_[b0] && !unshiftable_[b0]);
    const bool split = nb >= 2 && buffer(1) == buffer(0) + 1 && !starts_[at(buffer(1))];
    return {shift, d > 0, arc, arc, split};
  }

  void apply(int action, std::int32_t label) {
    const auto b0 = buffer(0);
    const auto s0 = stack(0);
    switch (action) {
      case SHIFT:
        return push();
      case REDUCE:
        stack_.pop_back();
        if (heads_[at(s0)] != NONE || stack_.empty()) return;
        back_.push_back(s0);
        unshiftable_[at(s0)] = true;
        return;
      case LEFT:
        add_arc(b0, s0, label);
        unshiftable_[at(b0)] = false;
        stack_.pop_back();
        return;
      case RIGHT:
        add_arc(s0, b0, label);
        return push();
      case BREAK:
        starts_[at(buffer(1))] = true;
        return;
      default:
        return;
    }
  }

  void describe(std::span<std::int32_t> out) const {
    const auto b0 = buffer(0);
    const auto s0 = stack(0);
    const auto s1 = stack(1);
    if (out.size() == FEATURES) {
      const std::int32_t features[] = {b0,       buffer(1), s0,       s1,
                                       stack(2), left(b0),  left(s0), right(s0)};
      std::copy(std::begin(features), std::end(features), out.begin());
      return;
    }
    const std::int32_t features[] = {b0,
                                     buffer(1),
                                     s0,
                                     s1,
                                     stack(2),
                                     left(s0),
                                     right(s0),
                                     left(b0),
                                     last_but_one(right(s0)),
                                     left(s1),
                                     last_but_one(left(s1)),
                                     right(s1),
                                     last_but_one(right(s1))};
    std::copy(std::begin(features), std::end(features), out.begin());
  }

  const std::vector<std::int32_t>& heads() const { return heads_; }
  const std::vector<std::int32_t>& labels() const { return labels_; }

 private:
  // The child of a token on one side that was attached last, and for a child the one
  // on its side that was attached before it.
  struct Children {
    std::int32_t last;
    std::int32_t before;
  };

  static std::size_t at(std::int32_t token) { return static_cast<std::size_t>(token); }
  std::size_t buffered() const { return back_.size() + at(tokens_ - next_); }
  std::int32_t left(std::int32_t token) const {
    return token == NONE ? NONE : left_[at(token)].last;
  }
  std::int32_t right(std::int32_t token) const {
    return token == NONE ? NONE : right_[at(token)].last;
  }
  std::int32_t last_but_one(std::int32_t child) const {
    return child == NONE ? NONE : side_of(child)[at(child)].before;
  }
  const std::vector<Children>& side_of(std::int32_t child) const {
    return child < heads_[at(child)] ? left_ : right_;
  }
  std::vector<Children>& side_of(std::int32_t child) {
    return child < heads_[at(child)] ? left_ : right_;
  }

  void push() {
    stack_.push_back(buffer(0));
    if (back_.empty()) {
      ++next_;
    } else {
      back_.pop_back();
    }
  }

  void detach(std::int32_t child) {
    auto& side = side_of(child);
    auto* link = &side[at(heads_[at(child)])].last;
    while (*link != NONE && *link != child) link = &side[at(*link)].before;
    if (*link == child) *link = side[at(child)].before;
  }

  void add_arc(std::int32_t head, std::int32_t child, std::int32_t label) {
    if (heads_[at(child)] != NONE) detach(child);
    heads_[at(child)] = head;
    labels_[at(child)] = label;
    auto& side = side_of(child);
    side[at(child)].before = side[at(head)].last;
    side[at(head)].last = child;
  }

  std::int32_t tokens_;
  std::int32_t next_ = 0;
  std::vector<std::int32_t> stack_, back_;
  std::vector<std::int32_t> heads_, labels_;
  std::vector<Children> left_, right_;
  std::vector<bool> unshiftable_, starts_;
};

// The best class that is valid; the first of equals. NONE if no class is.
std::int32_t best_class(const ParseState& state, std::span<const float> scores,
                        const std::vector<TransitionClass>& classes) {
  const auto valid = state.valid();
  const bool neighbours = state.stack(0) != NONE && state.stack(0) == state.buffer(0) - 1;
  auto best = NONE;
  for (std::size_t i = 0; i < classes.size(); ++i) {
    if (!valid[static_cast<std::size_t>(classes[i].action)]) continue;
    if (best != NONE && !(scores[i] > scores[static_cast<std::size_t>(best)])) continue;
    const bool is_arc = classes[i].action == LEFT || classes[i].action == RIGHT;
    if (is_arc && !neighbours && classes[i].label == "subtok") continue;
    best = static_cast<std::int32_t>(i);
  }
  return best;
}

DependencyTrees trees_of(const ParseState& state, const std::vector<TransitionClass>& classes) {
  DependencyTrees out;
  const auto tokens = state.heads().size();
  out.heads.reserve(tokens);
  out.labels.reserve(tokens);
  for (std::size_t i = 0; i < tokens; ++i) {
    const auto head = state.heads()[i];
    out.heads.push_back(head == NONE ? static_cast<std::uint32_t>(i)
                                     : static_cast<std::uint32_t>(head));
    out.labels.push_back(head == NONE ? "ROOT"
                                      : classes[static_cast<std::size_t>(state.labels()[i])].label);
  }
  return out;
}

}  // namespace

DependencyParser::DependencyParser(const NetworkFile& network, const MappedFile& moves)
    : model_(network, moves, false) {
  const auto features = model_.features();
  if (features != FEATURES && features != EXTRA_FEATURES) {
    network.root().fail("a parser with " + std::to_string(features) + " features of a state");
  }
  for (const auto& one : model_.classes()) {
    if (one.action >= ACTIONS) network.root().fail("an action that parsers do not have");
  }
}

DependencyTrees DependencyParser::parse(TransitionScores& scores, const TypedTokens& tokens) const {
  if (tokens.size() == 0) return {};
  const auto& classes = model_.classes();
  std::vector<std::int32_t> features(model_.features());
  ParseState state(tokens.size());
  while (!state.is_final()) {
    state.describe(features);
    const auto best = best_class(state, scores.of(features), classes);
    if (best == NONE) break;
    state.apply(classes[static_cast<std::size_t>(best)].action, best);
  }
  auto trees = trees_of(state, classes);
  finish_trees(trees, tokens);
  return trees;
}

}  // namespace core::nlp::spacy
