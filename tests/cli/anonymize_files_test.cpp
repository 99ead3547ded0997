// The command on several documents, on folders, and on the documents of a matter.
#include <csignal>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/cli/support.hpp"
#include "tests/documents/support.hpp"
#include "tests/support/notation.hpp"

namespace {

using nlohmann::json;
using test::Folder;
using test::run;
using Names = std::vector<std::string>;

const auto MATTER_ANALYZER = test::finding({{"ORGANIZATION", "北京华信科技有限公司"},
                                            {"ORGANIZATION", "上海蓝鲸软件有限公司"},
                                            {"PERSON", "张伟民"}});
const std::string FIRST = "甲方：北京华信科技有限公司\n乙方：上海蓝鲸软件有限公司\n";
const std::string SECOND = "上海蓝鲸软件有限公司，张伟民\n";

// Files below a folder, sorted.
Names files_in(const std::string& folder) {
  Names names;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_directory()) continue;
    names.push_back(std::filesystem::relative(entry.path(), folder).string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

TEST(AnonymizeFiles, KeepsTheLayoutOfAFolder) {
  const Folder folder;
  folder.write("in/a.txt", FIRST);
  folder.write("in/sub/b.docx", test::docx("<w:p><w:r><w:t>张伟民</w:t></w:r></w:p>"));
  folder.write("in/sub/张伟民.txt", SECOND);
  folder.write("in/.hidden/c.txt", FIRST);
  folder.write("in/.d.txt", FIRST);
  const auto ran = run({"anonymize", folder.path("in"), "-o", folder.path("in/out"), "--mappings",
                        folder.path("maps"), "--report", folder.path("in/report")},
                       "", MATTER_ANALYZER);
  EXPECT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
  EXPECT_EQ(ran.out, "");
  EXPECT_EQ(files_in(folder.path("in/out")), (Names{"a.txt", "sub/b.docx", "sub/张伟民.txt"}));
  EXPECT_EQ(folder.read("in/out/a.txt"), "甲方：[机构1]\n乙方：[机构2]\n");
  EXPECT_EQ(folder.read("in/out/sub/张伟民.txt"), "[机构1]，[NAME1]\n");
  EXPECT_EQ(files_in(folder.path("maps")), (Names{"a.txt.mapping.json", "sub/b.docx.mapping.json",
                                                  "sub/张伟民.txt.mapping.json"}));
  EXPECT_EQ(folder.mode("maps/a.txt.mapping.json"), "0600");
  EXPECT_EQ(ran.err, "veildoc: " + folder.path("in/sub/张伟民.txt") +
                         ": warning: the name of the file holds something that was masked\n");
  const auto report = json::parse(folder.read("in/report"));
  ASSERT_EQ(report["files"].size(), 3U);
  EXPECT_EQ(report["files"][1]["file"], folder.path("in/sub/b.docx"));
  EXPECT_EQ(report["files"][1]["output"], folder.path("in/out/sub/b.docx"));
  EXPECT_EQ(report["files"][1]["document"], "docx");
  EXPECT_EQ(report["files"][1]["kinds"], json::parse(R"({"NAME":1})"));
  // What was written is no document of the next run.
  EXPECT_EQ(run({"anonymize", folder.path("in"), "-o", folder.path("in/out"), "--overwrite",
                 "--report", folder.path("in/report")},
                "", MATTER_ANALYZER)
                .code,
            cli::EXIT_DONE);
  EXPECT_EQ(files_in(folder.path("in/out")).size(), 3U);
}

TEST(AnonymizeFiles, OneThatFailsDoesNotStopTheOthers) {
  const Folder folder;
  folder.write("in/a.png", std::string("\x89PNG\0", 5));
  folder.write("in/b.txt", FIRST);
  folder.write("in/c.docx",
               test::docx("<w:p><w:r><w:t>张伟民</w:t></w:r></w:p>",
                          {{"word/settings.xml", "wordprocessingml.settings+xml", "settings",
                            test::rooted("w:settings", "<w:x>张伟民</w:x>")}}));
  folder.write("in/d.json", R"({"format": "veildoc-mapping", "version": 1})");
  folder.write("in/e.txt", SECOND);
  const auto ran = run(
      {"anonymize", folder.path("in"), "-o", folder.path("out"), "--report", folder.path("report")},
      "", MATTER_ANALYZER);
  EXPECT_EQ(ran.code, cli::EXIT_FAILED);
  EXPECT_EQ(files_in(folder.path("out")), (Names{"b.txt", "e.txt"}));
  const auto says = test::lines(ran.err);
  ASSERT_EQ(says.size(), 4U) << ran.err;
  EXPECT_TRUE(says[0].starts_with("veildoc: " + folder.path("in/a.png") + ": "));
  EXPECT_TRUE(says[1].starts_with("veildoc: " + folder.path("in/c.docx") + ": "));
  EXPECT_NE(says[2].find("d.json: a mapping file"), std::string::npos);
  EXPECT_EQ(says[3], "veildoc: 3 of 5 files were not masked");
  const auto report = json::parse(folder.read("report"));
  EXPECT_TRUE(report["files"][0].contains("error"));
  EXPECT_FALSE(report["files"][1].contains("error"));
  EXPECT_EQ(ran.err.find("张伟民"), std::string::npos);
  std::filesystem::remove(folder.path("in/c.docx"));
  EXPECT_EQ(
      run({"anonymize", folder.path("in"), "-o", folder.path("out2")}, "", MATTER_ANALYZER).code,
      cli::EXIT_INPUT);
}

TEST(AnonymizeFiles, NothingIsOverwritten) {
  const Folder folder;
  const auto a = folder.write("in/a.txt", FIRST);
  const auto other = folder.write("other/a.txt", SECOND);
  const auto b = folder.write("b.txt", SECOND);
  const auto in = folder.path("in");
  const auto out = folder.path("out");
  folder.write("there/a.txt", "old");
  folder.write("maps/b.txt.mapping.json", "old");
  struct Case {
    const char* why;
    Names args;
    int code;
    const char* says;
  };
  const Case cases[] = {
      {"no folder", {a, b}, cli::EXIT_USAGE, "-o DIR"},
      {"one mapping for two", {a, b, "-o", out, "--mapping", out}, cli::EXIT_USAGE, "--mappings"},
      {"JSON of two", {a, b, "-o", out, "--json"}, cli::EXIT_USAGE, "--json is for one"},
      {"standard input among them", {a, "-", "-o", out}, cli::EXIT_USAGE, "standard input"},
      {"the folder is a file", {in, "-o", b}, cli::EXIT_USAGE, "into a folder"},
      {"mappings beside the documents",
       {in, "-o", out, "--mappings", out},
       cli::EXIT_USAGE,
       "same folder"},
      {"over the inputs", {in, "-o", in}, cli::EXIT_USAGE, "over"},
      {"over the inputs, even so", {in, "-o", in, "--overwrite"}, cli::EXIT_USAGE, "over"},
      {"two to one place", {a, other, "-o", out}, cli::EXIT_USAGE, "both"},
      {"there already", {in, "-o", folder.path("there")}, cli::EXIT_FAILED, "--overwrite"},
      {"a mapping that is there",
       {b, "-o", out, "--mappings", folder.path("maps")},
       cli::EXIT_FAILED,
       "--overwrite"},
      {"over the matter",
       {a, b, "-o", folder.path("there"), "--overwrite", "--matter", folder.path("there/a.txt")},
       cli::EXIT_USAGE,
       "over"},
      {"nothing there", {folder.path("none"), b, "-o", out}, cli::EXIT_INPUT, "none"},
  };
  for (auto c : cases) {
    SCOPED_TRACE(c.why);
    c.args.insert(c.args.begin(), "anonymize");
    const auto ran = run(c.args, "", MATTER_ANALYZER);
    EXPECT_EQ(ran.code, c.code);
    EXPECT_NE(ran.err.find(c.says), std::string::npos) << ran.err;
    EXPECT_FALSE(std::filesystem::exists(out));
    EXPECT_EQ(folder.read("there/a.txt"), "old");
    EXPECT_EQ(folder.read("in/a.txt"), FIRST);
  }
  const auto ran =
      run({"anonymize", in, "-o", folder.path("there"), "--overwrite"}, "", MATTER_ANALYZER);
  EXPECT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
  EXPECT_EQ(folder.read("there/a.txt"), "甲方：[机构1]\n乙方：[机构2]\n");
}

TEST(AnonymizeFiles, AMatterNumbersAllItsDocuments) {
  const Folder folder;
  const auto a = folder.write("a.txt", FIRST);
  const auto b = folder.write("b.txt", SECOND);
  const auto matter = folder.path("m.json");
  const auto out = folder.path("out");
  std::filesystem::create_directory(out);
  const auto with = [&](Names args) {
    args.insert(args.begin(), "anonymize");
    args.insert(args.end(), {"--matter", matter});
    return run(args, "", MATTER_ANALYZER);
  };
  EXPECT_EQ(with({a, "-o", out, "--mappings", folder.path("maps")}).code, cli::EXIT_DONE);
  EXPECT_EQ(folder.read("out/a.txt"), "甲方：[机构1]\n乙方：[机构2]\n");
  // Looking changes nothing.
  const auto before = folder.read("m.json");
  EXPECT_NE(with({b, "--dry-run"}).out.find("[机构2]"), std::string::npos);
  EXPECT_EQ(folder.read("m.json"), before);
  // In a later run, in the other language, to standard output.
  const auto ran = with({b, "--labels", "en", "--mapping", folder.path("b.json")});
  EXPECT_EQ(ran.out, "[ORG2]，[NAME1]\n") << ran.err;
  EXPECT_EQ(folder.mode("m.json"), "0600");
  // The lock is gone, and no file is left over.
  EXPECT_EQ(folder.names(), (Names{"a.txt", "b.json", "b.txt", "m.json", "maps", "out"}));
  // Both come back, by the matter and by their own mappings.
  for (const auto& mapping : {matter, folder.path("maps/a.txt.mapping.json")}) {
    EXPECT_EQ(run({"restore", folder.path("out/a.txt"), mapping}).out, FIRST);
  }
  for (const auto& mapping : {matter, folder.path("b.json")}) {
    EXPECT_EQ(run({"restore", "-", mapping}, ran.out).out, SECOND);
  }
}

TEST(AnonymizeFiles, ADocumentOfAMatterInWordComesBack) {
  const Folder folder;
  const auto body =
      "<w:p><w:r><w:t>甲方：北京华信科技有限公司</w:t></w:r></w:p><w:p><w:r><w:t>张伟民</w:t></w:r></w:p>";
  folder.write("in/a.txt", SECOND);
  folder.write("in/b.docx", test::docx(body));
  const auto matter = folder.path("m.json");
  const auto ran = run({"anonymize", folder.path("in"), "-o", folder.path("out"), "--matter",
                        matter, "--mappings", folder.path("maps")},
                       "", MATTER_ANALYZER);
  ASSERT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
  const auto masked = folder.path("out/b.docx");
  const auto text = [](const std::string& bytes) {
    return test::u8(documents::read_document(bytes)->text());
  };
  EXPECT_NE(text(folder.read("out/b.docx")).find("甲方：[机构2]"), std::string::npos);
  for (const auto& mapping : {matter, folder.path("maps/b.docx.mapping.json")}) {
    const auto restored = run({"restore", masked, mapping});
    EXPECT_EQ(restored.code, cli::EXIT_DONE) << restored.err;
    EXPECT_EQ(restored.err, "");
    EXPECT_EQ(text(restored.out), text(folder.read("in/b.docx")));
  }
}

TEST(AnonymizeFiles, AMatterIsRefusedBeforeAnythingIsWritten) {
  const Folder folder;
  const auto in = folder.write("a.txt", FIRST);
  const auto matter = folder.path("m.json");
  run({"anonymize", in, "--matter", matter}, "", MATTER_ANALYZER);
  const auto whole = folder.read("m.json");
  run({"anonymize", in, "--mapping", folder.path("one.json")}, "", MATTER_ANALYZER);
  struct Case {
    const char* why;
    std::string bytes;
    const char* says;
  };
  const Case cases[] = {
      {"damaged", whole.substr(0, whole.size() / 2), "damaged"},
      {"empty", "", "damaged"},
      {"of one document", folder.read("one.json"), "no matter"},
      {"another file", FIRST, "no mapping file"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    folder.write("m.json", c.bytes);
    const auto ran = run({"anonymize", in, "-o", folder.path("out"), "--mappings",
                          folder.path("maps"), "--matter", matter},
                         "", MATTER_ANALYZER);
    EXPECT_EQ(ran.code, cli::EXIT_INPUT);
    const auto one = run({"anonymize", in, "-o", folder.path("out.txt"), "--matter", matter}, "",
                         MATTER_ANALYZER);
    EXPECT_EQ(one.code, cli::EXIT_INPUT);
    EXPECT_NE(one.err.find(c.says), std::string::npos) << one.err;
    EXPECT_FALSE(std::filesystem::exists(folder.path("out")));
    EXPECT_FALSE(std::filesystem::exists(folder.path("out.txt")));
    EXPECT_EQ(folder.read("m.json"), c.bytes);
  }
}

TEST(AnonymizeFiles, ASealedMatterStaysSealed) {
  const Folder folder;
  const auto a = folder.write("a.txt", FIRST);
  const auto b = folder.write("b.txt", SECOND);
  const auto key = folder.write("key", "correct horse\n");
  const auto matter = folder.path("m.json");
  ASSERT_EQ(run({"anonymize", a, "--matter", matter, "--encrypt", "--passphrase-file", key}, "",
                MATTER_ANALYZER)
                .code,
            cli::EXIT_DONE);
  EXPECT_NE(folder.read("m.json").find("sealed"), std::string::npos);
  const auto ran =
      run({"anonymize", b, "--matter", matter, "--passphrase-file", key}, "", MATTER_ANALYZER);
  EXPECT_EQ(ran.out, "[机构2]，[NAME1]\n") << ran.err;
  EXPECT_EQ(folder.read("m.json").find("张伟民"), std::string::npos);
  EXPECT_EQ(run({"restore", "-", matter, "--passphrase-file", key}, ran.out).out, SECOND);
  const auto wrong = folder.write("wrong", "another\n");
  EXPECT_EQ(
      run({"anonymize", b, "--matter", matter, "--passphrase-file", wrong}, "", MATTER_ANALYZER)
          .code,
      cli::EXIT_INPUT);
}

// Runs something at the second document.
class Meddling : public core::anonymization::Analyzer {
 public:
  explicit Meddling(std::function<void()> meddle) : meddle_(std::move(meddle)) {}
  std::vector<core::anonymization::RecognizerResult> analyze(std::u32string_view text,
                                                             std::string_view) const override {
    if (++calls_ == 2) meddle_();
    return {{"PERSON", 0, static_cast<core::anonymization::Offset>(text.size()), 0.9}};
  }

 private:
  std::function<void()> meddle_;
  mutable int calls_ = 0;
};

cli::AnalyzerFactory meddling(const std::function<void()>& meddle) {
  return [meddle](const cli::AnalyzerOptions&) { return std::make_unique<Meddling>(meddle); };
}

TEST(AnonymizeFiles, TwoRunsCannotHaveOneMatter) {
  const Folder folder;
  for (const auto* name : {"in/a.txt", "in/b.txt", "in/c.txt"}) folder.write(name, "王建国");
  const Names args = {"anonymize", folder.path("in"), "--matter", folder.path("m.json")};
  auto first = args;
  first.insert(first.end(), {"-o", folder.path("out")});
  auto second = args;
  second.insert(second.end(), {"-o", folder.path("out2")});
  test::Ran other;
  const auto ran = run(first, "", meddling([&] { other = run(second, "", MATTER_ANALYZER); }));
  EXPECT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
  EXPECT_EQ(other.code, cli::EXIT_FAILED);
  EXPECT_NE(other.err.find("another veildoc is working on it"), std::string::npos) << other.err;
  EXPECT_FALSE(std::filesystem::exists(folder.path("out2")));
  EXPECT_EQ(folder.names(), (Names{"in", "m.json", "out"}));
}

TEST(AnonymizeFiles, AnInterruptLeavesWhatIsFinished) {
  const Folder folder;
  for (const auto* name : {"in/a.txt", "in/b.txt", "in/c.txt"})
    folder.write(name, std::string(name) + "王建国");
  const auto ran = run(
      {"anonymize", folder.path("in"), "-o", folder.path("out"), "--matter", folder.path("m.json")},
      "", meddling([] { std::raise(SIGINT); }));
  EXPECT_EQ(ran.code, cli::EXIT_INTERRUPTED);
  EXPECT_EQ(ran.err, "veildoc: interrupted; 2 of 3 documents are masked\n");
  EXPECT_EQ(files_in(folder.path("out")), (Names{"a.txt", "b.txt"}));
  EXPECT_EQ(json::parse(folder.read("m.json"))["documents"].size(), 2U);
}

TEST(AnonymizeFiles, ReviewOfSeveral) {
  const Folder folder;
  folder.write("in/a.txt", FIRST);
  folder.write("in/b.txt", SECOND);
  const auto ran = run({"anonymize", folder.path("in"), "--dry-run"}, "", MATTER_ANALYZER);
  EXPECT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
  const auto lines = test::lines(ran.out);
  ASSERT_EQ(lines.size(), 9U) << ran.out;
  EXPECT_EQ(lines[0], folder.path("in/a.txt"));
  EXPECT_EQ(lines[5], folder.path("in/b.txt"));
  EXPECT_EQ(folder.names(), Names{"in"});
}

}  // namespace
