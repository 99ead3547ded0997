// Search for many words at once (Aho-Corasick).
//
//   const MultiPattern words({U"甲方", U"甲方代表"});
//   words.scan(U"由甲方代表签字", visit)
//     ->  visit({0, 1, 3}), visit({1, 1, 5})
//
// One pass over the text, whatever the number of words. Built once, then
// immutable: it may be used from any thread.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace core::text {

class MultiPattern {
 public:
  // An occurrence of word number `pattern`, from `start` up to `end`.
  struct Hit {
    std::size_t pattern;
    std::size_t start;
    std::size_t end;
  };

  // An empty word is never found; of equal words the first is found.
  explicit MultiPattern(std::span<const std::u32string_view> patterns);
  MultiPattern(std::initializer_list<std::u32string_view> patterns);

  // Calls visit(Hit) for every occurrence, also overlapping ones, in order of
  // their ends and among equal ends the longest first. `map` is applied to each
  // character of the text first (the words are taken as they are).
  template <class Visit, class Map>
  void scan(std::u32string_view text, Visit visit, Map map) const {
    std::uint32_t state = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const std::uint32_t cls = class_of(map(text[i]));
      if (cls == 0) {  // most characters of a text stand in no word
        state = 0;
        continue;
      }
      state = step(state, cls);
      for (std::uint32_t s = nodes_[state].reports; s != 0; s = nodes_[nodes_[s].fail].reports) {
        visit(Hit{nodes_[s].pattern, i + 1 - nodes_[s].depth, i + 1});
      }
    }
  }

  template <class Visit>
  void scan(std::u32string_view text, Visit visit) const {
    scan(text, visit, [](char32_t c) { return c; });
  }

  // The longest word that begins at `at`, or nothing as a Hit with start == end.
  Hit longest_at(std::u32string_view text, std::size_t at) const;

  bool empty() const { return nodes_.size() == 1; }

 private:
  static constexpr std::uint32_t NO_PATTERN = UINT32_MAX;
  static constexpr std::size_t PAGE_BITS = 8;

  struct Node {
    std::uint32_t fail = 0;
    std::uint32_t reports = 0;  // this node or the nearest on its fail chain that ends a word
    std::uint32_t pattern = NO_PATTERN;
    std::uint32_t depth = 0;
  };

  // The edges below the root: (node, character class) to node, in a hash table
  // with linear probing, which a search reads without following pointers.
  class EdgeTable {
   public:
    std::uint32_t find(std::uint32_t node, std::uint32_t cls) const {
      if (slots_.empty()) return 0;
      const std::uint64_t key = key_of(node, cls);
      for (std::size_t i = place_of(key);; i = (i + 1) & (slots_.size() - 1)) {
        if (slots_[i].key == key) return slots_[i].child;
        if (slots_[i].key == FREE) return 0;
      }
    }
    void insert(std::uint32_t node, std::uint32_t cls, std::uint32_t child);

   private:
    struct Slot {
      std::uint64_t key = FREE;
      std::uint32_t child = 0;
    };
    static constexpr std::uint64_t FREE = 0;  // no node below the root has this key

    static std::uint64_t key_of(std::uint32_t node, std::uint32_t cls) {
      return (static_cast<std::uint64_t>(node) << 32U) | cls;
    }
    std::size_t place_of(std::uint64_t key) const {
      return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15U) >> shift_);
    }
    void grow();

    std::vector<Slot> slots_;
    std::size_t used_ = 0;
    unsigned shift_ = 64;
  };

  // An edge, noted while the words are read so that they can be linked.
  struct Edge {
    std::uint32_t parent;
    std::uint32_t cls;
    std::uint32_t node;
  };

  void build(std::span<const std::u32string_view> patterns);
  void insert(std::u32string_view word, std::uint32_t index, std::vector<Edge>& edges);
  void link(std::vector<Edge> edges);
  std::uint32_t intern(char32_t c);

  // The number of a character that stands in some word; 0 for all others.
  std::uint32_t class_of(char32_t c) const {
    const std::size_t page = c >> PAGE_BITS;
    if (page >= pages_.size()) return 0;
    return classes_[pages_[page] + (c & ((1U << PAGE_BITS) - 1))];
  }

  std::uint32_t child(std::uint32_t state, std::uint32_t cls) const {
    return state == 0 ? roots_[cls] : edges_.find(state, cls);
  }
  std::uint32_t step(std::uint32_t state, std::uint32_t cls) const {
    while (true) {
      const std::uint32_t next = child(state, cls);
      if (next != 0 || state == 0) return next;
      state = nodes_[state].fail;
    }
  }

  std::vector<Node> nodes_;
  std::vector<std::uint32_t> pages_;    // where the page begins in classes_
  std::vector<std::uint32_t> classes_;  // the first page is empty
  std::vector<std::uint32_t> roots_;    // child of the root, by character class
  EdgeTable edges_;
};

}  // namespace core::text
