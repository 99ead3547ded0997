// The pattern of suffixes, searched where its matches can begin.
//
// A search for "the first place from which a suffix reaches to the end" goes through
// the whole text, once for each suffix that is taken off; in a line of ten thousand
// underscores that adds up. Most suffixes are short, so that the end is enough to look at.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "core/text/regex.hpp"

namespace core::nlp::spacy {

class SuffixSearch {
 public:
  // A null pattern never matches.
  explicit SuffixSearch(std::unique_ptr<const text::Regex> pattern);

  // The length of the first match; 0 if there is none. Throws RegexError if the
  // pattern gives up.
  std::size_t match_length(std::u32string_view text) const;

  // Whether every match either is short or begins with a run of one set of characters.
  bool is_windowed() const { return windowed_; }

 private:
  std::unique_ptr<const text::Regex> pattern_;
  bool windowed_ = false;
};

}  // namespace core::nlp::spacy
