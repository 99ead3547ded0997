// A text in pieces that a service takes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace core::remote {

struct TextPiece {
  std::size_t start = 0;  // in the whole text
  std::u32string_view text;
};

// The text as a service should read it: the joiners of paragraphs and cells are line
// ends, so that no name runs across them. Code point by code point the same length.
std::u32string with_line_ends(std::u32string_view text);

// Pieces of at most `most` code points (at least 1), together the whole text. Each
// ends with a paragraph (also with the joiner behind it); where one is too long, with
// a sentence, with a blank, or as the last resort anywhere. Pieces of nothing but
// blanks are left out. Linear in the text. The text outlives the pieces.
std::vector<TextPiece> text_pieces(std::u32string_view text, std::size_t most);

}  // namespace core::remote
