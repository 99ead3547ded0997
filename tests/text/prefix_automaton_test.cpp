#include "core/text/prefix_automaton.hpp"

#include <random>

#include <gtest/gtest.h>

#include "core/text/regex.hpp"
#include "core/text/utf8.hpp"

namespace core::text {
namespace {

// Patterns that use, between them, all of the syntax in which ours are written.
const std::u32string_view PATTERNS[] = {
    UR"((?<![A-Za-z0-9])(?:19|20)\d{2}\s?年\s?\d{1,2}\s?月(?:\s?\d{1,2}\s?[日号])?)",
    UR"((?i)(?:no\.?|k[is]t)\h*[:：]?\h*([A-Z]{1,3}-?\d{3,}+))",
    UR"([^\d\s年][\-a-c\]]{2}|[\u4e00-\u9fa5]{2,4}(?=公司)|\x41\tb\b)",
    UR"((?(?=\d)\d{2}|[a-f]+)x(?>a|ab)c?+)",
    UR"((?<part>a|1)(?&part)[月k-m]*?z)",
    UR"((?xi) a \d+ # comment
        (?-i: K ) [\ #] )",
    UR"(\p{Lu}[\p{L}'.]*(?:\ \p{Lu}\P{L}?){1,3})",
    UR"((a|b)\1{2,3}[^a]?\.\d{20,}|1{18,19}[A-F])",
    UR"([\W_]\w\S\D[^\w])",
    UR"((?:ab|a)?(?:c|(?:d1)+?){2,}\$)",
    UR"((?<![A-Za-z0-9])(?<![.-])(?:a?\d{2}|x1))",
    UR"((?<![\d.])(?<!\d )\d[\d.]?[a-z](?!\d))",
    UR"((?i)(?<![A-Za-z])[kx] ?\d)",
    UR"([\u4e00-\u9fff][A-F]\d)",
    UR"((?<!z)(?=[A-F\d]{3,5}(?!\d))(?=\w+)(?:[A-F]|\d)+(?=月|日日))",
};

// Made of what the patterns are about, so that many matches begin and half of them fail.
std::u32string random_text(std::mt19937& random) {
  static const std::u32string LETTERS =
      U"aabbccddxzKkſ\u212A12205年月日号公司AFB-.:：[]#_$' \t\n\U00020000\U0001F600é";
  std::u32string text;
  for (int i = 0; i < 60; ++i) text.push_back(LETTERS[random() % LETTERS.size()]);
  return text;
}

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
