// A set of words that is asked for views, without a copy of each.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>

namespace core::text {

struct ViewHash {
  using is_transparent = void;
  std::size_t operator()(std::u32string_view s) const {
    return std::hash<std::u32string_view>()(s);
  }
};

using ViewSet = std::unordered_set<std::u32string, ViewHash, std::equal_to<>>;

}  // namespace core::text
