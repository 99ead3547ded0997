// What a model sees of a token besides its neighbours.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/nlp/spacy/mapped_file.hpp"
#include "core/nlp/spacy/string_ids.hpp"
#include "core/nlp/spacy/tokenizer.hpp"

namespace core::nlp::spacy {

// The attributes of a token that models embed.
enum class Attribute : std::uint8_t { ORTH, NORM, PREFIX, SUFFIX, SHAPE, SPACY, IS_SPACE };

// All tokens of one text and one norm share these.
struct TokenType {
  StringId orth = 0;
  StringId norm = 0;
  StringId prefix = 0;  // the first code point
  StringId suffix = 0;  // the last three
  StringId shape = 0;
  bool is_space = false;

  // SPACY says whether a blank follows, which is no matter of the type.
  std::uint64_t value(Attribute attribute, bool space_after) const;
};

// The tokens of a text by their types.
struct TypedTokens {
  std::vector<TokenType> types;
  std::vector<std::uint32_t> type_of;  // of each token
  std::vector<bool> space_after;       // of each token

  std::size_t size() const { return type_of.size(); }
};

// Norms that replace a word of exactly this spelling: those of a model, then those
// of every model.
class NormTable {
 public:
  NormTable() = default;
  // Reads vocab/lookups.bin. Throws ModelError.
  explicit NormTable(const MappedFile& file);

  StringId norm_of(std::u32string_view text, StringId orth) const;

 private:
  std::unordered_map<StringId, StringId> lexeme_norm_;
};

TypedTokens type_tokens(std::u32string_view text, const std::vector<Token>& tokens,
                        const Tokenizer& tokenizer, const NormTable& norms);

// The shape of a word: "Apple" Xxxxx, "2024" dddd, "NASDAQ" XXXX.
std::u32string shape_of(std::u32string_view word);

}  // namespace core::nlp::spacy
