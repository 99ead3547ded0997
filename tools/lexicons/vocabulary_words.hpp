// The words of data/ that the embedded analyzer looks for in every text.
#pragma once

#include <string>
#include <vector>

#include "core/recognition/nlp_artifacts.hpp"

namespace tools {

struct VocabularyWord {
  core::recognition::WordClass word_class;
  std::u32string spelling;
};

// In the order of the lists, which stand in `folder`; a word may come several times.
// Throws std::runtime_error, naming the list, if one cannot be read or has a class that
// is unknown.
std::vector<VocabularyWord> vocabulary_words(const std::string& folder);

}  // namespace tools
