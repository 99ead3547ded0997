// Words that are always hits.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/text/multi_pattern.hpp"

namespace core::recognition {

class DenyList {
 public:
  explicit DenyList(std::span<const std::u32string> words);

  bool empty() const { return words_.empty(); }

  // Where the words stand, sorted by end, none within another. Letter case and
  // width do not matter. Letters and digits match whole words only, Chinese
  // characters anywhere.
  std::vector<std::pair<std::size_t, std::size_t>> find(std::u32string_view text) const;

 private:
  text::MultiPattern words_;
};

}  // namespace core::recognition
