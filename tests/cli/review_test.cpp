// A dry run for a reviewer, and the lists with which he answers.
#include <gtest/gtest.h>

#include "tests/cli/support.hpp"

namespace {

using test::Folder;
using test::run;

const auto REVIEW_ANALYZER = test::finding({{"ORGANIZATION", "北京华信科技有限公司"},
                                            {"ORGANIZATION", "华信科技"},
                                            {"CARD_LAST4", "6217001520041234"},
                                            {"MONEY", "人民币100元"}});
constexpr auto REVIEWED =
    "甲方：北京华信科技有限公司（简称华信科技）付人民币100元，卡6217001520041234，蓝鲸，见[机构1]、[DATE9]";

TEST(Review, ADryRunShowsWhatWouldBeMasked) {
  const auto ran = run({"anonymize", "--dry-run"}, REVIEWED, REVIEW_ANALYZER);
  EXPECT_EQ(ran.code, cli::EXIT_DONE);
  EXPECT_EQ(ran.out,
            "KIND        PLACEHOLDER      COUNT  SURFACES\n"
            "ORG         [机构1]              2  北京华信科技有限公司 | 华信科技\n"
            "MONEY       [MONEY1]             1  100\n"
            "CARD_LAST4  [CARD_****1234]      1  6217001520041234\n");
  const std::vector<std::string> others[] = {{"-o", "x"}, {"--mapping", "x"}, {"--json"}};
  for (const auto& other : others) {
    std::vector<std::string> args = {"anonymize", "--dry-run"};
    args.insert(args.end(), other.begin(), other.end());
    EXPECT_EQ(run(args, REVIEWED, REVIEW_ANALYZER).code, cli::EXIT_USAGE) << other[0];
  }
}

TEST(Review, ListsOverrideTheAnalyzer) {
  const Folder folder;
  const auto keep = folder.write("keep", "# 公开的\n北京华信科技有限公司\n/华信.{2}/\n没有\n");
  const auto mask = folder.write("mask", "蓝鲸\n");
  const auto ran = run({"anonymize", "--keep", keep, "--mask", mask}, REVIEWED, REVIEW_ANALYZER);
  EXPECT_EQ(ran.out,
            "甲方：北京华信科技有限公司（简称华信科技）付人民币[MONEY1]元，卡[CARD_****1234]，"
            "[MASKED1]，见[机构1]、[DATE9]");
  EXPECT_NE(ran.err.find("nothing in the document is meant by 1 line of --keep: 4\n"),
            std::string::npos)
      << ran.err;
  const auto bad = folder.write("bad", "a\n/[/\n");
  const auto refused = run({"anonymize", "--mask", bad}, REVIEWED, REVIEW_ANALYZER);
  EXPECT_EQ(refused.code, cli::EXIT_INPUT);
  EXPECT_EQ(refused.out, "");
  EXPECT_NE(refused.err.find("line 2"), std::string::npos) << refused.err;
  EXPECT_EQ(run({"anonymize", "--keep", folder.path("none")}, REVIEWED, REVIEW_ANALYZER).code,
            cli::EXIT_INPUT);
}

}  // namespace
