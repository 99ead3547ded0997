// What becomes of each part of a .docx, by what it is and not by where it lies.
#pragma once

#include <string>
#include <string_view>

#include "documents/opc.hpp"

namespace documents {

enum class Role {
  STORY,      // WordprocessingML with paragraphs
  STRINGS,    // charts, diagrams and unknown XML: texts without paragraphs of Word's
  MARKUP,     // styles, settings, themes: XML without text
  BINARY,     // pictures, fonts: kept as they are
  STRUCTURE,  // types and relationships
};

struct PartKind {
  Role role = Role::BINARY;
  std::string name;  // for people: "body", "header", "picture"
};
PartKind kind_of(const OfficePackage& package, const Part& part);

// Takes out what tells of people and machines beside the text, or cannot be masked:
// properties, thumbnail, custom XML, people, signatures, embedded objects, sources of
// a mail merge. Neutralizes addresses outside. Returns a line for each, for people.
std::vector<std::string> remove_private_parts(OfficePackage& package);

// Throws DocumentError for a package that holds no Word document, or one with macros
// or with text in another format.
void refuse_other_packages(const OfficePackage& package);

}  // namespace documents
