// Masked Word documents on their way back, left alone and edited.
#include <gtest/gtest.h>

#include "tests/documents/support.hpp"
#include "tests/support/notation.hpp"

namespace {

using test::ExtraPart;

std::string text_run(const std::string& text, const std::string& properties = "") {
  return "<w:r>" + properties + "<w:t xml:space=\"preserve\">" + text + "</w:t></w:r>";
}
std::string in_paragraph(const std::string& inner) { return "<w:p>" + inner + "</w:p>"; }
std::string inserted_run(const std::string& inner) {
  return "<w:ins w:id=\"1\" w:author=\"Author 1\">" + inner + "</w:ins>";
}
std::string deleted_run(const std::string& text) {
  return "<w:del w:id=\"2\" w:author=\"Author 1\"><w:r><w:delText xml:space=\"preserve\">" + text +
         "</w:delText></w:r></w:del>";
}
std::string boxed(const std::string& text) {
  return "<w:r><mc:AlternateContent><mc:Choice Requires=\"wps\"><w:drawing><w:txbxContent>" +
         in_paragraph(text_run(text)) +
         "</w:txbxContent></w:drawing></mc:Choice><mc:Fallback><w:pict><w:txbxContent>" +
         in_paragraph(text_run(text)) +
         "</w:txbxContent></w:pict></mc:Fallback>"
         "</mc:AlternateContent></w:r>";
}

const std::string BOLD_RUN = "<w:rPr><w:b/></w:rPr>";
const std::string NO_TEXT = "<w:r><w:t xml:space=\"preserve\"/></w:r>";

// The body, masked and restored without an edit. In between none of it is left.
std::string there_and_back(const std::string& body, const std::vector<ExtraPart>& extra = {}) {
  const auto way = test::way_back(test::docx(body, extra));
  const auto masked = test::body_of(documents::read_package(way.masked));
  EXPECT_EQ(masked.find(test::PERSON), std::string::npos) << masked;
  EXPECT_EQ(test::u8(core::restore::restored_text(
                way.masked_text, way.mapping,
                core::restore::find_restorable(way.masked_text, way.mapping))),
            test::u8(way.original_text));
  const auto back = test::restored(way.masked, way.mapping);
  EXPECT_EQ(back.outcomes, std::string(back.outcomes.size(), 'R'));
  return test::body_of(documents::read_package(back.bytes));
}

TEST(RestoreDocx, AnUntouchedBodyComesBack) {
  struct Case {
    const char* why;
    std::string in;
    std::string back;  // empty: as it was
  };
  const std::string company(test::COMPANY);
  const Case cases[] = {
      {"段落、格式、前后的文字",
       "<w:p><w:pPr><w:jc w:val=\"center\"/></w:pPr>" + text_run("甲方：" + company, BOLD_RUN) +
           text_run("（张伟民）") + "</w:p>" + in_paragraph(text_run("第一条")),
       {}},
      {"分在几段文字里的值用第一段的格式",
       in_paragraph(text_run("甲方：北京", BOLD_RUN) + text_run("华信") +
                    text_run("科技有限公司。")),
       in_paragraph(text_run("甲方：" + company, BOLD_RUN) + NO_TEXT + text_run("。"))},
      {"表格、文本框及其备份",
       "<w:tbl><w:tr><w:tc>" + in_paragraph(text_run("张伟民")) + "</w:tc><w:tc>" +
           in_paragraph(text_run(company) + boxed("张伟民")) + "</w:tc></w:tr></w:tbl>",
       {}},
      {"值里看不见的字符", in_paragraph(text_run("\u200B张\u200B伟\u00AD民\u200B")), {}},
      {"值里的软连字符元素成为字符",
       in_paragraph("<w:r><w:t xml:space=\"preserve\">张伟</w:t><w:softHyphen/>"
                    "<w:t xml:space=\"preserve\">民</w:t></w:r>"),
       in_paragraph("<w:r><w:t xml:space=\"preserve\">张伟\u00AD民</w:t>"
                    "<w:t xml:space=\"preserve\"/></w:r>")},
      {"注音",
       in_paragraph("<w:r><w:ruby><w:rt>" + text_run("zhang wei min") + "</w:rt><w:rubyBase>" +
                    text_run("张伟民") + "</w:rubyBase></w:ruby></w:r>"),
       {}},
      {"内容控件、标签、艺术字",
       in_paragraph("<w:sdt><w:sdtPr><w:alias w:val=\"签字人张伟民\"/></w:sdtPr><w:sdtContent>" +
                    text_run("张伟民") +
                    "</w:sdtContent></w:sdt><w:r><w:pict><v:textpath "
                    "string=\"张伟民\"/></w:pict></w:r>"),
       {}},
      {"文本自己就有像占位符的字样",
       in_paragraph(text_run("[机构1]即" + company + "，见[NAME7]")),
       {}},
      {"连接符的字符", in_paragraph(text_run("\uE000¶\uE001张伟民")), {}},
      // Tracked changes.
      {"插入和删除", in_paragraph(deleted_run("张伟民") + inserted_run(text_run(company))), {}},
      {"改了名字中间：两种看法各有其名",
       in_paragraph(text_run("甲方") + text_run("北京") + deleted_run("华信科技有限公司，张伟民") +
                    inserted_run(text_run("华信科技有限公司，张伟民")) + text_run("。")),
       in_paragraph(text_run("甲方") + NO_TEXT + deleted_run(company + "，张伟民") +
                    inserted_run(text_run(company + "，张伟民")) + text_run("。"))},
      {"插入的部分接在名字上",
       in_paragraph(text_run("北京华信") + inserted_run(text_run("科技有限公司"))),
       in_paragraph(text_run(company) + inserted_run(NO_TEXT))},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(there_and_back(c.in), c.back.empty() ? c.in : c.back);
  }
}

TEST(RestoreDocx, EveryStoryComesBackAndOtherPartsStay) {
  const auto story = [](const std::string& root) {
    return test::rooted(root, in_paragraph(text_run("张伟民与" + std::string(test::COMPANY))));
  };
  const std::vector<ExtraPart> extra = {
      {"word/header2.xml", "wordprocessingml.header+xml", "header", story("w:hdr")},
      {"word/footer1.xml", "wordprocessingml.footer+xml", "footer", story("w:ftr")},
      {"word/footnotes.xml", "wordprocessingml.footnotes+xml", "footnotes", story("w:footnotes")},
      {"word/endnotes.xml", "wordprocessingml.endnotes+xml", "endnotes", story("w:endnotes")},
      {"word/comments.xml", "wordprocessingml.comments+xml", "comments", story("w:comments")},
      {"word/charts/c.xml", "drawingml.chart+xml", "chart",
       test::rooted("c:chartSpace", "<c:v>张伟民</c:v>")},
      {"word/numbering.xml", "wordprocessingml.numbering+xml", "numbering",
       test::rooted("w:numbering", "<w:lvlText w:val=\"张伟民%1\"/>")},
      // Written as no XML library writes it.
      {"word/theme/theme1.xml", "theme+xml", "theme", "<a:theme  xmlns:a='x' name = 'Office' />\n"},
      {"word/media/a.png", "", "image", "pixels"},
  };
  const auto way = test::way_back(test::docx(in_paragraph(text_run("张伟民")), extra));
  const auto back = documents::read_package(test::restored(way.masked, way.mapping).bytes);
  const auto masked = documents::read_package(way.masked);
  ASSERT_EQ(back.size(), masked.size());
  for (std::size_t i = 0; i < back.size(); ++i) {
    EXPECT_EQ(back[i].name, masked[i].name);
  }
  for (const auto& part : extra) {
    SCOPED_TRACE(part.name);
    const auto bytes = test::part_of(back, part.name);
    const auto head = bytes.find("?>\n");  // of what was written anew
    EXPECT_EQ(bytes.starts_with("<?xml") ? bytes.substr(head + 3) : bytes, part.bytes);
  }
}

// How Word and others leave placeholders behind.
TEST(RestoreDocx, EditedDocuments) {
  const std::string company(test::COMPANY);
  const auto way = test::way_back(
      test::docx(in_paragraph(text_run(company)) + in_paragraph(text_run("张伟民，住址略"))));
  const auto with_tab = [&] {
    auto mapping = way.mapping;
    mapping.entries[1].surfaces = {U"张伟民\t男\n北京"};
    return mapping;
  }();
  struct Case {
    const char* why;
    std::string edited;
    std::string back;
    const char* outcomes;
  };
  const Case cases[] = {
      {"拼写检查把占位符分成几段",
       in_paragraph(text_run("[", BOLD_RUN) + "<w:proofErr w:type=\"spellStart\"/>" +
                    text_run("机构") + text_run("1") + text_run("]签字")),
       in_paragraph(text_run(company, BOLD_RUN) + "<w:proofErr w:type=\"spellStart\"/>" + NO_TEXT +
                    NO_TEXT + text_run("签字")),
       "R"},
      {"移动、重复、引用、换括号、加空格、全角",
       in_paragraph(text_run("“[NAME1]”致【机构１】、〔 机构 1 〕、［org1］")),
       in_paragraph(text_run("“张伟民”致" + company + "、" + company + "、" + company)), "RRRR"},
      {"里面有看不见的字符和连字符",
       in_paragraph(text_run("[机\u200B构\u00AD1] [ORG\u20111]") +
                    "<w:r><w:t>[ORG</w:t>"
                    "<w:noBreakHyphen/><w:t>1]</w:t><w:softHyphen/></w:r>"),
       in_paragraph(text_run(company + " " + company) + "<w:r><w:t xml:space=\"preserve\">" +
                    company + "</w:t><w:t xml:space=\"preserve\"/><w:softHyphen/></w:r>"),
       "RRR"},
      {"修订里的占位符", in_paragraph(deleted_run("[机构1]") + inserted_run(text_run("[NAME1]"))),
       in_paragraph(deleted_run(company) + inserted_run(text_run("张伟民"))), "RR"},
      {"修订改了编号：两种看法各有其名",
       in_paragraph(text_run("[NAME") + deleted_run("1] [机构1") + inserted_run(text_run("1")) +
                    text_run("]")),
       in_paragraph(NO_TEXT + deleted_run("张伟民 " + company) + inserted_run(text_run("张伟民")) +
                    NO_TEXT),
       "RRR"},
      {"放进别处的属性和域代码",
       in_paragraph("<w:r><wp:docPr id=\"1\" name=\"x\" descr=\"[机构1]的章\"/><w:instrText>QUOTE "
                    "[NAME1]</w:instrText></w:r>"),
       in_paragraph("<w:r><wp:docPr id=\"1\" name=\"x\" descr=\"" + company +
                    "的章\"/><w:instrText xml:space=\"preserve\">QUOTE 张伟民</w:instrText></w:r>"),
       "RR"},
      {"不在映射里的和丢了括号的留下", in_paragraph(text_run("[DATE4]、机构1、[附件1]")),
       in_paragraph(text_run("[DATE4]、机构1、[附件1]")), "UB"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto back = test::restored(test::docx(c.edited), way.mapping);
    EXPECT_EQ(test::body_of(documents::read_package(back.bytes)), c.back);
    EXPECT_EQ(back.outcomes, c.outcomes);
  }
  // Tabs and line ends of a value are elements in a run.
  const auto back = test::restored(test::docx(in_paragraph(text_run("甲[NAME1]乙"))), with_tab);
  EXPECT_EQ(test::body_of(documents::read_package(back.bytes)),
            in_paragraph("<w:r><w:t xml:space=\"preserve\">甲张伟民</w:t><w:tab/>"
                         "<w:t xml:space=\"preserve\">男</w:t><w:br/>"
                         "<w:t xml:space=\"preserve\">北京乙</w:t></w:r>"));
}

// A mapping may be made before and behind the file, and with other labels.
TEST(RestoreDocx, WhatIsWrittenCanBeAskedAtAnyTime) {
  const auto bytes = test::docx(
      "<w:bookmarkStart w:id=\"1\" w:name=\"张伟民\"/>" +
      in_paragraph("<w:r><w:ruby><w:rt>" + text_run("hua xin") + "</w:rt><w:rubyBase>" +
                   text_run(std::string(test::COMPANY)) + "</w:rubyBase></w:ruby></w:r>"));
  const auto document = documents::read_document(bytes);
  const auto masked =
      core::anonymization::anonymize_document(document->text(), test::finding_analyzer(), "zh");
  const auto other =
      documents::as_written(core::anonymization::with_labels(masked, "en"), *document);
  const auto before = documents::as_written(masked, *document);
  const auto out = document->write(masked);
  const auto behind = documents::as_written(masked, *document);
  EXPECT_EQ(test::u8(other.text), "[ORG1]\n[ORG1]\nBookmark_1");
  EXPECT_EQ(test::u8(before.text), "[机构1]\n[机构1]\nBookmark_1");
  EXPECT_EQ(before.text, behind.text);
  EXPECT_EQ(test::u8(documents::read_masked_file(out)->text()), test::u8(before.text));
  EXPECT_EQ(document->report().stories.size(), 2U);
}

TEST(RestoreDocx, PropertiesThatWereAddedSinceComeBack) {
  const auto way = test::way_back(test::docx(in_paragraph(text_run("张伟民"))));
  const auto back = test::restored(
      test::docx(in_paragraph(text_run("[NAME1]")),
                 {{"docProps/core.xml", "x.core-properties+xml", "metadata/core-properties",
                   "<cp:p xmlns:cp=\"x\"><t>[NAME1]的合同</t></cp:p>"}}),
      way.mapping);
  EXPECT_EQ(back.outcomes, "RR");
  EXPECT_NE(test::part_of(documents::read_package(back.bytes), "docProps/core.xml")
                .find("<t>张伟民的合同</t>"),
            std::string::npos);
}

TEST(RestoreDocx, ASignatureNoLongerHolds) {
  auto parts = test::docx_parts("");
  auto& links = parts[1].bytes;
  links.insert(links.find("</"),
               "<Relationship Id=\"rId9\" Type=\"http://x/origin\" "
               "Target=\"_xmlsignatures/origin.sigs\"/>");
  parts.push_back({"_xmlsignatures/origin.sigs", ""});
  const auto file = documents::read_masked_file(documents::write_package(parts));
  ASSERT_EQ(file->warnings().size(), 1U);
  EXPECT_NE(file->warnings()[0].find("signed"), std::string::npos);
}

// The mapping of one format serves the other.
TEST(RestoreDocx, AcrossFormats) {
  const std::string company(test::COMPANY);
  const auto docx = test::way_back(
      test::docx(in_paragraph(text_run("甲方：" + company)) + in_paragraph(text_run("张伟民"))));
  EXPECT_EQ(test::restored("甲方：[机构1]\r\n【NAME 1】", docx.mapping).bytes,
            "甲方：" + company + "\r\n张伟民");
  const auto text = test::way_back("甲方：" + company + "\n张伟民\n");
  const auto back =
      test::restored(test::docx(in_paragraph(text_run("甲方：[机构1]"))), text.mapping);
  EXPECT_EQ(test::body_of(documents::read_package(back.bytes)),
            in_paragraph(text_run("甲方：" + company)));
}

TEST(RestoreText, KeepsItsEncoding) {
  using namespace std::string_literals;
  // 张伟民，甲方 in GB18030 and UTF-16.
  const std::string chinese = "\xD5\xC5\xCE\xB0\xC3\xF1\xA3\xAC\xBC\xD7\xB7\xBD";
  const std::string utf16 = "\xFF\xFE\x20\x5F\x1F\x4F\x11\x6C\r\0\n\0"s;
  const std::string name_alone = "1. " + chinese.substr(0, 6) + "\r\n";  // ASCII once it is masked
  for (const auto& bytes : {chinese, utf16, name_alone, "\xEF\xBB\xBF张伟民"s}) {
    const auto way = test::way_back(bytes);
    EXPECT_NE(way.masked, bytes);
    EXPECT_EQ(test::restored(way.masked, way.mapping).bytes, bytes);
  }
}

}  // namespace
