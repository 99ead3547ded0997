#include "core/text/multi_pattern.hpp"

#include <random>
#include <set>

#include <gtest/gtest.h>

#include "core/text/rare_words.hpp"
#include "core/text/unicode.hpp"

namespace core::text {
namespace {

using Found = std::set<std::tuple<std::size_t, std::size_t, std::size_t>>;

template <class Words>
Found scan(const Words& words, std::u32string_view text) {
  Found out;
  words.scan(text, [&](const MultiPattern::Hit& h) { out.insert({h.pattern, h.start, h.end}); });
  return out;
}

// What a search word by word finds.
Found search_each(const std::vector<std::u32string_view>& words, std::u32string_view text) {
  Found out;
  std::set<std::u32string_view> seen;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i].empty() || !seen.insert(words[i]).second) continue;
    for (auto at = text.find(words[i]); at != text.npos; at = text.find(words[i], at + 1)) {
      out.insert({i, at, at + words[i].size()});
    }
  }
  return out;
}

TEST(MultiPattern, FindsWhatASearchForEachWordFinds) {
  std::mt19937 random(7);
  const std::u32string_view alphabet = U"甲乙a𠀀";
  const auto draw = [&](std::size_t length) {
    std::u32string out;
    for (std::size_t i = 0; i < length; ++i) out += alphabet[random() % alphabet.size()];
    return out;
  };
  for (int round = 0; round < 300; ++round) {
    std::vector<std::u32string> words(random() % 12);
    for (auto& word : words) word = draw(random() % 5);
    const std::vector<std::u32string_view> views(words.begin(), words.end());
    const auto text = draw(60);
    EXPECT_EQ(scan(MultiPattern(views), text), search_each(views, text)) << "round " << round;
    std::u32string sparse;  // most of it is of no word
    for (const char32_t c : text) sparse.append(random() % 6, U'丙').push_back(c);
    EXPECT_EQ(scan(RareWords(views), sparse), search_each(views, sparse)) << "round " << round;
  }
}

TEST(MultiPattern, ReportsLongerWordsFirstAtOneEnd) {
  const MultiPattern words({U"方", U"甲方", U"由甲方"});
  std::vector<std::size_t> order;
  words.scan(U"由甲方", [&](const MultiPattern::Hit& h) { order.push_back(h.pattern); });
  EXPECT_EQ(order, (std::vector<std::size_t>{2, 1, 0}));
}

TEST(MultiPattern, MapsTheCharactersOfTheText) {
  const MultiPattern words({U"acme"});
  std::size_t found = 0;
  words.scan(
      U"ACME Acme", [&](const auto&) { ++found; }, case_fold_simple);
  EXPECT_EQ(found, 2U);
}

TEST(MultiPattern, TakesTheLongestWordAtAPlace) {
  const MultiPattern words({U"北京", U"北京市", U"京"});
  EXPECT_EQ(words.longest_at(U"在北京市内", 1).end, 4U);
  EXPECT_EQ(words.longest_at(U"在北京市内", 0).end, 0U);
  EXPECT_EQ(MultiPattern(std::initializer_list<std::u32string_view>{}).longest_at(U"甲", 0).end,
            0U);
}

TEST(MultiPattern, CopesWithValuesBeyondUnicode) {
  const std::u32string wild(2, char32_t{0xFFFFFFFF});
  EXPECT_TRUE(scan(MultiPattern({U"甲"}), wild).empty());
}

}  // namespace
}  // namespace core::text
