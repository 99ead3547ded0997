// Surfaces that an analyzer does not report.
#pragma once

#include <memory>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "core/recognition/analysis_request.hpp"
#include "core/text/regex.hpp"

namespace core::recognition {

class AllowList {
 public:
  // Throws RegexError, naming the entry by its index, for a pattern that does not
  // compile.
  AllowList(const std::vector<std::u32string>& entries, AllowListMatch match);

  // Throws RegexError, naming the entry, if a pattern takes too long.
  bool allows(std::u32string_view surface) const;

 private:
  std::unordered_set<std::u32string> surfaces_;
  std::vector<std::unique_ptr<const text::Regex>> patterns_;
};

}  // namespace core::recognition
