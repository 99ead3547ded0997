// A pattern that a user wrote.
//
// Nobody has checked it, so it is kept on a short lead: it sees one cell of the
// text at a time, and of a long one pieces of MAX_PIECE code points. The work is
// linear in the length of the text, whatever the pattern.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/text/regex.hpp"

namespace core::recognition {

struct UserPattern {
  std::string name;
  std::u32string regex;  // matches letters of either case, unless it says (?-i)
  double score = 0;      // 0..1
};

class CompiledUserPattern {
 public:
  static constexpr std::size_t MAX_PIECE = 2048;
  // Longer matches in a long cell may be missed at the end of a piece.
  static constexpr std::size_t OVERLAP = 256;

  // Throws RegexError, naming the recognizer, the pattern and the offset.
  CompiledUserPattern(std::string_view recognizer, const UserPattern& pattern);

  const std::string& name() const { return name_; }
  double score() const { return score_; }

  // The matches in `text`, left to right without overlap, none of them empty.
  // Throws RegexError, naming both, if the engine gives up.
  std::vector<std::pair<std::size_t, std::size_t>> find(std::u32string_view text) const;

 private:
  std::string name_;
  double score_;
  std::unique_ptr<const text::Regex> regex_;
};

}  // namespace core::recognition
