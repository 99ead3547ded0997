#include "core/text/prefix_automaton.hpp"

#include <algorithm>
#include <map>

#include "core/text/look_behind.hpp"
#include "core/text/pattern_moves.hpp"

namespace core::text {
namespace {

constexpr std::size_t MAX_STATES = 250;
constexpr std::size_t MAX_CLASSES = 200;
constexpr char32_t ASTRAL = 0x10000;
constexpr char32_t HIGHEST = 0xFFFFFFFF;
constexpr std::size_t FARTHEST_ANCHOR = 3;
constexpr unsigned FREQUENT = 200;  // of a thousand characters

}  // namespace

class PrefixAutomatonBuilder {
 public:
  PrefixAutomatonBuilder(const PatternNode& pattern, SearchIndex::Kinds first_kinds)
      : moves_(pattern) {
    out_->first_kinds_ = first_kinds;
  }

  std::unique_ptr<const PrefixAutomaton> build() {
    if (!moves_.is_usable() || !classify()) return nullptr;
    const Places first = moves_.first();
    if (first.empty() || first.front() == PatternMoves::END) return nullptr;
    add_states(first);
    out_->class_begins_.resize(out_->class_count_);
    for (std::size_t c = 0; c < out_->class_count_; ++c) {
      out_->class_begins_[c] = next_of(PrefixAutomaton::START, c) != PrefixAutomaton::DEAD;
    }
    for (const auto& classes : out_->classes_) {
      auto& page = out_->begins_.emplace_back();
      for (std::size_t k = 0; k < page.size(); ++k) page[k] = out_->class_begins_[classes[k]];
    }
    choose_anchor();
    return std::move(out_);
  }

 private:
  using Places = PatternMoves::Places;
  using State = PrefixAutomaton::State;
  using Kinds = SearchIndex::Kinds;
  static constexpr std::size_t NO_SET = ~std::size_t{0};

  State next_of(std::size_t state, std::size_t c) const {
    return out_->next_[state * out_->class_count_ + c];
  }

  // Cuts the characters where a set begins or ends, and puts those into one class
  // that the same sets hold.
  bool classify() {
    std::vector<const CharacterSet*> sets;
    for (const auto& at : moves_.places()) {
      if (at.set != nullptr) sets.push_back(at.set);
    }
    const auto is_less = [](const auto* a, const auto* b) { return *a < *b; };
    std::sort(sets.begin(), sets.end(), is_less);
    sets.erase(std::unique(sets.begin(), sets.end(),
                           [](const auto* a, const auto* b) { return *a == *b; }),
               sets.end());
    set_of_place_.assign(moves_.places().size(), NO_SET);
    for (std::size_t i = 0; i < moves_.places().size(); ++i) {
      const auto* set = moves_.places()[i].set;
      if (set == nullptr) continue;
      set_of_place_[i] = static_cast<std::size_t>(
          std::lower_bound(sets.begin(), sets.end(), set, is_less) - sets.begin());
    }
    return number_classes(sets);
  }

  // Where a set begins or ends.
  struct Edge {
    char32_t at;
    std::size_t set;
    bool begins;
  };

  static std::vector<Edge> edges_of(const std::vector<const CharacterSet*>& sets) {
    std::vector<Edge> edges;
    for (std::size_t i = 0; i < sets.size(); ++i) {
      for (const auto& [low, high] : *sets[i]) {
        edges.push_back({low, i, true});
        if (high + 1 != 0) edges.push_back({high + 1, i, false});
      }
    }
    std::sort(edges.begin(), edges.end(), [](const auto& a, const auto& b) { return a.at < b.at; });
    return edges;
  }

  bool number_classes(const std::vector<const CharacterSet*>& sets) {
    using Bits = std::vector<std::uint64_t>;
    constexpr std::size_t WORD = 64;
    const auto edges = edges_of(sets);
    std::map<Bits, std::uint8_t> classes;
    Bits holding((sets.size() + WORD - 1) / WORD);
    std::vector<std::pair<char32_t, std::uint8_t>> starts;
    classes_of_set_.resize(sets.size());
    for (std::size_t e = 0; e <= edges.size();) {
      const char32_t at = starts.empty() ? 0 : edges[e].at;
      for (; e < edges.size() && edges[e].at == at; ++e) {
        holding[edges[e].set / WORD] ^= std::uint64_t{1} << (edges[e].set % WORD);
      }
      const auto number = static_cast<std::uint8_t>(classes.size());
      const auto [it, is_new] = classes.try_emplace(holding, number);
      if (is_new && classes.size() > MAX_CLASSES) return false;
      for (std::size_t i = 0; is_new && i < sets.size(); ++i) {
        if ((holding[i / WORD] >> (i % WORD) & 1U) != 0) classes_of_set_[i].push_back(number);
      }
      starts.emplace_back(at, it->second);
      if (e == edges.size()) break;
    }
    out_->class_count_ = classes.size();
    fill_pages(starts);
    kinds_of_class_.resize(classes.size());
    for (std::size_t i = 0; i < starts.size(); ++i) {
      const char32_t last = i + 1 < starts.size() ? starts[i + 1].first - 1 : HIGHEST;
      auto& kinds = kinds_of_class_[starts[i].second];
      kinds = static_cast<Kinds>(kinds | SearchIndex::kinds_between(starts[i].first, last));
    }
    return true;
  }

  void fill_pages(const std::vector<std::pair<char32_t, std::uint8_t>>& starts) {
    std::map<std::uint8_t, std::uint8_t> uniform;  // pages of one class, by it
    std::size_t i = 0;
    for (std::size_t page = 0; page < PrefixAutomaton::PAGES; ++page) {
      const auto first = static_cast<char32_t>(page * PrefixAutomaton::PAGE);
      while (i + 1 < starts.size() && starts[i + 1].first <= first) ++i;
      const bool is_uniform =
          i + 1 == starts.size() || starts[i + 1].first >= first + PrefixAutomaton::PAGE;
      const auto known = uniform.find(starts[i].second);
      if (is_uniform && known != uniform.end()) {
        out_->pages_[page] = known->second;
        continue;
      }
      const auto number = static_cast<std::uint8_t>(out_->classes_.size());
      out_->pages_[page] = number;
      if (is_uniform) uniform.emplace(starts[i].second, number);
      auto& classes = out_->classes_.emplace_back();
      for (std::size_t k = 0; k < PrefixAutomaton::PAGE; ++k) {
        while (i + 1 < starts.size() && starts[i + 1].first <= first + k) ++i;
        classes[k] = starts[i].second;
      }
    }
    out_->astral_.emplace_back(ASTRAL, starts[i].second);
    for (++i; i < starts.size(); ++i) out_->astral_.push_back(starts[i]);
  }

  void add_states(const Places& first) {
    const std::size_t class_count = out_->class_count_;
    std::map<Places, State> numbers{{first, PrefixAutomaton::START}};
    std::map<Places, State> by_move;  // what was reached, before its empty moves
    std::vector<Places> states{{}, {}, first};
    auto& next = out_->next_;
    for (std::size_t s = 0; s < states.size(); ++s) {
      next.resize((s + 1) * class_count, static_cast<State>(s));
      if (s < PrefixAutomaton::START) continue;
      const auto reached = reached_from(states[s]);
      for (std::size_t c = 0; c < class_count; ++c) {
        auto& to = next[s * class_count + c];
        to = PrefixAutomaton::DEAD;
        if (reached[c].empty()) continue;
        const auto [it, is_new] = by_move.try_emplace(reached[c], PrefixAutomaton::DEAD);
        if (is_new) it->second = state_of(moves_.closure(reached[c]), numbers, states);
        to = it->second;
      }
    }
  }

  // By class, before empty moves.
  std::vector<Places> reached_from(const Places& places) const {
    std::vector<Places> reached(out_->class_count_);
    for (const auto place : places) {
      if (set_of_place_[place] == NO_SET) continue;
      for (const auto c : classes_of_set_[set_of_place_[place]]) {
        reached[c].push_back(moves_.places()[place].next);
      }
    }
    return reached;
  }

  static State state_of(Places places, std::map<Places, State>& numbers,
                        std::vector<Places>& states) {
    if (places.empty()) return PrefixAutomaton::DEAD;
    if (places.front() == PatternMoves::END) return PrefixAutomaton::MAYBE;
    const auto known = numbers.find(places);
    if (known != numbers.end()) return known->second;
    if (states.size() >= MAX_STATES) return PrefixAutomaton::MAYBE;
    const auto number = static_cast<State>(states.size());
    numbers.emplace(places, number);
    states.push_back(std::move(places));
    return number;
  }

  // The kinds of the characters that lead on from these states, and where to.
  std::pair<Kinds, std::vector<bool>> step_of(const std::vector<State>& states) const {
    Kinds kinds = 0;
    std::vector<bool> reached(out_->next_.size() / out_->class_count_);
    for (const State s : states) {
      for (std::size_t c = 0; c < out_->class_count_; ++c) {
        const State to = next_of(s, c);
        reached[to] = true;
        if (to != PrefixAutomaton::DEAD) kinds = static_cast<Kinds>(kinds | kinds_of_class_[c]);
      }
    }
    return {kinds, std::move(reached)};
  }

  void choose_anchor() {
    std::vector<State> states{PrefixAutomaton::START};
    unsigned best = ~0U;
    for (std::size_t depth = 0; depth <= FARTHEST_ANCHOR; ++depth) {
      auto [kinds, reached] = step_of(states);
      if (depth == 0) kinds = out_->first_kinds_ = static_cast<Kinds>(kinds & out_->first_kinds_);
      if (const unsigned often = frequency(kinds); often < best) {
        best = often;
        out_->anchor_ = depth;
        out_->anchor_kinds_ = kinds;
        out_->is_frequent_ = often > FREQUENT;
      }
      if (reached[PrefixAutomaton::MAYBE]) return;
      states.clear();
      for (std::size_t s = PrefixAutomaton::START; s < reached.size(); ++s) {
        if (reached[s]) states.push_back(static_cast<State>(s));
      }
    }
  }

  // How many of a thousand characters are of these kinds, about.
  static unsigned frequency(Kinds kinds) {
    constexpr unsigned OF_THOUSAND[SearchIndex::COUNT] = {20, 5,  40, 15,  25,  25,  150, 70,
                                                          40, 70, 10, 120, 120, 120, 120, 120};
    unsigned sum = 0;
    for (unsigned k = 0; k < SearchIndex::COUNT; ++k) {
      if ((kinds >> k & 1U) != 0) sum += OF_THOUSAND[k];
    }
    return sum;
  }

  std::unique_ptr<PrefixAutomaton> out_ = std::make_unique<PrefixAutomaton>();
  PatternMoves moves_;
  std::vector<std::size_t> set_of_place_;
  std::vector<std::vector<std::uint8_t>> classes_of_set_;
  std::vector<Kinds> kinds_of_class_;
};

std::unique_ptr<const PrefixAutomaton> PrefixAutomaton::of(std::u32string_view pattern) {
  const auto tree = read_pattern(pattern);
  if (!tree) return nullptr;
  return PrefixAutomatonBuilder(*tree, kinds_by_look_behind(pattern, *tree)).build();
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
  const std::size_t end = std::min<std::size_t>(text.size(), at + PatternMoves::DEPTH);
  for (; at < end; ++at) {
    state = next_[state * class_count_ + class_of(text[at])];
    if (state <= MAYBE) return state == MAYBE;
  }
  return end < text.size() || state == MAYBE;
}

std::size_t PrefixAutomaton::next(std::u32string_view text, std::size_t from) const {
  for (; from < text.size(); ++from) {
    if (begins(text[from]) && may_begin(text, from)) break;
  }
  return from;
}

std::size_t PrefixAutomaton::next(std::u32string_view text, const SearchIndex& index,
                                  std::size_t from, SearchIndex::Kinds where) const {
  const auto first = static_cast<SearchIndex::Kinds>(first_kinds_ & where);
  if (anchor_ == 0 && (first & ~SearchIndex::FIRST) == 0) {
    return next_first_one(text, index, from, first);
  }
  if (is_frequent_ && where == SearchIndex::ALL) return next(text, from);
  const auto anchor = anchor_ == 0 ? first : anchor_kinds_;
  for (std::size_t at = index.next(anchor, from + anchor_); at < text.size();
       at = index.next(anchor, at + 1)) {
    const std::size_t start = at - anchor_;
    const bool fits = (index.at(start) & first) != 0 && begins(text[start]);
    if (fits && may_begin(text, start)) return start;
  }
  return text.size();
}

std::size_t PrefixAutomaton::next_first_one(std::u32string_view text, const SearchIndex& index,
                                            std::size_t from, SearchIndex::Kinds kinds) const {
  const auto& ones = index.first_ones();
  for (auto it = std::lower_bound(ones.begin(), ones.end(), from); it != ones.end(); ++it) {
    const bool fits = (index.at(*it) & kinds) != 0 && begins(text[*it]);
    if (fits && may_begin(text, *it)) return *it;
  }
  return text.size();
}

}  // namespace core::text
