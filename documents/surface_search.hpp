// Whether something that was masked can be read in a string.
//
// White space and invisible characters count for nothing. A surface of one or two
// code points counts where no letter or number is beside it; a number only where no
// digit is, and only from LEAST_DIGITS digits on: measures of a layout hold all
// shorter ones.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/multi_pattern.hpp"

namespace documents {

class SurfaceSearch {
 public:
  static constexpr std::size_t LEAST_DIGITS = 7;

  explicit SurfaceSearch(const std::vector<std::u32string>& surfaces);

  // In a string that no text pass saw. UTF-8; anything else holds nothing.
  bool found_in(std::string_view text) const;
  // In the bytes of a picture or another part that is no XML: as UTF-8 or UTF-16.
  bool found_in_bytes(std::string_view bytes) const;
  struct Place {
    std::size_t start;
    std::size_t end;
    std::u32string_view word;  // the surface, as compact() has it; of this object
  };
  // Where any of them stands in a text.
  std::vector<Place> find_in(std::u32string_view text) const;
  // Without white space and invisible characters.
  static std::u32string compact(std::u32string_view surface);

 private:
  std::vector<std::u32string> words_;  // compact, each once
  core::text::MultiPattern pattern_;
  std::vector<std::u32string> encoded_;  // as bytes, each a character
  core::text::MultiPattern bytes_pattern_;
};

}  // namespace documents
