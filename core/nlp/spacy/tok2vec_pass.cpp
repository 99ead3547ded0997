// A text on its way through the layers. Contracts repeat their words and phrases,
// so each distinct word is embedded once, and of each layer each distinct window of
// rows is computed once a stretch.
#include <algorithm>
#include <bit>
#include <numeric>

#include "core/nlp/spacy/tok2vec.hpp"

namespace core::nlp::spacy {
namespace {

// Tokens of a stretch: long enough that the overlap of stretches costs nothing and
// phrases repeat, short enough to stay within a few megabytes.
constexpr std::size_t STRETCH = 4096;
// Words that are kept from stretch to stretch.
constexpr std::size_t MOST_WORDS = 4096;
// Rows that are multiplied at once: inputs and outputs stay in the second cache.
constexpr std::size_t ROWS_AT_ONCE = 256;

// Gives equal windows of `ids` one number, counted from 1; `numbers` is one shorter
// than `ids` by two windows' sides. `firsts` is where each number stands first.
void number_windows(const std::vector<std::uint32_t>& ids, std::size_t width,
                    std::vector<std::uint32_t>& table, std::vector<std::uint32_t>& numbers,
                    std::vector<std::uint32_t>& firsts) {
  constexpr std::uint64_t FACTOR = 0x9E3779B97F4A7C15;
  const auto count = ids.size() - width + 1;
  numbers.resize(count);
  firsts.clear();
  table.assign(std::bit_ceil(2 * count), 0);
  for (std::size_t at = 0; at < count; ++at) {
    std::uint64_t hash = 0;
    for (std::size_t i = 0; i < width; ++i) hash = (std::rotl(hash, 5) ^ ids[at + i]) * FACTOR;
    auto slot = (hash >> 20) & (table.size() - 1);
    const auto differs = [&](std::uint32_t number) {
      const auto* known = &ids[firsts[number - 1]];
      return !std::equal(known, known + width, &ids[at]);
    };
    while (table[slot] != 0 && differs(table[slot])) slot = (slot + 1) & (table.size() - 1);
    if (table[slot] == 0) {
      firsts.push_back(static_cast<std::uint32_t>(at));
      table[slot] = static_cast<std::uint32_t>(firsts.size());
    }
    numbers[at] = table[slot];
  }
}

}  // namespace

Tok2VecPass::Tok2VecPass(const Tok2Vec& network, const TypedTokens& tokens)
    : network_(network), tokens_(tokens), row_of_word_(2 * tokens.types.size()) {
  // Room that is not touched costs nothing; growing step by step does.
  const auto rows = 1 + std::min({row_of_word_.size(), tokens.size(), MOST_WORDS + STRETCH});
  word_rows_.reserve(rows * network.width());
  if (network.encoder_.empty()) return;
  word_products_.resize(2 * network.window_ + 1);
  for (auto& products : word_products_) {
    products.reserve(rows * network.encoder_.front().candidates());
  }
}

std::uint32_t Tok2VecPass::word_at(std::size_t token) const {
  const bool space = network_.reads_space_ && tokens_.space_after[token];
  return 2 * tokens_.type_of[token] + (space ? 1 : 0);
}

// Sees to it that all words of these tokens have their rows.
void Tok2VecPass::begin_words(std::size_t begin, std::size_t end) {
  if (word_count_ > MOST_WORDS) {
    std::fill(row_of_word_.begin(), row_of_word_.end(), 0);
    word_count_ = 1;
  }
  std::vector<std::uint32_t> words;
  for (auto token = begin; token < end; ++token) {
    auto& row = row_of_word_[word_at(token)];
    if (row != 0) continue;
    row = static_cast<std::uint32_t>(word_count_ + words.size());
    words.push_back(word_at(token));
  }
  add_words(words);
}

void Tok2VecPass::add_words(const std::vector<std::uint32_t>& words) {
  const auto& mixer = *network_.mixer_;
  const auto width = network_.width();
  const auto inputs = mixer.inputs();
  word_rows_.resize((word_count_ + words.size()) * width);
  inputs_.resize(std::max(inputs_.size(), ROWS_AT_ONCE * inputs));
  outputs_.resize(std::max(outputs_.size(), ROWS_AT_ONCE * mixer.candidates()));
  std::vector<float> space;
  for (std::size_t done = 0; done < words.size(); done += ROWS_AT_ONCE) {
    const auto rows = std::min(ROWS_AT_ONCE, words.size() - done);
    for (std::size_t i = 0; i < rows; ++i) {
      const auto word = words[done + i];
      network_.embed(tokens_.types[word / 2], word % 2 != 0, &inputs_[i * inputs], space);
    }
    kernels().multiply(inputs_.data(), rows, inputs, inputs, mixer.weights(), mixer.bias(),
                       mixer.candidates(), outputs_.data());
    for (std::size_t i = 0; i < rows; ++i) {
      kernels().maxout_norm(mixer.norm(), &outputs_[i * mixer.candidates()], nullptr,
                            &word_rows_[(word_count_ + done + i) * width]);
    }
  }
  if (!network_.encoder_.empty()) {
    const auto first = word_count_ == 1 ? 0 : word_count_;  // row 0 has products as well
    add_products(network_.encoder_.front(), word_rows_.data(), first,
                 word_count_ + words.size() - first, word_products_);
  }
  word_count_ += words.size();
}

// The products of `count` rows from `first` on, behind those that are there. The bias
// goes with the middle of the window.
void Tok2VecPass::add_products(const MaxoutLayer& layer, const float* rows, std::size_t first,
                               std::size_t count, Products& out) {
  const auto width = layer.width();
  const auto parts = layer.inputs() / width;
  out.resize(parts);
  for (std::size_t p = 0; p < parts; ++p) {
    if (out[p].size() < (first + count) * layer.candidates()) {
      out[p].resize((first + count) * layer.candidates());
    }
    for (std::size_t done = 0; done < count; done += ROWS_AT_ONCE) {
      const auto at = first + done;
      kernels().multiply(rows + at * width, std::min(ROWS_AT_ONCE, count - done), width, width,
                         layer.weights() + p * width * layer.candidates(),
                         p == parts / 2 ? layer.bias() : nullptr, layer.candidates(),
                         &out[p][at * layer.candidates()]);
    }
  }
}

bool Tok2VecPass::next(TokenVectors& out) {
  const auto tokens = tokens_.size();
  if (at_ == tokens) return false;
  const auto begin = at_;
  const auto end = std::min(tokens, begin + STRETCH);
  const auto reach = network_.reach();
  const bool at_start = begin == 0;
  const bool at_end = end == tokens;
  // The rows beyond the ends of the text begin as zeros, and are computed like others.
  const auto first = begin - std::min(begin, reach);
  const auto last = std::min(tokens, end + reach);
  begin_words(first, last);
  layer_.ids.assign(reach - (begin - first), 0);
  for (auto token = first; token < last; ++token) {
    layer_.ids.push_back(row_of_word_[word_at(token)]);
  }
  layer_.ids.resize(layer_.ids.size() + reach - (last - end), 0);
  for (std::size_t i = 0; i < network_.encoder_.size(); ++i) next_layer(i, at_start, at_end);

  const auto skipped = at_start ? reach : 0;
  out.begin = begin;
  out.row_of.assign(layer_.ids.begin() + static_cast<std::ptrdiff_t>(skipped),
                    layer_.ids.begin() + static_cast<std::ptrdiff_t>(skipped + (end - begin)));
  if (network_.encoder_.empty()) {
    out.rows = word_rows_;
    out.row_count = word_count_;
  } else {
    out.rows.swap(layer_.rows);
    out.row_count = layer_.count;
  }
  at_ = end;
  return true;
}

void Tok2VecPass::next_layer(std::size_t layer, bool at_start, bool at_end) {
  const auto window = network_.window_;
  padded_.assign(at_start ? window : 0, 0);
  padded_.insert(padded_.end(), layer_.ids.begin(), layer_.ids.end());
  padded_.resize(padded_.size() + (at_end ? window : 0), 0);
  std::swap(layer_, before_);
  number_windows(padded_, 2 * window + 1, table_, layer_.ids, firsts_);
  layer_.count = firsts_.size() + 1;
  layer_.rows.resize(layer_.count * network_.width());
  std::fill_n(layer_.rows.begin(), network_.width(), 0.0F);
  const auto& weights = network_.encoder_[layer];
  if (layer == 0) {
    sum_products(weights, word_products_, word_rows_);
  } else {
    multiply_windows(weights);
  }
}

// Each row of the layer before is multiplied once, and the products are added up. That
// pays for words; rows of further layers repeat too little for the memory it takes.
void Tok2VecPass::sum_products(const MaxoutLayer& layer, const Products& products,
                               const std::vector<float>& rows) {
  const auto width = network_.width();
  const auto candidates = layer.candidates();
  std::vector<const float*> addends(products.size());
  outputs_.resize(std::max(outputs_.size(), candidates));
  for (std::size_t i = 0; i < firsts_.size(); ++i) {
    const auto* ids = &padded_[firsts_[i]];
    for (std::size_t p = 0; p < addends.size(); ++p) addends[p] = &products[p][ids[p] * candidates];
    kernels().sum_rows(addends.data(), addends.size(), candidates, outputs_.data());
    kernels().maxout_norm(layer.norm(), outputs_.data(), &rows[ids[network_.window_] * width],
                          &layer_.rows[(i + 1) * width]);
  }
}

// Each window is multiplied as a whole.
void Tok2VecPass::multiply_windows(const MaxoutLayer& layer) {
  const auto width = network_.width();
  const auto parts = 2 * network_.window_ + 1;
  inputs_.resize(std::max(inputs_.size(), ROWS_AT_ONCE * layer.inputs()));
  outputs_.resize(std::max(outputs_.size(), ROWS_AT_ONCE * layer.candidates()));
  for (std::size_t done = 0; done < firsts_.size(); done += ROWS_AT_ONCE) {
    const auto rows = std::min(ROWS_AT_ONCE, firsts_.size() - done);
    auto* to = inputs_.data();
    for (std::size_t i = 0; i < rows; ++i) {
      const auto* ids = &padded_[firsts_[done + i]];
      for (std::size_t p = 0; p < parts; ++p, to += width) {
        std::copy_n(&before_.rows[ids[p] * width], width, to);
      }
    }
    kernels().multiply(inputs_.data(), rows, layer.inputs(), layer.inputs(), layer.weights(),
                       layer.bias(), layer.candidates(), outputs_.data());
    for (std::size_t i = 0; i < rows; ++i) {
      kernels().maxout_norm(layer.norm(), &outputs_[i * layer.candidates()],
                            &inputs_[i * layer.inputs() + network_.window_ * width],
                            &layer_.rows[(done + i + 1) * width]);
    }
  }
}

}  // namespace core::nlp::spacy
