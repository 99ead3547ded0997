// The command `veildoc analyze`.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/cli/support.hpp"

namespace {

using nlohmann::json;
using test::run;

// Recognizers of QA..QZ, weak without a word before them, and of 蓝鲸.
std::string write_recognizers(const test::Folder& folder) {
  return folder.write("r.yaml",
                      "- name: Codes\n"
                      "  supported_entity: CODE\n"
                      "  context: [代码]\n"
                      "  patterns: [{name: two letters, regex: 'Q[A-Z]', score: 0.2}]\n"
                      "- name: Projects\n"
                      "  supported_entity: PROJECT\n"
                      "  deny_list: [蓝鲸]\n"
                      "  deny_list_score: 0.95\n");
}

TEST(Analyze, ListsHitsByPlaceAndKind) {
  const test::Folder folder;
  const auto file = write_recognizers(folder);
  const std::string text = "\xEF\xBB\xBF😀代码QA，𠀀代码：QB，蓝鲸";
  const auto analyze = [&](std::vector<std::string> options) {
    options.insert(options.begin(), {"analyze", "--recognizers", file});
    const auto ran = run(options, text);
    EXPECT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
    return ran.out;
  };
  EXPECT_EQ(analyze({"-"}),
            "TYPE     START  END  SCORE  RECOGNIZER\n"
            "CODE         3    5   0.55  Codes\n"
            "CODE        10   12   0.55  Codes\n"
            "PROJECT     13   15   0.95  Projects\n");
  EXPECT_EQ(analyze({"--show-surfaces", "--entities", "PROJECT,PERSON"}),
            "TYPE     START  END  SCORE  RECOGNIZER  SURFACE\n"
            "PROJECT     13   15   0.95  Projects    蓝鲸\n");
  EXPECT_EQ(test::lines(analyze({"--threshold", "0.9"})).size(), 2U);
  EXPECT_EQ(json::parse(analyze({"--json", "--threshold", "0.9"})), json::parse(R"({
    "language": "zh", "hits": [{"type": "PROJECT", "start": 13, "end": 15, "score": 0.95,
                                "recognizer": "Projects"}]})"));
  EXPECT_EQ(run({"analyze", "--json"}, "").out, "{\"language\":\"en\",\"hits\":[]}\n");
}

// The hits of a kind, as --json --explain tells them.
std::vector<json> explained(const std::string& text, const std::string& type,
                            std::vector<std::string> options = {}) {
  options.insert(options.begin(), {"analyze", "--json", "--explain", "--entities", type});
  const auto ran = run(options, text);
  EXPECT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
  return json::parse(ran.out)["hits"];
}

TEST(Analyze, ExplainsWhatMadeAHitAndWhatDroppedIt) {
  const test::Folder folder;
  const auto file = write_recognizers(folder);
  struct Case {
    const char* why;
    const char* text;
    const char* type;
    std::vector<std::string> options;
    const char* expected;  // members of the first hit
  };
  const Case cases[] = {
      {"a pattern, its context",
       "代码：QX",
       "CODE",
       {},
       R"({"recognizer": "Codes", "pattern": "two letters", "context": "代码", "check": null,
           "original_score": 0.2, "outcome": "masked", "step": "", "placeholder": "[CODE1]"})"},
      {"the threshold",
       "见 QX",
       "CODE",
       {},
       R"({"outcome": "dropped", "step": "threshold", "placeholder": null})"},
      {"a profile",
       "于2024年3月15日签订",
       "DATE_TIME",
       {"--profile", "identity"},
       R"({"outcome": "dropped", "step": "profile identity", "placeholder": null})"},
      {"a checksum", "卡号：4111 1111 1111 1111", "CREDIT_CARD", {}, R"({"check": true})"},
      {"digits of a card are kept back",
       "尾号1234的卡",
       "CARD_LAST4",
       {},
       R"({"outcome": "masked", "placeholder": "[CARD_****]"})"},
  };
  for (auto c : cases) {
    SCOPED_TRACE(c.why);
    c.options.insert(c.options.end(), {"--recognizers", file});
    const auto hits = explained(c.text, c.type, c.options);
    ASSERT_FALSE(hits.empty());
    const auto expected = json::parse(c.expected);
    for (const auto& [member, value] : expected.items()) {
      EXPECT_EQ(hits.front()[member], value) << member;
    }
  }
}

TEST(Analyze, RefusesKindsThatNobodyFinds) {
  for (const auto& options : {std::vector<std::string>{}, {"--explain"}}) {
    std::vector<std::string> args = {"analyze", "--entities", "PERSON,NOBODY"};
    args.insert(args.end(), options.begin(), options.end());
    const auto ran = run(args, "甲方");
    EXPECT_EQ(ran.code, cli::EXIT_USAGE);
    EXPECT_NE(ran.err.find("finds NOBODY"), std::string::npos) << ran.err;
  }
}

TEST(Analyze, TellsWhoWonOverAHit) {
  const auto hits = explained("甲方：北京华信科技有限公司", "LOCATION");
  ASSERT_EQ(hits.size(), 1U);
  EXPECT_EQ(hits[0]["outcome"], "dropped");
  EXPECT_NE(hits[0]["step"], "");
  EXPECT_EQ(hits[0]["placeholder"], "[机构1]");
}

TEST(Analyze, ShowsNoSurfaceUnlessAskedTo) {
  const test::Folder folder;
  const std::string text =
      test::read_file(std::string(EXAMPLES_DIR) + "/mixed-distribution-agreement.txt");
  for (const auto& options : {std::vector<std::string>{}, {"--explain"}, {"--json", "--explain"}}) {
    std::vector<std::string> args = {"analyze", "--profile", "strict"};
    args.insert(args.end(), options.begin(), options.end());
    const auto quiet = run(args, text);
    EXPECT_EQ(quiet.code, cli::EXIT_DONE);
    for (const auto* surface : {"Lindenmark", "朗沐", "DE73", "13917720684", "38,500", "2025"}) {
      EXPECT_EQ(quiet.out.find(surface), std::string::npos) << surface;
    }
    args.emplace_back("--show-surfaces");
    EXPECT_NE(run(args, text).out.find("Lindenmark"), std::string::npos);
  }
}

TEST(Analyze, WorksWithAnalyzersThatExplainNothing) {
  const auto finds = test::finding({{"PERSON", "张三"}, {"PERSON", "——"}});
  const auto ran = run({"analyze", "--explain", "--json"}, "张三 ——", finds);
  const auto hits = json::parse(ran.out)["hits"];
  ASSERT_EQ(hits.size(), 2U);
  EXPECT_EQ(hits[0]["outcome"], "masked");
  EXPECT_EQ(hits[1]["step"], "blanks and punctuation");
  EXPECT_EQ(run({"recognizers"}, "", finds).code, cli::EXIT_ANALYZER);
}

}  // namespace
