// Instructions of fields: what Word computes a text from.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace documents {

// The instruction without what names somebody or something: addresses, files, merge
// fields, properties. References to places of the document, numbers and formats
// stay. `rename` gives the name that a bookmark has now.
//
//   HYPERLINK "mailto:lin@example.com"  ->  HYPERLINK "about:blank"
//   MERGEFIELD Customer                 ->  MERGEFIELD
//   PAGE \* MERGEFORMAT                 ->  PAGE \* MERGEFORMAT
using Renaming = std::function<std::string(std::string_view bookmark)>;
std::string neutral_instruction(std::string_view instruction, const Renaming& rename);

// Does so in a whole part, also where an instruction is split over runs.
void neutralize_fields(const pugi::xml_node& root, const Renaming& rename);

}  // namespace documents
