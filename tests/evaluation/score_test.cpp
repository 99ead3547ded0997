// Labelled documents, and how well they were masked.
#include "core/evaluation/score.hpp"

#include <gtest/gtest.h>

#include "core/errors.hpp"
#include "tests/support/notation.hpp"

namespace core::evaluation {
namespace {

using test::u32;

TEST(LabelledDocument, LosesItsFrames) {
  const auto document = parse_labelled(
      U"😀甲方：<<ORGANIZATION#12:华信>>\n<<?PRODUCT:A < B>>、<<DATE_TIME#1:2024年>>");
  EXPECT_EQ(document.text, U"😀甲方：华信\nA < B、2024年");
  const std::vector<Mark> marks = {
      {4, 6, "ORGANIZATION", "12"}, {7, 12, "PRODUCT", ""}, {13, 18, "DATE_TIME", "1"}};
  EXPECT_EQ(document.marks, marks);
  EXPECT_FALSE(document.marks[0].optional());
  EXPECT_TRUE(document.marks[1].optional());
  EXPECT_EQ(parse_labelled(U"<<<EMAIL_ADDRESS#1:a@b.cn>>>").text, U"<a@b.cn>");
}

TEST(LabelledDocument, RefusesMalformedMarksByLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"<<PERSON#1:张三", "line 1: a mark that does not end"},
      {"甲\n<<PERSON#1:张\n三>>", "line 2: a mark that does not end"},
      {"<<PERSON#1:张\t三>>", "line 1: a mark that does not end"},
      {"甲\n乙\n张三>>", "line 3: \">>\" without a mark"},
      {"<<PERSON#1:张<<PERSON#2:三>>>>", "line 1: a mark inside a mark"},
      {"<<PERSON#1:>>", "line 1: a mark without text"},
      {"<<PERSON:张三>>", "line 1: a mark without a number"},
      {"<<PERSON#:张三>>", "line 1: a mark with \"#\" and no number"},
      {"<<?PERSON#1:张三>>", "line 1: an optional mark with a number"},
      {"<<person#1:张三>>", "line 1: a mark without a type"},
      {"<<PERSON#1 张三>>", "line 1: a mark without \":\""},
      {"<<", "line 1: a mark without a type"},
  };
  for (const auto& [labelled, message] : cases) {
    SCOPED_TRACE(labelled);
    try {
      parse_labelled(u32(labelled));
      ADD_FAILURE() << "accepted";
    } catch (const ValueError& e) {
      EXPECT_TRUE(std::string(e.what()).starts_with(message)) << e.what();
      EXPECT_EQ(std::string(e.what()).find("张"), std::string::npos);
    }
  }
}

// What is masked stands in braces, as in {[机构1]|surface}, and may cross marks:
// these are read first, then the masked stretches are found by their text.
struct Masked {
  const char* surface;
  const char32_t* placeholder;
};

DocumentScore score_of(const char* labelled, const std::vector<Masked>& masked) {
  const auto document = parse_labelled(u32(labelled));
  std::vector<anonymization::MaskedStretch> stretches;
  std::size_t from = 0;
  for (const auto& [surface, placeholder] : masked) {
    const auto wanted = u32(surface);
    const auto at = document.text.find(wanted, from);
    from = at + wanted.size();
    stretches.push_back({static_cast<Offset>(at), static_cast<Offset>(from), placeholder});
  }
  return score(document, stretches);
}

TEST(Score, CountsLeaksAndBoundaries) {
  struct Case {
    const char* why;
    const char* labelled;
    std::vector<Masked> masked;
    Tally expected;  // mentions, leaked, cut short, reaching, entities, split
    std::size_t overmasked;
  };
  const Case cases[] = {
      {"masked as marked", "由<<PERSON#1:张三>>签", {{"张三", U"[NAME1]"}}, {1, 0, 0, 0, 1, 0}, 0},
      {"not masked", "由<<PERSON#1:张三>>签", {}, {1, 1, 0, 0, 0, 0}, 0},
      {"in part", "由<<PERSON#1:张三>>签", {{"三", U"[NAME1]"}}, {1, 1, 1, 0, 1, 0}, 0},
      {"and more", "由<<PERSON#1:张三>>签", {{"张三签", U"[NAME1]"}}, {1, 0, 0, 1, 1, 0}, 1},
      {"and a sign more", "（<<PERSON#1:张三>>）", {{"张三）", U"[NAME1]"}}, {1, 0, 0, 0, 1, 0}, 1},
      {"signs may stay", "<<PERSON#1:J. Doe.>>", {{"J. Doe", U"[NAME1]"}}, {1, 0, 0, 0, 1, 0}, 0},
      {"currency words may stay",
       "<<MONEY#1:人民币100元>>",
       {{"100", U"[MONEY1]"}},
       {1, 0, 0, 0, 0, 0},
       0},
      {"numerals may not", "<<MONEY#1:壹佰元>>", {{"壹", U"[MONEY1]"}}, {1, 1, 1, 0, 0, 0}, 0},
      {"without numerals all counts", "<<MONEY#1:USD>>", {}, {1, 1, 0, 0, 0, 0}, 0},
      {"optional", "<<?PRODUCT:北斗>>和<<?PRODUCT:天河>>", {{"北斗", U"[X1]"}}, {}, 0},
      {"through neighbouring marks",
       "<<PERSON#1:张三>><<PERSON#2:李四>>",
       {{"张三李四", U"[NAME1]"}},
       {2, 0, 0, 0, 2, 0},
       0},
      {"𠀀 counts as one character",
       "𠀀<<PERSON#1:𠮷田>>",
       {{"𠀀𠮷田", U"[NAME1]"}},
       {1, 0, 0, 1, 1, 0},
       1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto out = score_of(c.labelled, c.masked);
    EXPECT_EQ(out.score.total(), c.expected);
    EXPECT_EQ(out.score.overmasked, c.overmasked);
    EXPECT_EQ(out.leaks.size(), c.expected.leaked);
  }
}

TEST(Score, CountsSplitAndMergedIdentities) {
  const auto* document =
      "<<PERSON#1:张三>>、<<PERSON#1:张三>>、<<PERSON#2:李四>>、<<ORGANIZATION#1:华信>>、"
      "<<DATE_TIME#1:1日>>、<<DATE_TIME#2:2日>>、<<LOCATION#1:北京市朝阳区>>";
  const auto out = score_of(document, {{"张三", U"[NAME1]"},
                                       {"张三", U"[NAME2]"},
                                       {"李四", U"[NAME3]"},
                                       {"华信", U"[NAME3]"},
                                       {"1日", U"[DATE1]"},
                                       {"2日", U"[DATE1]"},
                                       {"北京市", U"[ADDRESS1]"},
                                       {"朝阳区", U"[ADDRESS2]"}});
  const auto persons = out.score.by_type.at("PERSON");
  EXPECT_EQ(persons, (Tally{3, 0, 0, 0, 2, 1}));
  EXPECT_EQ(out.score.merged, 1U) << "dates are keyed by their wording";
  EXPECT_EQ(out.score.by_type.at("LOCATION").entities, 0U) << "two placeholders tell nothing";

  Score sum = out.score;
  sum += out.score;
  EXPECT_EQ(sum.merged, 2U);
  EXPECT_EQ(sum.total().split, 2U);
  EXPECT_EQ(sum.unmarked, 2 * out.score.unmarked);
}

TEST(Score, TellsWhereTooMuchIsMasked) {
  const auto out = score_of("甲方为<<PERSON#1:张三>>签字人", {{"方为张三签", U"[NAME1]"}});
  const std::vector<Fault> overmasks = {{"", 1, 3}, {"", 5, 6}};
  EXPECT_EQ(out.overmasks, overmasks);
  EXPECT_DOUBLE_EQ(out.score.overmask_per_1000(), 500);
  EXPECT_DOUBLE_EQ(Score().overmask_per_1000(), 0);
}

}  // namespace
}  // namespace core::evaluation
