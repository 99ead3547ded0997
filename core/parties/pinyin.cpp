#include "core/parties/pinyin.hpp"

#include <unordered_map>

#include "core/text/lexicon.hpp"
#include "core/text/unicode.hpp"

namespace core::text::lexicon_data {
extern const std::string_view pinyin;
}  // namespace core::text::lexicon_data

namespace core::parties {
namespace {

using Syllables = std::vector<std::u32string>;

const Syllables& syllables_of(char32_t c) {
  static const auto all = [] {
    std::unordered_map<char32_t, Syllables> out;
    for (const auto& row : text::lexicon_rows(text::lexicon_data::pinyin)) {
      if (row.size() < 2) continue;
      for (const char32_t character : row[1]) out[character].push_back(row[0]);
    }
    return out;
  }();
  static const Syllables none;
  const auto found = all.find(c);
  return found == all.end() ? none : found->second;
}

// Lu for Lyu, and so Linu for Lin Yu, on both sides of the comparison
std::u32string without_y(std::u32string letters) {
  for (std::size_t i = 1; i + 1 < letters.size(); ++i) {
    const bool umlaut = letters[i - 1] == U'l' || letters[i - 1] == U'n';
    if (umlaut && letters[i] == U'y' && letters[i + 1] == U'u') letters.erase(i, 1);
  }
  return letters;
}

// Every way to spell the characters one behind the other.
Syllables spellings(std::u32string_view characters) {
  constexpr std::size_t MOST = 16;
  Syllables out = {{}};
  for (const char32_t c : characters) {
    Syllables longer;
    for (const auto& head : out) {
      for (const auto& syllable : syllables_of(c)) longer.push_back(head + syllable);
    }
    if (longer.size() > MOST) return {};
    out = std::move(longer);
  }
  return out;
}

}  // namespace

std::vector<std::u32string> pinyin_spellings(std::u32string_view name, std::size_t surname) {
  Syllables out;
  for (const auto& first : spellings(name.substr(0, surname))) {
    for (const auto& given : spellings(name.substr(surname))) {
      out.push_back(without_y(first + given));
      out.push_back(without_y(given + first));
    }
  }
  return out;
}

std::u32string pinyin_letters(std::u32string_view latin) {
  std::u32string out;
  for (const char32_t c : text::case_fold(latin)) {
    const bool umlaut = c == U'\u00FC' || c == U'v';
    if (umlaut || text::is_ascii_alpha(c)) out += umlaut ? U'u' : c;
  }
  return without_y(out);
}

}  // namespace core::parties
