// A read-only dictionary of many words that needs no building when the program
// starts: it is compiled at build time from lists in data/ and lies in the
// program's constant data. veildoc_trie() in cmake/lexicon.cmake makes one; who
// uses it declares it:
//
//   namespace core::text::trie_data {
//   extern "C" const std::uint64_t veildoc_trie_latin_words[];
//   }
//   const FlatTrie trie(trie_data::veildoc_trie_latin_words);
//
// Each word carries a payload of at most MAX_PAYLOAD, made from the columns of
// its lists. Words are compared code point by code point.
//
// Cost of a lookup: a short binary search for each code point that matches.
// Objects are views, free to make and to copy, and may be used from any thread.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <type_traits>

namespace core::text {

// Layout, in 64-bit words of the machine that builds: HEADER words (MAGIC, index
// of the first cell), then TABLE_WORDS with the page number of each 256 code
// points, then the pages with the labels of the code points in them (four 16-bit
// numbers to a word), then the cells, one for each edge of a minimal automaton.
//
// A cell holds, from the lowest bit: the first cell of the target's edges
// (FIRST_BITS), their number (COUNT_BITS), the target's payload plus one or 0 where
// no word ends (16 bits), and the label of the edge (16 bits). The edges of a node
// stand together, sorted. The edge of the root with label l is cell l - 1, or a cell
// of 0 if there is none.
struct FlatTrieLayout {
  static constexpr std::uint64_t MAGIC = 0x31304549'52544456;  // "VDTRIE01"
  static constexpr std::size_t HEADER = 2;
  static constexpr char32_t CODE_POINTS = 0x30000;  // no word has a code point from here on
  static constexpr std::size_t PAGE = 256;
  static constexpr std::size_t TABLE_WORDS = CODE_POINTS / PAGE / 4;
  static constexpr unsigned FIRST_BITS = 20;
  static constexpr unsigned COUNT_BITS = 12;
};

class FlatTrie {
 public:
  static constexpr std::uint32_t MAX_PAYLOAD = 0xFFFE;

  // `data` is what the compiler of lists wrote, and outlives the trie.
  constexpr explicit FlatTrie(const std::uint64_t* data)
      : table_(data + FlatTrieLayout::HEADER),
        pages_(table_ + FlatTrieLayout::TABLE_WORDS),
        cells_(data + data[1]) {}

  // A place in the trie: what has been read of a word so far.
  class Node {
   public:
    // Whether a word ends here, and its payload.
    constexpr bool is_word() const { return payload_ != 0; }
    constexpr std::uint32_t payload() const { return payload_ - 1U; }

   private:
    friend class FlatTrie;
    const std::uint64_t* edges_ = nullptr;
    std::uint32_t count_ = 0;
    std::uint32_t payload_ = 0;
  };

  // Nothing read yet.
  static constexpr Node root() { return {}; }

  // A small number for the code point, 0 if no word has it. For callers that read
  // the same code point often.
  constexpr std::uint32_t label(char32_t c) const {
    if (c >= FlatTrieLayout::CODE_POINTS) return 0;
    const std::size_t page = half_word(table_, c / FlatTrieLayout::PAGE);
    return half_word(pages_, page * FlatTrieLayout::PAGE + c % FlatTrieLayout::PAGE);
  }

  // Goes on by one code point (or its label). False if no word goes on so; the
  // node is then unchanged.
  constexpr bool advance(Node& node, char32_t c) const { return advance_label(node, label(c)); }
  constexpr bool advance_label(Node& node, std::uint32_t label) const {
    if (label == 0) return false;
    const std::uint64_t* edge = cells_ + (label - 1);
    if (node.edges_ != nullptr) {
      if (node.count_ == 0) return false;
      edge = find_edge(node, label);
    }
    if (*edge >> 48U != label) return false;
    constexpr unsigned F = FlatTrieLayout::FIRST_BITS;
    constexpr unsigned C = FlatTrieLayout::COUNT_BITS;
    node.edges_ = cells_ + (*edge & ((1U << F) - 1));
    node.count_ = static_cast<std::uint32_t>(*edge >> F) & ((1U << C) - 1);
    node.payload_ = static_cast<std::uint32_t>(*edge >> 32U) & 0xFFFFU;
    return true;
  }

  // The payload of `word`; nothing if it is not in the trie.
  constexpr std::optional<std::uint32_t> find(std::u32string_view word) const {
    Node node = root();
    for (const char32_t c : word) {
      if (!advance(node, c)) return std::nullopt;
    }
    if (!node.is_word()) return std::nullopt;
    return node.payload();
  }

  // Calls visit(length, payload) for every word that `text` begins with, shortest
  // first.
  template <class Visit>
  constexpr void each_prefix(std::u32string_view text, Visit visit) const {
    Node node = root();
    for (std::size_t i = 0; i < text.size() && advance(node, text[i]); ++i) {
      if (node.is_word()) visit(i + 1, node.payload());
    }
  }

 private:
  static constexpr std::uint32_t half_word(const std::uint64_t* words, std::size_t i) {
    if (std::endian::native == std::endian::little && !std::is_constant_evaluated()) {
      std::uint16_t half = 0;
      std::memcpy(&half, reinterpret_cast<const char*>(words) + i * sizeof half, sizeof half);
      return half;
    }
    return static_cast<std::uint32_t>(words[i / 4] >> (i % 4 * 16)) & 0xFFFFU;
  }

  // The last edge of the node with at most this label, or its first one.
  static constexpr const std::uint64_t* find_edge(const Node& node, std::uint32_t label) {
    const std::uint64_t* edge = node.edges_;
    for (std::uint32_t count = node.count_; count > 1;) {
      const std::uint32_t half = count / 2;
      edge += edge[half] >> 48U <= label ? half : 0;
      count -= half;
    }
    return edge;
  }

  const std::uint64_t* table_;
  const std::uint64_t* pages_;
  const std::uint64_t* cells_;
};

}  // namespace core::text
