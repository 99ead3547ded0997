// The parts of a .docx as trees, and the order in which they are read.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "documents/docx_parts.hpp"
#include "documents/docx_text.hpp"
#include "documents/opc.hpp"

namespace documents {

struct XmlPart {
  std::string name;
  PartKind kind;
  std::unique_ptr<pugi::xml_document> xml;

  pugi::xml_node root() const { return xml->document_element(); }
};

// All parts in XML but types and relationships.
std::vector<XmlPart> xml_parts(const OfficePackage& package);

std::vector<pugi::xml_node> roots_of(const std::vector<XmlPart>& parts);

// Adds all stories of the parts to `text`, which is still to be finished.
void read_stories(DocxText& text, const std::vector<XmlPart>& parts);

}  // namespace documents
