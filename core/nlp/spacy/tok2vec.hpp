// From tokens to vectors: hashed embeddings and word vectors, mixed by one layer,
// then layers that read the neighbours of each token.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "core/nlp/spacy/kernels.hpp"
#include "core/nlp/spacy/network_file.hpp"
#include "core/nlp/spacy/static_vectors.hpp"
#include "core/nlp/spacy/token_types.hpp"

namespace core::nlp::spacy {

// A layer of maxout and its norm, ready for the kernels.
class MaxoutLayer {
 public:
  // Throws ModelError for shapes that do not fit each other.
  MaxoutLayer(const Node& maxout, const Node& layernorm);

  std::size_t inputs() const { return inputs_; }
  std::size_t width() const { return norm_.width; }
  std::size_t candidates() const { return norm_.width * norm_.pieces; }
  // inputs() x candidates()
  const float* weights() const { return weights_.data(); }
  // candidates()
  const float* bias() const { return bias_.data(); }
  MaxoutNorm norm() const;

 private:
  std::size_t inputs_ = 0;
  MaxoutNorm norm_;
  std::vector<float> weights_, bias_, gain_, shift_;
};

class Tok2Vec {
 public:
  // Of all nodes of `file`, which outlives it. `vectors` may be null if the network
  // has no static vectors. Throws ModelError.
  Tok2Vec(const NetworkFile& file, std::shared_ptr<const StaticVectors> vectors);

  std::size_t width() const { return mixer_->width(); }
  // On how many tokens to each side a vector depends.
  std::size_t reach() const { return window_ * encoder_.size(); }
  bool has_static_vectors() const { return vectors_ != nullptr; }

 private:
  friend class Tok2VecPass;
  struct Embedding {
    Attribute attribute;
    std::uint32_t seed;
    FloatArray table;
  };
  void read_embeddings(const NetworkFile& file);
  void read_static_vectors(const NetworkFile& file, std::shared_ptr<const StaticVectors> vectors);
  void read_layers(const NetworkFile& file);
  void check_padding(const NetworkFile& file) const;
  std::size_t embedded_width() const;
  // What the mixer reads of a token.
  void embed(const TokenType& type, bool space_after, float* out, std::vector<float>& space) const;

  std::vector<Embedding> embeddings_;
  std::size_t embedding_width_ = 0;
  bool reads_space_ = false;  // whether a blank behind a token matters
  std::shared_ptr<const StaticVectors> vectors_;
  std::vector<float> projection_;  // vectors' width x embedding_width_
  std::unique_ptr<const MaxoutLayer> mixer_;
  std::vector<MaxoutLayer> encoder_;
  std::size_t window_ = 0;
};

// Vectors of a stretch of tokens. Tokens with the same surroundings share a row.
struct TokenVectors {
  std::size_t begin = 0;              // of the stretch
  std::vector<std::uint32_t> row_of;  // of each token in it
  std::vector<float> rows;            // of width() numbers each
  std::size_t row_count = 0;

  std::size_t end() const { return begin + row_of.size(); }
};

// One text on its way through a Tok2Vec, stretch by stretch, so that the memory it
// takes does not grow with the text. What depends on a word alone is kept from
// stretch to stretch.
class Tok2VecPass {
 public:
  // Both outlive it.
  Tok2VecPass(const Tok2Vec& network, const TypedTokens& tokens);

  // The vectors of the next tokens; false at the end of the text.
  bool next(TokenVectors& out);

 private:
  // Rows of one layer, and which of them each position of the stretch has. Row 0 is
  // zero: what stands beyond the ends.
  struct Layer {
    std::vector<std::uint32_t> ids;
    std::vector<float> rows;
    std::size_t count = 1;
  };
  // Products of rows with the weights of each place in a window.
  using Products = std::vector<std::vector<float>>;

  void begin_words(std::size_t begin, std::size_t end);
  void add_words(const std::vector<std::uint32_t>& words);
  std::uint32_t word_at(std::size_t token) const;
  void next_layer(std::size_t layer, bool at_start, bool at_end);
  static void add_products(const MaxoutLayer& layer, const float* rows, std::size_t first,
                           std::size_t count, Products& out);
  void sum_products(const MaxoutLayer& layer, const Products& products,
                    const std::vector<float>& rows);
  void multiply_windows(const MaxoutLayer& layer);

  const Tok2Vec& network_;
  const TypedTokens& tokens_;
  std::size_t at_ = 0;

  std::vector<std::uint32_t> row_of_word_;  // by type and space; 0: not there
  std::vector<float> word_rows_;            // the mixer's output; row 0 is zero
  Products word_products_;                  // its products with the first encoder layer
  std::size_t word_count_ = 1;

  Layer layer_, before_;
  std::vector<std::uint32_t> firsts_;  // where each row's window stands
  std::vector<std::uint32_t> padded_;  // ids of the layer before
  std::vector<std::uint32_t> table_;   // of the numbering of windows
  std::vector<float> inputs_, outputs_;
};

}  // namespace core::nlp::spacy
