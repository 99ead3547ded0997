#include "core/anonymization/strategy.hpp"

#include <algorithm>

#include <gtest/gtest.h>

#include "core/errors.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

// What the steps of `profile` leave of the marks of `marked`. A mark of type
// ALIAS is an alias candidate, defined where the first （ stands.
std::string kept(std::string_view profile, const std::string& marked) {
  auto doc = test::parse(marked);
  for (auto& r : doc.results) {
    if (r.entity_type == "ALIAS") r.defined_at = static_cast<Offset>(doc.text.find(U'（'));
  }
  const auto steps = _resolve_semantic_strategy_steps(profile, "zh");
  for (const auto* list : {&steps.before_overlaps, &steps.after_overlaps}) {
    for (const auto& step : *list) doc.results = step(doc.text, doc.text, std::move(doc.results));
  }
  return test::render(doc);
}

TEST(Strategy, ProfilesMaskTheirKinds) {
  const std::string all =
      "{ORGANIZATION|a}{PERSON|b}{CREDIT_CARD|c}{SOMETHING|d}{DATE_TIME|e}{YEAR|f}{MONEY|g}"
      "{PERCENTAGE|h}{QUANTITY|i}";
  EXPECT_EQ(kept("contract_default", all), all);
  EXPECT_EQ(kept("strict", all), all);
  EXPECT_EQ(kept("identity", all), "{ORGANIZATION|a}{PERSON|b}{CREDIT_CARD|c}{SOMETHING|d}efghi");
}

TEST(Strategy, UnknownProfileIsRefused) {
  for (const char* unknown : {"", "Strict", "default"}) {
    try {
      _resolve_semantic_strategy_steps(unknown, "zh");
      ADD_FAILURE() << unknown;
    } catch (const ValueError& error) {
      EXPECT_EQ(std::string(error.what()),
                "Unknown strategy profile \"" + std::string(unknown) +
                    "\"; known profiles: contract_default, identity, strict");
    }
  }
}

TEST(Strategy, TheApplicationMayHaveProfilesOfItsOwn) {
  set_strategy_resolver([](std::string_view profile, std::string_view language) {
    std::optional<StrategySteps> steps;
    if (profile == "nothing" && language == "zh") {
      steps.emplace().after_overlaps = {
          [](auto, auto, auto) { return std::vector<RecognizerResult>(); }};
    }
    return steps;
  });
  EXPECT_EQ(kept("nothing", "{PERSON|a}"), "a");
  EXPECT_EQ(kept("strict", "{PERSON|a}"), "{PERSON|a}");
  set_strategy_resolver({});
  EXPECT_THROW(kept("nothing", "{PERSON|a}"), ValueError);
}

TEST(Strategy, AliasNeedsAnOrganizationBeforeIt) {
  struct {
    const char* why;
    const char* profile;
    const char* in;
    const char* out;
  } const rows[] = {
      {"前有机构", "strict", "{ORGANIZATION|华信公司}（下称“{ALIAS|华信}”）",
       "{ORGANIZATION|华信公司}（下称“{ALIAS|华信}”）"},
      {"什么也没有识别到", "strict", "华信公司（下称“{ALIAS|华信}”）", "华信公司（下称“华信”）"},
      {"前面只有人名", "strict", "{PERSON|张伟}（下称“{ALIAS|华信}”）",
       "{PERSON|张伟}（下称“华信”）"},
      {"机构在定义之后", "strict", "甲（下称“{ALIAS|华信}”）与{ORGANIZATION|乙}",
       "甲（下称“华信”）与{ORGANIZATION|乙}"},
      {"机构在上一段", "strict", "{ORGANIZATION|华信公司}\n（下称“{ALIAS|华信}”）",
       "{ORGANIZATION|华信公司}\n（下称“华信”）"},
      {"段落拼接符同换行", "strict", "{ORGANIZATION|华信公司}\uE000¶\uE001（下称“{ALIAS|华信}”）",
       "{ORGANIZATION|华信公司}\uE000¶\uE001（下称“华信”）"},
      {"换行在机构之前", "strict", "合同\n{ORGANIZATION|华信公司}（下称“{ALIAS|华信}”）\n",
       "合同\n{ORGANIZATION|华信公司}（下称“{ALIAS|华信}”）\n"},
      {"两个候选互不妨碍", "strict", "{ORGANIZATION|甲}（“{ALIAS|华信}”或“{ALIAS|信}”）",
       "{ORGANIZATION|甲}（“{ALIAS|华信}”或“{ALIAS|信}”）"},
      {"候选不为候选作证", "strict", "{ALIAS|华信}（“{ALIAS|信}”）", "华信（“信”）"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(kept(row.profile, row.in), row.out);
  }
}

TEST(Strategy, AliasGivesWayToWhatIsReportedOverIt) {
  const std::u32string text = U"华信公司（下称“七天”）";
  const auto count = [&](std::string_view profile, RecognizerResult over) {
    std::vector<RecognizerResult> results = {
        {"ORGANIZATION", 8, 10, 0.9, 4}, {"ORGANIZATION", 0, 4, 0.9}, std::move(over)};
    for (const auto& step : _resolve_semantic_strategy_steps(profile, "zh").before_overlaps) {
      results = step(text, text, std::move(results));
    }
    return std::count_if(results.begin(), results.end(),
                         [](const auto& r) { return r.defined_at == 4; });
  };
  EXPECT_EQ(count("strict", {"DATE_TIME", 9, 11, 0.9}), 0);
  EXPECT_EQ(count("strict", {"DATE_TIME", 10, 11, 0.9}), 1) << "touching is not overlapping";
  EXPECT_EQ(count("identity", {"DATE_TIME", 8, 10, 0.9}), 1)
      << "what stays readable does not keep the alias from being masked";
}

}  // namespace
}  // namespace core::anonymization
