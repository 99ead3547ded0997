#include "core/remote/text_pieces.hpp"

#include <algorithm>
#include <array>

#include "core/text/unicode.hpp"

namespace core::remote {
namespace {

// What frames a joiner.
constexpr char32_t JOINER_BEGIN = 0xE000;
constexpr char32_t JOINER_END = 0xE001;
constexpr std::size_t LONGEST_JOINER = 64;

// Whether a piece may end with text[i].
using MayEnd = bool (*)(std::u32string_view text, std::size_t i);

bool ends_paragraph(std::u32string_view text, std::size_t i) {
  const char32_t c = text[i];
  if (c == U'\r') return i + 1 >= text.size() || text[i + 1] != U'\n';
  return c == U'\n' || c == U'\f' || c == 0x2028 || c == 0x2029 || c == JOINER_END;
}

bool ends_sentence(std::u32string_view text, std::size_t i) {
  constexpr std::u32string_view FULL_STOPS = U"。！？；";
  constexpr std::u32string_view STOPS_BEFORE_BLANK = U".!?;";
  constexpr std::u32string_view CLOSING = U"”’」』）\"'";
  if (i + 1 < text.size() && CLOSING.find(text[i + 1]) != std::u32string_view::npos) return false;
  while (i > 0 && CLOSING.find(text[i]) != std::u32string_view::npos) --i;
  if (FULL_STOPS.find(text[i]) != std::u32string_view::npos) return true;
  return STOPS_BEFORE_BLANK.find(text[i]) != std::u32string_view::npos && i + 1 < text.size() &&
         text::is_space(text[i + 1]);
}

bool is_blank(std::u32string_view text, std::size_t i) { return text::is_space(text[i]); }

// Where the piece from `start` ends.
std::size_t end_of_piece(std::u32string_view text, std::size_t start, std::size_t most) {
  const std::size_t limit = start + most;
  constexpr std::array<MayEnd, 3> RANKS = {ends_paragraph, ends_sentence, is_blank};
  for (const auto may_end : RANKS) {
    for (std::size_t end = limit; end > start; --end) {
      if (may_end(text, end - 1)) return end;
    }
  }
  return limit;
}

}  // namespace

std::u32string with_line_ends(std::u32string_view text) {
  std::u32string out(text);
  for (auto at = out.find(JOINER_BEGIN); at != std::u32string::npos;
       at = out.find(JOINER_BEGIN, at + 1)) {
    const auto near = std::u32string_view(out).substr(at, LONGEST_JOINER);
    const auto length = near.find(JOINER_END) + 1;
    if (length != 0) out.replace(at, length, length, U'\n');
  }
  return out;
}

std::vector<TextPiece> text_pieces(std::u32string_view text, std::size_t most) {
  most = std::max<std::size_t>(most, 1);
  std::vector<TextPiece> pieces;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end =
        text.size() - start <= most ? text.size() : end_of_piece(text, start, most);
    const auto piece = text.substr(start, end - start);
    if (!text::strip(piece).empty()) pieces.push_back({start, piece});
    start = end;
  }
  return pieces;
}

}  // namespace core::remote
