#include "core/anonymization/cleanup/overlap.hpp"

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "core/errors.hpp"

namespace core::anonymization {
namespace {

using Results = std::vector<RecognizerResult>;

std::string show(const Results& results) {
  std::string out;
  for (const auto& r : results) {
    out += r.entity_type + " " + std::to_string(r.start) + "-" + std::to_string(r.end) + "; ";
  }
  return out;
}

TEST(ResolveOverlaps, DecidesByPriorityScoreLengthAndOrder) {
  struct Case {
    const char* why;
    Results in;
    const char* kept;
  };
  const Case cases[] = {
      {"nothing", {}, ""},
      {"长组织名内的单字人名先去掉",
       {{"PERSON", 10, 11, 1}, {"ORGANIZATION", 5, 15, .5}},
       "ORGANIZATION 5-15; "},
      {"五个字还不算长", {{"PERSON", 10, 11, .5}, {"ORGANIZATION", 6, 11, 1}}, "PERSON 10-11; "},
      {"单字数量不受保护",
       {{"QUANTITY", 10, 11, 1}, {"ORGANIZATION", 20, 30, 1}},
       "QUANTITY 10-11; ORGANIZATION 20-30; "},
      {"priority before score",
       {{"PHONE_NUMBER", 0, 11, .9}, {"BANK_ACCOUNT", 0, 19, .4}},
       "BANK_ACCOUNT 0-19; "},
      {"score before length", {{"LOCATION", 0, 4, .9}, {"LOCATION", 2, 10, .8}}, "LOCATION 0-4; "},
      {"length at equal score",
       {{"LOCATION", 0, 4, .8}, {"LOCATION", 2, 10, .8}},
       "LOCATION 2-10; "},
      {"the first of a full tie", {{"URL", 3, 5, .8}, {"NEW_TYPE", 4, 6, .8}}, "URL 3-5; "},
      {"touching is not overlapping", {{"URL", 5, 9, 1}, {"URL", 0, 5, 1}}, "URL 0-5; URL 5-9; "},
      {"a type of no priority loses to every listed one",
       {{"URL", 0, 9, 1}, {"CARD_LAST4", 8, 9, 0}},
       "CARD_LAST4 8-9; "},
      {"who overlaps only a loser stays",
       {{"PERSON", 0, 4, 1}, {"LOCATION", 3, 8, 1}, {"DATE_TIME", 7, 9, 1}},
       "PERSON 0-4; DATE_TIME 7-9; "},
      {"empty spans go only strictly inside another",
       {{"URL", 0, 4, 1}, {"URL", 2, 2, 1}, {"URL", 4, 4, 1}, {"URL", 4, 4, 1}},
       "URL 0-4; URL 4-4; URL 4-4; "},
      {"an exact duplicate goes", {{"URL", 0, 4, 1}, {"URL", 0, 4, 1}}, "URL 0-4; "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(show(_resolve_overlaps(c.in)), c.kept);
  }
}

// The rule as it reads, one comparison with every kept result.
Results resolve_slowly(Results results) {
  results = _drop_single_char_entity_inside_long_entity(results);
  std::stable_sort(results.begin(), results.end(), [](const auto& a, const auto& b) {
    return _overlap_sort_key(a) > _overlap_sort_key(b);
  });
  Results kept;
  for (const auto& r : results) {
    const bool taken = std::any_of(kept.begin(), kept.end(), [&](const auto& k) {
      return k.start < r.end && r.start < k.end;
    });
    if (!taken) kept.push_back(r);
  }
  std::stable_sort(kept.begin(), kept.end(),
                   [](const auto& a, const auto& b) { return a.start < b.start; });
  return kept;
}

TEST(ResolveOverlaps, AgreesWithComparingEachWithEach) {
  std::mt19937 random(11);
  const char* types[] = {"PERSON", "ORGANIZATION", "GPE", "URL", "MONEY", "DATE_TIME"};
  const auto draw = [&](Offset n) {
    return static_cast<Offset>(random() % static_cast<unsigned>(n));
  };
  for (int round = 0; round < 2000; ++round) {
    Results results(random() % 12);
    const bool plain = round % 2 == 0;  // as analyzers report them: none is empty, few overlap
    for (auto& r : results) {
      const Offset start = draw(plain ? 90 : 30) - 3;
      const Offset length = plain ? 1 + draw(8) : draw(12) - 3;
      r = {types[random() % 6], start, start + length, static_cast<double>(draw(3)) / 2};
    }
    ASSERT_EQ(show(_resolve_overlaps(results)), show(resolve_slowly(results))) << show(results);
  }
}

TEST(ResolveOverlaps, RefusesAScoreThatIsNotANumber) {
  const RecognizerResult r{"PERSON", 3, 5, std::nan("")};
  try {
    _resolve_overlaps({r});
    ADD_FAILURE() << "resolved";
  } catch (const ValueError& e) {
    EXPECT_STREQ(e.what(), "The score of the PERSON result at 3..5 is not a number");
  }
  EXPECT_EQ(_resolve_overlaps({{"URL", 0, 1, std::numeric_limits<double>::infinity()}}).size(), 1U);
}

TEST(OverlapPriority, HasTheOddRanksThatAreMeant) {
  EXPECT_GT(_overlap_entity_priority("GAME"), _overlap_entity_priority("PERSON"));
  EXPECT_EQ(_overlap_entity_priority("PERSON"), _overlap_entity_priority("IT_PROTOCOL"));
  EXPECT_LT(_overlap_entity_priority("CARD_LAST4"), _overlap_entity_priority("MONEY"));
  EXPECT_EQ(_overlap_entity_priority("ADDRESS"), 50);
  EXPECT_EQ(entity_overlap_priorities().size(), 29U);
}

}  // namespace
}  // namespace core::anonymization
