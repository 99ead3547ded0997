// Finds the head of each token, and from the trees where sentences begin.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/nlp/spacy/transition_model.hpp"

namespace core::nlp::spacy {

// The trees of a text. Tokens are numbered from 0.
struct DependencyTrees {
  std::vector<std::uint32_t> heads;   // of each token; a root is its own head
  std::vector<std::string> labels;    // of each token
  std::vector<bool> sentence_starts;  // of each token
};

class DependencyParser {
 public:
  // Throws ModelError.
  DependencyParser(const NetworkFile& network, const MappedFile& moves);

  const TransitionModel& model() const { return model_; }
  // `scores` are those of the model for the text.
  DependencyTrees parse(TransitionScores& scores, const TypedTokens& tokens) const;

 private:
  TransitionModel model_;
};

// Takes labels as "punct||nsubj" apart: the head becomes a token below the present
// one whose label is what stands behind the bars. Then finds sentence starts. Heads
// and labels are given.
void finish_trees(DependencyTrees& trees, const TypedTokens& tokens);

}  // namespace core::nlp::spacy
