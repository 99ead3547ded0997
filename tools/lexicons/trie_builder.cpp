#include "tools/lexicons/trie_builder.hpp"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "core/text/flat_trie.hpp"

namespace tools {
namespace {

using core::text::FlatTrie;
using core::text::FlatTrieLayout;

struct Edge {
  std::uint32_t label = 0;
  std::uint32_t target = 0;
};

struct State {
  std::uint32_t payload = 0;  // plus one; 0 where no word ends
  std::vector<Edge> edges;
};

// The labels of the code points, in their order.
class Alphabet {
 public:
  explicit Alphabet(const TrieEntries& entries) {
    for (const auto& [word, payload] : entries) {
      if (word.empty()) throw std::invalid_argument("an empty word");
      if (payload > FlatTrie::MAX_PAYLOAD) throw std::invalid_argument("a payload is too large");
      for (const char32_t c : word) labels_.try_emplace(c, 0);
    }
    if (labels_.size() > 0xFFFF) throw std::invalid_argument("too many different characters");
    std::uint32_t next = 0;
    for (auto& [c, label] : labels_) {
      if (c >= FlatTrieLayout::CODE_POINTS) throw std::invalid_argument("a character is too large");
      label = ++next;
    }
  }

  std::uint32_t of(char32_t c) const { return labels_.at(c); }
  std::size_t size() const { return labels_.size(); }

  // The page table and the pages.
  void write(std::vector<std::uint64_t>& out) const {
    std::vector<std::uint16_t> table(FlatTrieLayout::TABLE_WORDS * 4);
    std::vector<std::uint16_t> pages(FlatTrieLayout::PAGE);  // page 0: no labels
    for (const auto& [c, label] : labels_) {
      auto& page = table[c / FlatTrieLayout::PAGE];
      if (page == 0) {
        page = static_cast<std::uint16_t>(pages.size() / FlatTrieLayout::PAGE);
        pages.resize(pages.size() + FlatTrieLayout::PAGE);
      }
      pages[page * FlatTrieLayout::PAGE + c % FlatTrieLayout::PAGE] =
          static_cast<std::uint16_t>(label);
    }
    append(out, table);
    append(out, pages);
  }

 private:
  static void append(std::vector<std::uint64_t>& out, const std::vector<std::uint16_t>& numbers) {
    for (std::size_t i = 0; i < numbers.size(); i += 4) {
      std::uint64_t word = 0;
      for (std::size_t j = 0; j < 4; ++j) word |= std::uint64_t{numbers[i + j]} << (16 * j);
      out.push_back(word);
    }
  }

  std::map<char32_t, std::uint32_t> labels_;
};

// The least automaton of the words, so that common endings are stored once:
// words are added in order, and what can no longer change is shared (Daciuk et
// al., Incremental construction of minimal acyclic finite-state automata, 2000).
class Automaton {
 public:
  Automaton(const TrieEntries& entries, const Alphabet& alphabet) : path_(1) {
    std::u32string_view last;
    for (const auto& [word, payload] : entries) {
      const auto differs = std::mismatch(word.begin(), word.end(), last.begin(), last.end()).first;
      fold(static_cast<std::size_t>(differs - word.begin()));
      for (auto c = differs; c != word.end(); ++c) {
        path_.back().edges.push_back({alphabet.of(*c), 0});
        path_.emplace_back();
      }
      path_.back().payload = payload + 1;
      last = word;
    }
    fold(0);
    root_ = freeze(std::move(path_.front()));
  }

  const std::vector<State>& states() const { return states_; }
  std::uint32_t root() const { return root_; }

 private:
  // Shares the states of the path below `depth`.
  void fold(std::size_t depth) {
    while (path_.size() > depth + 1) {
      const std::uint32_t state = freeze(std::move(path_.back()));
      path_.pop_back();
      path_.back().edges.back().target = state;
    }
  }

  std::uint32_t freeze(State state) {
    std::u32string key(1, state.payload);
    for (const Edge& edge : state.edges) {
      key += static_cast<char32_t>(edge.label);
      key += static_cast<char32_t>(edge.target);
    }
    const auto [found, is_new] =
        known_.try_emplace(std::move(key), static_cast<std::uint32_t>(states_.size()));
    if (is_new) states_.push_back(std::move(state));
    return found->second;
  }

  std::vector<State> path_;
  std::vector<State> states_;
  std::unordered_map<std::u32string, std::uint32_t> known_;
  std::uint32_t root_ = 0;
};

// The cells of the edges: those of the root first, one for each label, then state
// by state.
std::vector<std::uint64_t> make_cells(const Automaton& automaton, std::size_t labels) {
  const auto& states = automaton.states();
  const std::uint32_t root = automaton.root();
  std::vector<std::uint64_t> first(states.size());
  std::uint64_t size = labels;
  for (std::size_t i = 0; i < states.size(); ++i) {
    if (i == root) continue;
    first[i] = size;
    size += states[i].edges.size();
    if (states[i].edges.size() >> FlatTrieLayout::COUNT_BITS != 0) {
      throw std::invalid_argument("too many words begin the same way");
    }
  }
  if (size >> FlatTrieLayout::FIRST_BITS != 0) throw std::invalid_argument("too many words");

  std::vector<std::uint64_t> cells(size);
  const auto cell = [&](const Edge& edge) {
    const State& target = states[edge.target];
    return first[edge.target] | std::uint64_t{target.edges.size()} << FlatTrieLayout::FIRST_BITS |
           std::uint64_t{target.payload} << 32U | std::uint64_t{edge.label} << 48U;
  };
  for (std::size_t i = 0; i < states.size(); ++i) {
    for (std::size_t j = 0; j < states[i].edges.size(); ++j) {
      const Edge& edge = states[i].edges[j];
      cells[i == root ? edge.label - 1 : first[i] + j] = cell(edge);
    }
  }
  return cells;
}

}  // namespace

std::vector<std::uint64_t> build_flat_trie(const TrieEntries& entries) {
  const Alphabet alphabet(entries);
  const Automaton automaton(entries, alphabet);
  const auto cells = make_cells(automaton, alphabet.size());
  std::vector<std::uint64_t> out{FlatTrieLayout::MAGIC, 0};
  alphabet.write(out);
  out[1] = out.size();
  out.insert(out.end(), cells.begin(), cells.end());
  return out;
}

}  // namespace tools
