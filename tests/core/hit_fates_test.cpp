// What became of each hit, and which parts of a document are masked.
#include "core/hit_fates.hpp"

#include <gtest/gtest.h>

#include "core/anonymization/hit_changes.hpp"
#include "core/anonymization/llm_decider.hpp"
#include "core/masked_stretches.hpp"
#include "core/text/unicode.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

using test::u8;

TEST(HitChanges, PairsWhatWasLostWithWhatItBecame) {
  const std::vector<RecognizerResult> before = {
      {"A", 9, 12, 0.5}, {"A", 0, 5, 0.5}, {"B", 0, 5, 0.5}, {"A", 6, 8, 0.5}, {"A", 6, 8, 0.1}};
  const std::vector<RecognizerResult> after = {
      {"A", 6, 8, 0.9}, {"A", 1, 5, 0.5}, {"B", 7, 9, 0.5}, {"C", 9, 12, 0.5}};
  const auto changes = hit_changes(before, after);
  const std::vector<LostHit> lost = {{1, 1}, {0, {}}, {2, {}}};
  EXPECT_EQ(changes.lost, lost);
  EXPECT_EQ(changes.added, (std::vector<std::size_t>{1, 2, 3}));
  EXPECT_TRUE(hit_changes(before, before).lost.empty());
}

TEST(HitFates, NameTheStepThatDroppedOrChangedAHit) {
  struct Case {
    const char* marked;
    const char* profile;
    const char* step;
    std::optional<std::pair<Offset, Offset>> became = {};
  };
  const Case cases[] = {
      {"甲方：{ORGANIZATION|北京华信科技有限公司}", "strict", ""},
      {"{ORGANIZATION|Nokia} Oyj", "strict", ""},
      {"甲方：{PERSON|——}", "strict", "blanks and punctuation"},
      {"Signed {PERSON|Иван}", "strict", "blanks and punctuation"},
      {"{DATE_TIME|3.1.4} 付款", "strict", "ordinals and section numbers"},
      {"由{ORGANIZATION|本公司}承担", "strict", "generic nouns"},
      {"于{DATE_TIME|2024年3月15日}签订", "identity", "profile identity"},
      {"甲方：{ORGANIZATION|与}", "strict", "generic nouns"},
      {"甲方：{ORGANIZATION|及/或}", "strict", "weak organizations"},
      {"{ORGANIZATION|甲公司\uE000¶\uE001乙公司}", "strict", "paragraph joiners", {{0, 3}}},
      {"（以下简称“{ORGANIZATION|华信科技”）}",
       "strict",
       "closing quotes of definitions",
       {{6, 10}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.marked);
    const auto doc = test::parse(c.marked);
    const auto fates = hit_fates(doc.text, doc.results, "zh", c.profile);
    ASSERT_EQ(fates.size(), 1U);
    EXPECT_EQ(fates[0].step, c.step);
    EXPECT_EQ(fates[0].became, c.became);
  }
}

TEST(HitFates, OverlapsAndDeciders) {
  const std::u32string text = U"😀𠀀张三律师事务所与李四";
  const std::vector<RecognizerResult> hits = {{"ORGANIZATION", 2, 9, 0.9},
                                              {"LOCATION", 4, 6, 0.9},
                                              {"PERSON", 10, 12, 0.9},
                                              {"PERSON", 10, 12, 0.5}};
  const auto steps = [&] {
    std::vector<std::string> out;
    for (const auto& fate : hit_fates(text, hits, "zh", "strict")) out.push_back(fate.step);
    return out;
  };
  EXPECT_EQ(steps(), (std::vector<std::string>{"", "overlaps", "", ""}));
  set_replacement_span_filter([](auto, const auto& spans) {
    return std::vector<Replacement>(spans.begin(), spans.begin() + 1);
  });
  EXPECT_EQ(steps(),
            (std::vector<std::string>{"", "overlaps", "keep/mask decision", "keep/mask decision"}));
  set_replacement_span_filter({});
}

// The same steps as those of the core: what no step dropped is masked, and the
// other way round.
TEST(MaskedStretches, AgreeWithTheFates) {
  const auto doc = test::parse(
      "😀甲方：{ORGANIZATION|北京华信科技有限公司}，{ORGANIZATION|本公司}于{DATE_TIME|2024年3月}付"
      "{MONEY|人民币100元}\uE000¶\uE001{PERSON|张三}；北京华信科技有限公司");
  const test::ScriptedAnalyzer analyzer(doc.results);
  const auto stretches = masked_stretches(doc.text, anonymize_document(doc.text, analyzer, "zh"));
  std::vector<std::pair<std::string, std::string>> found;
  found.reserve(stretches.size());
  for (const auto& s : stretches) {
    found.emplace_back(u8(s.placeholder), u8(text::slice(doc.text, s.start, s.end)));
  }
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"[机构1]", "北京华信科技有限公司"},
      {"[DATE1]", "2024年3月"},
      {"[MONEY1]", "100"},
      {"[NAME1]", "张三"},
      {"[机构1]", "北京华信科技有限公司"}};
  EXPECT_EQ(found, expected);
  const auto fates = hit_fates(doc.text, doc.results, "zh", "contract_default");
  for (std::size_t i = 0; i < fates.size(); ++i) {
    const auto& hit = doc.results[i];
    const bool masked = std::any_of(stretches.begin(), stretches.end(), [&](const auto& s) {
      return s.start < hit.end && hit.start < s.end;
    });
    EXPECT_EQ(masked, fates[i].step.empty()) << hit.entity_type << fates[i].step;
  }
}

}  // namespace
}  // namespace core::anonymization
