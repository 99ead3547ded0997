// Files that are refused, each with a message that names what is wrong.
#include <gtest/gtest.h>

#include "documents/errors.hpp"
#include "tests/documents/support.hpp"

namespace {

using documents::Part;

std::string with_part(const std::string& name, const std::string& bytes) {
  auto parts = test::docx_parts("<w:p/>");
  for (auto& part : parts) {
    if (part.name == name) part.bytes = bytes;
  }
  return documents::write_package(parts);
}

std::string without_part(const std::string& name) {
  auto parts = test::docx_parts("<w:p/>");
  std::erase_if(parts, [&](const Part& part) { return part.name == name; });
  return documents::write_package(parts);
}

std::string with_type(const std::string& type) {
  auto parts = test::docx_parts("<w:p/>");
  auto& types = parts.front().bytes;
  const auto from = types.find("application/vnd.openxmlformats-officedocument.word");
  types.replace(from, types.find('"', from) - from, type);
  return documents::write_package(parts);
}

std::string nested(int depth) {
  std::string open;
  std::string close;
  for (int i = 0; i < depth; ++i) {
    open += "<w:sdt>";
    close += "</w:sdt>";
  }
  return test::docx(open + close);
}

// The bytes of the archive with those of `from`, which stands in it once, replaced.
std::string patched(std::string bytes, const std::string& from, const std::string& to) {
  for (auto at = bytes.find(from); at != std::string::npos; at = bytes.find(from, at + 1)) {
    bytes.replace(at, from.size(), to);
  }
  return bytes;
}

TEST(Refusals, NameWhatIsWrong) {
  using namespace std::string_literals;
  const std::string whole = test::docx("<w:p><w:r><w:t>甲</w:t></w:r></w:p>");
  std::string wrong_sum = whole;
  wrong_sum[whole.find("PK\x01\x02") + 16] ^= 1;  // of the first entry of the directory
  const std::string ole = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"s;
  struct Case {
    const char* why;
    std::string bytes;
    const char* says;
  };
  const Case cases[] = {
      {"whole", whole, "read"},
      {"template",
       with_type("application/vnd.openxmlformats-officedocument.wordprocessingml."
                 "template.main+xml"),
       "read"},
      // Damaged archives.
      {"cut in the middle", whole.substr(0, whole.size() / 2), "damaged"},
      {"cut at the end", whole.substr(0, whole.size() - 8), "damaged"},
      {"the head alone", whole.substr(0, 30), "damaged"},
      {"wrong checksum", wrong_sum, "damaged: entry 1"},
      {"empty archive", "PK\x05\x06"s + std::string(18, '\0'), "missing"},
      // Names that lead out of the package.
      {"upwards", patched(whole, "word/document.xml", "../../document.xm"), "may not"},
      {"backslash", patched(whole, "word/document.xml", "word\\document.xml"), "may not"},
      {"one name twice", patched(whole, "_rels/.rels", "_Rels/.rels"), "read"},
      // Packages that are no Word document.
      {"no types", without_part("[Content_Types].xml"), "Content_Types"},
      {"no main part", without_part("word/document.xml"), "main part"},
      {"no relationships", without_part("_rels/.rels"), "main part"},
      {"spreadsheet",
       with_type("application/vnd.openxmlformats-officedocument.spreadsheetml."
                 "sheet.main+xml"),
       "no Word document"},
      {"macros", with_type("application/vnd.ms-word.document.macroEnabled.main+xml"), "macros"},
      {"macros without saying so", test::docx("", {{"word/vba.bin", "x", "vbaProject", "x"}}),
       "macros"},
      {"text in another format", test::docx("", {{"word/a.htm", "x", "aFChunk", "x"}}), "altChunk"},
      // XML.
      {"not well-formed", with_part("word/document.xml", "<w:document><w:body>"),
       "word/document.xml: not well-formed XML at byte"},
      {"empty part", with_part("word/document.xml", ""), "word/document.xml: not well-formed"},
      {"document type",
       with_part("word/document.xml", "<!DOCTYPE d [<!ENTITY a \"aaaa\">]><d>&a;</d>"),
       "document type"},
      {"too deep", nested(2000), "too deeply"},
      {"deep", nested(100), "read"},
      {"another prefix",
       with_part("word/document.xml",
                 "<x:document xmlns:x=\"http://schemas.openxmlformats.org/"
                 "wordprocessingml/2006/main\"/>"),
       "another prefix"},
      {"no UTF-8", test::docx("<w:p><w:r><w:t>\xFF</w:t></w:r></w:p>"), "no UTF-8"},
      {"bad types", with_part("[Content_Types].xml", "<Types"), "[Content_Types].xml: not"},
      // Bombs.
      {"unpacks to too much", test::docx("<w:p/>" + std::string(std::size_t{20} << 20U, ' ')),
       "too much"},
      // Other files.
      {"legacy .doc", ole + std::string(600, '\0'), "legacy"},
      {"encrypted",
       ole + std::string(600, '\0') + "E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0"s,
       "encrypted"},
      {"PDF", "%PDF-1.7\n", "PDF"},
      {"RTF", "{\\rtf1\\ansi", "RTF"},
      {"XML", "\xEF\xBB\xBF<?xml version=\"1.0\"?><a/>", "XML"},
      {"HTML", "<!DOCTYPE html>", "HTML"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_NE(test::refusal(c.bytes).find(c.says), std::string::npos) << test::refusal(c.bytes);
    // Of XML and HTML that was made of a masked text only the placeholders matter.
    const std::string says = c.bytes.find('<') < 4 ? "read" : c.says;
    const auto masked = test::masked_refusal(c.bytes);
    EXPECT_NE(masked.find(says), std::string::npos) << masked;
  }
}

TEST(Refusals, BoundPackages) {
  const std::vector<Part> parts = {{"a", std::string(1000, 'x')}, {"b", std::string(1000, 'x')}};
  const auto bytes = documents::write_package(parts);
  struct Case {
    const char* why;
    documents::PackageLimits limits;
    bool fits;
  };
  const Case cases[] = {
      {"as they are", {}, true},
      {"parts", {.parts = 1}, false},
      {"bytes of a part", {.part_bytes = 999}, false},
      {"bytes of a part", {.part_bytes = 1000}, true},
      {"bytes of all", {.all_bytes = 1999}, false},
      {"bytes of all", {.all_bytes = 2000}, true},
      {"ratio", {.ratio = 10, .free_bytes = 0}, false},
      {"ratio, in a small part", {.ratio = 10, .free_bytes = 1000}, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    if (c.fits) {
      EXPECT_EQ(documents::read_package(bytes, c.limits).size(), 2U);
    } else {
      EXPECT_THROW(documents::read_package(bytes, c.limits), documents::DocumentError);
    }
  }
  EXPECT_THROW(documents::read_package(documents::write_package({{"a", "x"}, {"A", "y"}})),
               documents::DocumentError);
}

}  // namespace
