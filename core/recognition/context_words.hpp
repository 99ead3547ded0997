// Context enhancement: a word near a hit that makes it likelier.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/recognition/nlp_artifacts.hpp"

namespace core::recognition {

class ContextWords {
 public:
  static constexpr double BONUS = 0.35;
  // A hit with context never scores less.
  static constexpr double LEAST_SCORE = 0.4;

  // `before` and `after`: how much of the text counts as near, in code points.
  ContextWords(std::vector<std::u32string> words, std::size_t before, std::size_t after);

  // The word that stands near text[start, end) or among the words that came with
  // the artifacts; empty if none does. Letter case and width do not matter. A
  // word of letters begins where a word of the text begins (host: also hosts, not
  // ghost); Chinese characters may stand anywhere (编号: also 合同编号).
  std::u32string_view supporting(const NlpArtifacts& artifacts, std::size_t start,
                                 std::size_t end) const;

  static double raised(double score);

 private:
  std::u32string_view find_in(std::u32string_view folded) const;

  std::vector<std::u32string> words_;
  std::size_t before_;
  std::size_t after_;
};

}  // namespace core::recognition
