#include "core/anonymization/analyzer/embedded_analyzer.hpp"

#include <gtest/gtest.h>

#include "core/recognition/pattern_recognizer.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

// Beginnings of shapes and names, over and over: the places where a rule might
// go over the same text again and again.
constexpr const char32_t* UNITS[] = {U"1 ",
                                     U"1,",
                                     U"1.",
                                     U"A ",
                                     U"Aa, ",
                                     U"(",
                                     U"（",
                                     U"@",
                                     U"a@",
                                     U"有限公司",
                                     U"甲有限公司（“乙”）",
                                     U"中国",
                                     U"路1号",
                                     U"壹元",
                                     U"¥1",
                                     U"阿·",
                                     U"欧阳",
                                     U"联系人：",
                                     U"“甲乙”",
                                     U"of ",
                                     U"1:",
                                     U"《》",
                                     U"Ltd and ",
                                     U"1 Main Street, London, ",
                                     U"a\t",
                                     U"Mr. A B "};

TEST(EmbeddedAnalyzer, HitsLieInsideOneCellOfTheText) {
  const auto analyzer = make_embedded_analyzer();
  for (const char32_t* unit : UNITS) {
    std::u32string text;
    while (text.size() < 3000)
      text += unit + std::u32string(text.size() % 7 == 0 ? U"\uE000\n" : U"");
    SCOPED_TRACE(test::u8(unit));
    for (const auto& hit : analyzer->analyze(text, "zh")) {
      ASSERT_LE(0, hit.start);
      ASSERT_LT(hit.start, hit.end);
      ASSERT_LE(hit.end, static_cast<std::ptrdiff_t>(text.size()));
      const auto surface = text.substr(static_cast<std::size_t>(hit.start),
                                       static_cast<std::size_t>(hit.end - hit.start));
      EXPECT_EQ(surface.find_first_of(U"\n\t\uE000\uE001"), surface.npos);
    }
  }
}

// Quadratic work would not come to an end here, and ctest would stop it.
// In halves, which run at the same time.
class LongRepetitiveTexts : public testing::TestWithParam<std::size_t> {};

TEST_P(LongRepetitiveTexts, End) {
  constexpr std::size_t SIZE = 150'000;
  const auto analyzer = make_embedded_analyzer();
  for (std::size_t i = GetParam(); i < std::size(UNITS); i += 2) {
    SCOPED_TRACE(test::u8(UNITS[i]));
    std::u32string text;
    while (text.size() < SIZE) text += UNITS[i];
    for (const auto& hit : analyzer->analyze(text, "zh")) {
      ASSERT_LE(hit.end, static_cast<std::ptrdiff_t>(text.size()));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(EmbeddedAnalyzer, LongRepetitiveTexts, testing::Values(0, 1));

TEST(EmbeddedAnalyzer, RunsFurtherRecognizers) {
  const auto numbers =
      std::make_shared<recognition::PatternRecognizer>(recognition::PatternRecognizerConfig{
          .name = "Contract numbers",
          .entity = "CONTRACT_NO",
          .context = {U"合同编号"},
          .validate = [](std::u32string_view s) { return std::optional(s.back() == U'7'); },
          .user_patterns = {{"HX and digits", UR"((?<=HX)\d{6})", 0.3}}});
  const auto analyzer = make_embedded_analyzer({.recognizers = {numbers}});
  const auto marked = "合同编号：HX{CONTRACT_NO|123457}，HX12345";
  auto doc = test::parse(marked);
  doc.results = analyzer->analyze(doc.text, "zh");
  EXPECT_EQ(test::render(doc), marked);
}

TEST(EmbeddedAnalyzer, OptionsAndLanguages) {
  const auto plain = make_embedded_analyzer();
  EXPECT_TRUE(plain->analyze(U"税率13%，共240套", "zh").empty());
  EXPECT_TRUE(plain->analyze(U"", "en").empty());
  const auto text = test::u32("甲方：苏州澜迅精密机械有限公司, contact Mr. Tobias Okonkwo-Hale");
  EXPECT_EQ(plain->analyze(text, "zh"), plain->analyze(text, "en"));
}

}  // namespace
}  // namespace core::anonymization
