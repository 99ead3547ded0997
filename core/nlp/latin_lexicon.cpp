#include "core/nlp/latin_lexicon.hpp"

#include "core/nlp/characters.hpp"
#include "core/text/flat_trie.hpp"

namespace core::text::trie_data {
extern "C" const std::uint64_t veildoc_trie_latin_words[];
}  // namespace core::text::trie_data

namespace core::nlp {
namespace {

using text::FlatTrie;

// The letters without accents, in their order; capitals for letters that become
// two: A ae, I ij, O oe, S ss, T th. The lists are written in the same way.
// U+00C0..U+024F
constexpr std::string_view LATIN_1_TO_EXTENDED_B =
    "aaaaaaAceeeeiiiidnooooo?ouuuuyTSaaaaaaAceeeeiiiidnooooo?ouuuuyTyaaaaaaccccccccdd"
    "ddeeeeeeeeeegggggggghhhhiiiiiiiiiiIIjjkk?llllll??llnnnnnn?nnooooooOOrrrrrrssssss"
    "ssttttttuuuuuuuuuuuuwwyyyzzzzzzs???????????????e????????????????oo?????????????u"
    "u????????????????????????????aaiioouuuuuuuuuu?aaaa????ggkkoooo??j???gg??nnaa????"
    "aaaaeeeeiiiioooorrrruuuusstt??hh??????aaeeooooooooyy????????????????????????????";
// U+1E00..U+1EFF
constexpr std::string_view LATIN_EXTENDED_ADDITIONAL =
    "aabbbbbbccddddddddddeeeeeeeeeeffgghhhhhhhhhhiiiikkkkkkllllllllmmmmmmnnnnnnnnoooo"
    "oooopppprrrrrrrrssssssssssttttttttuuuuuuuuuuvvvvwwwwwwwwwwxxxxyyzzzzzzhtwy?s??S?"
    "aaaaaaaaaaaaaaaaaaaaaaaaeeeeeeeeeeeeeeeeiiiioooooooooooooooooooooooouuuuuuuuuuuu"
    "uuyyyyyyyy??????";

constexpr std::u32string_view two_letters(char c) {
  switch (c) {
    case 'A':
      return U"ae";
    case 'I':
      return U"ij";
    case 'O':
      return U"oe";
    case 'S':
      return U"ss";
    default:
      return U"th";
  }
}

constexpr bool is_combining_mark(char32_t c) { return c >= 0x300 && c <= 0x36F; }

FlatTrie words() { return FlatTrie(text::trie_data::veildoc_trie_latin_words); }

// Goes on by a letter in the spelling of the lists.
bool advance(const FlatTrie& trie, FlatTrie::Node& node, char32_t c) {
  if (c < 0x80) return trie.advance(node, c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c);
  if (is_combining_mark(c)) return true;
  if (c == 0x2019 || c == 0x2018 || c == 0x2BB) return trie.advance(node, U'\'');
  char letter = '?';
  if (c >= 0xC0 && c <= 0x24F) letter = LATIN_1_TO_EXTENDED_B[c - 0xC0];
  if (c >= 0x1E00 && c <= 0x1EFF) letter = LATIN_EXTENDED_ADDITIONAL[c - 0x1E00];
  if (letter == '?') return false;
  if (letter >= 'a') return trie.advance(node, static_cast<char32_t>(letter));
  for (const char32_t part : two_letters(letter)) {
    if (!trie.advance(node, part)) return false;
  }
  return true;
}

// The bits are those of the columns in core/nlp/CMakeLists.txt.
LatinWordFacts facts_of(std::uint32_t payload) {
  LatinWordFacts facts;
  facts.english_frequency = static_cast<std::uint8_t>(payload & 7U);
  facts.name_class = static_cast<LatinNameClass>(payload >> 3U & 7U);
  facts.name_is_common_word = (payload >> 6U & 1U) != 0;
  facts.city = static_cast<WorldCity>(payload >> 7U & 3U);
  facts.city_is_common_word = (payload >> 9U & 3U) == 1;
  facts.city_is_person_name = (payload >> 9U & 3U) == 2;
  return facts;
}

}  // namespace

LatinWordFacts latin_word(std::u32string_view word) {
  const FlatTrie trie = words();
  FlatTrie::Node node = FlatTrie::root();
  for (const char32_t c : word) {
    if (!advance(trie, node, c)) return {};
  }
  return node.is_word() ? facts_of(node.payload()) : LatinWordFacts{};
}

bool is_common_english_word(std::u32string_view word, unsigned min_frequency) {
  return english_word_frequency(word) >= min_frequency;
}

unsigned english_word_frequency(std::u32string_view word) {
  return latin_word(word).english_frequency;
}

LatinNameClass latin_name_class(std::u32string_view word) { return latin_word(word).name_class; }

bool is_world_city(std::u32string_view city) { return latin_word(city).city != WorldCity::NONE; }

std::size_t world_city_length(std::u32string_view text) {
  const FlatTrie trie = words();
  FlatTrie::Node node = FlatTrie::root();
  std::size_t longest = 0;
  for (std::size_t i = 0; i < text.size() && advance(trie, node, text[i]); ++i) {
    const bool ends = i + 1 == text.size() || !is_latin_letter(text[i + 1]);
    if (ends && node.is_word() && facts_of(node.payload()).city != WorldCity::NONE) longest = i + 1;
  }
  return longest;
}

}  // namespace core::nlp
