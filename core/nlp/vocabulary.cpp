#include "core/nlp/vocabulary.hpp"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/nlp/characters.hpp"
#include "core/nlp/rare_characters.hpp"
#include "core/nlp/table_labels.hpp"
#include "core/nlp/vocabulary_data.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/flat_trie.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"

namespace core::text::trie_data {
extern "C" const std::uint64_t veildoc_trie_surnames[];
extern "C" const std::uint64_t veildoc_trie_vocabulary[];
}  // namespace core::text::trie_data

namespace core::nlp {
namespace {

using recognition::LABEL_CLASSES;
using recognition::NlpArtifacts;
using recognition::WordClass;
using recognition::WordHit;
using text::FlatTrie;

// Finds the words of the vocabulary in a text: at each place those that begin there, the
// shortest first.
class VocabularyScan {
 public:
  explicit VocabularyScan(NlpArtifacts& out) : out_(out), t_(out.folded) {}

  void run() {
    labels_.resize(t_.size());
    for (std::size_t i = 0; i < t_.size(); ++i) {
      labels_[i] = static_cast<std::uint16_t>(words_.label(lower(t_[i])));
    }
    for (std::size_t at = 0; at < t_.size(); ++at) {
      if (labels_[at] == 0 || begins_within_word(at)) continue;
      FlatTrie::Node node = FlatTrie::root();
      for (std::size_t i = at; i < t_.size() && words_.advance_label(node, labels_[i]); ++i) {
        if (node.is_word()) take(node.payload(), at, i + 1);
      }
    }
    drop_labels_in_labels();
  }

 private:
  bool begins_within_word(std::size_t at) const {
    return at > 0 && is_latin_letter(t_[at]) && is_latin_letter(t_[at - 1]);
  }

  void take(std::uint32_t payload, std::size_t start, std::size_t end) {
    const std::uint32_t* const first = vocabulary_data::first_uses + payload;
    for (const auto& use : std::span(vocabulary_data::uses + first[0], first[1] - first[0])) {
      if (!fits(use, start, end)) continue;
      add(start, end, out_.of(use.word_class));
      if (static_cast<std::size_t>(use.word_class) < LABEL_CLASSES) add(start, end, labels_found_);
    }
  }

  // What lies within another hit is none; of those that begin together the last is the longest.
  static void add(std::size_t start, std::size_t end, std::vector<WordHit>& list) {
    if (list.empty() || end > list.back().end) {
      if (!list.empty() && list.back().start == start) list.pop_back();
      list.push_back({start, end});
    }
  }

  bool fits(const VocabularyUse& use, std::size_t start, std::size_t end) const;
  void drop_labels_in_labels();

  NlpArtifacts& out_;
  std::u32string_view t_;
  FlatTrie words_{text::trie_data::veildoc_trie_vocabulary};
  std::vector<std::uint16_t> labels_;  // of the trie, one for each character
  std::vector<WordHit> labels_found_;  // of all classes of labels
};

bool VocabularyScan::fits(const VocabularyUse& use, std::size_t start, std::size_t end) const {
  const auto surface = t_.substr(start, end - start);
  const bool glued_behind =
      end < t_.size() && is_latin_letter(surface.back()) &&
      (is_latin_letter(t_[end]) ||
       (use.word_class == WordClass::EN_LEGAL_FORM && text::is_ascii_digit(t_[end])));
  if (glued_behind) return false;
  switch (case_of(use.word_class)) {
    case Case::ANY:
      return true;
    case Case::CAPITAL:
      // plc, s.r.o., e.V.: the dots tell a form from a word
      if (use.word_class == WordClass::EN_LEGAL_FORM &&
          (surface == U"plc" || (surface.find(U'.') != surface.npos && surface.size() > 3))) {
        return true;
      }
      return is_upper(surface.front()) &&
             (surface.size() > 2 || is_upper(surface.back()) || surface == U"Oy" ||
              surface == U"Mr" || surface == U"Ms" || surface == U"Dr");
    case Case::EXACT:
      constexpr std::size_t ABBREVIATION = 4;
      const std::u32string_view spelling(vocabulary_data::spellings + use.spelling, use.length);
      return surface == spelling || (surface.size() > ABBREVIATION &&
                                     std::none_of(surface.begin(), surface.end(), is_lower));
  }
  return false;
}

// 身份证号 labels an identity number; the 证号 in it no certificate.
void VocabularyScan::drop_labels_in_labels() {
  for (std::size_t c = 0; c < LABEL_CLASSES; ++c) {
    std::size_t next = 0;  // the first of the labels that begins behind the hit
    std::erase_if(out_.words[c], [&](const WordHit& hit) {
      while (next < labels_found_.size() && labels_found_[next].start <= hit.start) ++next;
      const WordHit& around = labels_found_[next - 1];  // its own, if none is longer
      return around.end >= hit.end && around.end - around.start > hit.end - hit.start;
    });
  }
}

void find_numbers(NlpArtifacts& out) {
  const std::u32string_view t = out.folded;
  for (std::size_t i = find_rare(t, 0, U'@'); i < t.size(); i = find_rare(t, i + 1, U'@')) {
    out.at_signs.push_back(i);
  }
  for (const std::size_t start : out.index.first_ones()) {
    bool digit = false;
    std::size_t end = start;
    for (; end < t.size() && text::is_ascii_alnum(t[end]); ++end) {
      digit = digit || text::is_ascii_digit(t[end]);
    }
    if (digit) out.numbers.push_back({start, end});
  }
}

class EmbeddedNlpEngine : public recognition::NlpEngine {
 public:
  NlpArtifacts process_text(std::u32string_view text, std::string_view) const override {
    NlpArtifacts out;
    out.text = text;
    out.folded = fold_width(text);
    out.index = text::SearchIndex(out.folded);
    text::scan_patterns(out.folded, out.index);
    VocabularyScan(out).run();
    find_numbers(out);
    out.chinese_words = segment_words(out.folded);
    add_table_labels(out);
    return out;
  }
};

}  // namespace

std::unique_ptr<const recognition::NlpEngine> make_embedded_nlp_engine() {
  return std::make_unique<EmbeddedNlpEngine>();
}

bool is_chinese_surname(std::u32string_view name) {
  return FlatTrie(text::trie_data::veildoc_trie_surnames).find(name).has_value();
}

}  // namespace core::nlp
