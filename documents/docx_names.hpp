// Names that elements of a .docx go by: bookmarks and custom styles. One that holds
// something that was masked gets a neutral name, wherever it is referred to.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include <pugixml.hpp>

#include "documents/surface_search.hpp"

namespace documents {

class Names {
 public:
  // To be called for every part before the first rename().
  void collect(const pugi::xml_node& root, const SurfaceSearch& search);
  void rename(const pugi::xml_node& root) const;

  // The name that a bookmark has now.
  std::string bookmark(std::string_view name) const;

 private:
  using Renamed = std::map<std::string, std::string, std::less<>>;

  void collect_style(const pugi::xml_node& style, const SurfaceSearch& search);

  Renamed bookmarks_;
  Renamed styles_;  // by id
};

}  // namespace documents
