// The option --recognizers, the example of its page in docs/, and the command
// that lists the recognizers.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/cli/support.hpp"

namespace {

using test::run;

// What stands between ``` and ```, the language behind the first one left out.
std::vector<std::string> blocks_of(const std::string& page) {
  std::vector<std::string> blocks;
  constexpr std::string_view FENCE = "\n```";
  for (auto at = page.find(FENCE); at != page.npos; at = page.find(FENCE, at)) {
    const auto begin = page.find('\n', at + 1) + 1;
    const auto end = page.find(FENCE, begin - 1) + 1;
    blocks.push_back(page.substr(begin, end - begin));
    at = end + FENCE.size() - 1;
  }
  return blocks;
}

TEST(Recognizers, ExampleDoesWhatItsPageSays) {
  const std::string file = EXAMPLES_DIR "/recognizers.yaml";
  const auto blocks = blocks_of(test::read_file(DOCS_DIR "/recognizers.md"));
  ASSERT_GE(blocks.size(), 3U);
  EXPECT_EQ(blocks[0], test::read_file(file));
  const auto ran = run({"anonymize", "--recognizers", file}, blocks[1]);
  EXPECT_EQ(ran.err, "");
  EXPECT_EQ(ran.out, blocks[2]);
}

TEST(Recognizers, FailuresNameTheFile) {
  const test::Folder folder;
  const auto bad = folder.write("r.json", R"([{"name": 7}])");
  auto ran = run({"anonymize", "--recognizers", bad}, "甲方");
  EXPECT_EQ(ran.code, cli::EXIT_INPUT);
  EXPECT_EQ(ran.err, "veildoc: " + bad + ": recognizers[0].name: must be a text\n");
  EXPECT_EQ(ran.out, "");

  const auto missing = folder.path("none.json");
  ran = run({"anonymize", "--recognizers", missing}, "甲方");
  EXPECT_EQ(ran.code, cli::EXIT_INPUT);
  EXPECT_EQ(ran.err, "veildoc: " + missing + ": cannot be read\n");

  // A pattern that takes too long fails as the analyzer does.
  const auto slow = folder.write("slow.yaml",
                                 "- name: Slow\n  supported_entity: S\n  patterns:\n"
                                 "    - {name: aa, regex: '(?:a|aa|aaa)+$', score: 1}\n");
  ran = run({"anonymize", "--recognizers", slow}, std::string(1900, 'a') + "!");
  EXPECT_EQ(ran.code, cli::EXIT_ANALYZER);
  EXPECT_NE(ran.err.find("\"aa\" of recognizer \"Slow\""), std::string::npos) << ran.err;
  EXPECT_EQ(run({"anonymize", "--recognizers", ""}).code, cli::EXIT_USAGE);
}

TEST(Recognizers, AreListed) {
  const test::Folder folder;
  const auto file = folder.write("r.json", R"([
    {"name": "Contract\u001b numbers", "supported_entity": "OWN_KIND", "supported_language": "en",
     "patterns": [{"name": "HT", "regex": "HT-\\\\d+", "score": 0.6}], "deny_list": ["Orca"]}])");
  const auto ran = run({"recognizers", "--json", "--recognizers", file});
  EXPECT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
  const auto list = nlohmann::json::parse(ran.out)["recognizers"];
  const auto named = [&](const std::string& name) {
    for (const auto& entry : list) {
      if (entry["name"] == name) return entry;
    }
    return nlohmann::json();
  };
  EXPECT_EQ(list.back(), nlohmann::json::parse(R"({
    "name": "Contract\u001b numbers", "types": ["OWN_KIND"], "language": "en",
    "patterns": ["HT", "deny_list"], "on": "file"})"));
  EXPECT_EQ(named("PercentRecognizer")["on"], "strict");
  EXPECT_EQ(named("EmailRecognizer")["on"], "default");
  EXPECT_TRUE(named("EmailRecognizer")["language"].is_null());
  EXPECT_EQ(named("HanlpRecognizer")["language"], "zh");
  EXPECT_EQ(named("HanlpRecognizer")["patterns"][0], "ChineseOrganizationFinder");

  const auto table = run({"recognizers", "-l", "zh", "--recognizers", file}).out;
  EXPECT_EQ(table.find("OWN_KIND"), std::string::npos);
  EXPECT_NE(table.find("HanlpRecognizer "), std::string::npos);
  EXPECT_EQ(run({"recognizers", "--patterns", "--recognizers", file}).out.find('\x1B'),
            std::string::npos)
      << "control characters stay away from the terminal";
  EXPECT_EQ(run({"recognizers", "--recognizers", folder.path("none.json")}).code, cli::EXIT_INPUT);
}

}  // namespace
