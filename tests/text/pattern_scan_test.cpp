#include "core/text/pattern_scan.hpp"

#include <algorithm>

#include <gtest/gtest.h>

#include "core/text/regex.hpp"
#include "core/text/utf8.hpp"
#include "tests/text/sample_patterns.hpp"

namespace core::text {
namespace {

bool has(const PatternPlaces::Offsets& offsets, std::size_t at) {
  return std::binary_search(offsets.begin(), offsets.end(), at);
}

TEST(PatternScan, PassesOverNoMatch) {
  std::vector<PatternScan::Item> items;
  for (const auto pattern : PATTERNS) {
    items.push_back({static_cast<std::uint32_t>(items.size() * 3), pattern});
  }
  const PatternScan scan(items);
  std::mt19937 random(9);
  std::size_t passed_over = 0;
  for (int round = 0; round < 100; ++round) {
    const auto text = random_text(random);
    const auto places = scan.scan(text, SearchIndex(text));
    for (const auto& item : items) {
      const auto* offsets = places.of(item.id);
      ASSERT_NE(offsets, nullptr) << encode_utf8(item.pattern);
      const Regex regex("RE_TESTED", item.pattern);
      passed_over += text.size() - offsets->size();
      for (std::size_t at = 0; at < text.size(); ++at) {
        ASSERT_TRUE(has(*offsets, at) || !regex.match_at(text, at))
            << encode_utf8(item.pattern) << " at " << at << " in " << encode_utf8(text);
      }
    }
  }
  EXPECT_GT(passed_over, 80'000U);
}

TEST(PatternScan, ConfinesTheFirstCharacter) {
  const std::u32string text = U"12 a12 B3\U0002000045";
  const PatternScan scan({{7, U"[0-9][0-9]", SearchIndex::DIGIT_FIRST}, {2, U"[a-zA-Z]?[0-9]"}});
  const auto places = scan.scan(text, SearchIndex(text));
  EXPECT_EQ(*places.of(7), (PatternPlaces::Offsets{0, 10}));
  EXPECT_EQ(*places.of(2), (PatternPlaces::Offsets{0, 1, 3, 4, 5, 7, 8, 10, 11}));
  EXPECT_EQ(places.of(3), nullptr);
}

TEST(PatternScan, ConfinesTheCharacterBefore) {
  const std::u32string text = U"5-5.5x5月5 5";
  const PatternScan scan(
      {{0, U"(?<=[a-z-]|月)5"}, {1, U"(?:(?<![\\d.])(?<!x|\\w-)|(?<=\\d\\.))5"}});
  const auto places = scan.scan(text, SearchIndex(text));
  EXPECT_EQ(*places.of(0), (PatternPlaces::Offsets{0, 2, 6, 8}));  // the start is left open
  EXPECT_EQ(*places.of(1), (PatternPlaces::Offsets{0, 2, 4, 8, 10}));
}

TEST(PatternScan, LeavesOutWhatBeginsAnywhereAndWhatItCannotTell) {
  const PatternScan scan({{0, U"[^x]y?"}, {1, U"a*"}, {2, U"z"}});
  const std::u32string text(5000, U'z');
  const auto places = scan.scan(text, SearchIndex(text));
  for (std::uint32_t id = 0; id < 3; ++id) EXPECT_EQ(places.of(id), nullptr);
}

TEST(PatternScan, HoldsSoManyPatterns) {
  std::vector<PatternScan::Item> items;
  for (std::uint32_t id = 0; id < PatternScan::CAPACITY + 1; ++id) items.push_back({id, U"ab"});
  const auto places = PatternScan(items).scan(U"xab", SearchIndex(U"xab"));
  EXPECT_EQ(*places.of(PatternScan::CAPACITY - 1), PatternPlaces::Offsets{1});
  EXPECT_EQ(places.of(PatternScan::CAPACITY), nullptr);
}

TEST(PatternScan, GivesTheMatchesOfAPlainSearch) {
  std::mt19937 random(8);
  for (const auto pattern : PATTERNS) {
    const Regex scanned("RE_SCANNED", pattern, Regex::Scanned::YES);
    std::u32string text(20'000, U'\n');
    for (int i = 0; i < 40; ++i) text.replace(random() % text.size(), 60, random_text(random));
    SearchIndex index(text);
    scan_patterns(text, index);
    const auto expected = Regex("RE_FRESH", pattern).find_all(text);
    const auto found = scanned.find_all(text, index);
    ASSERT_EQ(found.size(), expected.size()) << encode_utf8(pattern);
    for (std::size_t i = 0; i < found.size(); ++i) {
      EXPECT_EQ(found[i].start(), expected[i].start());
      EXPECT_EQ(found[i].end(), expected[i].end());
    }
  }
}

}  // namespace
}  // namespace core::text
