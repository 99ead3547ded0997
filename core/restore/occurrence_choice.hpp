// Which occurrence of the masked text an occurrence of the edited one was.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/restore/mapping.hpp"

namespace core::restore {

struct Surroundings {
  std::u32string before;
  std::u32string after;
};

struct Choice {
  enum class By { CONTEXT, ORDER, NOTHING };
  By by = By::NOTHING;
  std::size_t surface = 0;

  bool operator==(const Choice&) const = default;
};

// A surface for each of the found places of one placeholder, in the order of the
// edited text, by the rules of restore.hpp. `entry` has several surfaces.
std::vector<Choice> choose_occurrences(const Entry& entry, const std::vector<Surroundings>& found);

}  // namespace core::restore
