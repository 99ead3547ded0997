#include "core/nlp/spacy/tok2vec.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <utility>

namespace core::nlp::spacy {
namespace {

// No published model comes near; what is larger is a damaged file.
constexpr std::size_t WIDEST_LAYER = 4096;
constexpr std::size_t MOST_PIECES = 16;

constexpr std::pair<std::string_view, Attribute> ATTRIBUTE_NAMES[] = {
    {"ORTH", Attribute::ORTH},        {"NORM", Attribute::NORM},   {"PREFIX", Attribute::PREFIX},
    {"SUFFIX", Attribute::SUFFIX},    {"SHAPE", Attribute::SHAPE}, {"SPACY", Attribute::SPACY},
    {"IS_SPACE", Attribute::IS_SPACE}};
// In the same order, where a model has numbers.
constexpr std::uint64_t ATTRIBUTE_NUMBERS[] = {65, 67, 69, 70, 68, 81, 6};

Attribute read_attribute(MsgpackReader& reader, const Node& node) {
  if (reader.next_is_bytes()) {
    const auto name = reader.read_bytes();
    for (const auto& [known, attribute] : ATTRIBUTE_NAMES) {
      if (known == name) return attribute;
    }
    node.fail("the attribute " + std::string(name) + " is not supported");
  }
  const auto number = reader.read_unsigned();
  for (std::size_t i = 0; i < std::size(ATTRIBUTE_NUMBERS); ++i) {
    if (ATTRIBUTE_NUMBERS[i] == number) return ATTRIBUTE_NAMES[i].second;
  }
  node.fail("the attribute " + std::to_string(number) + " is not supported");
}

const Node& needed(const NetworkFile& file, std::string_view name) {
  const auto* node = file.only(name);
  if (node == nullptr) file.root().fail("there is no layer " + std::string(name));
  return *node;
}

std::size_t window_size(const Node& node) {
  return static_cast<std::size_t>(node.attr("window_size").read_unsigned());
}

}  // namespace

// On disk W is [output, piece, input].
MaxoutLayer::MaxoutLayer(const Node& maxout, const Node& layernorm) {
  const auto& w = maxout.array("W", 3);
  norm_.width = w.shape[0];
  norm_.pieces = w.shape[1];
  inputs_ = w.shape[2];
  if (norm_.width > WIDEST_LAYER || norm_.pieces > MOST_PIECES) maxout.fail("absurd size");
  maxout.expect_shape("b", {norm_.width, norm_.pieces});
  layernorm.expect_shape("G", {norm_.width});
  layernorm.expect_shape("b", {norm_.width});
  gain_ = layernorm.params.at("G").values();
  shift_ = layernorm.params.at("b").values();
  const auto& b = maxout.params.at("b");
  weights_.resize(w.size());
  bias_.resize(b.size());
  for (std::size_t o = 0; o < norm_.width; ++o) {
    for (std::size_t p = 0; p < norm_.pieces; ++p) {
      const auto from = o * norm_.pieces + p;
      const auto to = p * norm_.width + o;
      bias_[to] = b.at(from);
      for (std::size_t i = 0; i < inputs_; ++i) {
        weights_[i * candidates() + to] = w.at(from * inputs_ + i);
      }
    }
  }
}

MaxoutNorm MaxoutLayer::norm() const {
  return {norm_.width, norm_.pieces, gain_.data(), shift_.data()};
}

Tok2Vec::Tok2Vec(const NetworkFile& file, std::shared_ptr<const StaticVectors> vectors) {
  read_embeddings(file);
  read_static_vectors(file, std::move(vectors));
  read_layers(file);
  check_padding(file);
}

void Tok2Vec::read_embeddings(const NetworkFile& file) {
  const auto& extract = needed(file, "extract_features");
  auto reader = extract.attr("columns");
  std::vector<Attribute> columns(reader.read_array());
  for (auto& column : columns) column = read_attribute(reader, extract);
  for (const auto* node : file.nodes("hashembed")) {
    const auto& table = node->array("E", 2);
    const auto column = node->attr("column").read_unsigned();
    const auto seed = node->attr("seed").read_unsigned();
    if (column >= columns.size()) node->fail("a column that is not extracted");
    if (seed > 0xFFFFFFFF) node->fail("seed out of range");
    if (embedding_width_ == 0) embedding_width_ = table.shape[1];
    if (table.shape[1] != embedding_width_) node->fail("embeddings differ in width");
    reads_space_ |= columns[column] == Attribute::SPACY;
    embeddings_.push_back({columns[column], static_cast<std::uint32_t>(seed), table});
  }
  if (embeddings_.empty()) file.root().fail("there is no layer hashembed");
  if (embeddings_.size() > columns.size()) file.root().fail("more embeddings than columns");
}

void Tok2Vec::read_static_vectors(const NetworkFile& file,
                                  std::shared_ptr<const StaticVectors> vectors) {
  const auto* node = file.only("static_vectors");
  if (node == nullptr) return;
  if (auto key = node->attrs.find("key_attr"); key != node->attrs.end()) {
    auto reader = node->attr("key_attr");
    if (read_attribute(reader, *node) != Attribute::ORTH) node->fail("vectors not by ORTH");
  }
  if (vectors == nullptr) node->fail("the model has no vectors");
  const auto& w = node->array("W", 2);
  if (w.shape[1] != vectors->width()) {
    node->fail("reads vectors of " + std::to_string(w.shape[1]) + " numbers, vocab/vectors has " +
               std::to_string(vectors->width()));
  }
  if (w.shape[0] != embedding_width_) node->fail("embeddings differ in width");
  vectors_ = std::move(vectors);
  projection_.resize(w.size());
  for (std::size_t o = 0; o < w.shape[0]; ++o) {
    for (std::size_t i = 0; i < w.shape[1]; ++i) {
      projection_[i * w.shape[0] + o] = w.at(o * w.shape[1] + i);
    }
  }
}

std::size_t Tok2Vec::embedded_width() const {
  return embedding_width_ * (embeddings_.size() + (vectors_ != nullptr ? 1 : 0));
}

void Tok2Vec::read_layers(const NetworkFile& file) {
  const auto maxouts = file.nodes("maxout");
  const auto norms = file.nodes("layernorm");
  const auto windows = file.nodes("expand_window");
  if (maxouts.empty() || norms.size() != maxouts.size() || windows.size() + 1 != maxouts.size()) {
    file.root().fail("layers do not go together: " + std::to_string(maxouts.size()) + " maxout, " +
                     std::to_string(norms.size()) + " layernorm, " +
                     std::to_string(windows.size()) + " expand_window");
  }
  mixer_ = std::make_unique<MaxoutLayer>(*maxouts[0], *norms[0]);
  if (mixer_->inputs() != embedded_width()) maxouts[0]->fail("does not read what is embedded");
  encoder_.reserve(windows.size());
  for (std::size_t i = 0; i < windows.size(); ++i) {
    const auto window = window_size(*windows[i]);
    if (i > 0 && window != window_) windows[i]->fail("windows differ in size");
    if (window == 0 || window > WIDEST_LAYER) windows[i]->fail("absurd size");
    window_ = window;
    const auto& layer = encoder_.emplace_back(*maxouts[i + 1], *norms[i + 1]);
    if (layer.width() != width() || layer.inputs() != (2 * window + 1) * width()) {
      maxouts[i + 1]->fail("does not read its window");
    }
  }
}

// The rows that stand for what is beyond the ends of a text; the attribute of one of
// the composed nodes.
void Tok2Vec::check_padding(const NetworkFile& file) const {
  std::uint64_t padding = 0;
  const Node* last = &file.root();
  for (const auto& node : file.all()) {
    if (!node.attrs.contains("pad")) continue;
    const auto pad = node.attr("pad").read_unsigned();
    if (pad >= padding) last = &node;
    padding = std::max(padding, pad);
  }
  if (padding != reach()) last->fail("pad is not window_size times depth");
}

void Tok2Vec::embed(const TokenType& type, bool space_after, float* out,
                    std::vector<float>& space) const {
  for (const auto& embedding : embeddings_) {
    const auto rows = embedding.table.shape[0];
    std::fill_n(out, embedding_width_, 0.0F);
    for (const auto number :
         embedding_hash(type.value(embedding.attribute, space_after), embedding.seed)) {
      const char* row =
          embedding.table.bytes.data() + number % rows * embedding_width_ * sizeof(float);
      for (std::size_t i = 0; i < embedding_width_; ++i) {
        float value = 0;
        std::memcpy(&value, row + i * sizeof value, sizeof value);
        out[i] += value;
      }
    }
    out += embedding_width_;
  }
  if (vectors_ == nullptr) return;
  space.resize(vectors_->width());
  if (vectors_->copy(type.orth, space.data())) {
    kernels().multiply(space.data(), 1, space.size(), space.size(), projection_.data(), nullptr,
                       embedding_width_, out);
  } else {
    std::fill_n(out, embedding_width_, 0.0F);
  }
}

}  // namespace core::nlp::spacy
