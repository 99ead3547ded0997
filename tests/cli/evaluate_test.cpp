// The command `veildoc evaluate`.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/cli/support.hpp"

namespace {

using nlohmann::json;
using test::run;

const auto EVALUATED = test::finding(
    {{"PERSON", "张三"}, {"PERSON", "Ann Lee"}, {"ORGANIZATION", "该项目"}, {"MONEY", "100元"}});

void write_corpus(const test::Folder& folder) {
  folder.write("zh01.txt",
               "甲方：<<PERSON#1:张三>>，<<PERSON#2:李四>>\n付<<MONEY#1:100元>>，该项目\n");
  folder.write("en01-nda.txt", "By <<PERSON#1:Ann Lee>>.\n");
  folder.write("notes.md", "<<");
}

TEST(Evaluate, ScoresFilesGroupsAndTypes) {
  const test::Folder folder;
  write_corpus(folder);
  const auto ran = run({"evaluate", folder.path(""), "--json"}, "", EVALUATED);
  EXPECT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
  EXPECT_EQ(ran.err, "");
  const auto report = json::parse(ran.out);
  EXPECT_EQ(report["all"]["marks"], 4);
  EXPECT_EQ(report["all"]["leaked"], 1);
  EXPECT_EQ(report["all"]["leak_rate"], 0.25);
  EXPECT_EQ(report["all"]["overmasked_characters"], 3);
  EXPECT_EQ(report["groups"]["en"]["leaked"], 0);
  EXPECT_EQ(report["groups"]["zh"]["files"], 1);
  EXPECT_EQ(report["types"]["PERSON"]["marks"], 3);
  ASSERT_EQ(report["files"].size(), 2U);
  EXPECT_EQ(report["files"][1]["name"], "zh01.txt");
  EXPECT_EQ(report["files"][1]["leaks"], json::parse(R"([{"type":"PERSON","start":6,"end":8}])"));

  const auto table = run({"evaluate", folder.path("")}, "", EVALUATED).out;
  EXPECT_NE(table.find("PERSON      3       1      33.3%"), std::string::npos) << table;
  EXPECT_EQ(table.find("李四"), std::string::npos);
  const auto open = run({"evaluate", folder.path(""), "--show-surfaces"}, "", EVALUATED).out;
  EXPECT_NE(open.find("zh01.txt:1  leaked PERSON  李四"), std::string::npos) << open;
  EXPECT_NE(open.find("zh01.txt:2  overmasked     该项目"), std::string::npos) << open;
}

TEST(Evaluate, LimitsDecideTheExitCode) {
  const test::Folder folder;
  write_corpus(folder);
  const auto code = [&](std::vector<std::string> limits) {
    limits.insert(limits.begin(), {"evaluate", folder.path("")});
    const auto ran = run(limits, "", EVALUATED);
    EXPECT_NE(ran.out, "") << "the scores are told in any case";
    return ran.code;
  };
  EXPECT_EQ(code({"--max-leak", "25", "--max-merged", "0", "--max-split", "0"}), cli::EXIT_DONE);
  EXPECT_EQ(code({"--max-leak", "24.9"}), cli::EXIT_FAILED);
  EXPECT_EQ(code({"--max-overmask", "2"}), cli::EXIT_FAILED);
}

TEST(Evaluate, NamesFileAndLineOfAMalformedMark) {
  const test::Folder folder;
  struct Case {
    const char* name;
    const char* bytes;
    std::string says;
  };
  const Case cases[] = {
      {"a.txt", "甲\n乙 <<PERSON#1:张三\n", "a.txt: line 2: a mark that does not end"},
      {"b.txt", "\xFF", "b.txt: not valid UTF-8"},
  };
  for (const auto& c : cases) {
    const auto sub = std::string("folder-") + c.name;
    folder.write(sub + "/" + c.name, c.bytes);
    const auto ran = run({"evaluate", folder.path(sub)}, "", EVALUATED);
    EXPECT_EQ(ran.code, cli::EXIT_INPUT);
    EXPECT_EQ(ran.out, "");
    EXPECT_NE(ran.err.find(c.says), std::string::npos) << ran.err;
    EXPECT_EQ(ran.err.find("张三"), std::string::npos);
  }
  folder.write("empty/notes.md", "");
  folder.write("unmarked/a.txt", "甲方：张三");
  for (const auto* path : {"missing", "empty", "unmarked"}) {
    const auto ran = run({"evaluate", folder.path(path)}, "", EVALUATED);
    EXPECT_EQ(ran.code, cli::EXIT_INPUT);
    EXPECT_NE(ran.err.find(folder.path(path)), std::string::npos) << ran.err;
  }
}

}  // namespace
