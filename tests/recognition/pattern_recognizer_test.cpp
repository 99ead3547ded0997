#include "core/recognition/pattern_recognizer.hpp"

#include <gtest/gtest.h>

#include "core/errors.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/recognition/analyzer_engine.hpp"
#include "tests/support/notation.hpp"

namespace core::recognition {
namespace {

const text::Regex RE_SERIAL("RE_SERIAL", UR"([A-Z]{2}\d{4})");

std::string found(const PatternRecognizerConfig& config, std::string_view text) {
  test::Marked doc{test::u32(text), {}};
  const auto artifacts = nlp::make_embedded_nlp_engine()->process_text(doc.text, "zh");
  auto results = PatternRecognizer(config).analyze(artifacts);
  std::erase_if(results, [](const auto& r) { return r.score < 0.4; });
  doc.results = remove_duplicates(std::move(results));
  return test::render(doc);
}

void expect_found(const PatternRecognizerConfig& config, std::span<const char* const> rows) {
  for (const char* row : rows) EXPECT_EQ(found(config, test::u8(test::parse(row).text)), row);
}

PatternRecognizerConfig user_config(std::u32string regex, double score = 0.8) {
  return {.name = "t", .entity = "CODE", .user_patterns = {{"p", std::move(regex), score}}};
}

TEST(PatternRecognizer, ContextWordsStandBeforeAndAfter) {
  const PatternRecognizerConfig config{.name = "t",
                                       .entity = "CODE",
                                       .patterns = {{"serial", &RE_SERIAL, 0.01, {}}},
                                       .context = {U"编号", U"Host"},
                                       .context_after = 8};
  constexpr const char* ROWS[] = {
      "AB1234",
      "合同编号：{CODE|AB1234}",
      "{CODE|AB1234}（编号）",
      "ＨＯＳＴＳ {CODE|AB1234}",
      "ghost AB1234",                                                      // inside a word
      "编号为一二三四五六七八九十一二三四五六七八九十一二三四五六AB1234",  // too far before
      "AB1234一二三四五六七编号",                                          // too far behind
  };
  expect_found(config, ROWS);
}

TEST(PatternRecognizer, ChecksDecideAboutHits) {
  PatternRecognizerConfig config{
      .name = "t", .entity = "CODE", .patterns = {{"serial", &RE_SERIAL, 0.5, {}}}};
  config.invalidate = [](std::u32string_view s) { return s.ends_with(U"0000"); };
  EXPECT_EQ(found(config, "AB0000 AB1234"), "AB0000 {CODE|AB1234}");
  config.validate = [](std::u32string_view s) -> std::optional<bool> { return s[0] == U'A'; };
  EXPECT_EQ(found(config, "AB0000 AB1234 XB1234"), "AB0000 {CODE|AB1234} XB1234")
      << "valid, but invalidated as well";
}

TEST(PatternRecognizer, DenyListTakesWholeWordsAndAnyIdeographs) {
  const PatternRecognizerConfig config{
      .name = "t", .entity = "CODE", .deny_list = {U"蓝鲸", U"蓝鲸计划", U"Orca", U"Orca-2"}};
  constexpr const char* ROWS[] = {
      "关于{CODE|蓝鲸计划}和{CODE|蓝鲸}的约定",
      "项目{CODE|Orca}一期, {CODE|ＯＲＣＡ}, {CODE|orca-2}",
      "Orcas, 2Orca, Orcaé",
  };
  expect_found(config, ROWS);
}

TEST(PatternRecognizer, UserPatternsReadTheTextAsItStandsAndFolded) {
  constexpr const char* IN_LABEL[] = {"编号：{CODE|12}", "编号：{CODE|１２}", "编号:12"};
  expect_found(user_config(UR"((?<=编号：)\d+)"), IN_LABEL);
  // The hit is the whole match, whatever its groups; either letter case.
  constexpr const char* GROUPS[] = {"见{CODE|HT-1}及{CODE|xy-2}", "{CODE|ＨＴ－３}"};
  expect_found(user_config(UR"((HT|XY)-\d)"), GROUPS);
  constexpr const char* EXACT[] = {"{CODE|HT-1} ht-1"};
  expect_found(user_config(UR"((?-i)HT-\d)"), EXACT);
  // A cell is all that a pattern sees; empty matches are none.
  constexpr const char* CELLS[] = {"{CODE|a1}\t{CODE|a2}\nb\n{CODE|a3}"};
  expect_found(user_config(UR"(^a.*$|x*)"), CELLS);
}

TEST(PatternRecognizer, UserPatternsReadLongCellsInPieces) {
  const CompiledUserPattern pattern("t", {"p", UR"((?<!\w)a{3}(?!\w)|b+)", 1});
  using Spans = std::vector<std::pair<std::size_t, std::size_t>>;
  // Around every edge of a piece: found once, wherever it stands.
  for (std::size_t at = 1700; at < 2100; ++at) {
    std::u32string text(6000, U' ');
    text.replace(at, 3, U"aaa");
    ASSERT_EQ(pattern.find(text), (Spans{{at, at + 3}})) << at;
    text[at - 1] = U'x';
    ASSERT_EQ(pattern.find(text), Spans{}) << at << ": look-behind";
  }
  // Would take 10^10 steps on the whole text.
  const CompiledUserPattern slow("t", {"p", UR"([a-z]+\d)", 1});
  EXPECT_EQ(slow.find(std::u32string(200'000, U'a')), Spans{});
}

TEST(PatternRecognizer, ErrorsNameRecognizerAndPattern) {
  try {
    PatternRecognizer recognizer(user_config(U"ab("));
    FAIL();
  } catch (const RegexError& e) {
    EXPECT_EQ(std::string(e.what()),
              "regular expression \"p\" of recognizer \"t\": missing closing parenthesis at "
              "offset 3");
  }
  try {
    found(user_config(UR"((?:a|aa|aaa)+$)"), std::string(1900, 'a') + "!");
    FAIL();
  } catch (const RegexError& e) {
    EXPECT_EQ(std::string(e.what()),
              "regular expression \"p\" of recognizer \"t\": match limit exceeded");
  }
}

}  // namespace
}  // namespace core::recognition
