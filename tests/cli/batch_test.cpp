// The command `veildoc batch`: lines and documents, many at once, and gone on with.
#include <atomic>
#include <csignal>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include "cli/line_reader.hpp"
#include "cli/rate_progress.hpp"
#include "core/errors.hpp"
#include "core/restore/mapping_file.hpp"
#include "core/restore/restore.hpp"
#include "tests/cli/support.hpp"
#include "tests/support/notation.hpp"

namespace {

using nlohmann::json;
using test::Folder;
using test::run;
using Names = std::vector<std::string>;

const auto LINES_ANALYZER =
    test::finding({{"ORGANIZATION", "北京华信科技有限公司"}, {"ORGANIZATION", "华信科技"}});

std::string line(int id) {
  return json{{"id", id},
              {"text", std::string(static_cast<std::size_t>(id % 5), 'x') + "北京华信科技有限公司" +
                           std::to_string(id)}}
             .dump() +
         "\n";
}

std::string many_lines(int count) {
  std::string out;
  for (int i = 0; i < count; ++i) out += line(i);
  return out;
}

TEST(BatchLines, OneAnswerForEachLine) {
  const std::string in =
      "\xEF\xBB\xBF{\"id\": 7, \"text\": \"甲方：北京华信科技有限公司\", \"client\": \"x\"}\n"
      "  \r\n"
      "{\"text\": \"无\", \"id\": {\"a\": [1]}}\r\n"
      "{\"id\": 1, \"text\": 5}\n"
      "[1]\n"
      "{\"id\": \"华信科技\", \"text\": \"\\ud800\"}\n"
      "{\"id\": 2, \"text\": \"" +
      std::string(1'000'100, 'a') +
      "\"}\n"
      "{\"id\": 3, \"text\": \"%PDF-1.4 北京华信科技有限公司\"}";
  const auto ran = run({"batch", "--longest-line", "1"}, in, LINES_ANALYZER);
  EXPECT_EQ(ran.code, cli::EXIT_INPUT);
  const auto lines = test::lines(ran.out);
  ASSERT_EQ(lines.size(), 7U) << ran.out;
  EXPECT_EQ(lines[0], R"({"id":7,"text":"甲方：[机构1]","mapping":[{"placeholder":"[机构1]",)"
                      R"("surfaces":["北京华信科技有限公司"],"count":1}],"language":"zh"})");
  EXPECT_EQ(lines[1], R"({"id":{"a":[1]},"text":"无","mapping":[],"language":"zh"})");
  EXPECT_EQ(lines[2], R"({"id":1,"line":4,"error":"no string \"text\""})");
  EXPECT_EQ(lines[3], R"({"id":null,"line":5,"error":"no JSON object"})");
  EXPECT_TRUE(lines[4].starts_with(R"({"id":null,"line":6,"error":"no JSON: wrong at byte )"));
  EXPECT_EQ(lines[5], R"({"id":null,"line":7,"error":"longer than 1000000 bytes"})");
  EXPECT_EQ(json::parse(lines[6])["text"], "%PDF-1.4 [机构1]");
  EXPECT_EQ(ran.err,
            "veildoc: 4 lines of 7 were not masked; the \"error\" in the output tells why\n");
}

TEST(BatchLines, TheMappingLeadsBack) {
  const std::string text = "北京华信科技有限公司（华信科技），再说华信科技";
  const auto ran =
      run({"batch", "-"}, json{{"id", 1}, {"text", text}}.dump() + "\n", LINES_ANALYZER);
  const auto out = json::parse(ran.out);
  const json file = {{"format", "veildoc-mapping"},
                     {"version", 1},
                     {"language", out["language"]},
                     {"entries", out["mapping"]}};
  const auto mapping = core::restore::read_mapping(file.dump());
  const auto masked = test::u32(out["text"].get<std::string>());
  EXPECT_EQ(test::u8(core::restore::restored_text(masked, mapping,
                                                  core::restore::find_restorable(masked, mapping))),
            text);
  const auto bare = run({"batch", "-", "--no-mapping"},
                        json{{"id", 1}, {"text", text}}.dump() + "\n", LINES_ANALYZER);
  EXPECT_FALSE(json::parse(bare.out).contains("mapping"));
}

TEST(BatchLines, AnyNumberOfThreadsGivesTheSame) {
  const auto in = many_lines(500);
  const auto one = run({"batch", "-j", "1"}, in, LINES_ANALYZER);
  EXPECT_EQ(one.code, cli::EXIT_DONE) << one.err;
  EXPECT_EQ(test::lines(one.out).size(), 500U);
  EXPECT_EQ(run({"batch", "-j", "8"}, in, LINES_ANALYZER).out, one.out);
  auto unordered = test::lines(run({"batch", "-j", "8", "--unordered"}, in, LINES_ANALYZER).out);
  ASSERT_EQ(unordered.size(), 500U);
  std::sort(unordered.begin(), unordered.end(), [](const auto& a, const auto& b) {
    return json::parse(a)["line"] < json::parse(b)["line"];
  });
  const auto ordered = test::lines(one.out);
  for (std::size_t i = 0; i < ordered.size(); ++i) {
    EXPECT_EQ(unordered[i], "{\"line\":" + std::to_string(i + 1) + "," + ordered[i].substr(1));
  }
}

TEST(BatchLines, AnOutputIsWholeOrPartial) {
  const Folder folder;
  const auto in = folder.write("in", many_lines(20));
  const auto out = folder.path("out");
  const auto batch = [&](Names args) {
    args.insert(args.begin(), {"batch", in, "-o", out});
    return run(args, "", LINES_ANALYZER);
  };
  EXPECT_EQ(batch({}).code, cli::EXIT_DONE);
  EXPECT_EQ(folder.names(), (Names{"in", "out"}));
  EXPECT_EQ(folder.mode("out"), "0600");
  const auto whole = folder.read("out");
  // It is neither written over nor done again.
  EXPECT_EQ(batch({}).code, cli::EXIT_FAILED);
  const auto again = batch({"--resume"});
  EXPECT_EQ(again.code, cli::EXIT_DONE);
  EXPECT_EQ(again.err, "veildoc: " + out + " is finished\n");
  EXPECT_EQ(batch({"--overwrite"}).code, cli::EXIT_DONE);
  EXPECT_EQ(folder.read("out"), whole);
  // What an interrupted run left is not lost by mistake.
  std::filesystem::remove(out);
  folder.write("out.partial", "x");
  EXPECT_EQ(batch({}).code, cli::EXIT_FAILED);
  EXPECT_EQ(folder.read("out.partial"), "x");
}

TEST(BatchLines, ResumeLosesAndDoublesNothing) {
  const Folder folder;
  const auto in = folder.write("in", many_lines(5) + "\n{bad\n" + many_lines(5));
  const auto out = folder.path("out");
  for (const bool unordered : {false, true}) {
    Names args = {"batch", in, "-o", out, "-j", "1"};
    if (unordered) args.push_back("--unordered");
    const auto fresh = run(args, "", LINES_ANALYZER);
    auto whole = folder.read("out");
    args.push_back("--resume");
    // Cut at every byte around line ends, and here and there.
    for (std::size_t size = 0; size < whole.size(); ++size) {
      const bool near_end =
          whole.substr(size > 1 ? size - 2 : 0, 4).find('\n') != std::string::npos;
      if (!near_end && size % 37 != 0) continue;
      SCOPED_TRACE(size);
      std::filesystem::remove(out);
      folder.write("out.partial", whole.substr(0, size));
      const auto ran = run(args, "", LINES_ANALYZER);
      EXPECT_EQ(ran.err, fresh.err);
      EXPECT_EQ(ran.code, cli::EXIT_INPUT);
      EXPECT_EQ(folder.read("out"), whole);
    }
    std::filesystem::remove(out);
  }
}

TEST(BatchLines, ResumeRefusesWhatIsNotItsOwn) {
  const Folder folder;
  const auto in = folder.write("in", many_lines(4));
  const auto out = folder.path("out");
  const auto done = test::lines(run({"batch", "-"}, many_lines(6), LINES_ANALYZER).out);
  struct Case {
    const char* why;
    std::string partial;
    const char* says;
    bool unordered;
  };
  const Case cases[] = {
      {"another file", "甲方\n乙方\n", "not what a run", false},
      {"without numbers", done[0] + "\n", "not what a run", true},
      {"a number twice", "{\"line\":2}\n{\"line\":2}\n", "not what a run", true},
      {"a number beyond all measure", "{\"line\":99999999999999}\n", "not what a run", true},
      {"another first line", done[1] + "\n" + done[1] + "\n", "another input", false},
      {"a line is missing", done[0] + "\n" + done[2] + "\n", "another input", false},
      {"more than the input",
       done[0] + "\n" + done[1] + "\n" + done[2] + "\n" + done[3] + "\n" + done[4] + "\n",
       "more lines", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    folder.write("out.partial", c.partial);
    Names args = {"batch", in, "-o", out, "--resume"};
    if (c.unordered) args.push_back("--unordered");
    const auto ran = run(args, "", LINES_ANALYZER);
    EXPECT_EQ(ran.code, cli::EXIT_FAILED);
    EXPECT_NE(ran.err.find(c.says), std::string::npos) << ran.err;
    EXPECT_EQ(folder.read("out.partial"), c.partial);
    EXPECT_FALSE(std::filesystem::exists(out));
  }
}

// Does something at call number `at`.
class AtCall : public core::anonymization::Analyzer {
 public:
  AtCall(int at, std::function<void()> what) : at_(at), what_(std::move(what)) {}
  std::vector<core::anonymization::RecognizerResult> analyze(std::u32string_view,
                                                             std::string_view) const override {
    if (++calls_ == at_) what_();
    return {};
  }

 private:
  int at_;
  std::function<void()> what_;
  mutable std::atomic<int> calls_ = 0;
};

cli::AnalyzerFactory at_call(int at, const std::function<void()>& what) {
  return [=](const cli::AnalyzerOptions&) { return std::make_unique<AtCall>(at, what); };
}

TEST(BatchLines, AnInterruptLeavesWholeLines) {
  const Folder folder;
  const auto in = folder.write("in", many_lines(2500));
  const Names args = {"batch", in, "-o", folder.path("out"), "-j", "2"};
  const auto ran = run(args, "", at_call(40, [] { ::kill(::getpid(), SIGINT); }));
  EXPECT_EQ(ran.code, cli::EXIT_INTERRUPTED);
  EXPECT_NE(ran.err.find("interrupted; "), std::string::npos);
  EXPECT_NE(ran.err.find("--resume goes on"), std::string::npos);
  const auto partial = folder.read("out.partial");
  EXPECT_TRUE(partial.ends_with('\n'));
  auto again = args;
  again.push_back("--resume");
  EXPECT_EQ(run(again, "", at_call(0, [] {})).code, cli::EXIT_DONE);
  EXPECT_TRUE(folder.read("out").starts_with(partial));
  EXPECT_EQ(test::lines(folder.read("out")).size(), 2500U);
}

TEST(BatchLines, AServiceThatIsGoneEndsTheRun) {
  const Folder folder;
  const auto in = folder.write("in", many_lines(10));
  const auto out = folder.path("out");
  const auto gone = at_call(4, [] { throw core::ExternalError("http://x: no answer"); });
  const auto ran = run({"batch", in, "-o", out, "-j", "1"}, "", gone);
  EXPECT_EQ(ran.code, cli::EXIT_ANALYZER);
  EXPECT_EQ(test::lines(folder.read("out.partial")).size(), 3U);
  EXPECT_EQ(run({"batch", in, "-o", out, "--resume"}, "", at_call(0, [] {})).code, cli::EXIT_DONE);
  EXPECT_EQ(test::lines(folder.read("out")).size(), 10U);
  // Anything else that fails is the matter of one line.
  const auto hurt = at_call(4, [] { throw core::RegexError("RE_X: too long"); });
  const auto lines = test::lines(run({"batch", in, "-j", "1"}, "", hurt).out);
  ASSERT_EQ(lines.size(), 10U);
  EXPECT_EQ(lines[3], R"({"id":3,"line":4,"error":"the analyzer failed: RE_X: too long"})");
}

TEST(BatchDocuments, ManyAtOnceAndGoneOnWith) {
  const Folder folder;
  for (int i = 0; i < 30; ++i) {
    folder.write("in/" + std::to_string(i % 3) + "/" + std::to_string(i) + ".txt",
                 "北京华信科技有限公司" + std::to_string(i));
  }
  folder.write("in/bad.txt", "\xFF\xFE\xFF");
  const auto in = folder.path("in");
  const auto out = folder.path("out");
  Names args = {"batch",      in,
                "-o",         out,
                "-j",         "4",
                "--mappings", folder.path("maps"),
                "--report",   folder.path("report")};
  const auto ran = run(args, "", LINES_ANALYZER);
  EXPECT_EQ(ran.code, cli::EXIT_INPUT);
  EXPECT_NE(ran.err.find("1 of 31 files was"), std::string::npos) << ran.err;
  EXPECT_EQ(folder.read("out/2/29.txt"), "[机构1]29");
  EXPECT_EQ(run(args, "", LINES_ANALYZER).code, cli::EXIT_FAILED);
  // One output is gone, and one document was changed since.
  std::filesystem::remove(folder.path("out/1/4.txt"));
  folder.write("in/2/5.txt", "new");
  std::filesystem::last_write_time(
      folder.path("in/2/5.txt"),
      std::filesystem::last_write_time(folder.path("out/2/5.txt")) + std::chrono::seconds(5));
  args.push_back("--resume");
  EXPECT_EQ(run(args, "", LINES_ANALYZER).code, cli::EXIT_INPUT);
  EXPECT_EQ(folder.read("out/1/4.txt"), "[机构1]4");
  EXPECT_EQ(folder.read("out/2/5.txt"), "new");
  std::size_t skipped = 0;
  const auto report = json::parse(folder.read("report"));
  for (const auto& file : report["files"]) skipped += file.contains("skipped") ? 1 : 0;
  EXPECT_EQ(skipped, 28U);
}

TEST(Batch, RefusesWrongCommandLines) {
  const Folder folder;
  const auto in = folder.write("in", many_lines(1));
  const auto docs = folder.path("docs");
  std::filesystem::create_directory(docs);
  const std::vector<Names> cases = {
      {"--resume"},
      {in, "-o", folder.path("o"), "--resume", "--overwrite"},
      {in, "-o", in},
      {in, "-o", docs},
      {in, "-j", "0"},
      {in, "-j", "1.5"},
      {in, "--mappings", docs},
      {in, "-o", "/dev/null", "--resume"},
      {docs},
      {docs, "-o", in},
      {docs, "-o", folder.path("o"), "--unordered"},
      {docs, "-o", folder.path("o"), "--mappings", folder.path("o")},
      {docs, "-o", folder.path("o"), "--encrypt"},
      {in, "--matter", folder.path("m")},
  };
  for (auto args : cases) {
    SCOPED_TRACE(args.back());
    args.insert(args.begin(), "batch");
    EXPECT_EQ(run(args, "", LINES_ANALYZER).code, cli::EXIT_USAGE);
  }
  EXPECT_EQ(folder.names(), (Names{"docs", "in"}));
}

TEST(LineReader, LinesAcrossBlocks) {
  const std::string longest(3'000'000, 'a');
  std::istringstream in("b\n" + longest + "\n\nc");
  cli::LineReader reader("-", in, 2'999'999);
  std::vector<std::string> got;
  for (cli::InputLine l; reader.next(l);) {
    got.push_back(std::to_string(l.number) + (l.too_long ? " long" : " " + l.bytes) +
                  (l.ended ? "" : " open") + " " + std::to_string(l.behind));
  }
  EXPECT_EQ(got, (Names{"1 b 2", "2 long 3000003", "3  3000004", "4 c open 3000005"}));
}

TEST(RateProgress, Line) {
  using cli::progress_line;
  using Unit = cli::RateProgress::Unit;
  EXPECT_EQ(progress_line(Unit::BYTES, 20'000'000, 5'000'000, 1200, 0, 2),
            "veildoc: 1200 lines, 2.5 MB/s, 25%, 0:06 left");
  EXPECT_EQ(progress_line(Unit::BYTES, {}, 5'000'000, 1, 0, 2), "veildoc: 1 line, 2.5 MB/s");
  // What an earlier run did is no part of the rate.
  EXPECT_EQ(progress_line(Unit::FILES, 10'000, 200, 0, 100, 100),
            "veildoc: 200 of 10000 files, 1.0/s, 2:43:20 left");
}

}  // namespace
