#include "core/anonymization/masked_text.hpp"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "core/text/unicode.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

std::string show(const MaskedText& m) {
  std::string out;
  Offset last = 0;
  for (const auto& p : m.placements()) {
    out += test::u8(text::slice(m.text(), last, p.start)) + "<" +
           test::u8(text::slice(m.text(), p.start, p.end)) + "=" + test::u8(p.surface) + ">";
    last = p.end;
  }
  return out + test::u8(text::slice(m.text(), last, static_cast<Offset>(m.text().size())));
}

TEST(MaskedText, RemembersWhatWasWrittenWhere) {
  MaskedText m(U"😀由甲公司与乙公司签订");
  m.write({{2, 5, U"[机构1]"}});
  m.write({{1, 2, U"[A1]"}, {8, 11, U"[机构2]"}});
  EXPECT_EQ(show(m), "😀<[A1]=由><[机构1]=甲公司>与<[机构2]=乙公司>签订");
  m.erase({{0, 1, {}}, {10, 11, {}}});
  EXPECT_EQ(show(m), "<[A1]=由><[机构1]=甲公司><[机构2]=乙公司>签订");
}

TEST(MaskedText, AnEditWithinAPlaceholderJoinsItsPlacement) {
  MaskedText m(U"甲乙");
  m.write({{0, 1, U"[机构12]"}});
  m.write({{1, 5, U"[X1]"}});
  EXPECT_EQ(show(m), "<[[X1]]=甲>乙");
}

TEST(MaskedText, AnEditAcrossTheEdgeOfAPlaceholderLosesNothing) {
  MaskedText m(U"甲公司南国1]公司。");
  m.write({{0, 3, U"[机构1]"}, {3, 6, U"[X1]"}});
  EXPECT_EQ(show(m), "<[机构1]=甲公司><[X1]=南国1>]公司。");
  m.write({{3, 6, U"[Y2]"}, {7, 12, U"[Z3]"}});
  EXPECT_EQ(show(m), "<[机构[Y2]X[Z3]=甲公司南国1]公司>。");
}

// The splice as it reads.
std::u32string splice_slowly(std::u32string text, std::vector<Edit> edits) {
  std::stable_sort(edits.begin(), edits.end(),
                   [](const auto& a, const auto& b) { return a.start > b.start; });
  for (const auto& e : edits) {
    const auto size = static_cast<Offset>(text.size());
    text = std::u32string(text::slice(text, 0, e.start)) + std::u32string(e.written) +
           std::u32string(text::slice(text, std::max<Offset>(e.end, 0), size));
  }
  return text;
}

TEST(MaskedText, SplicesAnyListLikeOneEditAfterTheOther) {
  std::mt19937 random(5);
  for (int round = 0; round < 5000; ++round) {
    std::vector<Edit> edits(random() % 6);
    for (auto& e : edits) {
      e = {static_cast<Offset>(random() % 16) - 2, static_cast<Offset>(random() % 16) - 2,
           random() % 2 == 0 ? U"[1]" : U"[22]"};
    }
    MaskedText m(U"甲乙丙丁戊己庚辛");
    m.splice_right_to_left(edits);
    std::string list;
    for (const auto& e : edits) {
      list += std::to_string(e.start) + "-" + std::to_string(e.end) + test::u8(e.written) + " ";
    }
    ASSERT_EQ(test::u8(m.text()), test::u8(splice_slowly(U"甲乙丙丁戊己庚辛", edits))) << list;
    for (const auto& p : m.placements()) ASSERT_LT(p.start, p.end) << list;
  }
}

}  // namespace
}  // namespace core::anonymization
