// What a model says on how its texts are cut into tokens.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/nlp/spacy/mapped_file.hpp"
#include "core/nlp/spacy/suffix_search.hpp"
#include "core/text/regex.hpp"

namespace core::nlp::spacy {

// One token of an exception.
struct ExceptionToken {
  std::uint32_t length = 0;  // in code points
  // Which of TokenizerRules::norms replaces its NORM, from 1 on; 0: none does.
  std::uint32_t norm = 0;
};

// Lets a map of strings be asked for views.
struct TextHash {
  using is_transparent = void;  // NOLINT(readability-identifier-naming): the library's
  std::size_t operator()(std::u32string_view text) const {
    return std::hash<std::u32string_view>()(text);
  }
};
using ExceptionMap =
    std::unordered_map<std::u32string, std::vector<ExceptionToken>, TextHash, std::equal_to<>>;

struct TokenizerRules {
  // Those that the model does not have are null and never match.
  std::unique_ptr<const text::Regex> prefix_search;
  std::unique_ptr<const text::Regex> infix_finditer;
  std::unique_ptr<const text::Regex> token_match;
  std::unique_ptr<const text::Regex> url_match;
  SuffixSearch suffix_search{nullptr};
  // Strings that are cut as they say; the tokens joined give the string.
  ExceptionMap exceptions;
  std::size_t longest_exception = 0;
  std::vector<std::u32string> norms;
  // Whether only the exceptions that the patterns may tear apart are put together again.
  bool faster_heuristics = true;

  const std::vector<ExceptionToken>* exception(std::u32string_view text) const {
    if (text.size() > longest_exception) return nullptr;
    const auto found = exceptions.find(text);
    return found == exceptions.end() ? nullptr : &found->second;
  }
};

// Reads the file `tokenizer` of a model. Throws ModelError.
TokenizerRules read_tokenizer_rules(const MappedFile& file);

}  // namespace core::nlp::spacy
