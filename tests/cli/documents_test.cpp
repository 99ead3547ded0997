// Documents in other formats than plain text, from file to file.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/cli/support.hpp"
#include "tests/documents/support.hpp"

namespace {

using nlohmann::json;
using test::Folder;

const auto PEOPLE = test::finding({{"ORGANIZATION", "北京华信科技有限公司"}, {"PERSON", "张伟民"}});
const std::string BODY =
    "<w:p><w:r><w:t>北京华信科技</w:t></w:r><w:r><w:t>有限公司，张伟民</w:t></w:r></w:p>";

TEST(AnonymizeDocuments, KeepsTheFormat) {
  const Folder folder;
  // The name of a file says nothing.
  const auto in = folder.write(
      "contract.txt", test::docx(BODY, {{"word/media/a.png", "", "image", "pixels"},
                                        {"word/people.xml", "x.people+xml", "people", "<x/>"}}));
  const auto ran = test::run({"anonymize", in, "-o", folder.path("out"), "--report",
                              folder.path("report"), "--mapping", folder.path("mapping")},
                             "", PEOPLE);
  EXPECT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
  EXPECT_EQ(ran.out, "");
  EXPECT_NE(ran.err.find("1 part was not examined"), std::string::npos) << ran.err;
  const auto parts = documents::read_package(folder.read("out"));
  ASSERT_EQ(parts.size(), 5U);
  EXPECT_NE(parts[2].bytes.find("[机构1]"), std::string::npos);
  EXPECT_NE(parts[2].bytes.find("，[NAME1]"), std::string::npos);
  const auto report = json::parse(folder.read("report"));
  EXPECT_EQ(report["document"], "docx");
  EXPECT_EQ(report["kinds"], json::parse(R"({"ORG":1,"NAME":1})"));
  EXPECT_EQ(report["stories"][0]["story"], "body");
  EXPECT_EQ(report["not_examined"], json::parse(R"(["word/media/a.png: picture"])"));
  EXPECT_EQ(report["removed"], json::parse(R"(["people: 1"])"));
  EXPECT_EQ(folder.mode("mapping"), "0600");
  EXPECT_EQ(json::parse(folder.read("mapping"))["entries"][0]["surfaces"][0],
            "北京华信科技有限公司");
}

TEST(AnonymizeDocuments, LeavesNothingBehindWhenItFails) {
  const Folder folder;
  const auto leaking = folder.write(
      "leaking.docx",
      test::docx(BODY, {{"word/settings.xml", "wordprocessingml.settings+xml", "settings",
                         test::rooted("w:settings", "<w:x>张伟民</w:x>")}}));
  const auto legacy = folder.write("old.doc", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
  struct Case {
    std::string in;
    int code;
    const char* says;
  };
  const Case cases[] = {
      {leaking, cli::EXIT_FAILED, "can still be read in word/settings.xml"},
      {legacy, cli::EXIT_INPUT, "old.doc: a legacy Office file"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.says);
    const auto ran = test::run({"anonymize", c.in, "-o", folder.path("out"), "--report",
                                folder.path("report"), "--mapping", folder.path("mapping")},
                               "", PEOPLE);
    EXPECT_EQ(ran.code, c.code);
    EXPECT_EQ(ran.out, "");
    EXPECT_NE(ran.err.find(c.says), std::string::npos) << ran.err;
    EXPECT_EQ(ran.err.find("张伟民"), std::string::npos) << ran.err;
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"leaking.docx", "old.doc"}));
  }
}

TEST(OtherCommands, ReadThemToo) {
  const Folder folder;
  const auto in =
      folder.write("in/zh01.docx",
                   test::docx("<w:p><w:r><w:t>甲</w:t></w:r></w:p>"
                              "<w:p><w:r><w:t>&lt;&lt;PERSON#1:张</w:t></w:r><w:r><w:t>伟民&gt;&gt;"
                              "</w:t></w:r></w:p>"));
  const auto hits =
      json::parse(test::run({"analyze", in, "--json", "--show-surfaces"}, "", PEOPLE).out)["hits"];
  ASSERT_EQ(hits.size(), 1U);
  EXPECT_EQ(hits[0]["surface"], "张伟民");
  const auto scores =
      json::parse(test::run({"evaluate", folder.path("in"), "--json"}, "", PEOPLE).out);
  EXPECT_EQ(scores["all"]["marks"], 1);
  EXPECT_EQ(scores["all"]["leaked"], 0);
}

TEST(AnonymizeDocuments, RefusesAReportOverOtherFiles) {
  const Folder folder;
  const auto in = folder.write("a.txt", "张伟民");
  const std::vector<std::vector<std::string>> cases = {
      {"--report", in},
      {"--report", folder.path("o"), "-o", folder.path("o")},
      {"--report", folder.path("m"), "--mapping", folder.path("m")},
  };
  for (auto args : cases) {
    args.insert(args.begin(), {"anonymize", in});
    EXPECT_EQ(test::run(args, "", PEOPLE).code, cli::EXIT_USAGE);
  }
  EXPECT_EQ(folder.names(), std::vector<std::string>{"a.txt"});
}

}  // namespace
