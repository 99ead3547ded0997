// How the parts of a package belong together: their types and relationships.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "documents/package.hpp"
#include "documents/xml.hpp"

namespace documents {

struct Relationship {
  std::string id;
  std::string type;    // the last step of its URI, as in "hyperlink"
  std::string target;  // the name of a part, or any address if `external`
  bool external = false;
};

// Parts with what they are by [Content_Types].xml, wherever they lie.
class OfficePackage {
 public:
  // Throws DocumentError for a package without types or without a main part.
  explicit OfficePackage(std::vector<Part> parts);

  const std::vector<Part>& parts() const { return parts_; }
  const Part* find(std::string_view name) const;
  // By override or extension; "" if none is given.
  std::string type_of(std::string_view name) const;
  // Of the part, or of the package itself for "".
  std::vector<Relationship> relationships_of(std::string_view part) const;
  // The part that is the document.
  const std::string& main_part() const { return main_part_; }

  // Takes out the part with its relationships and its type. References to it are
  // taken out by tidy().
  void remove(std::string_view name);
  void set_bytes(std::string_view name, std::string bytes);
  // Takes out what no relationship leads to, relationships that lead nowhere, and
  // types of parts that are gone. Returns how many parts nothing led to.
  std::size_t tidy();

 private:
  void index_parts();
  void read_types();
  void write_types();
  void drop_relationships(const std::string& source);
  std::vector<std::string> reachable() const;

  std::vector<Part> parts_;
  std::unordered_map<std::string, std::size_t> index_;  // by name in lower case
  std::map<std::string, std::string> by_extension_;     // both lower case
  std::map<std::string, std::string> by_name_;          // lower case to type
  std::string main_part_;
};

inline constexpr std::string_view TYPES_PART = "[Content_Types].xml";
// "word/_rels/document.xml.rels" of "word/document.xml".
std::string relationships_part(std::string_view part);

}  // namespace documents
