// The command on one text: what goes where, and with which exit code.
#include <stdexcept>

#include <gtest/gtest.h>

#include "core/errors.hpp"
#include "tests/cli/support.hpp"

namespace {

using test::Folder;
using test::run;

constexpr auto COMPANY = "北京华信科技有限公司";
const auto ANALYZER = test::finding({{"ORGANIZATION", COMPANY},
                                     {"ORGANIZATION", "华信科技"},
                                     {"EMAIL_ADDRESS", "lin@example.com"},
                                     {"ORGANIZATION", "Hollin Limited"}});

TEST(Anonymize, WritesTheTextAndNothingElse) {
  struct Case {
    const char* why;
    std::vector<std::string> options;
    std::string in;
    std::string out;
  };
  const Case cases[] = {
      {"末尾没有换行，不补换行", {}, "甲方：北京华信科技有限公司", "甲方：[机构1]"},
      {"末尾的换行保留", {}, "甲方：北京华信科技有限公司\n", "甲方：[机构1]\n"},
      {"CRLF 保留",
       {},
       "甲方：北京华信科技有限公司\r\n邮箱：lin@example.com\r\n",
       "甲方：[机构1]\r\n邮箱：[EMAIL1]\r\n"},
      {"字节序标记保留，标签仍在行首",
       {},
       "\xEF\xBB\xBF北京华信科技有限公司",
       "\xEF\xBB\xBF[机构1]"},
      {"- is standard output", {"-o", "-"}, "甲方：北京华信科技有限公司", "甲方：[机构1]"},
      {"nothing in, nothing out", {}, "", ""},
      {"a byte order mark alone", {}, "\xEF\xBB\xBF", "\xEF\xBB\xBF"},
      // Labels.
      {"auto follows the document", {}, "Party A: Hollin Limited", "Party A: [ORG1]"},
      {"auto follows the language asked for", {"-l", "zh"}, "A: Hollin Limited", "A: [机构1]"},
      {"zh", {"--labels", "zh"}, "Party A: Hollin Limited", "Party A: [机构1]"},
      {"en", {"--labels", "en"}, "甲方：北京华信科技有限公司", "甲方：[ORG1]"},
      {"core writes one form", {"--labels", "core"}, "A: Hollin Limited", "A: [机构1]"},
      // Aliases.
      {"一家公司一个编号", {}, "北京华信科技有限公司；华信科技", "[机构1]；[机构1]"},
      {"分开编号", {"--aliases", "separate"}, "北京华信科技有限公司；华信科技", "[机构1]；[机构2]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    std::vector<std::string> args = {"anonymize"};
    args.insert(args.end(), c.options.begin(), c.options.end());
    const auto ran = run(args, c.in, ANALYZER);
    EXPECT_EQ(ran.code, cli::EXIT_DONE);
    EXPECT_EQ(ran.out, c.out);
    EXPECT_EQ(ran.err, "");

    args.emplace_back("-");
    EXPECT_EQ(run(args, c.in, ANALYZER).out, c.out);
  }
}

TEST(Anonymize, AnswersWithoutReading) {
  const std::pair<std::vector<std::string>, std::vector<std::string>> cases[] = {
      {{"--help"},
       {"anonymize", "restore", "analyze", "recognizers", "models", "evaluate", "Exit codes",
        "Examples"}},
      {{"anonymize", "--help"}, {"--mapping", "--labels", "Profiles", "Examples"}},
      {{"analyze", "--help"}, {"--explain", "--show-surfaces", "Profiles", "Examples"}},
      {{"recognizers", "--help"}, {"--recognizers", "--json"}},
      {{"evaluate", "--help"}, {"--max-leak", "Exit codes", "Profiles", "Examples"}},
      {{"--version"}, {"veildoc "}},
  };
  for (const auto& [args, parts] : cases) {
    const auto ran = run(args, "", ANALYZER);
    EXPECT_EQ(ran.code, cli::EXIT_DONE);
    EXPECT_EQ(ran.err, "");
    for (const auto& part : parts) EXPECT_NE(ran.out.find(part), std::string::npos) << part;
    for (const auto& line : test::lines(ran.out)) EXPECT_LE(line.size(), 110U) << line;
  }
}

TEST(Anonymize, RefusesWrongCommandLines) {
  const Folder folder;
  const auto file = folder.write("a.txt", COMPANY);
  struct Case {
    const char* why;
    std::vector<std::string> args;
    const char* says;
  };
  const Case cases[] = {
      {"no command", {}, "subcommand"},
      {"unknown command", {"mask"}, "subcommand"},
      {"analyze: threshold", {"analyze", file, "--threshold", "1.5"}, "0 to 1"},
      {"analyze: threshold", {"analyze", file, "--threshold", "nan"}, "0 to 1"},
      {"analyze: a kind without a name", {"analyze", file, "--entities", "A,,B"}, "--entities"},
      {"analyze: profile", {"analyze", file, "--profile", "x"}, "identity"},
      {"evaluate: nothing", {"evaluate"}, "DIR"},
      {"evaluate: limit", {"evaluate", ".", "--max-leak", "many"}, "0 to 100"},
      {"two files", {"anonymize", file, file}, "-o DIR"},
      {"two files to analyze", {"analyze", file, file}, "not expected"},
      {"unknown option", {"anonymize", "--quick"}, "--quick"},
      {"language", {"anonymize", "-l", "fr"}, "--language"},
      {"labels", {"anonymize", "--labels", "fr"}, "--labels"},
      {"aliases", {"anonymize", "--aliases", "two"}, "--aliases"},
      {"an unknown profile lists the known ones", {"anonymize", "--profile", "x"}, "identity"},
      {"a file without a name", {"anonymize", "--mapping", ""}, "name"},
      {"mapping over the input", {"anonymize", file, "--mapping", file}, "input"},
      {"mapping over the output, spelled otherwise",
       {"anonymize", file, "-o", folder.path("m"), "--mapping", folder.path("./m")},
       "same file"},
      {"mapping into the output stream", {"anonymize", "--mapping", "/dev/stdout"}, "regular"},
      {"mapping into the output stream", {"anonymize", "--mapping", "-"}, "regular"},
      {"sealed, but no mapping", {"anonymize", "--encrypt"}, "--mapping"},
      {"a passphrase for nothing",
       {"anonymize", "--mapping", folder.path("m"), "--passphrase-file", file},
       "--encrypt"},
      {"mapping is a folder", {"anonymize", "--mapping", folder.path("")}, "regular"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto ran = run(c.args, COMPANY, ANALYZER);
    EXPECT_EQ(ran.code, cli::EXIT_USAGE);
    EXPECT_EQ(ran.out, "");
    EXPECT_TRUE(ran.err.starts_with("veildoc: ")) << ran.err;
    EXPECT_NE(ran.err.find(c.says), std::string::npos) << ran.err;
  }
  EXPECT_EQ(folder.names(), std::vector<std::string>{"a.txt"});
}

TEST(Anonymize, RefusesWhatIsNoText) {
  struct Case {
    const char* why;
    std::string in;
    const char* says;
  };
  using namespace std::string_literals;
  const Case cases[] = {
      {"stray byte", "甲方\xFF", "not valid UTF-8 at byte 6"},
      {"cut sequence at the end", "ab\xE4\xB8", "not valid UTF-8 at byte 2"},
      {"counted from the start of the file",
       "\xEF\xBB\xBF"
       "a\xC0\x80",
       "not valid UTF-8 at byte 4"},
      {"surrogate", "\xED\xA0\x80", "not valid UTF-8 at byte 0"},
      {"NUL", "ab\0c"s, "NUL at byte 2"},
      {"the first fault is told", "a\0\xFF"s, "NUL at byte 1"},
      {"the first fault is told", "\xFF\0"s, "UTF-8 at byte 0"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto ran = run({"anonymize"}, c.in, ANALYZER);
    EXPECT_EQ(ran.code, cli::EXIT_INPUT);
    EXPECT_EQ(ran.out, "");
    EXPECT_NE(ran.err.find("standard input: "), std::string::npos);
    EXPECT_NE(ran.err.find(c.says), std::string::npos) << ran.err;
  }
}

TEST(Anonymize, TellsWhoFailedWithoutQuotingTheDocument) {
  struct Case {
    const char* why;
    cli::AnalyzerFactory analyzer;
    const char* err;
  };
  class Failing : public core::anonymization::Analyzer {
   public:
    explicit Failing(bool ours) : ours_(ours) {}
    std::vector<core::anonymization::RecognizerResult> analyze(std::u32string_view,
                                                               std::string_view) const override {
      if (ours_) throw core::ExternalError("no answer from the model");
      throw std::runtime_error(COMPANY);
    }

   private:
    bool ours_;
  };
  const Case cases[] = {
      {"an error of ours is told", [](auto) { return std::make_unique<Failing>(true); },
       "veildoc: the analyzer failed: no answer from the model\n"},
      {"a foreign one might quote", [](auto) { return std::make_unique<Failing>(false); },
       "veildoc: the analyzer failed\n"},
      {"it could not be built",
       [](auto) -> std::unique_ptr<core::anonymization::Analyzer> {
         throw core::ExternalError("no model");
       },
       "veildoc: the analyzer failed: no model\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto ran = run({"anonymize"}, COMPANY, c.analyzer);
    EXPECT_EQ(ran.code, cli::EXIT_ANALYZER);
    EXPECT_EQ(ran.out, "");
    EXPECT_EQ(ran.err, c.err);
  }
}

TEST(Anonymize, WarnsOfTextThatReadsLikeAPlaceholder) {
  const auto ran = run({"anonymize"}, "甲方：[机构7]，见【DATE2】", ANALYZER);
  EXPECT_EQ(ran.code, cli::EXIT_DONE);
  EXPECT_EQ(ran.out, "甲方：[机构7]，见【DATE2】");
  EXPECT_NE(ran.err.find("2 texts"), std::string::npos) << ran.err;
  EXPECT_EQ(ran.err.find("机构"), std::string::npos) << ran.err;
}

TEST(Anonymize, WarnsOfNamesThatCannotBeMasked) {
  const auto finds = test::finding({{"PERSON", "Иван"}, {"PERSON", "——"}});
  const auto ran = run({"anonymize"}, "签字：Иван ——", finds);
  EXPECT_EQ(ran.out, "签字：Иван ——");
  EXPECT_TRUE(ran.err.starts_with("veildoc: warning: 1 name in other scripts")) << ran.err;
}

TEST(Anonymize, GivesTheProfileToTheAnalyzer) {
  std::string asked;
  const cli::AnalyzerFactory analyzer = [&](const cli::AnalyzerOptions& options) {
    asked = options.profile;
    return ANALYZER(options);
  };
  EXPECT_EQ(run({"anonymize", "--profile", "strict"}, COMPANY, analyzer).code, cli::EXIT_DONE);
  EXPECT_EQ(asked, "strict");
}

}  // namespace
