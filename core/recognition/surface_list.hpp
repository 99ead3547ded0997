// A user's list of surfaces, and where they stand in a text.
//
//   # a comment
//   蓝鲸计划
//   Orca
//   /HT-\d{6}/
//
// One a line: the surface itself, or a pattern between slashes. White space around
// it does not count, nor do empty lines. Letters of either case and width are equal;
// a surface in Latin letters does not stand within a longer word.
//
// Offsets count code points.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/result.hpp"
#include "core/recognition/user_pattern.hpp"
#include "core/text/multi_pattern.hpp"

namespace core::recognition {

class SurfaceList {
 public:
  // Throws RegexError, naming `source` and the line, for a pattern that does not compile.
  SurfaceList(std::u32string_view list, std::string_view source);

  struct Found {
    // Sorted and disjoint: occurrences that overlap are one stretch.
    std::vector<std::pair<anonymization::Offset, anonymization::Offset>> stretches;
    // Lines of the list, from 1, of which nothing stands in the text.
    std::vector<std::size_t> unused_lines;
  };
  // Linear in the length of the text. May be called from any thread. Throws
  // RegexError, naming the line, if a pattern takes too long.
  Found find(std::u32string_view text) const;

 private:
  struct Pattern {
    CompiledUserPattern compiled;
    std::size_t line;
  };

  std::vector<std::u32string> surfaces_;  // folded
  std::vector<std::size_t> surface_lines_;
  std::vector<Pattern> patterns_;
  text::MultiPattern search_;
};

}  // namespace core::recognition
