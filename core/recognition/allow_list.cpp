#include "core/recognition/allow_list.hpp"

#include <algorithm>
#include <string>

namespace core::recognition {

AllowList::AllowList(const std::vector<std::u32string>& entries, AllowListMatch match) {
  if (match == AllowListMatch::EXACT) {
    surfaces_.insert(entries.begin(), entries.end());
    return;
  }
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const std::string name = "allow_list[" + std::to_string(i) + "]";
    // Alone first: the offset of an error is then one in the caller's text.
    const text::Regex alone(name, entries[i]);
    patterns_.push_back(std::make_unique<const text::Regex>(name, U"(?i)" + entries[i]));
  }
}

bool AllowList::allows(std::u32string_view surface) const {
  if (surfaces_.contains(std::u32string(surface))) return true;
  return std::any_of(patterns_.begin(), patterns_.end(),
                     [&](const auto& pattern) { return pattern->search(surface).has_value(); });
}

}  // namespace core::recognition
