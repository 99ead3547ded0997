// One part of a package as XML: read within bounds, written back, and the small
// questions that are asked of its elements.
#pragma once

#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace documents {

// Text and white space are kept; comments and processing instructions, which
// nobody sees, are left out. Entities beyond those of XML are not resolved.
// Throws DocumentError, naming `part`, for what is not well-formed, is no UTF-8 or
// UTF-16, declares a document type, nests too deeply, or binds the prefix of
// WordprocessingML to anything else than w.
void parse_xml(pugi::xml_document& xml, std::string_view bytes, const std::string& part);

std::string xml_bytes(const pugi::xml_document& xml);

// Whether `node` is the element `name`, as in "w:p".
inline bool is(const pugi::xml_node& node, std::string_view name) { return name == node.name(); }

// "p" of "w:p".
inline std::string_view local_name(std::string_view name) {
  const auto colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

// All text directly within the element.
std::string own_text(const pugi::xml_node& node);
// Puts one text in its place. White space at its ends is kept by Word.
void set_own_text(pugi::xml_node node, std::string_view text);

// Calls visit(node) for each element of the tree, the root first; what visit
// removes below the node is not visited. `visit` returns false to leave out what
// is below.
template <class Visit>
void for_each_element(const pugi::xml_node& node, const Visit& visit) {
  if (node.type() == pugi::node_element && !visit(node)) return;
  for (auto child = node.first_child(); child;) {
    const auto next = child.next_sibling();
    if (child.type() == pugi::node_element) for_each_element(child, visit);
    child = next;
  }
}

}  // namespace documents
