#include "core/nlp/spacy/entity_finder.hpp"

#include <algorithm>
#include <set>

namespace core::nlp::spacy {
namespace {

enum EntityAction { BEGIN = 1, INSIDE, LAST, UNIT, OUTSIDE };

constexpr std::size_t ENTITY_FEATURES = 3;
constexpr std::size_t EXTRA_ENTITY_FEATURES = 6;
constexpr std::int32_t NOT_THERE = -1;

struct EntityState {
  std::int32_t token = 0;
  std::int32_t first = NOT_THERE;  // of the entity that is open
  std::uint32_t label = 0;         // its label

  bool open() const { return first != NOT_THERE; }
};

void describe_state(const EntityState& state, std::span<std::int32_t> out) {
  std::fill(out.begin(), out.end(), NOT_THERE);
  out[0] = state.token;
  if (!state.open()) return;
  if (out.size() == ENTITY_FEATURES) {
    out[1] = state.first;
    out[2] = state.token - 1;
    return;
  }
  for (std::size_t i = 1; i < out.size(); ++i) {
    const auto token = state.first + static_cast<std::int32_t>(i) - 1;
    if (token >= state.token) break;
    out[i] = token;
  }
}

// What the text says about the next action.
struct Surroundings {
  bool is_space;
  bool may_go_on;  // the next token is there, in the same sentence
};

bool is_valid(const EntityState& state, const Surroundings& here, const TransitionClass& one,
              std::uint32_t label) {
  switch (one.action) {
    case BEGIN:
      return !state.open() && !one.label.empty() && here.may_go_on && !here.is_space;
    case INSIDE:
      return state.open() && label == state.label && here.may_go_on;
    case LAST:
      return state.open() && label == state.label;
    case UNIT:
      return !state.open() && !one.label.empty() && !here.is_space;
    default:
      return !state.open();
  }
}

}  // namespace

EntityFinder::EntityFinder(const NetworkFile& network, const MappedFile& moves)
    : model_(network, moves, true) {
  const auto features = model_.features();
  if (features != ENTITY_FEATURES && features != EXTRA_ENTITY_FEATURES) {
    network.root().fail("an entity recognizer with " + std::to_string(features) +
                        " features of a state");
  }
  std::set<std::string> labels;
  for (const auto& one : model_.classes()) {
    if (!one.label.empty()) labels.insert(one.label);
  }
  labels_.assign(labels.begin(), labels.end());
  for (const auto& one : model_.classes()) {
    const auto found = std::lower_bound(labels_.begin(), labels_.end(), one.label);
    label_of_class_.push_back(static_cast<std::uint32_t>(found - labels_.begin()));
  }
}

std::vector<TokenSpan> EntityFinder::find(TransitionScores& scores, const TypedTokens& tokens,
                                          const std::vector<bool>& sentence_starts) const {
  std::vector<TokenSpan> out;
  std::vector<std::int32_t> features(model_.features());
  const auto& classes = model_.classes();
  EntityState state;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    state.token = static_cast<std::int32_t>(i);
    const bool at_last = i + 1 == tokens.size();
    const bool cut = !at_last && !sentence_starts.empty() && sentence_starts[i + 1];
    const Surroundings here{tokens.types[tokens.type_of[i]].is_space, !at_last && !cut};
    describe_state(state, features);
    const auto values = scores.of(features);
    auto best = classes.size();
    for (std::size_t c = 0; c < classes.size(); ++c) {
      if (best != classes.size() && !(values[c] > values[best])) continue;
      if (is_valid(state, here, classes[c], label_of_class_[c])) best = c;
    }
    if (best == classes.size()) break;
    const auto first = state.open() ? state.first : state.token;
    const auto label = label_of_class_[best];
    switch (classes[best].action) {
      case BEGIN:
        state.first = state.token;
        state.label = label;
        break;
      case LAST:
      case UNIT:
        out.push_back({static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(i), label});
        state.first = NOT_THERE;
        break;
      default:
        break;
    }
  }
  return out;
}

}  // namespace core::nlp::spacy
