#include "core/text/regex.hpp"

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "core/errors.hpp"
#include "tests/support/notation.hpp"

namespace core::text {
namespace {

TEST(Regex, TheKindsOfMatchDiffer) {
  const Regex section("section", UR"(^第[一二三]+条$)");
  EXPECT_TRUE(section.full_match(U"第三条"));
  EXPECT_TRUE(section.match(U"第三条\n")) << "$ also matches before a final line feed";
  EXPECT_FALSE(section.full_match(U"第三条\n"));
  EXPECT_FALSE(section.match(U"第三条\r")) << "only a line feed ends a line";
  EXPECT_FALSE(section.search(U"见第三条"));

  const Regex digits("digits", UR"(\d+)");
  EXPECT_TRUE(digits.search(U"共12份"));
  EXPECT_FALSE(digits.match(U"共12份"));
  EXPECT_TRUE(digits.match(U"12份"));
  EXPECT_FALSE(digits.full_match(U"12份"));
  EXPECT_TRUE(Regex("alternatives", UR"(a|ab)").full_match(U"ab")) << "a full match tries all";
}

TEST(Regex, OffsetsCountCodePointsAfterAstralCharacters) {
  const Regex name("name", UR"((?<=：)(?P<name>[\u4e00-\u9fff𠀀]+)(公司)?)");
  const auto m = name.search(U"😀𠀁：𠀀华信");
  ASSERT_TRUE(m);
  EXPECT_EQ(m->start(), 3U);
  EXPECT_EQ(m->end(), 6U);
  EXPECT_EQ(test::u8(m->text(name.group(U"name"))), "𠀀华信");
  EXPECT_FALSE(m->has(2));
  EXPECT_EQ(m->text(2), U"");
}

TEST(Regex, SearchFromAnOffsetSeesWhatStandsBefore) {
  const Regex word("word", UR"((?<![A-Za-z])Ltd)");
  EXPECT_FALSE(word.search(U"AcmeLtd", 4));
  EXPECT_TRUE(word.match_at(U"Acme Ltd", 5));
  EXPECT_FALSE(word.search(U"Ltd", 4)) << "an offset behind the end finds nothing";
}

TEST(Regex, FindsEmptyMatchesOnceAndGoesOn) {
  std::string seen;
  for (const auto& m : Regex("x", UR"(x*)").find_all(U"abxd")) {
    seen += std::to_string(m.start()) + "-" + std::to_string(m.end()) + " ";
  }
  EXPECT_EQ(seen, "0-0 1-1 2-3 3-3 4-4 ");
}

TEST(Regex, ReplacesLiterallyAndSplits) {
  const Regex joiner("joiner", UR"(§|¶)");
  EXPECT_EQ(test::u8(joiner.replace_all(U"甲§乙¶", U"$1")), "甲$1乙$1");
  EXPECT_EQ(joiner.split(U"甲§乙¶").size(), 3U);
  EXPECT_EQ(joiner.split(U"甲").size(), 1U);
}

TEST(Regex, CaseInsensitivityIsUnicode) {
  EXPECT_TRUE(Regex("ci", UR"((?i)skjærgård)").full_match(U"SKJÆRGÅRD"));
  EXPECT_TRUE(Regex("kelvin", UR"((?i)[a-z])").full_match(U"\u212A"));
  EXPECT_FALSE(Regex("cs", UR"([a-z])").full_match(U"K"));
}

TEST(Regex, AcceptsAnyThirtyTwoBitValue) {
  const std::u32string wild = {char32_t{0xD800}, char32_t{0xFFFFFFFF}, U'1'};
  const auto m = Regex("any", UR"((?i)[^a]\d)").search(wild);
  ASSERT_TRUE(m);
  EXPECT_EQ(m->start(), 1U);
  EXPECT_FALSE(Regex("nothing", UR"(\w)").search({}));
}

TEST(Regex, NamesThePatternThatDoesNotCompile) {
  try {
    const Regex bad("RE_BAD", UR"(a(b)");
    ADD_FAILURE() << "compiled";
  } catch (const RegexError& e) {
    EXPECT_EQ(std::string(e.what()),
              "regular expression RE_BAD: missing closing parenthesis at offset 3");
  }
  EXPECT_THROW(Regex("groups", U"(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)(l)"), RegexError);
  EXPECT_THROW(Regex("no such group", U"a").group(U"name"), RegexError);
}

TEST(Regex, GivesUpWithAnErrorAndNotInSilence) {
  const Regex hostile("RE_HOSTILE", UR"((?:a|a?)+(?:a|a?)+(?:a|a?)+[bc])");
  try {
    hostile.search(std::u32string(4000, U'a'));
    ADD_FAILURE() << "matched";
  } catch (const RegexError& e) {
    EXPECT_NE(std::string(e.what()).find("RE_HOSTILE"), std::string::npos);
  }
}

TEST(Regex, DeepMatchesNeedNoDeepStack) {
  const Regex nested("nested", UR"((?:[ab]|cd)*e)");
  EXPECT_TRUE(nested.full_match(std::u32string(1'000'000, U'a') + U"e"));
}

TEST(Regex, ServesSeveralThreads) {
  const Regex word("word", UR"(甲方\d+)");
  std::vector<std::thread> threads;
  threads.reserve(4);
  std::atomic<int> found = 0;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 200; ++i) found += word.full_match(U"甲方12") ? 1 : 0;
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(found, 800);
}

TEST(Regex, EscapedTextMatchesItself) {
  const std::u32string odd = U"Acme (U.S.) [A]*+?{1}^$|\\/-# &~，《》";
  EXPECT_TRUE(Regex("escaped", escape_for_regex(odd)).full_match(odd));
}

}  // namespace
}  // namespace core::text
