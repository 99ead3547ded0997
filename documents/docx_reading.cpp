#include "documents/docx_reading.hpp"

#include <array>
#include <string_view>
#include <utility>

namespace documents {
namespace {

// Stories in the order in which they are read.
constexpr std::array<std::string_view, 10> READING_ORDER = {
    "body",     "header",          "footer", "footnotes", "endnotes",
    "comments", "building blocks", "chart",  "diagram",   "other parts"};

}  // namespace

std::vector<XmlPart> xml_parts(const OfficePackage& package) {
  std::vector<XmlPart> out;
  for (const auto& part : package.parts()) {
    auto kind = kind_of(package, part);
    if (kind.role == Role::BINARY || kind.role == Role::STRUCTURE) continue;
    out.push_back({part.name, std::move(kind), std::make_unique<pugi::xml_document>()});
    parse_xml(*out.back().xml, part.bytes, part.name);
  }
  return out;
}

std::vector<pugi::xml_node> roots_of(const std::vector<XmlPart>& parts) {
  std::vector<pugi::xml_node> roots;
  roots.reserve(parts.size());
  for (const auto& part : parts) roots.push_back(part.root());
  return roots;
}

void read_stories(DocxText& text, const std::vector<XmlPart>& parts) {
  for (const auto wanted : READING_ORDER) {
    for (const auto& part : parts) {
      if (part.kind.name != wanted) continue;
      if (part.kind.role == Role::STORY) text.add_story(part.kind.name, part.root(), part.name);
      if (part.kind.role == Role::STRINGS) text.add_strings(part.kind.name, part.root(), part.name);
    }
  }
  text.add_attributes("labels", roots_of(parts));
  text.add_rejected("deleted text");
}

}  // namespace documents
