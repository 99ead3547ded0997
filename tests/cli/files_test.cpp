// The files that the command writes, and those it reads.
#include <filesystem>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "core/restore/sealed_mapping.hpp"
#include "tests/cli/support.hpp"

namespace {

using nlohmann::json;
using test::Folder;
using test::run;
using Names = std::vector<std::string>;

const auto FILE_ANALYZER =
    test::finding({{"ORGANIZATION", "北京华信科技有限公司"}, {"MONEY", "人民币100元"}});
constexpr auto TEXT = "甲方：北京华信科技有限公司，付人民币100元，付人民币100元。";
constexpr auto MASKED = "甲方：[机构1]，付人民币[MONEY1]元，付人民币[MONEY1]元。";

TEST(Files, OutputAndMappingAreWritten) {
  const Folder folder;
  const auto in = folder.write("a.txt", TEXT);
  const auto ran = run({"anonymize", in, "-o", folder.path("b.txt"), "--mapping", folder.path("m")},
                       "", FILE_ANALYZER);
  EXPECT_EQ(ran.code, cli::EXIT_DONE);
  EXPECT_EQ(ran.out + ran.err, "");
  EXPECT_EQ(folder.read("b.txt"), MASKED);
  EXPECT_EQ(folder.mode("m"), "0600");
  EXPECT_EQ(folder.names(), (Names{"a.txt", "b.txt", "m"}));
  EXPECT_EQ(json::parse(folder.read("m")), json::parse(R"({
    "format": "veildoc-mapping", "version": 1, "language": "zh",
    "masked_sha256": ")" + core::restore::sha256_hex(MASKED) +
                                                       R"(",
    "entries": [{"placeholder": "[机构1]", "surfaces": ["北京华信科技有限公司"], "count": 1},
                {"placeholder": "[MONEY1]", "surfaces": ["100"], "count": 2}]})"));
}

TEST(Files, AFileThatIsReplacedKeepsItsModeUnlessItHoldsSecrets) {
  const Folder folder;
  const auto in = folder.write("a.txt", TEXT);
  for (const auto* name : {"out", "json", "mapping"}) {
    ::chmod(folder.write(name, "old").c_str(), 0644);
  }
  run({"anonymize", in, "-o", folder.path("out"), "--mapping", folder.path("mapping")}, "",
      FILE_ANALYZER);
  run({"anonymize", in, "-o", folder.path("json"), "--json"}, "", FILE_ANALYZER);
  EXPECT_EQ(folder.read("out"), MASKED);
  EXPECT_EQ(folder.mode("out"), "0644");
  EXPECT_EQ(folder.mode("mapping"), "0600");
  EXPECT_EQ(folder.mode("json"), "0600");
}

TEST(Files, OutputMayReplaceTheInputAndFollowsLinks) {
  const Folder folder;
  folder.write("a.txt", TEXT);
  std::filesystem::create_symlink("a.txt", folder.path("link"));
  const auto link = folder.path("link");
  EXPECT_EQ(run({"anonymize", link, "-o", link}, "", FILE_ANALYZER).code, cli::EXIT_DONE);
  EXPECT_EQ(folder.read("a.txt"), MASKED);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(run({"anonymize", folder.path("a.txt"), "--mapping", link}, "", FILE_ANALYZER).code,
            cli::EXIT_USAGE);
}

TEST(Files, AFailureLeavesNothingBehind) {
  const Folder folder;
  const auto in = folder.write("a.txt", TEXT);
  const auto bad = folder.write("bad.txt", "\xFF");
  folder.write("m", "old");
  const auto mapping = folder.path("m");
  struct Case {
    const char* why;
    std::vector<std::string> args;
    int code;
  };
  const Case cases[] = {
      {"the output has no folder",
       {in, "-o", folder.path("x/y"), "--mapping", mapping},
       cli::EXIT_FAILED},
      {"the output is a folder, where mappings go into one, too",
       {in, "-o", folder.path(""), "--mapping", mapping},
       cli::EXIT_USAGE},
      {"the mapping has no folder",
       {in, "-o", folder.path("out"), "--mapping", folder.path("x/y")},
       cli::EXIT_FAILED},
      {"the input is bad", {bad, "-o", folder.path("out"), "--mapping", mapping}, cli::EXIT_INPUT},
  };
  for (auto c : cases) {
    SCOPED_TRACE(c.why);
    c.args.insert(c.args.begin(), "anonymize");
    const auto ran = run(c.args, "", FILE_ANALYZER);
    EXPECT_EQ(ran.code, c.code);
    EXPECT_EQ(ran.out, "");
    EXPECT_EQ(folder.names(), (Names{"a.txt", "bad.txt", "m"}));
    EXPECT_EQ(folder.read("m"), "old");
  }
}

TEST(Files, InputThatCannotBeRead) {
  const Folder folder;
  for (const auto& path : {folder.path("missing"), folder.path("")}) {
    const auto ran = run({"analyze", path}, "", FILE_ANALYZER);
    EXPECT_EQ(ran.code, cli::EXIT_INPUT);
    EXPECT_TRUE(ran.err.starts_with("veildoc: cannot read " + path)) << ran.err;
  }
}

TEST(Json, OffsetsCountCodePointsAndSpliceToTheText) {
  const std::string in = "😀甲方：北京华信科技有限公司，付人民币100元";
  const auto ran = run({"anonymize", "--json"}, "\xEF\xBB\xBF" + in, FILE_ANALYZER);
  EXPECT_EQ(ran.code, cli::EXIT_DONE);
  EXPECT_EQ(json::parse(ran.out), json::parse(R"({
    "language": "zh", "text": "😀甲方：[机构1]，付人民币[MONEY1]元",
    "mapping": [{"placeholder": "[机构1]", "surface": "北京华信科技有限公司"},
                {"placeholder": "[MONEY1]", "surface": "100"}],
    "replacements": [
      {"start": 4, "end": 14, "tag": "ORG", "placeholder": "[机构1]"},
      {"start": 19, "end": 22, "tag": "MONEY", "placeholder": "[MONEY1]"}]})"));
}

}  // namespace
