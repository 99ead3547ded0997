#include "core/text/unicode.hpp"

#include <sstream>

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "core/text/find_character.hpp"
#include "core/text/regex.hpp"
#include "tests/support/notation.hpp"

namespace core::text {
namespace {

constexpr char32_t LAST_CODE_POINT = 0x10FFFF;

std::string hex(char32_t c) {
  std::ostringstream out;
  out << "U+" << std::hex << static_cast<std::uint32_t>(c);
  return out.str();
}

bool is_older_than_unicode_14(char32_t c) {
  UVersionInfo age;
  u_charAge(static_cast<UChar32>(c), age);
  return age[0] < 14;
}

TEST(Unicode, BlankIsTheSameForStripAndForPatterns) {
  const Regex space("space", UR"(\s)");
  const Regex digit("digit", UR"(\d)");
  for (char32_t c = 0; c <= LAST_CODE_POINT; ++c) {
    const std::u32string_view one(&c, 1);
    ASSERT_EQ(space.full_match(one).has_value(), is_space(c)) << hex(c);
    // The two libraries may know different versions of Unicode.
    if (is_older_than_unicode_14(c)) {
      ASSERT_EQ(digit.full_match(one).has_value(), is_decimal_digit(c)) << hex(c);
    }
  }
}

TEST(Unicode, BlankIncludesU180EAndNotTheSeparatorsOfAscii) {
  for (const char32_t c : {U' ', U'\t', U'\u00A0', U'\u0085', U'\u180E', U'\u3000', U'\u2028'}) {
    EXPECT_TRUE(is_space(c)) << hex(c);
  }
  for (const char32_t c : {char32_t{0x1C}, char32_t{0x1F}, U'\u200B', U'\uFEFF', char32_t{~0U}}) {
    EXPECT_FALSE(is_space(c)) << hex(c);
  }
}

TEST(Unicode, DigitTestIsWiderThanThePattern) {
  struct Case {
    char32_t c;
    bool digit;
    bool decimal;
  };
  constexpr Case cases[] = {{U'5', true, true},    {U'５', true, true},  {U'²', true, false},
                            {U'①', true, false},   {U'٣', true, true},   {U'Ⅳ', false, false},
                            {U'五', false, false}, {U'½', false, false}, {U'x', false, false}};
  for (const auto& c : cases) {
    EXPECT_EQ(is_digit(c.c), c.digit) << test::u8({&c.c, 1});
    EXPECT_EQ(is_decimal_digit(c.c), c.decimal) << test::u8({&c.c, 1});
  }
}

TEST(Unicode, FoldsCaseFully) {
  struct Case {
    const char* in;
    const char* folded;
  };
  constexpr Case cases[] = {
      {"ACME Ltd", "acme ltd"},
      {"Straße", "strasse"},
      {"ﬁN", "fin"},
      {"ΣΊΣΥΦΟΣ", "σίσυφοσ"},
      {"\u212A", "k"},
      {"İ", "i̇"},
      {"甲Ａ", "甲ａ"},
      {"𐐀", "𐐨"},
  };
  for (const auto& c : cases) EXPECT_EQ(test::u8(case_fold(test::u32(c.in))), c.folded);
}

TEST(Unicode, FoldsEveryCodePointAsTheStandardDoes) {
  for (char32_t c = 0; c <= LAST_CODE_POINT; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    std::string expected;
    icu::UnicodeString(static_cast<UChar32>(c)).foldCase().toUTF8String(expected);
    ASSERT_EQ(test::u8(case_fold({&c, 1})), expected) << hex(c);
  }
}

TEST(Unicode, SimpleFoldingIsWhatCaseInsensitivePatternsMean) {
  // Every code point against the fold of itself, and a few that must stay apart.
  for (char32_t c = 0x80; c <= LAST_CODE_POINT; ++c) {
    const char32_t folded = case_fold_simple(c);
    if (folded == c) continue;
    const std::u32string pattern = U"(?i)" + std::u32string(1, folded);
    ASSERT_TRUE(Regex("fold", pattern).full_match({&c, 1})) << hex(c);
  }
  EXPECT_NE(case_fold_simple(U'ı'), U'i');
  EXPECT_EQ(case_fold_simple(U'ß'), U'ß');
}

TEST(Unicode, SlicesClampAndNeverWrap) {
  const std::u32string_view t = U"😀甲乙";
  struct Case {
    std::ptrdiff_t start, end;
    std::u32string_view slice;
  };
  const Case cases[] = {{0, 3, U"😀甲乙"}, {1, 2, U"甲"}, {-5, 1, U"😀"}, {2, 99, U"乙"},
                        {2, 1, U""},      {9, 12, U""},  {-3, -1, U""}};
  for (const auto& c : cases) EXPECT_EQ(slice(t, c.start, c.end), c.slice);
}

TEST(Unicode, StripsAndCompactsChineseBlanks) {
  EXPECT_EQ(test::u8(strip(U"\u3000 甲 方\u00A0\n")), "甲 方");
  EXPECT_EQ(test::u8(remove_space(U"\u3000甲 \u2003方\u180E")), "甲方");
  EXPECT_EQ(strip(U" \u3000"), U"");
  EXPECT_EQ(test::u8(fold_parentheses(U"（中国)）")), "(中国))");
  EXPECT_EQ(test::u8(replace_all(U"aaa", U"aa", U"b")), "ba");
}

TEST(FindCharacter, FindsWhatASearchCharacterByCharacterFinds) {
  std::u32string text(100, U'甲');
  for (const std::size_t at : {0U, 1U, 15U, 16U, 17U, 63U, 98U, 99U}) {
    text[at] = U'：';
    for (std::size_t from = 0; from <= text.size(); ++from) {
      EXPECT_EQ(find_either(text, U':', U'：', from), text.find(U'：', from));
      EXPECT_EQ(find_rare(text, U"：甲", from), text.find(U"：甲", from)) << at << " " << from;
    }
  }
  EXPECT_EQ(find_rare(text, U""), NPOS);
  EXPECT_EQ(find_character(U"", U'甲'), NPOS);
}

}  // namespace
}  // namespace core::text
