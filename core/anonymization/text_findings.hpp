// What several steps look for in one text, found once.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

// What was found in a text, on this thread, as long as the scope lives. Whoever finds it
// first leaves it here for the others. The text outlives the scope and does not change.
class TextFindingsScope {
 public:
  explicit TextFindingsScope(std::u32string_view text);
  ~TextFindingsScope();
  TextFindingsScope(const TextFindingsScope&) = delete;
  TextFindingsScope& operator=(const TextFindingsScope&) = delete;

  // The innermost scope if it is of this very text (no copy of it), else nullptr.
  static TextFindingsScope* of(std::u32string_view text);

  std::optional<std::vector<std::u32string_view>> labeled_names = {};
  std::optional<std::vector<RecognizerResult>> alias_candidates = {};

 private:
  std::u32string_view text_;
  TextFindingsScope* outer_;
};

// What `find(text)` gives, from the scope of the text if there is one.
template <class Found, class Find>
Found found_once(std::u32string_view text, std::optional<Found> TextFindingsScope::*finding,
                 Find find) {
  auto* scope = TextFindingsScope::of(text);
  if (scope == nullptr) return find(text);
  auto& found = scope->*finding;
  if (!found) found = find(text);
  return *found;
}

}  // namespace core::anonymization
