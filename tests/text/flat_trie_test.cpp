#include "core/text/flat_trie.hpp"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tools/lexicons/trie_builder.hpp"
#include <gtest/gtest.h>

namespace {

using core::text::FlatTrie;
using tools::build_flat_trie;
using tools::TrieEntries;

// Words that share beginnings and endings, of several planes, one within another.
const TrieEntries ENTRIES = {
    {U"a", 0},        {U"ab", 7},     {U"abide", 1}, {U"reside", 1},       {U"bide", 65534},
    {U"合同", 3},     {U"合同法", 4}, {U"同", 5},    {U"\U00020000同", 6}, {U"é\U0001F600", 8},
    {U"new york", 9},
};

TEST(FlatTrie, FindsEveryWordAndNoOther) {
  const auto data = build_flat_trie(ENTRIES);
  const FlatTrie trie(data.data());
  for (const auto& [word, payload] : ENTRIES) {
    EXPECT_EQ(trie.find(word), payload) << payload;
    // Neither with one code point more, nor with one less, unless that is a word.
    EXPECT_EQ(trie.find(word + U"a").has_value(), ENTRIES.contains(word + U"a"));
    const std::u32string shorter = word.substr(0, word.size() - 1);
    EXPECT_EQ(trie.find(shorter).has_value(), ENTRIES.contains(shorter));
  }
  for (const auto* other : {U"", U"b", U"reside ", U"合", U"法", U"\U0010FFFF", U"\xFFFFFFFF"}) {
    EXPECT_EQ(trie.find(other), std::nullopt);
  }
}

TEST(FlatTrie, FindsAllWordsAtAPlace) {
  const auto data = build_flat_trie(ENTRIES);
  const FlatTrie trie(data.data());
  using Found = std::vector<std::pair<std::size_t, std::uint32_t>>;
  const auto found = [&](std::u32string_view text) {
    Found out;
    trie.each_prefix(text, [&](std::size_t length, std::uint32_t payload) {
      out.emplace_back(length, payload);
    });
    return out;
  };
  EXPECT_EQ(found(U"合同法律"), (Found{{2, 3}, {3, 4}}));
  EXPECT_EQ(found(U"abides"), (Found{{1, 0}, {2, 7}, {5, 1}}));
  EXPECT_EQ(found(U"\U00020000同\U0001F600"), (Found{{2, 6}}));
  EXPECT_EQ(found(U"法"), Found{});
}

TEST(FlatTrie, RefusesEntriesThatDoNotFit) {
  EXPECT_THROW(build_flat_trie({{U"", 1}}), std::invalid_argument);
  EXPECT_THROW(build_flat_trie({{U"a", 0xFFFF}}), std::invalid_argument);
  EXPECT_THROW(build_flat_trie({{U"\U00030000", 1}}), std::invalid_argument);
  EXPECT_EQ(FlatTrie(build_flat_trie({}).data()).find(U"a"), std::nullopt);
}

// A wide root and a wide node below it.
TEST(FlatTrie, HoldsManyWords) {
  TrieEntries entries;
  for (char32_t c = 0x4E00; c < 0x5500; ++c) {
    entries[{c}] = c % 1000;
    entries[{U'一', c, U'乙'}] = c % 77;
  }
  const auto data = build_flat_trie(entries);
  const FlatTrie trie(data.data());
  for (const auto& [word, payload] : entries) ASSERT_EQ(trie.find(word), payload);
  EXPECT_EQ(trie.find(U"一丁丙"), std::nullopt);
}

}  // namespace
