// The option --recognizers, and the example of its page in docs/.
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "tests/cli/support.hpp"

namespace {

using test::run;

std::string read(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

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
  const auto blocks = blocks_of(read(DOCS_DIR "/recognizers.md"));
  ASSERT_GE(blocks.size(), 3U);
  EXPECT_EQ(blocks[0], read(file));
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

}  // namespace
