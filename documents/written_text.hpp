// A masked document as people read it.
#pragma once

#include <string>
#include <vector>

#include "core/anonymization/masked_text.hpp"

namespace documents {

// Of a document of paragraphs, a line for each.
struct WrittenText {
  std::u32string text;                                     // with placeholders
  std::vector<core::anonymization::Placement> placements;  // over `text`
  std::u32string original;                                 // without
};

}  // namespace documents
