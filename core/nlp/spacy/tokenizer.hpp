// Cuts a text into tokens, as a model was trained to read them.
//
// Offsets count code points; start is in, end is out. May be called from any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/nlp/spacy/tokenizer_rules.hpp"

namespace core::nlp::spacy {

struct Token {
  std::uint32_t start = 0;
  std::uint32_t end = 0;
  std::uint32_t norm = 0;    // which norm of the rules replaces its own, from 1 on; 0: none
  bool space_after = false;  // a blank follows that is part of no token

  std::u32string_view text(std::u32string_view document) const {
    return document.substr(start, end - start);
  }
};

class Tokenizer {
 public:
  explicit Tokenizer(TokenizerRules rules);

  // Texts of 2^31 code points and more are refused with a ValueError. Throws
  // RegexError if a pattern of the model gives up.
  std::vector<Token> tokenize(std::u32string_view text) const;

  // The norm that Token::norm names; it is not 0.
  const std::u32string& norm(std::uint32_t number) const { return rules_.norms[number - 1]; }

 private:
  enum class Exceptions { USED, IGNORED };
  class Chunks;

  void split_chunk(std::u32string_view chunk, std::uint32_t offset, Exceptions exceptions,
                   std::vector<Token>& out) const;
  void split_middle(std::u32string_view middle, std::uint32_t offset, Exceptions exceptions,
                    std::vector<Token>& out) const;
  void split_infixes(std::u32string_view middle, std::uint32_t offset,
                     std::vector<Token>& out) const;
  const std::vector<ExceptionToken>* exception(std::u32string_view text,
                                               Exceptions exceptions) const;
  std::vector<Token> first_pass(std::u32string_view text, Exceptions exceptions) const;

  // The second pass: exceptions that the patterns tear apart.
  void read_torn_exceptions();
  bool may_be_torn(std::u32string_view exception) const;
  std::vector<Token> join_torn(std::u32string_view text, std::vector<Token> tokens) const;
  void replace(std::u32string_view text, const std::vector<Token>& tokens, std::size_t first,
               std::size_t last, std::vector<Token>& out) const;

  // A trie over the texts of tokens.
  struct Step {
    std::uint32_t state;
    std::uint32_t word;
    bool operator==(const Step&) const = default;
  };
  struct StepHash {
    std::size_t operator()(const Step& step) const {
      return std::hash<std::uint64_t>()(std::uint64_t{step.state} << 32 | step.word);
    }
  };
  TokenizerRules rules_;
  std::unordered_map<std::u32string, std::uint32_t, TextHash, std::equal_to<>> words_;
  std::unordered_map<Step, std::uint32_t, StepHash> steps_;
  std::vector<bool> is_torn_exception_;  // of each state
};

}  // namespace core::nlp::spacy
