// Finds the entities of a text, token by token: begin, inside, last, a unit, outside.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/nlp/spacy/transition_model.hpp"

namespace core::nlp::spacy {

// The tokens `first` to `last`, `last` included.
struct TokenSpan {
  std::uint32_t first = 0;
  std::uint32_t last = 0;
  std::uint32_t label = 0;  // which of EntityFinder::labels()
};

class EntityFinder {
 public:
  // Throws ModelError.
  EntityFinder(const NetworkFile& network, const MappedFile& moves);

  const TransitionModel& model() const { return model_; }
  // Sorted.
  const std::vector<std::string>& labels() const { return labels_; }

  // `scores` are those of the model for the text. No entity crosses a sentence start;
  // `sentence_starts` is empty if nobody knows them. White space begins no entity.
  std::vector<TokenSpan> find(TransitionScores& scores, const TypedTokens& tokens,
                              const std::vector<bool>& sentence_starts) const;

 private:
  TransitionModel model_;
  std::vector<std::string> labels_;
  std::vector<std::uint32_t> label_of_class_;
};

}  // namespace core::nlp::spacy
