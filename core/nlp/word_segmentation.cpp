#include "core/nlp/word_segmentation.hpp"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_lexicon.hpp"
#include "core/text/flat_trie.hpp"

namespace core::text::trie_data {
extern "C" const std::uint64_t veildoc_trie_chinese_words[];
}  // namespace core::text::trie_data

namespace core::nlp {
namespace {

using recognition::ChineseWord;
using recognition::ChineseWordClass;

// Finds the cheapest way through a run. A word costs the negated logarithm of its
// frequency, in the half steps of the lists; the buffers serve all runs of a text.
class Segmenter {
 public:
  void add_run(std::u32string_view run, std::size_t offset, std::vector<ChineseWord>& out) {
    prepare(run);
    for (std::size_t i = 0; i < run.size(); ++i) extend(i);
    write(run.size(), offset, out);
  }

 private:
  // The logarithm of the words of the corpus: what a word costs that stands there once.
  static constexpr std::uint32_t RAREST = 52;
  static constexpr std::uint32_t NOT_A_WORD = std::numeric_limits<std::uint32_t>::max();

  // The best way from the start of the run to a position.
  struct Step {
    std::uint64_t cost = std::numeric_limits<std::uint64_t>::max();
    std::uint32_t length = 0;  // of its last word
    std::uint32_t payload = NOT_A_WORD;
  };

  void prepare(std::u32string_view run) {
    labels_.clear();
    for (const char32_t c : run) labels_.push_back(trie_.label(c));
    steps_.assign(run.size() + 1, {});
    steps_.front().cost = 0;
  }

  void extend(std::size_t at) {
    const std::uint64_t cost = steps_[at].cost;
    reach(at, 1, cost + RAREST, NOT_A_WORD);
    text::FlatTrie::Node node = text::FlatTrie::root();
    for (std::size_t i = at; i < labels_.size() && advance(node, i, i - at); ++i) {
      if (!node.is_word()) continue;
      const std::uint32_t frequency = chinese_word_frequency(node.payload());
      reach(at, i + 1 - at, cost + RAREST - frequency, node.payload());
    }
  }

  // A run of many words begins at nearly every character of a text, and most texts hold the
  // same few thousand pairs of characters: where the second one leads is remembered.
  bool advance(text::FlatTrie::Node& node, std::size_t at, std::size_t depth) {
    if (depth != 1) return trie_.advance_label(node, labels_[at]);
    const std::uint32_t pair = labels_[at - 1] << 16U | labels_[at];
    Second& second = seconds_[(pair * 0x9E3779B1U) >> (32U - SECONDS_BITS)];
    if (second.pair != pair) {
      second.pair = pair;
      second.node = node;
      second.found = trie_.advance_label(second.node, labels_[at]);
    }
    node = second.node;
    return second.found;
  }

  void reach(std::size_t from, std::size_t length, std::uint64_t cost, std::uint32_t payload) {
    Step& step = steps_[from + length];
    if (cost < step.cost) step = {cost, static_cast<std::uint32_t>(length), payload};
  }

  void write(std::size_t size, std::size_t offset, std::vector<ChineseWord>& out) const {
    const std::size_t first = out.size();
    for (std::size_t end = size; end > 0; end -= steps_[end].length) {
      const Step& step = steps_[end];
      ChineseWord word{static_cast<std::uint32_t>(offset + end - step.length),
                       static_cast<std::uint32_t>(offset + end)};
      if (step.payload != NOT_A_WORD) {
        const auto facts = chinese_word_facts(step.payload);
        word.word_class = facts.word_class;
        word.frequency = facts.frequency;
        word.division = facts.division;
        word.bare_division = facts.bare_division;
        word.ambiguous_division = facts.ambiguous_division;
      }
      out.push_back(word);
    }
    std::reverse(out.begin() + static_cast<std::ptrdiff_t>(first), out.end());
  }

  // The node behind two characters, by their labels.
  struct Second {
    std::uint32_t pair = 0;
    bool found = false;
    text::FlatTrie::Node node;
  };
  static constexpr unsigned SECONDS_BITS = 11;

  text::FlatTrie trie_{text::trie_data::veildoc_trie_chinese_words};
  std::vector<Second> seconds_ = std::vector<Second>(std::size_t{1} << SECONDS_BITS);
  std::vector<std::uint32_t> labels_;
  std::vector<Step> steps_;
};

// The words of runs that were cut: a contract uses the same ones again and again.
class KnownRuns {
 public:
  explicit KnownRuns(std::u32string_view text) : text_(text) {}

  // Writes the words of start..end as those of an equal run before; false if none is known,
  // which is then to be written behind `out`.
  bool repeat(std::size_t start, std::size_t end, std::vector<ChineseWord>& out) {
    Run& known = runs_[hash(text_.substr(start, end - start)) >> (64U - BITS)];
    const bool found = known.end - known.start == end - start &&
                       text_.substr(known.start, end - start) == text_.substr(start, end - start);
    if (!found) {
      known = {static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(end),
               static_cast<std::uint32_t>(out.size())};
      return false;
    }
    const auto distance = static_cast<std::uint32_t>(start - known.start);
    for (std::size_t i = known.first_word; i < out.size() && out[i].start < known.end; ++i) {
      ChineseWord word = out[i];
      word.start += distance;
      word.end += distance;
      out.push_back(word);
    }
    return true;
  }

 private:
  struct Run {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    std::uint32_t first_word = 0;
  };
  static constexpr unsigned BITS = 13;

  static std::uint64_t hash(std::u32string_view run) {
    constexpr std::uint64_t MULTIPLIER = 0x9E3779B97F4A7C15;
    std::uint64_t h = 0;
    for (const char32_t c : run) h = (h ^ c) * MULTIPLIER;
    return h;
  }

  std::u32string_view text_;
  std::vector<Run> runs_ = std::vector<Run>(std::size_t{1} << BITS);
};

}  // namespace

recognition::ChineseWords segment_words(std::u32string_view folded) {
  std::vector<ChineseWord> out;
  Segmenter segmenter;
  KnownRuns known(folded);
  for (std::size_t i = 0; i < folded.size(); ++i) {
    if (!is_han(folded[i])) continue;
    const std::size_t start = i;
    while (i < folded.size() && is_han(folded[i])) ++i;
    if (!known.repeat(start, i, out)) {
      segmenter.add_run(folded.substr(start, i - start), start, out);
    }
  }
  return recognition::ChineseWords(std::move(out));
}

std::size_t word_index(const ChineseWords& words, std::size_t position) {
  return words.index_at(position);
}

const ChineseWord* word_at(const ChineseWords& words, std::size_t position) {
  const std::size_t i = word_index(words, position);
  return i < words.size() && words[i].start <= position ? &words[i] : nullptr;
}

bool is_word_boundary(const ChineseWords& words, std::size_t position) {
  const ChineseWord* word = word_at(words, position);
  return word == nullptr || word->start == position;
}

TextRange unknown_run(const ChineseWords& words, std::size_t position) {
  const ChineseWord* word = word_at(words, position);
  if (word == nullptr || word->known()) return {position, position};
  const ChineseWord* const first_word = words.data();
  const ChineseWord* const words_end = first_word + words.size();
  const ChineseWord* first = word;
  while (first != first_word && !(first - 1)->known() && (first - 1)->end == first->start) --first;
  const ChineseWord* last = word;
  while (last + 1 != words_end && !(last + 1)->known() && (last + 1)->start == last->end) ++last;
  return {first->start, last->end};
}

bool are_ordinary_words(const ChineseWords& words, std::size_t start, std::size_t end) {
  std::size_t at = start;
  for (std::size_t i = word_index(words, start); i < words.size() && at < end; ++i) {
    const ChineseWord& word = words[i];
    if (word.start != at || word.word_class != ChineseWordClass::ORDINARY) return false;
    at = word.end;
  }
  return at == end && end > start;
}

}  // namespace core::nlp
