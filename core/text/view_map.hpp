// Values by words, without a copy of any word.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace core::text {

// What is worked out once for each word of a text, however often the word stands there.
// The words are views that outlive the map.
template <class Value>
class ViewMap {
 public:
  struct Entry {
    std::u32string_view word;
    Value value;
  };

  // The entry of the word, with an empty value if it is new, and whether it is.
  // The entry may move when another word is added.
  std::pair<Entry&, bool> add(std::u32string_view word) {
    if (2 * (entries_.size() + 1) > slots_.size()) grow();
    const std::uint64_t hash = hash_of(word);
    auto& slot = slots_[place_of(hash, word)];
    if (slot.entry != NONE) return {entries_[slot.entry], false};
    slot = {static_cast<std::uint32_t>(hash), static_cast<std::uint32_t>(entries_.size())};
    entries_.push_back({word, Value()});
    return {entries_.back(), true};
  }

  // In the order in which they came.
  const std::vector<Entry>& entries() const { return entries_; }

 private:
  static constexpr std::uint32_t NONE = UINT32_MAX;
  static constexpr std::size_t FEWEST_SLOTS = 64;

  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t entry = NONE;
  };

  static std::uint64_t hash_of(std::u32string_view word) {
    std::uint64_t hash = word.size();
    for (const char32_t c : word) hash = (hash ^ c) * 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 32U);
  }

  // Where the word stands, or the free slot where it would.
  std::size_t place_of(std::uint64_t hash, std::u32string_view word) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = hash & mask;
    while (slots_[i].entry != NONE && (slots_[i].hash != static_cast<std::uint32_t>(hash) ||
                                       !is_same(entries_[slots_[i].entry].word, word))) {
      i = (i + 1) & mask;
    }
    return i;
  }

  static bool is_same(std::u32string_view a, std::u32string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
  }

  void grow() {
    slots_.assign(std::max(FEWEST_SLOTS, 2 * slots_.size()), Slot());
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t e = 0; e < entries_.size(); ++e) {
      const std::uint64_t hash = hash_of(entries_[e].word);
      std::size_t i = hash & mask;
      while (slots_[i].entry != NONE) i = (i + 1) & mask;
      slots_[i] = {static_cast<std::uint32_t>(hash), static_cast<std::uint32_t>(e)};
    }
  }

  std::vector<Slot> slots_;
  std::vector<Entry> entries_;
};

// Words that were met before; they outlive the set.
class MetWords {
 public:
  // False if it was there already.
  bool insert(std::u32string_view word) { return words_.add(word).second; }

 private:
  struct Nothing {};
  ViewMap<Nothing> words_;
};

}  // namespace core::text
