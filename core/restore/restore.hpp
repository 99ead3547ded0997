// Puts the surfaces back into a masked text, which may have been edited.
//
// A text that nobody edited comes back as it was. In an edited one placeholders may
// have been moved, repeated, left out or respelled (placeholder_reader.hpp). Which
// of several surfaces an occurrence stands for is decided by
//
//   1. the text around it: the 16 characters on both sides, then those in its line,
//      then 16 on one side, then 8 on one, then 4 on both, where they leave no choice. Of places that look
//      the same the first is the first, if there are as many of them as there were
//   2. its order: between two occurrences of the placeholder that are settled, if
//      there are as many others as there were
//   3. else the first surface of the placeholder
//
// Offsets count code points. Linear in the length of the text. May be called from
// any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/restore/mapping.hpp"

namespace core::restore {

enum class Outcome {
  RESTORED,       // by its only surface, or by the text around it
  BY_ORDER,       // by its order alone
  FIRST_SURFACE,  // a guess
  // Left as they stand:
  UNKNOWN,      // a placeholder of veildoc's that is not in the mapping
  AMBIGUOUS,    // spelled otherwise than two in the mapping that differ in spelling only
  NO_BRACKETS,  // the name of a placeholder without its brackets, as in 机构1
};

constexpr bool is_restored(Outcome outcome) { return outcome <= Outcome::FIRST_SURFACE; }

// A placeholder in the edited text and what becomes of it.
struct Finding {
  std::size_t start = 0;
  std::size_t end = 0;
  Outcome outcome = Outcome::RESTORED;
  std::size_t entry = EntryIndex::NONE;  // of the mapping; NONE or SEVERAL where there is none
  std::size_t surface = 0;               // of the entry

  bool operator==(const Finding&) const = default;
};

// All placeholders of the text, sorted and disjoint.
std::vector<Finding> find_restorable(std::u32string_view edited, const Mapping& mapping);

// The text with what was found put in its place.
std::u32string restored_text(std::u32string_view edited, const Mapping& mapping,
                             const std::vector<Finding>& findings);

}  // namespace core::restore
