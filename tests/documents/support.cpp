#include "tests/documents/support.hpp"

#include "documents/errors.hpp"
#include "tests/support/notation.hpp"

namespace test {
namespace {

constexpr std::string_view MAIN = "word/document.xml";
constexpr std::string_view TYPES = "application/vnd.openxmlformats-officedocument.";
constexpr std::string_view RELATIONSHIPS =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
constexpr std::string_view RELATIONSHIP_ROOT =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";

class FindingThree : public core::anonymization::Analyzer {
 public:
  std::vector<core::anonymization::RecognizerResult> analyze(std::u32string_view text,
                                                             std::string_view) const override {
    std::vector<core::anonymization::RecognizerResult> results;
    for (const auto& [type, surface] :
         {std::pair{"ORGANIZATION", COMPANY}, {"PERSON", PERSON}, {"EMAIL_ADDRESS", EMAIL}}) {
      const auto wanted = u32(surface);
      for (auto at = text.find(wanted); at != text.npos; at = text.find(wanted, at + 1)) {
        const auto start = static_cast<core::anonymization::Offset>(at);
        const auto size = static_cast<core::anonymization::Offset>(wanted.size());
        results.push_back({type, start, start + size, 0.9});
      }
    }
    return results;
  }
};

std::string relationship(const std::string& id, const std::string& type,
                         const std::string& target) {
  const bool outside = target.find(':') != std::string::npos;
  return "<Relationship Id=\"" + id + "\" Type=\"" + std::string(RELATIONSHIPS) + type +
         "\" Target=\"" + target + (outside ? "\" TargetMode=\"External\"/>" : "\"/>");
}

}  // namespace

const core::anonymization::Analyzer& finding_analyzer() {
  static const FindingThree analyzer;
  return analyzer;
}

std::string rooted(const std::string& name, const std::string& inner) {
  std::string out = "<" + name;
  constexpr std::pair<const char*, const char*> NAMESPACES[] = {
      {"w", "http://schemas.openxmlformats.org/wordprocessingml/2006/main"},
      {"r", "http://schemas.openxmlformats.org/officeDocument/2006/relationships"},
      {"a", "http://schemas.openxmlformats.org/drawingml/2006/main"},
      {"c", "http://schemas.openxmlformats.org/drawingml/2006/chart"},
      {"wp", "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing"},
      {"mc", "http://schemas.openxmlformats.org/markup-compatibility/2006"},
      {"v", "urn:schemas-microsoft-com:vml"},
      {"o", "urn:schemas-microsoft-com:office:office"},
      {"w14", "http://schemas.microsoft.com/office/word/2010/wordml"}};
  for (const auto& [prefix, uri] : NAMESPACES) {
    out += std::string(" xmlns:") + prefix + "=\"" + uri + "\"";
  }
  return out + ">" + inner + "</" + name + ">";
}

std::vector<documents::Part> docx_parts(const std::string& body,
                                        const std::vector<ExtraPart>& extra) {
  std::string types =
      "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
      "<Default Extension=\"rels\" "
      "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
      "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
      "<Default Extension=\"png\" ContentType=\"image/png\"/>"
      "<Override PartName=\"/word/document.xml\" ContentType=\"" +
      std::string(TYPES) + "wordprocessingml.document.main+xml\"/>";
  std::string links(RELATIONSHIP_ROOT);
  int number = 0;
  for (const auto& part : extra) {
    const auto id = "rId" + std::to_string(++number);
    if (!part.type.empty()) {
      types += "<Override PartName=\"/" + part.name + "\" ContentType=\"" + std::string(TYPES) +
               part.type + "\"/>";
    }
    const bool outside = part.name.find(':') != std::string::npos;
    if (!part.relationship.empty()) {
      links += relationship(id, part.relationship, outside ? part.name : "/" + part.name);
    }
  }
  std::vector<documents::Part> parts = {
      {"[Content_Types].xml", types + "</Types>"},
      {"_rels/.rels", std::string(RELATIONSHIP_ROOT) +
                          relationship("rId1", "officeDocument", "word/document.xml") +
                          "</Relationships>"},
      {std::string(MAIN), rooted("w:document", "<w:body>" + body + "</w:body>")},
      {"word/_rels/document.xml.rels", links + "</Relationships>"}};
  for (const auto& part : extra) {
    if (part.name.find(':') == std::string::npos) parts.push_back({part.name, part.bytes});
  }
  return parts;
}

std::string docx(const std::string& body, const std::vector<ExtraPart>& extra) {
  return documents::write_package(docx_parts(body, extra));
}

std::string part_of(const std::vector<documents::Part>& parts, std::string_view name) {
  for (const auto& p : parts) {
    if (p.name == name) return p.bytes;
  }
  return "(none)";
}

std::string body_of(const std::vector<documents::Part>& parts) {
  const auto bytes = part_of(parts, MAIN);
  const auto from = bytes.find("<w:body>") + 8;
  return bytes.substr(from, bytes.find("</w:body>") - from);
}

std::string Masked::part(std::string_view name) const { return part_of(parts, name); }

std::string Masked::body() const { return body_of(parts); }

WayBack way_back(const std::string& bytes) {
  const auto document = documents::read_document(bytes);
  const auto anonymized =
      core::anonymization::anonymize_document(document->text(), finding_analyzer(), "zh");
  const auto written = documents::as_written(anonymized, *document);
  WayBack out;
  out.original_text = document->written(anonymized).original;
  out.masked_text = written.text;
  out.mapping = core::restore::make_mapping(written);
  out.mapping.encoding = document->encoding();
  out.masked = document->write(anonymized);
  return out;
}

Restored restored(const std::string& masked, const core::restore::Mapping& mapping) {
  const auto file = documents::read_masked_file(masked, mapping.encoding);
  const auto findings = core::restore::find_restorable(file->text(), mapping);
  Restored out;
  for (const auto& finding : findings) {
    out.outcomes += "ROFUAB"[static_cast<std::size_t>(finding.outcome)];
  }
  out.bytes = file->write(mapping, findings);
  return out;
}

Masked masked(const std::string& bytes) {
  const auto document = documents::read_document(bytes);
  const auto anonymized =
      core::anonymization::anonymize_document(document->text(), finding_analyzer(), "zh");
  Masked out;
  out.text = document->text();
  out.parts = documents::read_package(document->write(anonymized));
  out.report = document->report();
  return out;
}

std::string masked_body(const std::string& body) { return masked(docx(body)).body(); }

std::string refusal(const std::string& bytes) {
  try {
    documents::read_document(bytes);
  } catch (const documents::DocumentError& e) {
    return e.what();
  }
  return "read";
}

std::string masked_refusal(const std::string& bytes) {
  try {
    documents::read_masked_file(bytes);
  } catch (const documents::DocumentError& e) {
    return e.what();
  }
  return "read";
}

}  // namespace test
