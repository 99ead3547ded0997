#include "core/text/prefix_automaton.hpp"

#include <algorithm>
#include <map>
#include <set>

#include "core/text/pattern_syntax.hpp"

namespace core::text {
namespace {

// A match that goes on for so long is left to the regex engine.
constexpr unsigned DEPTH = 16;
constexpr std::size_t MAX_PLACES = 3000;
constexpr std::size_t MAX_STATES = 250;
constexpr std::size_t MAX_CLASSES = 200;
constexpr char32_t ASTRAL = 0x10000;

using Place = std::uint32_t;

// The automaton with empty moves that a pattern is turned into at first.
struct Moves {
  struct At {
    const CharacterSet* set = nullptr;  // taken on the way to `next`
    Place next = 0;
    std::vector<Place> empty;
  };
  static constexpr Place END = 0;  // a match has ended, or may go on with anything

  std::vector<At> places = std::vector<At>(1);
  bool too_large = false;

  Place add() {
    if (places.size() > MAX_PLACES) too_large = true;
    places.emplace_back();
    return static_cast<Place>(places.size() - 1);
  }

  // Adds what `node` takes between `from` and the place returned.
  Place put(const PatternNode& node, Place from) {
    if (too_large) return from;
    switch (node.kind) {
      case PatternNode::Kind::EMPTY:
        return from;
      case PatternNode::Kind::UNKNOWN:
        places[from].empty.push_back(END);
        return add();
      case PatternNode::Kind::SET: {
        const Place start = add();
        const Place end = add();
        places[from].empty.push_back(start);
        places[start].set = &node.set;
        places[start].next = end;
        return end;
      }
      case PatternNode::Kind::SEQUENCE:
        for (const auto& part : node.parts) from = put(part, from);
        return from;
      case PatternNode::Kind::CHOICE: {
        const Place end = add();
        for (const auto& part : node.parts) {
          const Place last = put(part, from);
          places[last].empty.push_back(end);
        }
        return end;
      }
      case PatternNode::Kind::REPEAT:
        return repeat(node, from);
    }
    return from;
  }

  Place repeat(const PatternNode& node, Place from) {
    for (unsigned i = 0; i < std::min(node.min, DEPTH); ++i) from = put(node.parts[0], from);
    if (node.min > DEPTH) return from;
    const Place end = add();
    places[from].empty.push_back(end);
    if (node.max == PatternNode::UNLIMITED || node.max - node.min > DEPTH) {
      const Place loop = add();
      places[from].empty.push_back(loop);
      const Place last = put(node.parts[0], loop);
      places[last].empty.push_back(loop);
      places[last].empty.push_back(end);
      return end;
    }
    for (unsigned i = node.min; i < node.max; ++i) {
      from = put(node.parts[0], from);
      places[from].empty.push_back(end);
    }
    return end;
  }
};

}  // namespace

class PrefixAutomatonBuilder {
 public:
  explicit PrefixAutomatonBuilder(const PatternNode& pattern) {
    const Place start = moves_.add();
    const Place end = moves_.put(pattern, start);
    moves_.places[end].empty.push_back(Moves::END);
    start_ = start;
  }

  std::unique_ptr<const PrefixAutomaton> build() {
    if (moves_.too_large || !classify()) return nullptr;
    const Places first = closure({start_});
    if (first.empty() || first.front() == Moves::END) return nullptr;
    add_states(first);
    out_->class_begins_.resize(out_->class_count_);
    for (std::size_t c = 0; c < out_->class_count_; ++c) {
      out_->class_begins_[c] =
          out_->next_[PrefixAutomaton::START * out_->class_count_ + c] != PrefixAutomaton::DEAD;
    }
    return std::move(out_);
  }

 private:
  using Places = std::vector<Place>;  // sorted
  using State = PrefixAutomaton::State;

  Places closure(Places places) const {
    Places out;
    std::vector<bool> seen(moves_.places.size());
    while (!places.empty()) {
      const Place place = places.back();
      places.pop_back();
      if (seen[place]) continue;
      seen[place] = true;
      if (moves_.places[place].set != nullptr || place == Moves::END) out.push_back(place);
      const auto& empty = moves_.places[place].empty;
      places.insert(places.end(), empty.begin(), empty.end());
    }
    std::sort(out.begin(), out.end());
    return out;
  }

  // Cuts the characters where a set begins or ends, and puts those into one class
  // that the same sets hold.
  bool classify() {
    std::set<CharacterSet> sets;
    for (const auto& at : moves_.places) {
      if (at.set != nullptr) sets.insert(*at.set);
    }
    Edges edges;
    edges[0];
    std::size_t i = 0;
    for (const auto& set : sets) {
      for (const auto& [low, high] : set) {
        edges[low].emplace_back(i, true);
        if (high + 1 != 0) edges[high + 1].emplace_back(i, false);
      }
      ++i;
    }
    return number_classes(edges, sets.size());
  }

  using Edges = std::map<char32_t, std::vector<std::pair<std::size_t, bool>>>;

  bool number_classes(const Edges& edges, std::size_t sets) {
    std::map<std::vector<bool>, std::uint8_t> classes;
    std::vector<bool> holding(sets);
    std::vector<std::pair<char32_t, std::uint8_t>> starts;
    for (const auto& [c, changes] : edges) {
      for (const auto& [set, begins] : changes) holding[set] = begins;
      if (classes.size() >= MAX_CLASSES) return false;
      const auto [it, is_new] = classes.emplace(holding, static_cast<std::uint8_t>(classes.size()));
      if (is_new) samples_.push_back(c);
      starts.emplace_back(c, it->second);
    }
    out_->class_count_ = classes.size();
    fill_pages(starts);
    return true;
  }

  void fill_pages(const std::vector<std::pair<char32_t, std::uint8_t>>& starts) {
    using Page = std::array<std::uint8_t, PrefixAutomaton::PAGE>;
    std::map<Page, std::uint8_t> numbers;
    std::size_t i = 0;
    for (std::size_t page = 0; page < PrefixAutomaton::PAGES; ++page) {
      Page classes;
      for (std::size_t k = 0; k < PrefixAutomaton::PAGE; ++k) {
        const auto c = static_cast<char32_t>(page * PrefixAutomaton::PAGE + k);
        while (i + 1 < starts.size() && starts[i + 1].first <= c) ++i;
        classes[k] = starts[i].second;
      }
      const auto [it, is_new] = numbers.emplace(classes, static_cast<std::uint8_t>(numbers.size()));
      if (is_new) out_->classes_.push_back(classes);
      out_->pages_[page] = it->second;
    }
    out_->astral_.emplace_back(ASTRAL, starts[i].second);
    for (++i; i < starts.size(); ++i) out_->astral_.push_back(starts[i]);
  }

  Places step(const Places& places, char32_t c) const {
    Places reached;
    for (const Place place : places) {
      const auto& at = moves_.places[place];
      if (at.set == nullptr) continue;
      const auto after = std::upper_bound(at.set->begin(), at.set->end(),
                                          std::pair(c, static_cast<char32_t>(~0U)));
      if (after != at.set->begin() && std::prev(after)->second >= c) reached.push_back(at.next);
    }
    return closure(std::move(reached));
  }

  void add_states(const Places& first) {
    std::map<Places, State> numbers{{first, PrefixAutomaton::START}};
    std::vector<Places> states{{}, {}, first};
    auto& next = out_->next_;
    for (std::size_t s = 0; s < states.size(); ++s) {
      next.resize((s + 1) * out_->class_count_, static_cast<State>(s));
      if (s < PrefixAutomaton::START) continue;
      for (std::size_t c = 0; c < out_->class_count_; ++c) {
        next[s * out_->class_count_ + c] = state_of(step(states[s], samples_[c]), numbers, states);
      }
    }
  }

  static State state_of(Places places, std::map<Places, State>& numbers,
                        std::vector<Places>& states) {
    if (places.empty()) return PrefixAutomaton::DEAD;
    if (places.front() == Moves::END) return PrefixAutomaton::MAYBE;
    const auto known = numbers.find(places);
    if (known != numbers.end()) return known->second;
    if (states.size() >= MAX_STATES) return PrefixAutomaton::MAYBE;
    const auto number = static_cast<State>(states.size());
    numbers.emplace(places, number);
    states.push_back(std::move(places));
    return number;
  }

  std::unique_ptr<PrefixAutomaton> out_ = std::make_unique<PrefixAutomaton>();
  Moves moves_;
  Place start_ = 0;
  std::vector<char32_t> samples_;  // one character of each class
};

std::unique_ptr<const PrefixAutomaton> PrefixAutomaton::of(std::u32string_view pattern) {
  const auto tree = read_pattern(pattern);
  if (!tree) return nullptr;
  return PrefixAutomatonBuilder(*tree).build();
}

std::size_t PrefixAutomaton::class_of(char32_t c) const {
  if (c < ASTRAL) return classes_[pages_[c / PAGE]][c % PAGE];
  const auto after =
      std::upper_bound(astral_.begin(), astral_.end(), c,
                       [](char32_t value, const auto& entry) { return value < entry.first; });
  return std::prev(after)->second;
}

bool PrefixAutomaton::may_begin(std::u32string_view text, std::size_t at) const {
  State state = START;
  const std::size_t end = std::min<std::size_t>(text.size(), at + DEPTH);
  for (; at < end; ++at) {
    state = next_[state * class_count_ + class_of(text[at])];
    if (state <= MAYBE) return state == MAYBE;
  }
  return end < text.size() || state == MAYBE;
}

std::size_t PrefixAutomaton::next(std::u32string_view text, std::size_t from) const {
  for (; from < text.size(); ++from) {
    if (class_begins_[class_of(text[from])] && may_begin(text, from)) break;
  }
  return from;
}

}  // namespace core::text
