// What becomes of the stories of a .docx: each row is what stands in the body.
#include <algorithm>

#include <gtest/gtest.h>

#include "tests/documents/support.hpp"
#include "tests/support/notation.hpp"

namespace {

std::string run_of(const std::string& text, const std::string& properties = "") {
  return "<w:r>" + properties + "<w:t xml:space=\"preserve\">" + text + "</w:t></w:r>";
}

std::string paragraph_of(const std::string& inner) { return "<w:p>" + inner + "</w:p>"; }

struct BodyCase {
  const char* why;
  std::string in;
  std::string out;
};

void expect_bodies(const std::vector<BodyCase>& cases) {
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(test::masked_body(c.in), c.out);
  }
}

const std::string BOLD = "<w:rPr><w:b/></w:rPr>";
const std::string EMPTY = "<w:t xml:space=\"preserve\"></w:t>";
const std::string ORG = "<w:t xml:space=\"preserve\">[机构1]</w:t>";

// pugixml writes an element whose text is empty as one tag.
std::string emptied(std::string xml) {
  for (auto at = xml.find("></w:t>"); at != std::string::npos; at = xml.find("></w:t>")) {
    xml.replace(at, 7, "/>");
  }
  return xml;
}

TEST(DocxText, PutsAValueIntoItsFirstRun) {
  expect_bodies({
      {"一个值分在三段文字里，各自的格式保留",
       paragraph_of(run_of("甲方：北京", BOLD) + run_of("华信") + run_of("科技有限公司。", BOLD)),
       paragraph_of(run_of("甲方：[机构1]", BOLD) + emptied(run_of("")) + run_of("。", BOLD))},
      {"没有碰到的文字不动",
       "<w:p><w:pPr><w:jc w:val=\"center\"/></w:pPr><w:r><w:t>第一条</w:t></w:r></w:p>",
       "<w:p><w:pPr><w:jc w:val=\"center\"/></w:pPr><w:r><w:t>第一条</w:t></w:r></w:p>"},
      {"段落之间不连读", paragraph_of(run_of("北京华信")) + paragraph_of(run_of("科技有限公司")),
       paragraph_of(run_of("北京华信")) + paragraph_of(run_of("科技有限公司"))},
      {"超链接和内容控件里的文字属于段落",
       paragraph_of("<w:hyperlink w:anchor=\"x\">" + run_of("北京华信") +
                    "</w:hyperlink><w:sdt><w:sdtContent>" + run_of("科技有限公司") +
                    "</w:sdtContent></w:sdt>"),
       paragraph_of("<w:hyperlink w:anchor=\"x\">" + run_of("[机构1]") +
                    "</w:hyperlink><w:sdt><w:sdtContent>" + emptied(run_of("")) +
                    "</w:sdtContent></w:sdt>")},
      {"隐藏文字也是文字", paragraph_of(run_of("张伟民", "<w:rPr><w:vanish/></w:rPr>")),
       paragraph_of(run_of("[NAME1]", "<w:rPr><w:vanish/></w:rPr>"))},
      {"特殊字符照样转义", paragraph_of(run_of("A&amp;B &lt;张伟民&gt;")),
       paragraph_of(run_of("A&amp;B &lt;[NAME1]&gt;"))},
  });
}

TEST(DocxText, ReadsThroughWhatStandsWithinAValue) {
  const auto with = [](const std::string& between) {
    return paragraph_of("<w:r><w:t>北京华信</w:t>" + between + "<w:t>科技有限公司</w:t></w:r>");
  };
  const std::string gone = paragraph_of("<w:r>" + ORG + emptied(EMPTY) + "</w:r>");
  expect_bodies({
      {"软连字符", with("<w:softHyphen/>"), gone},
      {"零宽空格", paragraph_of(run_of("北京\u200B华信科技\u00AD有限公司")),
       paragraph_of(run_of("[机构1]"))},
      {"普通位置的软连字符保留", paragraph_of("<w:r><w:t>甲</w:t><w:softHyphen/></w:r>"),
       paragraph_of("<w:r><w:t>甲</w:t><w:softHyphen/></w:r>")},
      {"w:sym 里的字母",
       paragraph_of("<w:r><w:t>lin</w:t><w:sym w:font=\"Arial\" w:char=\"0040\"/>"
                    "<w:t>example.com</w:t></w:r>"),
       paragraph_of("<w:r><w:t xml:space=\"preserve\">[EMAIL1]</w:t>" + emptied(EMPTY) + "</w:r>")},
      {"值从 w:sym 开始",
       paragraph_of(
           "<w:r><w:sym w:font=\"Arial\" w:char=\"006C\"/><w:t>in@example.com</w:t></w:r>"),
       paragraph_of("<w:r><w:t xml:space=\"preserve\">[EMAIL1]</w:t>" + emptied(EMPTY) + "</w:r>")},
  });
  // What stands for elements without text.
  const auto text =
      test::masked(
          test::docx(paragraph_of(
              "<w:r><w:t>甲</w:t><w:tab/><w:t>乙</w:t><w:br/><w:t>010</w:t><w:noBreakHyphen/>"
              "<w:t>62\u2011</w:t></w:r>")))
          .text;
  EXPECT_EQ(test::u8(text), "甲\t乙\n010-62-");
}

TEST(DocxText, MasksBothSidesOfTrackedChanges) {
  const auto inserted = [](const std::string& text) {
    return "<w:ins w:id=\"1\" w:author=\"张伟民\" w:date=\"2024-01-01T00:00:00Z\">" + run_of(text) +
           "</w:ins>";
  };
  const auto deleted = [](const std::string& text) {
    return "<w:del w:id=\"2\" w:author=\"Li Na\"><w:r><w:delText xml:space=\"preserve\">" + text +
           "</w:delText></w:r></w:del>";
  };
  const std::string ins = "<w:ins w:id=\"1\" w:author=\"Author 1\">";
  const std::string gone = "<w:delText xml:space=\"preserve\"/>";
  expect_bodies({
      {"插入的文字接在保留的文字上", paragraph_of(run_of("北京华信") + inserted("科技有限公司")),
       paragraph_of(run_of("[机构1]") + ins + emptied(run_of("")) + "</w:ins>")},
      {"删除的文字连同保留的文字",
       paragraph_of(run_of("北京") + deleted("华信") + run_of("科技有限公司")),
       paragraph_of(run_of("[机构1]") + "<w:del w:id=\"2\" w:author=\"Author 1\"><w:r>" + gone +
                    "</w:r></w:del>" + emptied(run_of("")))},
      {"改名前后两个名字各有编号",
       paragraph_of(deleted("张伟民") + inserted("北京华信科技有限公司") + run_of("签字")),
       paragraph_of("<w:del w:id=\"2\" w:author=\"Author 1\"><w:r><w:delText "
                    "xml:space=\"preserve\">[NAME1]</w:delText></w:r></w:del>"
                    "<w:ins w:id=\"1\" w:author=\"Author 2\">" +
                    run_of("[机构1]") + "</w:ins>" + run_of("签字"))},
      {"移动的文字",
       paragraph_of("<w:moveFrom w:id=\"1\" w:author=\"A\">" + run_of("张伟民") + "</w:moveFrom>") +
           paragraph_of("<w:moveTo w:id=\"2\" w:author=\"A\">" + run_of("张伟民") + "</w:moveTo>"),
       paragraph_of("<w:moveFrom w:id=\"1\" w:author=\"Author 1\">" + run_of("[NAME1]") +
                    "</w:moveFrom>") +
           paragraph_of("<w:moveTo w:id=\"2\" w:author=\"Author 1\">" + run_of("[NAME1]") +
                        "</w:moveTo>")},
      {"删掉的段落标记：接受后两段连读",
       "<w:p><w:pPr><w:rPr><w:del w:id=\"1\" w:author=\"A\"/></w:rPr></w:pPr>" +
           run_of("甲方北京华信") + "</w:p><w:bookmarkStart w:id=\"1\" w:name=\"a\"/>" +
           paragraph_of(run_of("科技有限公司。")),
       "<w:p><w:pPr><w:rPr><w:del w:id=\"1\" w:author=\"Author 1\"/></w:rPr></w:pPr>" +
           run_of("甲方[机构1]") + "</w:p><w:bookmarkStart w:id=\"1\" w:name=\"a\"/>" +
           paragraph_of(run_of("。"))},
      {"插入的段落标记：拒绝后两段连读",
       "<w:p><w:pPr><w:rPr><w:ins w:id=\"1\" w:author=\"A\"/></w:rPr></w:pPr>" +
           run_of("北京华信") + "</w:p>" + paragraph_of(run_of("科技有限公司。")) +
           paragraph_of(run_of("张伟民")),
       "<w:p><w:pPr><w:rPr><w:ins w:id=\"1\" w:author=\"Author 1\"/></w:rPr></w:pPr>" +
           run_of("[机构1]") + "</w:p>" + paragraph_of(run_of("。")) +
           paragraph_of(run_of("[NAME1]"))},
      {"删掉的段落标记到表格为止",
       "<w:p><w:pPr><w:rPr><w:del w:id=\"1\"/></w:rPr></w:pPr>" + run_of("北京华信") +
           "</w:p><w:tbl><w:tr><w:tc>" + paragraph_of(run_of("科技有限公司")) +
           "</w:tc></w:tr></w:tbl>",
       "<w:p><w:pPr><w:rPr><w:del w:id=\"1\"/></w:rPr></w:pPr>" + run_of("北京华信") +
           "</w:p><w:tbl><w:tr><w:tc>" + paragraph_of(run_of("科技有限公司")) +
           "</w:tc></w:tr></w:tbl>"},
      {"表格行的修订",
       "<w:tbl><w:tr><w:trPr><w:ins w:id=\"1\" w:author=\"张伟民\" "
       "w:date=\"2024-01-01T00:00:00Z\"/></w:trPr><w:tc>" +
           paragraph_of(inserted("张伟民")) +
           "</w:tc></w:tr><w:tr><w:trPr><w:del w:id=\"3\" "
           "w:author=\"Li Na\"/></w:trPr><w:tc>" +
           paragraph_of(deleted("张伟民")) + "</w:tc></w:tr></w:tbl>",
       "<w:tbl><w:tr><w:trPr><w:ins w:id=\"1\" w:author=\"Author 1\"/></w:trPr><w:tc>" +
           paragraph_of(ins + run_of("[NAME1]") + "</w:ins>") +
           "</w:tc></w:tr><w:tr><w:trPr><w:del w:id=\"3\" w:author=\"Author 2\"/></w:trPr><w:tc>" +
           paragraph_of("<w:del w:id=\"2\" w:author=\"Author 2\"><w:r><w:delText "
                        "xml:space=\"preserve\">[NAME1]</w:delText></w:r></w:del>") +
           "</w:tc></w:tr></w:tbl>"},
      {"格式修订的作者",
       paragraph_of("<w:r><w:rPr><w:rPrChange w:id=\"1\" w:author=\"Li Na\" "
                    "w:date=\"2024-01-01T00:00:00Z\"><w:rPr/></w:rPrChange></w:rPr></w:r>"),
       paragraph_of("<w:r><w:rPr><w:rPrChange w:id=\"1\" w:author=\"Author 1\"><w:rPr/>"
                    "</w:rPrChange></w:rPr></w:r>")},
  });
}

TEST(DocxText, ReachesTextBoxesTablesAndGuides) {
  const auto box = [](const std::string& text) {
    return "<w:r><mc:AlternateContent><mc:Choice Requires=\"wps\"><w:drawing><w:txbxContent>" +
           paragraph_of(run_of(text)) +
           "</w:txbxContent></w:drawing></mc:Choice><mc:Fallback><w:pict><v:shape><v:textbox>"
           "<w:txbxContent>" +
           paragraph_of(run_of(text)) +
           "</w:txbxContent></v:textbox></v:shape></w:pict></mc:Fallback></mc:AlternateContent>"
           "</w:r>";
  };
  const auto cell = [](const std::string& inner) { return "<w:tc>" + inner + "</w:tc>"; };
  const auto guide = [](const std::string& reading, const std::string& base) {
    return paragraph_of("<w:r><w:ruby><w:rt>" + reading + "</w:rt><w:rubyBase>" + base +
                        "</w:rubyBase></w:ruby></w:r>");
  };
  expect_bodies({
      {"文本框的两份文字，外面的段落照样连读",
       paragraph_of(run_of("北京华信") + box("张伟民") + run_of("科技有限公司")),
       paragraph_of(run_of("[机构1]") + box("[NAME1]") + emptied(run_of("")))},
      {"表格和嵌套表格",
       "<w:tbl><w:tr>" + cell(paragraph_of(run_of("甲方"))) +
           cell("<w:tbl><w:tr>" + cell(paragraph_of(run_of("张伟民"))) + "</w:tr></w:tbl>") +
           "</w:tr></w:tbl>",
       "<w:tbl><w:tr>" + cell(paragraph_of(run_of("甲方"))) +
           cell("<w:tbl><w:tr>" + cell(paragraph_of(run_of("[NAME1]"))) + "</w:tr></w:tbl>") +
           "</w:tr></w:tbl>"},
      {"注音会说出名字", guide(run_of("zhang wei min"), run_of("张伟民")),
       guide(run_of("[NAME1]"), run_of("[NAME1]"))},
      {"其他注音保留", guide(run_of("jia fang"), run_of("甲方")),
       guide(run_of("jia fang"), run_of("甲方"))},
      {"艺术字",
       paragraph_of("<w:r><w:pict><v:shape><v:textpath string=\"张伟民 草稿\"/>"
                    "</v:shape></w:pict></w:r>"),
       paragraph_of("<w:r><w:pict><v:shape><v:textpath string=\"[NAME1] 草稿\"/></v:shape>"
                    "</w:pict></w:r>")},
  });
  const auto text =
      test::masked(test::docx("<w:tbl><w:tr>" + cell(paragraph_of("")) +
                              cell(paragraph_of(run_of("电话"))) + "</w:tr><w:tr>" +
                              cell(paragraph_of(run_of("甲"))) + cell(paragraph_of(run_of("乙"))) +
                              "</w:tr></w:tbl>" + paragraph_of(run_of("丙"))))
          .text;
  EXPECT_EQ(test::u8(text), "\t电话\n甲\t乙\n\uE000¶\uE001\n丙");
}

TEST(DocxText, TakesOutWhatTellsOfPeople) {
  expect_bodies({
      {"修订标识", "<w:p w:rsidR=\"00A1\" w:rsidRDefault=\"00A2\" w14:paraId=\"1A2B\"/>",
       "<w:p w14:paraId=\"1A2B\"/>"},
      {"替代文字和对象名",
       "<wp:docPr id=\"3\" name=\"张伟民签名\" descr=\"C:\\Users\\zhang\\a.png\" title=\"x\"/>",
       "<wp:docPr id=\"3\" name=\"Object 3\"/>"},
      {"图形的替代文字", "<v:shape id=\"s1\" alt=\"张伟民\" o:title=\"logo\" title=\"y\"/>",
       "<v:shape id=\"s1\"/>"},
      {"表格的替代文字", "<w:tbl><w:tblPr><w:tblCaption w:val=\"x\"/></w:tblPr></w:tbl>",
       "<w:tbl><w:tblPr/></w:tbl>"},
      {"内容控件的标题和标记按文字处理，数据绑定去掉",
       "<w:sdt><w:sdtPr><w:alias w:val=\"签字人张伟民\"/><w:tag w:val=\"signer\"/>"
       "<w:dataBinding w:xpath=\"/a\"/><w:date w:fullDate=\"2024-01-01T00:00:00Z\"/></w:sdtPr>"
       "</w:sdt>",
       "<w:sdt><w:sdtPr><w:alias w:val=\"签字人[NAME1]\"/><w:tag w:val=\"signer\"/><w:date/>"
       "</w:sdtPr></w:sdt>"},
      {"下拉列表的选项",
       "<w:sdt><w:sdtPr><w:dropDownList><w:listItem w:displayText=\"张伟民\" w:value=\"张伟民\"/>"
       "</w:dropDownList></w:sdtPr></w:sdt>",
       "<w:sdt><w:sdtPr><w:dropDownList><w:listItem w:displayText=\"[NAME1]\" "
       "w:value=\"[NAME1]\"/></w:dropDownList></w:sdtPr></w:sdt>"},
      {"书签名只在藏有值时改，引用随之改",
       "<w:bookmarkStart w:id=\"1\" w:name=\"张伟民_1\"/><w:bookmarkStart w:id=\"2\" "
       "w:name=\"_Toc1\"/><w:hyperlink w:anchor=\"张伟民_1\"/><w:hyperlink w:anchor=\"_Toc1\"/>" +
           paragraph_of(run_of("张伟民")),
       "<w:bookmarkStart w:id=\"1\" w:name=\"Bookmark_1\"/><w:bookmarkStart w:id=\"2\" "
       "w:name=\"_Toc1\"/><w:hyperlink w:anchor=\"Bookmark_1\"/><w:hyperlink w:anchor=\"_Toc1\"/>" +
           paragraph_of(run_of("[NAME1]"))},
      {"智能标记里的值",
       "<w:p><w:smartTag w:uri=\"urn:x\" w:element=\"PersonName\"><w:smartTagPr><w:attr "
       "w:name=\"n\" w:val=\"Li\"/></w:smartTagPr>" +
           run_of("张伟民") + "</w:smartTag></w:p>",
       "<w:p><w:smartTag w:element=\"value\">" + run_of("[NAME1]") + "</w:smartTag></w:p>"},
      {"嵌入对象只留图片",
       paragraph_of("<w:r><w:object><v:shape id=\"s\"/><o:OLEObject r:id=\"rId9\"/></w:object>"
                    "</w:r>"),
       paragraph_of("<w:r><w:object><v:shape id=\"s\"/></w:object></w:r>")},
  });
}

TEST(DocxText, NeutralizesInstructionsOfFields) {
  const auto field = [](const std::string& instruction, const std::string& result) {
    return paragraph_of("<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r>" + instruction +
                        "<w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>" + run_of(result) +
                        "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>");
  };
  const auto code = [](const std::string& text) {
    return "<w:r><w:instrText xml:space=\"preserve\">" + text + "</w:instrText></w:r>";
  };
  expect_bodies({
      {"地址没了，结果按文字处理", field(code(" HYPERLINK \"mailto:lin@example.com\" "), "张伟民"),
       field(code(" HYPERLINK \"about:blank\" "), "[NAME1]")},
      {"指令分在两段里", field(code(" HYPERLINK \"mailto:lin@") + code("example.com\" "), "邮件"),
       field(
           code(" HYPERLINK \"about:blank\" ") + "<w:r><w:instrText xml:space=\"preserve\"/></w:r>",
           "邮件")},
      {"合并域的名称", field(code(" MERGEFIELD 客户张三 "), "甲"),
       field(code(" MERGEFIELD "), "甲")},
      {"文件路径", field(code(" INCLUDETEXT \"C:\\\\x.docx\" \\c y "), "甲"),
       field(code(" INCLUDETEXT "), "甲")},
      {"页码和目录照旧", field(code(" TOC \\o \"1-3\" \\h "), "甲"),
       field(code(" TOC \\o \"1-3\" \\h "), "甲")},
      {"指向文内的链接照旧", field(code(" HYPERLINK \\l \"_Toc1\" "), "甲"),
       field(code(" HYPERLINK \\l \"_Toc1\" "), "甲")},
      {"简单域",
       paragraph_of("<w:fldSimple w:instr=\" AUTHOR 张伟民 \">" + run_of("张伟民") +
                    "</w:fldSimple>"),
       paragraph_of("<w:fldSimple w:instr=\" AUTHOR \">" + run_of("[NAME1]") + "</w:fldSimple>")},
  });
}

TEST(DocxText, KeepsCharactersOfJoiners) {
  const auto in = paragraph_of(run_of("甲\uE000¶\uE001乙 § 张伟民\uE001"));
  const auto done = test::masked(test::docx(in));
  EXPECT_EQ(done.body(), paragraph_of(run_of("甲\uE000¶\uE001乙 § [NAME1]\uE001")));
  EXPECT_EQ(done.text.find(U'\uE000'), std::u32string::npos);
}

TEST(DocxText, NumbersHoldAcrossStories) {
  const auto header = test::rooted("w:hdr", paragraph_of(run_of("张伟民")));
  const auto notes = test::rooted(
      "w:footnotes",
      "<w:footnote w:id=\"1\">" + paragraph_of(run_of("北京华信科技有限公司")) + "</w:footnote>");
  const auto done = test::masked(
      test::docx(paragraph_of(run_of("北京华信科技有限公司，张伟民")),
                 {{"word/h.xml", "wordprocessingml.header+xml", "header", header},
                  {"word/f.xml", "wordprocessingml.footnotes+xml", "footnotes", notes}}));
  EXPECT_EQ(done.body(), paragraph_of(run_of("[机构1]，[NAME1]")));
  EXPECT_NE(done.part("word/h.xml").find("[NAME1]"), std::string::npos);
  EXPECT_NE(done.part("word/f.xml").find("[机构1]"), std::string::npos);
  ASSERT_EQ(done.report.stories.size(), 3U);
  EXPECT_EQ(done.report.stories[0].first, "body");
  EXPECT_EQ(done.report.stories[0].second.at("ORG"), 1U);
  EXPECT_EQ(done.report.stories[1].first, "header");
  EXPECT_EQ(done.report.stories[2].first, "footnotes");
}

}  // namespace
