// The way back, through the command.
#include <gtest/gtest.h>

#include "tests/cli/support.hpp"
#include "tests/documents/support.hpp"

namespace {

using test::Folder;
using test::run;

const auto RESTORE_ANALYZER = test::finding({{"ORGANIZATION", "北京华信科技有限公司"},
                                             {"ORGANIZATION", "华信科技"},
                                             {"CARD_LAST4", "6217001520041234"},
                                             {"MONEY", "人民币100元"}});
constexpr auto DOCUMENT =
    "\xEF\xBB\xBF甲方：北京华信科技有限公司（简称华信科技）\r\n"
    "华信科技付人民币100元，卡号6217001520041234，见[机构9]。";

// A folder with a masked document, masked.txt, and its mapping, m.
class MaskedFolder : public Folder {
 public:
  explicit MaskedFolder(const std::vector<std::string>& options = {}) {
    std::vector<std::string> args = {
        "anonymize", write("a.txt", DOCUMENT), "-o", path("masked.txt"), "--mapping", path("m")};
    args.insert(args.end(), options.begin(), options.end());
    const auto ran = run(args, "", RESTORE_ANALYZER);
    EXPECT_EQ(ran.code, cli::EXIT_DONE) << ran.err;
  }
};

TEST(RestoreCommand, WritesTheDocumentThatWasMasked) {
  const MaskedFolder folder;
  const auto ran = run({"restore", folder.path("masked.txt"), folder.path("m")});
  EXPECT_EQ(ran.code, cli::EXIT_DONE);
  EXPECT_EQ(ran.out, DOCUMENT);
  EXPECT_EQ(ran.err, "");

  run({"restore", folder.path("masked.txt"), folder.path("m"), "-o", folder.path("out")});
  EXPECT_EQ(folder.read("out"), DOCUMENT);
  EXPECT_EQ(folder.mode("out"), "0600");
  EXPECT_EQ(run({"restore", "-", folder.path("m")}, folder.read("masked.txt")).out, DOCUMENT);
}

TEST(RestoreCommand, ExamplesComeBackByteByByte) {
  for (const auto* name : {"zh-equipment-purchase.txt", "en-services-agreement.txt",
                           "mixed-distribution-agreement.txt"}) {
    SCOPED_TRACE(name);
    const Folder folder;
    const auto in = std::string(EXAMPLES_DIR "/") + name;
    const auto masked = run({"anonymize", in, "--mapping", folder.path("m")});
    EXPECT_EQ(masked.err, "");
    const auto ran = run({"restore", "-", folder.path("m")}, masked.out);
    EXPECT_EQ(ran.out, test::read_file(in));
    EXPECT_EQ(ran.err, "");
    // Without the proof that nothing was edited.
    EXPECT_EQ(run({"restore", "-", folder.path("m")}, masked.out + "\n").out,
              test::read_file(in) + "\n");
  }
}

constexpr auto EDITED =
    "致【机构1】：\n[DATE5]见 [机构１]，\n机构1的[机构9]，卡[CARD_****1234]、[CARD_****9999]。";

TEST(RestoreCommand, TellsWhatItLeavesAndGuessesWithoutQuotingIt) {
  const MaskedFolder folder;
  const auto ran = run({"restore", "-", folder.path("m")}, EDITED);
  EXPECT_EQ(ran.code, cli::EXIT_DONE);
  EXPECT_EQ(ran.out,
            "致北京华信科技有限公司：\n[DATE5]见 北京华信科技有限公司，\n"
            "机构1的[机构9]，卡6217001520041234、[CARD_****9999]。");
  EXPECT_EQ(ran.err,
            "veildoc: warning: 2 placeholders with several surfaces were restored by the first "
            "of them: [机构1] in line 1, [机构1] in line 2\n"
            "veildoc: warning: 2 placeholders are not in the mapping and were left: [DATE5] in "
            "line 2, [CARD_****] in line 3\n"
            "veildoc: warning: 1 name of a placeholder stands without brackets and was left: "
            "[机构1] in line 3\n");
  const auto shown = run({"restore", "-", folder.path("m"), "--show-surfaces"}, EDITED);
  EXPECT_EQ(shown.out, ran.out);
  EXPECT_NE(shown.err.find("[机构1] in line 1 (北京华信科技有限公司)"), std::string::npos)
      << shown.err;
}

TEST(RestoreCommand, ChecksWithoutWriting) {
  const MaskedFolder folder;
  const auto good = run({"restore", "--check", "-", folder.path("m")}, folder.read("masked.txt"));
  EXPECT_EQ(good.code, cli::EXIT_DONE);
  EXPECT_EQ(good.err, "");
  EXPECT_TRUE(good.out.starts_with("The text is as it was when it was masked.\n")) << good.out;

  const auto bad = run({"restore", "--check", "-", folder.path("m")}, EDITED);
  EXPECT_EQ(bad.code, cli::EXIT_FAILED);
  EXPECT_EQ(test::lines(bad.out),
            (std::vector<std::string>{
                "The text was edited since it was masked.", "",
                "RESULT                 PLACEHOLDERS", "restored                          2",
                "restored by order                 0", "first surface taken               2",
                "not in the mapping                2", "ambiguous                         0",
                "without brackets                  1", "no longer in the text             1", "",
                "LINE  PLACEHOLDER  RESULT", "   1  [机构1]      first surface taken",
                "   2  [DATE5]      not in the mapping", "   2  [机构1]      first surface taken",
                "   3  [机构1]      without brackets", "   3  [CARD_****]  not in the mapping"}));
}

// The key costs what it costs users, so one seal serves all.
TEST(RestoreCommand, ASealedMappingTakesItsPassphrase) {
  const Folder secrets;
  const auto good = secrets.write("good", "correct horse\r\n");
  const auto wrong = secrets.write("wrong", "correct horses");
  const MaskedFolder folder({"--encrypt", "--passphrase-file", good});
  EXPECT_EQ(folder.mode("m"), "0600");
  EXPECT_EQ(folder.read("m").find("华信"), std::string::npos);

  const auto restore = [&](const std::string& passphrase_file) {
    return run({"restore", folder.path("masked.txt"), folder.path("m"), "--passphrase-file",
                passphrase_file});
  };
  EXPECT_EQ(restore(good).out, DOCUMENT);
  const auto refused = restore(wrong);
  EXPECT_EQ(refused.code, cli::EXIT_INPUT);
  EXPECT_EQ(refused.out, "");
  EXPECT_EQ(refused.err,
            "veildoc: " + folder.path("m") + ": the passphrase is wrong, or the file is damaged\n");
  for (const auto* bad : {"", "\n", "two\nlines"}) {
    EXPECT_EQ(restore(secrets.write("bad", bad)).code, cli::EXIT_INPUT);
  }
}

TEST(RestoreCommand, TellsStoriesOfADocument) {
  const Folder folder;
  const std::string body = "<w:p><w:r><w:t>华信科技、[机构9]</w:t></w:r></w:p>";
  const auto in = folder.write("a.docx", test::docx(body));
  const auto masked = folder.path("masked.docx");
  const auto made =
      run({"anonymize", in, "-o", masked, "--mapping", folder.path("m")}, "", RESTORE_ANALYZER);
  EXPECT_EQ(made.err,
            "veildoc: warning: the document already holds 1 text that reads like a placeholder; "
            "kept as it is\n");
  const auto back = run({"restore", masked, folder.path("m"), "-o", folder.path("back.docx")});
  EXPECT_EQ(back.code, cli::EXIT_DONE);
  EXPECT_EQ(back.err, "");
  EXPECT_EQ(test::body_of(documents::read_package(folder.read("back.docx"))),
            "<w:p><w:r><w:t xml:space=\"preserve\">华信科技、[机构9]</w:t></w:r></w:p>");
  EXPECT_EQ(folder.mode("back.docx"), "0600");
  // Into a pipe, as it is.
  EXPECT_EQ(run({"restore", masked, folder.path("m")}).out, folder.read("back.docx"));

  const auto edited = folder.write(
      "edited.docx",
      test::docx("<w:p/>", {{"word/f.xml", "wordprocessingml.footnotes+xml", "footnotes",
                             test::rooted("w:footnotes",
                                          "<w:p><w:r><w:t>[DATE3]，机构1</w:t></w:r>"
                                          "</w:p>")}}));
  const auto checked = run({"restore", "--check", edited, folder.path("m")});
  EXPECT_EQ(checked.code, cli::EXIT_FAILED);
  EXPECT_TRUE(checked.out.starts_with("The document was edited since it was masked.\n"));
  EXPECT_TRUE(
      checked.out.ends_with("STORY      PLACEHOLDER  RESULT\n"
                            "footnotes  [DATE3]      not in the mapping\n"
                            "footnotes  [机构1]      without brackets\n"))
      << checked.out;
  const auto warned = run({"restore", edited, folder.path("m")});
  EXPECT_NE(warned.err.find("was left: [DATE3] in footnotes\n"), std::string::npos) << warned.err;
}

TEST(RestoreCommand, RefusesWhatItCannotUse) {
  const MaskedFolder folder;
  const auto masked = folder.path("masked.txt");
  const auto mapping = folder.path("m");
  struct Case {
    const char* why;
    std::vector<std::string> args;
    int code;
    const char* says;
  };
  const Case cases[] = {
      {"no mapping", {masked}, cli::EXIT_USAGE, "MAPPING"},
      {"mapping from standard input", {masked, "-"}, cli::EXIT_USAGE, "MAPPING"},
      {"check and output",
       {masked, mapping, "--check", "-o", folder.path("x")},
       cli::EXIT_USAGE,
       "--check"},
      {"over the mapping", {masked, mapping, "-o", mapping}, cli::EXIT_USAGE, "mapping"},
      {"no such mapping", {masked, folder.path("x")}, cli::EXIT_INPUT, "cannot read"},
      {"no mapping but a text", {masked, masked}, cli::EXIT_INPUT, "no mapping file"},
      {"no text", {folder.write("b", "\xFF"), mapping}, cli::EXIT_INPUT, "UTF-8"},
      {"damaged", {folder.write("c", "PK\x03\x04..."), mapping}, cli::EXIT_INPUT, "damaged"},
      {"legacy",
       {folder.write("d", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"), mapping},
       cli::EXIT_INPUT,
       "legacy"},
  };
  for (auto c : cases) {
    SCOPED_TRACE(c.why);
    c.args.insert(c.args.begin(), "restore");
    const auto ran = run(c.args);
    EXPECT_EQ(ran.code, c.code);
    EXPECT_EQ(ran.out, "");
    EXPECT_NE(ran.err.find(c.says), std::string::npos) << ran.err;
  }
}

}  // namespace
