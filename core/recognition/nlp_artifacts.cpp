#include "core/recognition/nlp_artifacts.hpp"

#include <utility>

namespace core::recognition {

ChineseWords::ChineseWords(std::vector<ChineseWord> words) : words_(std::move(words)) {
  if (words_.empty()) return;
  first_of_block_.resize(words_.back().end / BLOCK + 1);
  std::uint32_t i = 0;
  for (std::size_t block = 0; block < first_of_block_.size(); ++block) {
    while (i < words_.size() && words_[i].end <= block * BLOCK) ++i;
    first_of_block_[block] = i;
  }
}

}  // namespace core::recognition
