// Text in pictures that are drawn from records: EMF, EMF+ and WMF, as Word keeps them
// for embedded objects.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace documents {

struct MetafileText {
  bool is_metafile = false;
  // False if some of the text cannot be read: the file is cut, or text stands as the
  // numbers of glyphs.
  bool complete = true;
  // In the order of drawing. Often a record holds a part of a word only.
  std::vector<std::u32string> records;

  std::u32string joined() const;
};

// Follows the Microsoft Open Specifications [MS-EMF], [MS-EMFPLUS] and [MS-WMF]. Text
// in single bytes is read as GB18030, of which ASCII is a part.
MetafileText metafile_text(std::string_view bytes);

}  // namespace documents
