#include "core/text/prefix_automaton.hpp"

#include <gtest/gtest.h>

#include "core/text/regex.hpp"
#include "core/text/utf8.hpp"
#include "tests/text/sample_patterns.hpp"

namespace core::text {
namespace {

TEST(PrefixAutomaton, NeverDeniesAMatch) {
  std::mt19937 random(7);
  for (const auto pattern : PATTERNS) {
    const auto automaton = PrefixAutomaton::of(pattern);
    ASSERT_NE(automaton, nullptr) << encode_utf8(pattern);
    const Regex regex("RE_TESTED", pattern);  // too little used to have one of its own
    std::size_t denied = 0;
    for (int round = 0; round < 300; ++round) {
      const auto text = random_text(random);
      for (std::size_t at = 0; at < text.size(); ++at) {
        const bool may = automaton->may_begin(text, at);
        EXPECT_EQ(automaton->next(text, at) == at, may);
        denied += may ? 0 : 1;
        if (round > 50) continue;
        const bool does = regex.match_at(text, at).has_value();
        ASSERT_TRUE(may || !does) << encode_utf8(pattern) << " in " << encode_utf8(text);
      }
    }
    EXPECT_GT(denied, 1000U) << encode_utf8(pattern);
  }
}

TEST(PrefixAutomaton, LeavesToTheEngineWhatItCannotTell) {
  for (const auto pattern : {U"a*", U"(?=a)", U"(*COMMIT)a", U"a|", U"(?s).", U"\\1?(a)"}) {
    EXPECT_EQ(PrefixAutomaton::of(pattern), nullptr) << encode_utf8(pattern);
  }
}

TEST(PrefixAutomaton, GivesTheMatchesOfAPlainSearch) {
  std::mt19937 random(8);
  for (const auto pattern : PATTERNS) {
    const Regex used("RE_USED", pattern);
    used.find_all(std::u32string(100'000, U'年'));
    for (int round = 0; round < 40; ++round) {
      const auto text = random_text(random);
      const Regex fresh("RE_FRESH", pattern);
      const auto expected = fresh.find_all(text);
      const auto found = used.find_all(text);
      const auto indexed = used.find_all(text, SearchIndex(text));
      ASSERT_EQ(found.size(), expected.size()) << encode_utf8(pattern);
      ASSERT_EQ(indexed.size(), expected.size())
          << encode_utf8(pattern) << " in " << encode_utf8(text);
      for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i].start(), expected[i].start());
        EXPECT_EQ(found[i].end(), expected[i].end());
        EXPECT_EQ(indexed[i].start(), expected[i].start());
        EXPECT_EQ(indexed[i].end(), expected[i].end());
      }
    }
  }
}

}  // namespace
}  // namespace core::text
