// A set of characters that is asked of nearly every character of a text.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace core::nlp {

class CharacterTable {
 public:
  explicit CharacterTable(std::u32string_view characters) : basic_plane_(0x10000) {
    for (const char32_t c : characters) add(c);
  }

  // What the words of a list begin with; none of them is empty.
  template <class Words>
  static CharacterTable first_of(const Words& words) {
    CharacterTable out{std::u32string_view()};
    for (const auto& word : words) out.add(word.front());
    return out;
  }

  // Of characters above the basic plane all count as members if one is.
  bool contains(char32_t c) const {
    return c < basic_plane_.size() ? basic_plane_[c] : has_others_;
  }

 private:
  void add(char32_t c) {
    if (c < basic_plane_.size()) {
      basic_plane_[c] = true;
    } else {
      has_others_ = true;
    }
  }

  std::vector<bool> basic_plane_;
  bool has_others_ = false;
};

// Several sets of characters in one table, each as a bit, for a text whose characters are
// asked for all of them.
template <class Bits>
class CharacterBits {
 public:
  struct Set {
    std::u32string_view characters;  // of the basic plane
    Bits bit;
  };

  CharacterBits(std::initializer_list<Set> sets) : bits_(0x10000) {
    for (const Set& set : sets) {
      for (const char32_t c : set.characters) add(c, set.bit);
    }
  }

  void add(char32_t c, Bits bit) { bits_.at(c) = static_cast<Bits>(bits_.at(c) | bit); }

  Bits of(char32_t c) const { return c < bits_.size() ? bits_[c] : Bits{}; }

 private:
  std::vector<Bits> bits_;
};

}  // namespace core::nlp
