// Takes out of a part of a .docx what is no text and tells of people and machines:
// authors, dates and marks of revisions, alternative texts, addresses, parsed values.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace documents {

// One for a package, so that an author has one number in all parts.
class Scrubber {
 public:
  // The tree of a part in WordprocessingML, DrawingML or VML.
  void scrub(const pugi::xml_node& root);

 private:
  void scrub_element(pugi::xml_node node);
  void scrub_attributes(pugi::xml_node node);
  std::string author(std::string_view name);

  std::map<std::string, std::string, std::less<>> authors_;
};

}  // namespace documents
