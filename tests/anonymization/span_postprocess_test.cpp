#include "core/anonymization/replacements/span_postprocess.hpp"

#include <random>

#include <gtest/gtest.h>

#include "core/anonymization/rules/helpers.hpp"
#include "core/text/unicode.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

struct Case {
  const char* why;
  const char* in;
  const char* out;
};

template <class Function, std::size_t N>
void check_spans(Function function, const Case (&cases)[N]) {
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    auto doc = test::parse_replacements(c.in);
    doc.replacements = function(doc.replacements, doc.text);
    EXPECT_EQ(test::render(doc), c.out);
  }
}

TEST(FilterWeakOrg, DropsYearsOutlineNumbersAndConnectives) {
  check_spans(_filter_weak_org_replacements,
              {{"年份", "{[机构1]|2023年}{[ORG2]|1899年}", "2023年{[ORG2]|1899年}"},
               {"年份之后还有文字", "{[机构1]|2023年度报告}", "{[机构1]|2023年度报告}"},
               {"章节号，前后空白不计", "{[机构1]| 3.2.1 }{[机构2]|3}", " 3.2.1 {[机构2]|3}"},
               {"连接词", "{[机构1]|及 / 或}{[机构2]|与}", "及 / 或与"},
               {"只管组织", "{[NAME1]|2023年}{[地址1]|与}{某某|和}",
                "{[NAME1]|2023年}{[地址1]|与}{某某|和}"}});
}

TEST(SplitAtJoiner, CutsSpansAndDropsBlankPieces) {
  const auto at_joiner = [](auto replacements, auto text) {
    return _split_replacements_at_joiner(replacements, text, U"##");
  };
  check_spans(at_joiner,
              {{"中间", "{[机构1]|甲公司##乙公司}", "{[机构1]|甲公司}##{[机构1]|乙公司}"},
               {"几处相连", "{[机构1]|甲####乙##}", "{[机构1]|甲}####{[机构1]|乙}##"},
               {"全是连接符与空白", "{[机构1]|## ##}", "## ##"},
               {"不重叠，自左数起", "{[机构1]|甲###乙}", "{[机构1]|甲}##{[机构1]|#乙}"},
               {"半个连接符也切", "#{[机构1]|#甲}", "##{[机构1]|甲}"},
               {"没有连接符", "{[机构1]|甲#乙} #", "{[机构1]|甲#乙} #"}});
  const std::vector<Replacement> odd = {{3, 3, U"a"}, {4, 2, U"b"}, {-2, 1, U"c"}, {1, 90, U"d"}};
  EXPECT_EQ(_split_replacements_at_joiner(odd, U"甲##乙", U"##"),
            (std::vector<Replacement>{{-2, 1, U"c"}, {3, 90, U"d"}}));
  EXPECT_EQ(_split_replacements_at_joiner(odd, U"甲##乙", U""), odd);
}

// Every joiner against every piece, as the rule reads.
std::vector<Replacement> split_slowly(const std::vector<Replacement>& replacements,
                                      std::u32string_view text, std::u32string_view joiner) {
  std::vector<Replacement> pieces = replacements;
  for (auto at = text.find(joiner); at != text.npos; at = text.find(joiner, at + joiner.size())) {
    const auto js = static_cast<Offset>(at), je = static_cast<Offset>(at + joiner.size());
    std::vector<Replacement> next;
    for (const auto& p : pieces) {
      if (!(p.start < je && js < p.end)) {
        next.push_back(p);
        continue;
      }
      if (p.start < js) next.push_back({p.start, js, p.placeholder});
      if (je < p.end) next.push_back({je, p.end, p.placeholder});
    }
    pieces = next;
  }
  std::erase_if(pieces, [&](const auto& p) {
    return p.start >= p.end || text::strip(text::slice(text, p.start, p.end)).empty();
  });
  return pieces;
}

TEST(SplitAtJoiner, AgreesWithTryingEveryJoinerOnEveryPiece) {
  std::mt19937 random(3);
  for (int round = 0; round < 1000; ++round) {
    std::u32string text;
    while (text.size() < 20) text += random() % 3 == 0 ? U"##" : U"甲";
    std::vector<Replacement> replacements(random() % 4);
    for (auto& r : replacements) {
      r = {static_cast<Offset>(random() % 24) - 2, static_cast<Offset>(random() % 24) - 2, U"x"};
    }
    ASSERT_EQ(_split_replacements_at_joiner(replacements, text, U"##"),
              split_slowly(replacements, text, U"##"))
        << test::u8(text);
  }
}

TEST(DocxJoiners, AreClippedOutOfSpansAndStrippedFromTheText) {
  const std::u32string text = U"甲公司" + std::u32string(PARAGRAPH_JOINER) + U"乙公司" +
                              std::u32string(CELL_JOINER) + U"丙";
  const auto clipped = _clip_replacements_at_embedded_docx_joiners(
      {{0, static_cast<Offset>(text.size()), U"[机构1]"}}, text);
  ASSERT_EQ(clipped.size(), 3U);
  EXPECT_EQ(clipped[1], (Replacement{6, 9, U"[机构1]"}));
  EXPECT_EQ(test::u8(_strip_docx_joiner_sequences(text)), "甲公司乙公司丙");

  const std::u32string hash(64, U'a');
  EXPECT_EQ(_strip_docx_joiner_sequences(U"甲\uE000" + hash + U"\uE001乙"), U"甲乙");
  EXPECT_EQ(_strip_docx_joiner_sequences(U"\uE000" + hash + U"a\uE001").size(), 67U);
  EXPECT_EQ(_strip_docx_joiner_sequences(U"\uE000" + std::u32string(64, U'A') + U"\uE001").size(),
            66U);
}

TEST(DocxJoiners, AreRemovedOneKindAfterTheOther) {
  // Taking the first kind out lets the halves of the next one meet.
  const std::u32string nested = U"\uE000" + std::u32string(PARAGRAPH_JOINER) + U"¤\uE001";
  EXPECT_EQ(_strip_docx_joiner_sequences(nested), U"");
}

TEST(TrimAliasClosers, EndsTheSpanBeforeTheClosingQuote) {
  check_spans(
      _trim_org_replacement_spans_at_defined_alias_closers,
      {{"闭引号与括号", "以下简称“{[机构1]|甲公司”）}", "以下简称“{[机构1]|甲公司}”）"},
       {"分号", "下称为「{[机构1]|甲公司」)；}", "下称为「{[机构1]|甲公司}」)；"},
       {"引号前后可有空白", "以下简称 “{[机构1]|甲公司 \")}", "以下简称 “{[机构1]|甲公司 }\")"},
       {"没有简称字样", "名为“{[机构1]|甲公司”）}", "名为“{[机构1]|甲公司”）}"},
       {"只有闭引号没有括号", "下称“{[机构1]|甲公司”}", "下称“{[机构1]|甲公司”}"},
       {"引号内只有空白", "下称“{[机构1]| ”）}", "下称“{[机构1]| ”）}"},
       {"只管组织", "下称“{[NAME1]|张三”）}", "下称“{[NAME1]|张三”）}"},
       {"字样离得太远", "以下简称                 {[机构1]|甲公司”）}",
        "以下简称                 {[机构1]|甲公司”）}"}});
}

}  // namespace
}  // namespace core::anonymization
