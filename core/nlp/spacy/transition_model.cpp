#include "core/nlp/spacy/transition_model.hpp"

#include <algorithm>
#include <utility>

#include "core/nlp/spacy/kernels.hpp"

namespace core::nlp::spacy {
namespace {

// No published model comes near; what is larger is a damaged file.
constexpr std::size_t WIDEST_HIDDEN = 4096;
constexpr std::size_t MOST_FEATURES = 16;
// Tokens whose lower layer is computed at once.
constexpr std::size_t CHUNK = 64;
constexpr std::size_t MOST_CHUNKS = 16;
constexpr std::size_t CHUNK_MEMORY = 16 << 20;
constexpr auto NO_CHUNK = static_cast<std::size_t>(-1);

// W [rows, columns] as columns x rows.
std::vector<float> transposed(const FloatArray& w) {
  const auto rows = w.shape[0];
  const auto columns = w.shape[1];
  std::vector<float> out(rows * columns);
  for (std::size_t r = 0; r < rows; ++r) {
    for (std::size_t c = 0; c < columns; ++c) out[c * rows + r] = w.at(r * columns + c);
  }
  return out;
}

}  // namespace

TransitionModel::TransitionModel(const NetworkFile& network, const MappedFile& moves,
                                 bool skip_first_action)
    : classes_(read_moves(moves, skip_first_action)) {
  read_network(network);
}

void TransitionModel::read_network(const NetworkFile& network) {
  const auto& root = network.root();
  if (root.name != "parser_model") root.fail("not the network of a parser");
  const auto& lower = network.referred(root, "lower");
  const bool has_upper = root.attr("has_upper").read_bool();
  const Node* upper = has_upper ? &network.referred(root, "upper") : nullptr;
  const Node* projection = nullptr;
  for (const auto* linear : network.nodes("linear")) {
    if (linear == upper) continue;
    if (projection != nullptr) linear->fail("there is one of its kind already");
    projection = linear;
  }
  if (projection == nullptr) root.fail("there is no layer linear behind the vectors");
  const auto& w = projection->array("W", 2);
  width_ = w.shape[0];
  inputs_ = w.shape[1];
  if (width_ > WIDEST_HIDDEN) projection->fail("absurd size");
  projection->expect_shape("b", {width_});
  projection_ = transposed(w);
  projection_bias_ = projection->params.at("b").values();
  read_lower(lower);
  if (upper != nullptr) read_upper(*upper);
  const auto scores = upper != nullptr ? upper_bias_.size() : hidden_;
  if (scores != classes_.size()) {
    (upper != nullptr ? *upper : lower)
        .fail("scores " + std::to_string(scores) + " classes, moves has " +
              std::to_string(classes_.size()));
  }
}

// On disk W is [feature, hidden, piece, input].
void TransitionModel::read_lower(const Node& lower) {
  const auto& w = lower.array("W", 4);
  features_ = w.shape[0];
  hidden_ = w.shape[1];
  pieces_ = w.shape[2];
  const auto row = features_ * hidden_ * pieces_;
  if (hidden_ * pieces_ > WIDEST_HIDDEN || features_ > MOST_FEATURES) lower.fail("absurd size");
  if (w.shape[3] != width_) lower.fail("does not read what the layer linear gives");
  lower.expect_shape("b", {hidden_, pieces_});
  lower.expect_shape("pad", {1, features_, hidden_, pieces_});
  const auto& b = lower.params.at("b");
  const auto& pad = lower.params.at("pad");
  lower_.resize(w.size());
  lower_pad_.resize(row);
  lower_bias_.resize(b.size());
  for (std::size_t from = 0; from < row; ++from) {
    const auto feature = from / (hidden_ * pieces_);
    const auto hidden = from / pieces_ % hidden_;
    const auto piece = from % pieces_;
    const auto to = (feature * pieces_ + piece) * hidden_ + hidden;
    lower_pad_[to] = pad.at(from);
    if (feature == 0) lower_bias_[to] = b.at(from);
    for (std::size_t i = 0; i < width_; ++i) lower_[i * row + to] = w.at(from * width_ + i);
  }
}

void TransitionModel::read_upper(const Node& upper) {
  const auto& w = upper.array("W", 2);
  if (w.shape[1] != hidden_) upper.fail("does not read the hidden layer");
  upper.expect_shape("b", {w.shape[0]});
  upper_ = transposed(w);
  upper_bias_ = upper.params.at("b").values();
}

TransitionScores::TransitionScores(const TransitionModel& model, std::size_t tokens)
    : model_(model),
      tokens_(tokens),
      row_(model.features_ * model.pieces_ * model.hidden_),
      projected_(tokens * model.width_),
      single_rows_(row_),
      addends_(model.features_ + 1),
      sum_(model.pieces_ * model.hidden_),
      hidden_(model.hidden_),
      scores_(model.classes_.size()) {
  const auto fitting = CHUNK_MEMORY / (CHUNK * row_ * sizeof(float));
  const auto needed = (tokens + CHUNK - 1) / CHUNK;
  chunk_in_.assign(std::min({std::max<std::size_t>(fitting, 2), MOST_CHUNKS, needed}), NO_CHUNK);
  chunks_.resize(chunk_in_.size() * CHUNK * row_);
}

void TransitionScores::add(const TokenVectors& vectors) {
  const auto width = model_.width_;
  std::vector<float> rows(vectors.row_count * width);
  kernels().multiply(vectors.rows.data(), vectors.row_count, model_.inputs_, model_.inputs_,
                     model_.projection_.data(), model_.projection_bias_.data(), width, rows.data());
  for (std::size_t i = 0; i < vectors.row_of.size(); ++i) {
    std::copy_n(&rows[vectors.row_of[i] * width], width, &projected_[(vectors.begin + i) * width]);
  }
  projected_tokens_ = vectors.end();
}

void TransitionScores::compute_chunk(std::size_t chunk) {
  const auto place = chunk % chunk_in_.size();
  const auto begin = chunk * CHUNK;
  const auto rows = std::min(CHUNK, tokens_ - begin);
  kernels().multiply(&projected_[begin * model_.width_], rows, model_.width_, model_.width_,
                     model_.lower_.data(), nullptr, row_, &chunks_[place * CHUNK * row_]);
  chunk_in_[place] = chunk;
}

// The part of the lower layer for a feature. Actions go through a text from left to
// right: what is not there yet is computed for a whole chunk, what is there no more
// for the one token and feature.
const float* TransitionScores::feature_row(std::size_t feature, std::int32_t token) {
  const auto width = model_.pieces_ * model_.hidden_;
  if (token < 0) return &model_.lower_pad_[feature * width];
  const auto at = static_cast<std::size_t>(token);
  const auto chunk = at / CHUNK;
  const auto place = chunk % chunk_in_.size();
  if (chunk_in_[place] == NO_CHUNK || chunk_in_[place] < chunk) compute_chunk(chunk);
  if (chunk_in_[place] == chunk) {
    return &chunks_[(place * CHUNK + at % CHUNK) * row_ + feature * width];
  }
  auto* out = &single_rows_[feature * width];
  std::fill_n(out, width, 0.0F);
  for (std::size_t i = 0; i < model_.width_; ++i) {
    const float x = projected_[at * model_.width_ + i];
    const float* w = &model_.lower_[i * row_ + feature * width];
    for (std::size_t j = 0; j < width; ++j) out[j] += x * w[j];
  }
  return out;
}

std::span<const float> TransitionScores::of(std::span<const std::int32_t> tokens) {
  const auto& k = kernels();
  addends_[0] = model_.lower_bias_.data();
  for (std::size_t f = 0; f < tokens.size(); ++f) addends_[f + 1] = feature_row(f, tokens[f]);
  k.sum_rows(addends_.data(), addends_.size(), sum_.size(), sum_.data());
  k.maxout(sum_.data(), model_.hidden_, model_.pieces_, hidden_.data());
  if (model_.upper_.empty()) return hidden_;
  k.affine(hidden_.data(), model_.hidden_, model_.upper_.data(), model_.upper_bias_.data(),
           scores_.size(), scores_.data());
  return scores_;
}

}  // namespace core::nlp::spacy
