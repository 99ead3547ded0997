// The text of PDFs, and what is refused.
#include "documents/pdf.hpp"

#include <gtest/gtest.h>

#include "documents/child_process.hpp"
#include "tests/documents/support.hpp"
#include "tests/support/notation.hpp"

namespace {

using documents::ChildResult;
using documents::run_child;

// A PDF of one page with these operators, in Helvetica. Its tables are left to be found.
std::string pdf(const std::string& operators, const std::string& trailer = "") {
  return "%PDF-1.4\n"
         "1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
         "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
         "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 4 0 R"
         "/Resources<</Font<</F 5 0 R>>>>>>endobj\n"
         "4 0 obj<</Length " +
         std::to_string(operators.size()) + ">>stream\n" + operators +
         "\nendstream endobj\n"
         "5 0 obj<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>endobj\n"
         "trailer<</Root 1 0 R" +
         trailer + ">>\n%%EOF\n";
}

TEST(Pdf, TheTextAloneIsReadAndWritten) {
  const auto document = documents::read_document(
      pdf("BT /F 12 Tf 50 700 Td (Write to lin@example.com) Tj 0 -40 Td (soon.) Tj ET"));
  EXPECT_EQ(test::u8(document->text()), "Write to lin@example.com\nsoon.\n");
  const auto masked =
      core::anonymization::anonymize_document(document->text(), test::finding_analyzer());
  EXPECT_EQ(document->write(masked), "Write to [EMAIL1]\nsoon.\n");
  EXPECT_EQ(document->report().format, "pdf");
  ASSERT_FALSE(document->report().warnings.empty());
  EXPECT_NE(document->report().warnings[0].find("text alone"), std::string::npos);
}

TEST(Pdf, Refused) {
  struct Case {
    const char* why;
    std::string bytes;
    const char* says;
  };
  const auto whole = pdf("BT /F 12 Tf 50 700 Td (text) Tj ET");
  const Case cases[] = {
      {"cut off", whole.substr(0, whole.size() - 20), "its end is missing"},
      {"nothing in it", "%PDF-1.4\n%%EOF\n", "a damaged PDF"},
      {"a picture alone", pdf("0 0 100 100 re f"), "a PDF without text"},
      {"encrypted",
       pdf("BT /F 12 Tf 50 700 Td (text) Tj ET",
           "/ID[<00><00>]/Encrypt<</Filter/Standard/V 1/R 2/P -44/O<" + std::string(64, '0') +
               ">/U<" + std::string(64, '1') + ">>>"),
       "an encrypted PDF"},
      {"encrypted by what nobody knows",
       pdf("BT /F 12 Tf 50 700 Td (text) Tj ET", "/ID[<00><00>]/Encrypt<</Filter/Other>>"),
       "an encrypted PDF"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_NE(test::refusal(c.bytes).find(c.says), std::string::npos) << test::refusal(c.bytes);
  }
}

TEST(Pdf, LinesThatTheLayoutCutAreWhole) {
  struct Case {
    const char* why;
    const char* extracted;
    const char* text;
  };
  const Case cases[] = {
      {"名称在行末断开", "本合同由以下双方签订，其中买方是北京华信科\n技有限公司。\n",
       "本合同由以下双方签订，其中买方是北京华信科技有限公司。\n"},
      {"空行隔开的也是", "本合同由以下双方签订，其中买方是北京华信科\n\n技有限公司。\n",
       "本合同由以下双方签订，其中买方是北京华信科技有限公司。\n"},
      {"a space between words",
       "This agreement is made between Hollinbrook Freight\nSystems Limited and others.\n",
       "This agreement is made between Hollinbrook Freight Systems Limited and others.\n"},
      {"a soft hyphen goes, a hyphen stays",
       "It was signed by the duly authorised represen\u00AD\ntative of the buyers, namely Ms. Ann Holm-\nLee\n",
       "It was signed by the duly authorised representative of the buyers, namely Ms. Ann Holm-Lee\n"},
      {"短行不接", "王建国\n李明哲\n以上两人为本合同双方的授权代表，特此签字。\n",
       "王建国\n李明哲\n以上两人为本合同双方的授权代表，特此签字。\n"},
      {"编号另起一行", "本合同由以下双方签订，其中买方是北京华信科\n第二条 价款\n（一）首付款\n",
       "本合同由以下双方签订，其中买方是北京华信科\n第二条 价款\n（一）首付款\n"},
      {"标签另起一行", "本合同由以下双方签订，其中买方是北京华信科\n乙方（盖章）：某某\n",
       "本合同由以下双方签订，其中买方是北京华信科\n乙方（盖章）：某某\n"},
      {"数字两边的空隙不是空格", "东湖大道 68 号 A 座，2026 年 3 月，IBM 公司\n",
       "东湖大道68号A座，2026年3月，IBM 公司\n"},
      {"部首与连字", "\u2F42\u4EF6 \uFB01nal\n", "文件 final\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(test::u8(documents::pdf_text(c.extracted).text), c.text);
  }
  const auto pages = documents::pdf_text("one\n\f \n\fthree \uE123\n\f");
  EXPECT_EQ(test::u8(pages.text), "one\n\f\n\n\f\nthree \uE123\n");
  EXPECT_EQ(pages.pages, 3U);
  EXPECT_EQ(pages.pages_without_text, std::vector<std::size_t>{2});
  EXPECT_EQ(pages.unreadable, 1U);
}

TEST(ChildProcess, IsKeptWithinBounds) {
  using End = ChildResult::End;
  EXPECT_EQ(run_child({"cat"}, std::string(300000, 'x')).out, std::string(300000, 'x'));
  EXPECT_EQ(run_child({"no-such-program-anywhere"}, "").end, End::NOT_FOUND);
  EXPECT_EQ(run_child({"sh", "-c", "echo why >&2; exit 3"}, "").code, 3);
  EXPECT_EQ(run_child({"sh", "-c", "echo why >&2; exit 3"}, "").err, "why\n");
  EXPECT_EQ(run_child({"sleep", "100"}, "", {.time = std::chrono::seconds(1)}).end, End::TOO_LONG);
  EXPECT_EQ(run_child({"yes"}, "", {.output = 1000}).end, End::TOO_MUCH);
  EXPECT_EQ(run_child({"sh", "-c", "kill -SEGV $$"}, "").end, End::CRASHED);
  // It writes nothing to any disk.
  EXPECT_NE(
      run_child({"sh", "-c", "f=$(mktemp); trap '' XFSZ; echo x >$f; r=$?; rm $f; exit $r"}, "")
          .code,
      0);
}

}  // namespace
