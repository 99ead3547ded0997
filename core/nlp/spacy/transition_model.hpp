// A network that decides a sequence of actions, as the parser and the entity
// recognizer of a model are: classes of actions and a score for each in a state.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/nlp/spacy/network_file.hpp"
#include "core/nlp/spacy/tok2vec.hpp"

namespace core::nlp::spacy {

// What an action does depends on who takes it: core/nlp/spacy/dependency_parser.hpp,
// core/nlp/spacy/entity_finder.hpp.
struct TransitionClass {
  int action = 0;
  std::string label;
};

class TransitionModel {
 public:
  // `moves` is the file beside the network's. `skip_first_action` as the entity
  // recognizer has it, which never uses action 0 and gives action 5 no label.
  // Throws ModelError.
  TransitionModel(const NetworkFile& network, const MappedFile& moves, bool skip_first_action);

  const std::vector<TransitionClass>& classes() const { return classes_; }
  // How many tokens describe a state.
  std::size_t features() const { return features_; }
  // Of the vectors that it reads.
  std::size_t inputs() const { return inputs_; }

 private:
  friend class TransitionScores;
  void read_network(const NetworkFile& network);
  void read_lower(const Node& lower);
  void read_upper(const Node& upper);

  std::vector<TransitionClass> classes_;
  std::size_t inputs_ = 0;
  std::size_t width_ = 0;  // after the projection
  std::size_t hidden_ = 0;
  std::size_t pieces_ = 0;
  std::size_t features_ = 0;
  std::vector<float> projection_, projection_bias_;  // inputs_ x width_
  std::vector<float> lower_;                         // width_ x features_ x pieces_ x hidden_
  std::vector<float> lower_bias_, lower_pad_;
  std::vector<float> upper_, upper_bias_;  // hidden_ x classes; empty: the hidden layer scores
};

// The order of the classes of a file `moves`. Throws ModelError.
std::vector<TransitionClass> read_moves(const MappedFile& file, bool skip_first_action);

// The scores of the states of one text.
class TransitionScores {
 public:
  explicit TransitionScores(const TransitionModel& model, std::size_t tokens);

  // Takes the vectors of the text in, stretch by stretch.
  void add(const TokenVectors& vectors);

  // One score a class, for the state that these tokens describe; -1 stands for none.
  // Valid until the next call.
  std::span<const float> of(std::span<const std::int32_t> tokens);

 private:
  const float* feature_row(std::size_t feature, std::int32_t token);
  void compute_chunk(std::size_t chunk);

  const TransitionModel& model_;
  std::size_t tokens_;
  std::size_t row_;  // numbers of a token in all features
  std::vector<float> projected_;
  std::size_t projected_tokens_ = 0;
  // The lower layer of recent tokens, in chunks that take turns.
  std::vector<float> chunks_;
  std::vector<std::size_t> chunk_in_;  // which chunk lies in each place
  std::vector<float> single_rows_;     // of older tokens, one a feature
  std::vector<const float*> addends_;
  std::vector<float> sum_, hidden_, scores_;
};

}  // namespace core::nlp::spacy
