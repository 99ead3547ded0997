// A text in which placeholders have been written, and where they stand.
//
// Offsets count code points of the current text.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

// A stretch of the masked text that was written over the document's own: a
// placeholder, or the wording of an amount around one.
struct Placement {
  Offset start = 0;
  Offset end = 0;
  std::u32string surface;  // what stood there in the document

  bool operator==(const Placement&) const = default;
};

// What is to be written over start..end of a text; refers to a string that
// outlives the call it is given to.
struct Edit {
  Offset start = 0;
  Offset end = 0;
  std::u32string_view written;
};

// The edits that write the replacements, which they refer to.
std::vector<Edit> edits_of(const std::vector<Replacement>& replacements);

class MaskedText {
 public:
  explicit MaskedText(std::u32string_view text) : text_(text) {}

  const std::u32string& text() const { return text_; }
  // Sorted and disjoint.
  const std::vector<Placement>& placements() const { return placements_; }

  // Writes placeholders over spans of the current text. The edits must be
  // sorted, disjoint and inside the text. A placement that an edit touches
  // becomes part of the edit's placement.
  void write(const std::vector<Edit>& edits);

  // Takes spans (sorted, disjoint, inside the text; `written` is ignored) out
  // of the text. A placement shrinks by what is taken out of it.
  void erase(const std::vector<Edit>& spans);

  // Writes the surfaces of placements (ascending indices) back: they are text of the
  // document again.
  void take_back(const std::vector<std::size_t>& indices);

  // Writes the edits in descending order of their starts, equal starts in the
  // given order, each into what the one before left: text before its start,
  // what is written, text from its end. On disjoint spans that is write(); on
  // others a later edit may cut through what an earlier one wrote. Offsets
  // beyond the text count as its end, negative ones as 0. To be called first,
  // on a text without placements. Linear but for the sort.
  void splice_right_to_left(std::vector<Edit> edits);

  // The text, or the placements, for good: what is taken is empty afterwards.
  std::u32string take_text() { return std::exchange(text_, {}); }
  std::vector<Placement> take_placements() { return std::exchange(placements_, {}); }

 private:
  std::u32string text_;
  std::vector<Placement> placements_;
};

}  // namespace core::anonymization
