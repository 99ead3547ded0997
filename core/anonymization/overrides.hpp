// What a user wants to be kept or masked in a text, whatever the analyzer says.
//
//   keep  what is masked within such a stretch, and not beyond it, stays readable,
//         also where a name would have been spread there
//   mask  what is not masked anyhow becomes a hit of the kind MASKED; a hit that
//         reaches beyond it keeps the rest
//
// Keeping wins over masking. Offsets count code points of the text.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

namespace entity_type {
inline constexpr std::string_view MASKED = "MASKED";
}  // namespace entity_type

// Sorted, disjoint, none of them empty.
using Stretches = std::vector<std::pair<Offset, Offset>>;

struct Overrides {
  Stretches keep = {};
  Stretches mask = {};

  bool empty() const { return keep.empty() && mask.empty(); }
};

// The overrides of a text, on this thread, as long as the scope lives; both outlive
// it. Other texts are left alone. Of scopes within scopes the inner one counts.
class OverridesScope {
 public:
  OverridesScope(std::u32string_view text, const Overrides& overrides);
  ~OverridesScope();
  OverridesScope(const OverridesScope&) = delete;
  OverridesScope& operator=(const OverridesScope&) = delete;

  // The overrides in force for a text; nullptr if there are none.
  static const Overrides* of(std::u32string_view text);
  // Whether some are in force for any text.
  static bool any();

 private:
  std::u32string_view text_;
  const Overrides& overrides_;
  const OverridesScope* outer_;
};

bool is_kept(const Overrides& overrides, Offset start, Offset end);

// Steps on hits and replacements, which do nothing without overrides. The first
// drops hits that are kept. The second, on hits without overlaps, adds what is to be
// masked, cutting what it overlaps. The third drops what is kept, and adds what is
// to be masked and other steps have dropped.
std::vector<RecognizerResult> drop_kept_hits(std::u32string_view text,
                                             std::vector<RecognizerResult> hits);
std::vector<RecognizerResult> add_masked_hits(std::u32string_view text,
                                              std::vector<RecognizerResult> hits);
std::vector<Replacement> apply_overrides(std::u32string_view text,
                                         std::vector<Replacement> replacements);

}  // namespace core::anonymization
