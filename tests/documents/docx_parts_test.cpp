// What becomes of the parts of a .docx beside its body.
#include <gtest/gtest.h>

#include "documents/errors.hpp"
#include "tests/documents/support.hpp"

namespace {

using test::ExtraPart;

const std::string PERSON_IN_BODY = "<w:p><w:r><w:t>张伟民</w:t></w:r></w:p>";
const std::string PARAGRAPH = "<w:p><w:r><w:t>张伟民</w:t></w:r></w:p>";

TEST(DocxParts, MasksEveryStory) {
  struct Case {
    const char* why;
    ExtraPart part;
  };
  const Case cases[] = {
      {"header",
       {"word/header9.xml", "wordprocessingml.header+xml", "header",
        test::rooted("w:hdr", PARAGRAPH)}},
      {"footer",
       {"word/x.xml", "wordprocessingml.footer+xml", "footer", test::rooted("w:ftr", PARAGRAPH)}},
      {"endnotes",
       {"word/x.xml", "wordprocessingml.endnotes+xml", "endnotes",
        test::rooted("w:endnotes", "<w:endnote>" + PARAGRAPH + "</w:endnote>")}},
      {"comments",
       {"word/x.xml", "wordprocessingml.comments+xml", "comments",
        test::rooted("w:comments",
                     "<w:comment w:id=\"1\" w:author=\"张伟民\" "
                     "w:initials=\"张伟民\">" +
                         PARAGRAPH + "</w:comment>")}},
      {"building blocks",
       {"word/glossary/document.xml", "wordprocessingml.document.glossary+xml", "glossaryDocument",
        test::rooted("w:glossaryDocument",
                     "<w:docParts><w:docPart><w:docPartPr><w:name "
                     "w:val=\"张伟民\"/></w:docPartPr><w:docPartBody>" +
                         PARAGRAPH + "</w:docPartBody></w:docPart></w:docParts>")}},
      {"chart",
       {"word/charts/c.xml", "drawingml.chart+xml", "chart",
        test::rooted("c:chartSpace",
                     "<c:v>张伟民</c:v><a:p><a:r><a:t>张伟</a:t></a:r><a:r>"
                     "<a:t>民</a:t></a:r></a:p><c:externalData "
                     "r:id=\"rId1\"/>")}},
      {"diagram",
       {"word/diagrams/data1.xml", "drawingml.diagramData+xml", "diagramData",
        test::rooted("a:model", "<a:p><a:r><a:t>张伟民</a:t></a:r></a:p>")}},
      {"diagram as it is drawn",
       {"word/diagrams/drawing1.xml", "drawingml.diagramDrawing+xml", "diagramDrawing",
        test::rooted("a:drawing",
                     "<a:p><a:r><a:t>张</a:t></a:r><a:r><a:t>伟民</a:t></a:r></a:p>")}},
      {"numbering",
       {"word/numbering.xml", "wordprocessingml.numbering+xml", "numbering",
        test::rooted("w:numbering", "<w:lvl><w:lvlText w:val=\"张伟民%1\"/></w:lvl>")}},
      {"unknown", {"word/x.xml", "x.unknown+xml", "unknown", "<x><y>张伟民</y></x>"}},
      {"named otherwise than usual",
       {"word/styles.bin", "wordprocessingml.header+xml", "header",
        test::rooted("w:hdr", PARAGRAPH)}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto part = test::masked(test::docx(PERSON_IN_BODY, {c.part})).part(c.part.name);
    EXPECT_NE(part.find("[NAME1]"), std::string::npos) << part;
    EXPECT_EQ(part.find("张伟"), std::string::npos) << part;
    EXPECT_EQ(part.find("民"), std::string::npos) << part;
    EXPECT_EQ(part.find("externalData"), std::string::npos) << part;
  }
}

TEST(DocxParts, MasksTheHeadersOfAllPages) {
  const auto header = [](const char* name) {
    return ExtraPart{name, "wordprocessingml.header+xml", "header",
                     test::rooted("w:hdr", PARAGRAPH)};
  };
  const auto done = test::masked(
      test::docx("<w:sectPr><w:headerReference w:type=\"default\" r:id=\"rId1\"/>"
                 "<w:headerReference w:type=\"first\" r:id=\"rId2\"/><w:headerReference "
                 "w:type=\"even\" r:id=\"rId3\"/><w:titlePg/></w:sectPr>",
                 {header("word/h1.xml"), header("word/h2.xml"), header("word/h3.xml")}));
  for (const auto* name : {"word/h1.xml", "word/h2.xml", "word/h3.xml"}) {
    EXPECT_NE(done.part(name).find("[NAME1]"), std::string::npos) << done.part(name);
  }
  EXPECT_EQ(done.report.stories.size(), 1U);
}

TEST(DocxParts, RemovesWhatTellsOfPeople) {
  const ExtraPart cases[] = {
      {"docProps/core.xml", "x.core-properties+xml", "metadata/core-properties",
       "<cp:coreProperties xmlns:cp=\"x\"><cp:lastModifiedBy>张伟民</cp:lastModifiedBy>"
       "</cp:coreProperties>"},
      {"docProps/app.xml", "extended-properties+xml", "extended-properties",
       "<Properties><Company>张伟民</Company></Properties>"},
      {"docProps/custom.xml", "custom-properties+xml", "custom-properties",
       "<Properties><p>张伟民</p></Properties>"},
      {"docProps/thumbnail.jpeg", "x/jpeg", "thumbnail", "\xFF\xD8"},
      {"customXml/item1.xml", "", "customXml", "<data>张伟民</data>"},
      {"word/people.xml", "wordprocessingml.people+xml", "people", "<people>张伟民</people>"},
      {"word/commentsExtensible.xml", "wordprocessingml.commentsExtensible+xml",
       "commentsExtensible", "<x/>"},
      {"_xmlsignatures/sig1.xml", "digital-signature-xmlsignature+xml", "signature", "<x/>"},
      {"word/embeddings/sheet.xlsx", "spreadsheetml.sheet", "package", "PK张伟民"},
      {"word/embeddings/o.bin", "oleObject", "oleObject", "张伟民"},
      {"word/recipients.xml", "wordprocessingml.mailMergeRecipientData+xml", "recipientData",
       "<x>张伟民</x>"},
      {"stale/张.xml", "", "", "<x>张伟民</x>"},
  };
  for (const auto& part : cases) {
    SCOPED_TRACE(part.name);
    const auto done = test::masked(test::docx(PERSON_IN_BODY, {part}));
    EXPECT_EQ(done.part(part.name), "(none)");
    EXPECT_EQ(done.part("[Content_Types].xml").find(part.name), std::string::npos);
    EXPECT_EQ(done.part("word/_rels/document.xml.rels").find(part.name), std::string::npos);
    EXPECT_EQ(done.report.removed.size(), 1U);
  }
}

TEST(DocxParts, NeutralizesWhatLeadsOutside) {
  const ExtraPart settings{
      "word/settings.xml", "wordprocessingml.settings+xml", "settings",
      test::rooted("w:settings",
                   "<w:rsids><w:rsid w:val=\"00A1\"/></w:rsids><w:docVars><w:docVar w:name=\"a\" "
                   "w:val=\"b\"/></w:docVars><w:mailMerge/><w:attachedTemplate r:id=\"rId1\"/>"
                   "<w14:docId w14:val=\"1\"/><w:zoom w:percent=\"100\"/>")};
  const auto done = test::masked(
      test::docx(PERSON_IN_BODY, {settings,
                                  {"mailto:lin@example.com", "", "hyperlink", ""},
                                  {"file:///C:/Users/zhang/t.dotx", "", "attachedTemplate", ""}}));
  const auto links = done.part("word/_rels/document.xml.rels");
  EXPECT_NE(links.find("about:blank"), std::string::npos) << links;
  EXPECT_EQ(links.find("lin@"), std::string::npos) << links;
  EXPECT_EQ(links.find("zhang"), std::string::npos) << links;
  EXPECT_EQ(done.part("word/settings.xml").find("<w:rsids"), std::string::npos);
  EXPECT_NE(done.part("word/settings.xml").find("><w:zoom w:percent=\"100\"/></w:settings>"),
            std::string::npos)
      << done.part("word/settings.xml");
}

TEST(DocxParts, RenamesStylesThatHoldAValue) {
  const auto style = [](const std::string& id, const std::string& name) {
    return "<w:style w:type=\"paragraph\" w:customStyle=\"1\" w:styleId=\"" + id +
           "\"><w:name w:val=\"" + name + "\"/></w:style>";
  };
  const ExtraPart styles{
      "word/styles.xml", "wordprocessingml.styles+xml", "styles",
      test::rooted("w:styles", style("张伟民正文", "张伟民 正文") + style("Clause", "Clause"))};
  const auto done = test::masked(
      test::docx("<w:p><w:pPr><w:pStyle w:val=\"张伟民正文\"/></w:pPr></w:p><w:p><w:pPr><w:pStyle "
                 "w:val=\"Clause\"/></w:pPr></w:p>",
                 {styles}));
  EXPECT_EQ(done.body(),
            "<w:p><w:pPr><w:pStyle w:val=\"CustomStyle1\"/></w:pPr></w:p><w:p><w:pPr><w:pStyle "
            "w:val=\"Clause\"/></w:pPr></w:p>");
  EXPECT_NE(done.part("word/styles.xml").find(style("CustomStyle1", "CustomStyle1")),
            std::string::npos);
  EXPECT_NE(done.part("word/styles.xml").find(style("Clause", "Clause")), std::string::npos);
}

TEST(DocxParts, KeepsWhatItDoesNotTouch) {
  // Written as no XML library writes it.
  const std::string theme = "<?xml version='1.0'?>\n<a:theme  xmlns:a='x' name = 'Office' />\n";
  const std::string picture("\x89PNG\r\n\x1A\n\0bytes", 14);
  const auto done = test::masked(test::docx(
      PERSON_IN_BODY, {{"word/theme/theme1.xml", "theme+xml", "theme", theme},
                       {"word/commentsExtended.xml", "wordprocessingml.commentsExtended+xml",
                        "commentsExtended", "<w15:commentsEx xmlns:w15='x'/>"},
                       {"word/commentsIds.xml", "wordprocessingml.commentsIds+xml", "commentsIds",
                        "<w16cid:commentsIds xmlns:w16cid='x'/>"},
                       {"word/media/a.png", "", "image", picture}}));
  EXPECT_EQ(done.part("word/theme/theme1.xml"), theme);
  EXPECT_EQ(done.part("word/commentsExtended.xml"), "<w15:commentsEx xmlns:w15='x'/>");
  EXPECT_EQ(done.part("word/commentsIds.xml"), "<w16cid:commentsIds xmlns:w16cid='x'/>");
  EXPECT_EQ(done.part("word/media/a.png"), picture);
  EXPECT_EQ(done.parts.front().name, "[Content_Types].xml");
  EXPECT_EQ(done.parts.back().name, "word/media/a.png");
  EXPECT_EQ(done.report.not_examined, std::vector<std::string>{"word/media/a.png: picture"});
}

TEST(DocxParts, LeavesNothingBetweenTheParts) {
  auto bytes = test::docx(PERSON_IN_BODY);
  bytes[bytes.size() - 2] = 9;  // the length of a comment
  bytes += "张伟民";
  const auto document = documents::read_document(bytes);
  const auto written = document->write(
      core::anonymization::anonymize_document(document->text(), test::finding_analyzer(), "zh"));
  EXPECT_EQ(written.find("张伟民"), std::string::npos);
}

TEST(DocxParts, TakesMetadataOutOfPictures) {
  using namespace std::string_literals;
  const std::string head = "\x89PNG\r\n\x1A\n"s;
  const std::string image = "\0\0\0\2IDATxysum1"s;
  const std::string end = "\0\0\0\0IENDsum2"s;
  const std::string start = "\xFF\xD8\xFF\xE0\0\x08JFIF\0\1"s;
  const std::string scan = "\xFF\xDA\0\2pixels\xFF\xD9"s;
  struct Case {
    const char* why;
    std::string in;
    std::string out;
  };
  const Case cases[] = {
      {"PNG, text", head + "\0\0\0\3tEXtabcsum0"s + image + end, head + image + end},
      {"PNG, behind the end", head + image + end + "more", head + image + end},
      {"PNG, cut", head + image + "\0\0\1\0IDAT"s, head + image + "\0\0\1\0IDAT"s},
      {"JPEG, EXIF",
       start +
           "\xFF\xE1\0\x08"
           "Exif\0\0"s +
           scan,
       start + scan},
      {"JPEG, comment", start + "\xFF\xFE\0\5abc"s + scan, start + scan},
      {"JPEG, cut", start + "\xFF\xFE\1\5abc"s, start + "\xFF\xFE\1\5abc"s},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto done = test::masked(test::docx("", {{"word/media/a.png", "", "image", c.in}}));
    EXPECT_EQ(done.part("word/media/a.png"), c.out);
  }
}

TEST(DocxParts, FailsWhereAValueCanStillBeRead) {
  using namespace std::string_literals;
  struct Case {
    const char* why;
    ExtraPart part;
    bool fails;
  };
  const auto settings = [](const std::string& inner) {
    return ExtraPart{"word/settings.xml", "wordprocessingml.settings+xml", "settings",
                     test::rooted("w:settings", inner)};
  };
  const auto picture = [](const std::string& bytes) {
    return ExtraPart{"word/media/a.png", "", "image", bytes};
  };
  const Case cases[] = {
      {"an attribute", settings("<w:caption w:name=\"x张伟民y\"/>"), true},
      {"with white space in it", settings("<w:caption w:name=\"张 伟 民\"/>"), true},
      {"a text of no story", settings("<w:unknown>张伟民</w:unknown>"), true},
      {"split over elements", settings("<w:unknown>张伟</w:unknown><w:other>民</w:other>"), true},
      {"bytes of a picture", picture("..张伟民.."), true},
      {"where two pieces meet", picture(std::string((1U << 20U) - 4, '.') + "张伟民.."), true},
      {"as a metafile writes them", picture("..\x20\x5F\x1F\x4F\x11\x6C.."s), true},
      {"the name of a part", {"word/media/张伟民.png", "", "image", "x"}, true},
      {"part of it", settings("<w:caption w:name=\"张伟\"/>"), false},
      {"the name of a font is nobody's", settings("<w:rFonts w:ascii=\"张伟民\"/>"), false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto bytes = test::docx(PERSON_IN_BODY, {c.part});
    if (c.fails) {
      EXPECT_THROW(test::masked(bytes), documents::LeftoverError);
    } else {
      EXPECT_NO_THROW(test::masked(bytes));
    }
  }
}

}  // namespace
