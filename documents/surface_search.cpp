#include "documents/surface_search.hpp"

#include <algorithm>
#include <set>
#include <utility>

#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"
#include "documents/characters.hpp"

namespace documents {
namespace {

namespace text = core::text;

constexpr std::size_t SHORT = 2;
// In compressed data any short row of bytes turns up by chance.
constexpr std::size_t LEAST_BYTES = 6;
constexpr std::size_t LEAST_DIGITS_IN_BYTES = 9;
constexpr std::size_t PIECE = std::size_t{1} << 20U;

bool is_unseen(char32_t c) { return text::is_space(c) || is_invisible(c); }

// A string without what is not seen, which of its characters stood behind that, and
// where they stood.
struct Compact {
  std::u32string text;
  std::vector<bool> apart;
  std::vector<std::size_t> places;
};

Compact compacted(std::u32string_view text) {
  Compact out;
  bool apart = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (is_unseen(text[i])) {
      apart = true;
      continue;
    }
    out.text += text[i];
    out.apart.push_back(std::exchange(apart, false));
    out.places.push_back(i);
  }
  return out;
}

std::size_t digits_of(std::u32string_view word) {
  return static_cast<std::size_t>(std::count_if(word.begin(), word.end(), text::is_decimal_digit));
}

bool is_number(std::u32string_view word) {
  return std::none_of(word.begin(), word.end(), [](char32_t c) {
    return text::is_letter_or_number(c) && !text::is_decimal_digit(c);
  });
}

bool stands_alone(const Compact& in, std::size_t start, std::size_t end, bool (*joins)(char32_t)) {
  const bool before = start == 0 || in.apart[start] || !joins(in.text[start - 1]);
  const bool behind = end == in.text.size() || in.apart[end] || !joins(in.text[end]);
  return before && behind;
}

bool counts(const Compact& in, std::size_t start, std::size_t end) {
  const auto word = std::u32string_view(in.text).substr(start, end - start);
  if (is_number(word) && digits_of(word) < SurfaceSearch::LEAST_DIGITS) return false;
  if (word.size() <= SHORT) return stands_alone(in, start, end, text::is_letter_or_number);
  if (is_number(word)) return stands_alone(in, start, end, text::is_decimal_digit);
  return true;
}

std::vector<std::u32string> compact_words(const std::vector<std::u32string>& surfaces) {
  std::set<std::u32string> words;
  for (const auto& surface : surfaces) {
    auto word = compacted(surface).text;
    if (std::any_of(word.begin(), word.end(), text::is_letter_or_number)) words.insert(word);
  }
  return {words.begin(), words.end()};
}

std::string utf16_of(std::u32string_view word) {
  std::string out;
  for (const char32_t c : word) {
    if (c > 0xFFFF) return {};
    out += static_cast<char>(c & 0xFFU);
    out += static_cast<char>(c >> 8U);
  }
  return out;
}

std::u32string as_characters(std::string_view bytes) {
  std::u32string out;
  out.reserve(bytes.size());
  for (const char c : bytes) out += static_cast<unsigned char>(c);
  return out;
}

// As they would stand in a file that is no XML, where that is no chance.
std::vector<std::u32string> encoded_words(const std::vector<std::u32string>& words) {
  std::vector<std::u32string> out;
  for (const auto& word : words) {
    if (is_number(word) && digits_of(word) < LEAST_DIGITS_IN_BYTES) continue;
    for (const auto& bytes : {text::encode_utf8(word), utf16_of(word)}) {
      if (bytes.size() >= LEAST_BYTES) out.push_back(as_characters(bytes));
    }
  }
  return out;
}

}  // namespace

SurfaceSearch::SurfaceSearch(const std::vector<std::u32string>& surfaces)
    : words_(compact_words(surfaces)),
      pattern_(std::vector<std::u32string_view>(words_.begin(), words_.end())),
      encoded_(encoded_words(words_)),
      bytes_pattern_(std::vector<std::u32string_view>(encoded_.begin(), encoded_.end())) {}

bool SurfaceSearch::found_in(std::string_view bytes) const {
  std::u32string decoded;
  try {
    decoded = text::decode_utf8(bytes);
  } catch (const text::DecodeError&) {
    return false;
  }
  const auto in = compacted(decoded);
  bool found = false;
  pattern_.scan(in.text, [&](const text::MultiPattern::Hit& hit) {
    found = found || counts(in, hit.start, hit.end);
  });
  return found;
}

bool SurfaceSearch::found_in_bytes(std::string_view bytes) const {
  // Piece by piece, each with the end of the one before.
  std::size_t overlap = 0;
  for (const auto& word : encoded_) overlap = std::max(overlap, word.size());
  bool found = false;
  for (std::size_t at = 0; at < bytes.size() && !found; at += PIECE) {
    const auto from = at - std::min(at, overlap);
    const auto piece = as_characters(bytes.substr(from, at + PIECE - from));
    bytes_pattern_.scan(piece, [&](const text::MultiPattern::Hit&) { found = true; });
  }
  return found;
}

std::vector<SurfaceSearch::Place> SurfaceSearch::find_in(std::u32string_view text_seen) const {
  const auto in = compacted(text_seen);
  std::vector<Place> out;
  pattern_.scan(in.text, [&](const text::MultiPattern::Hit& hit) {
    if (!counts(in, hit.start, hit.end)) return;
    out.push_back({in.places[hit.start], in.places[hit.end - 1] + 1, words_[hit.pattern]});
  });
  return out;
}

std::u32string SurfaceSearch::compact(std::u32string_view surface) {
  return compacted(surface).text;
}

}  // namespace documents
