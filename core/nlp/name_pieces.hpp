// What stands before the end of an organization's name, word by word, up to where
// the sentence around it begins.
//
//   费用由苏州鑫澜精密机械|有限公司    ->  苏州 (PLACE), 鑫澜 (BRAND), 精密 机械 (TRADE)
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "core/recognition/nlp_artifacts.hpp"

namespace core::nlp {

enum class PieceKind {
  PLACE,  // of the lexicons: 苏州, 吴中区
  TRADE,  // a word for a trade: 机械, 物流
  BRAND,  // no everyday word: 鑫, a person's name, Latin letters
  WORD,   // an everyday word that names may hold
  OTHER   // a blank, a bracket with what it holds
};

struct NamePiece {
  std::size_t start = 0;
  std::size_t end = 0;
  PieceKind kind = PieceKind::WORD;
};

struct NamePieces {
  std::vector<NamePiece> pieces;  // in their order, without gaps
  bool at_edge = false;           // the sentence, the line or a mark ends before them

  bool empty() const { return pieces.empty(); }
};

class NamePieceReader {
 public:
  explicit NamePieceReader(const recognition::NlpArtifacts& artifacts);

  // The pieces that may belong to a name and reach up to `end`, from `floor` on; in the
  // name of a body 与 may stand between its fields.
  NamePieces before(std::size_t end, std::size_t floor, bool of_body = false) const;

  // Whether start..end holds ideographs only and no word of running text.
  bool is_name_text(std::size_t start, std::size_t end) const;

  // Whether no name goes on at `at`: no ideograph stands there, or running text.
  bool is_right_edge(std::size_t at) const;

  // The end of the place that begins at `at`, by either lexicon; `at` if none does.
  std::size_t place_end(std::size_t at) const;

  // The longest run of BRAND pieces, in characters.
  static std::size_t brand_length(const NamePieces& name);

 private:
  struct Word {
    std::size_t start = 0;
    PieceKind kind = PieceKind::WORD;
    bool stop = false;  // running text; a name begins behind it
  };
  // Nothing where the name begins; `last_first` are the pieces behind it.
  std::optional<NamePiece> piece_before(std::size_t end, std::size_t floor,
                                        const std::vector<NamePiece>& last_first,
                                        bool of_body) const;
  bool is_in_brand(const Word& word, std::size_t end, std::size_t floor,
                   const std::vector<NamePiece>& last_first) const;
  bool joins_fields(std::size_t at, std::size_t floor) const;
  bool ends_clause_word(std::size_t end) const;
  bool names_nobody(std::size_t start, std::size_t end) const;
  Word word_before(std::size_t end, std::size_t floor) const;
  bool is_clause_word(std::size_t start, std::size_t end) const;
  std::size_t place_before(std::size_t end, std::size_t floor) const;
  std::size_t opening_bracket(std::size_t close, std::size_t floor) const;
  bool stands_behind_place(std::size_t at, std::size_t floor) const;

  const recognition::NlpArtifacts& a_;
  std::u32string_view t_;
};

}  // namespace core::nlp
