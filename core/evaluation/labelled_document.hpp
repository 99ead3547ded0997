// A document in which somebody marked what must not be read.
//
//   <<TYPE#n:surface>>   must be masked; equal TYPE#n name one entity
//   <<?TYPE:surface>>    may be masked or left
//
// TYPE is of A-Z, 0-9 and _; n a number. Marks do not nest, are not empty and do
// not cross a line end or a tab; "<<" and ">>" do not occur otherwise.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::evaluation {

using anonymization::Offset;

struct Mark {
  Offset start = 0;  // code points of the text without frames
  Offset end = 0;
  std::string type;
  std::string number;  // empty: the mark is optional

  bool optional() const { return number.empty(); }
  bool operator==(const Mark&) const = default;
};

struct LabelledDocument {
  std::u32string text;      // without the frames of the marks
  std::vector<Mark> marks;  // in text order, disjoint
};

// Throws ValueError, naming the line (from 1) and not the text, for a mark that
// is not as above.
LabelledDocument parse_labelled(std::u32string_view labelled);

}  // namespace core::evaluation
