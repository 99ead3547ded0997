#include "core/nlp/spacy/token_types.hpp"

#include <algorithm>
#include <utility>

#include <unicode/uchar.h>

#include "core/nlp/spacy/msgpack.hpp"
#include "core/nlp/spacy/python_pattern.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace core::nlp::spacy {
namespace {

struct BaseNorm {
  std::u32string_view word;
  std::u32string_view norm;
};

// What every model has; the facts are spaCy's. Sorted by word.
constexpr BaseNorm BASE_NORMS[] = {
    {U"''", U"\""}, {U"'S", U"'s"}, {U"'s", U"'s"},  {U"--", U"-"},  {U"---", U"-"}, {U"A$", U"$"},
    {U"C$", U"$"},  {U"E£", U"$"},  {U"Mex$", U"$"}, {U"US$", U"$"}, {U"`", U"'"},   {U"``", U"\""},
    {U"£", U"$"},   {U"¥", U"$"},   {U"«", U"\""},   {U"´", U"'"},   {U"´´", U"\""}, {U"»", U"\""},
    {U"।", U"."},   {U"৳", U"$"},   {U"฿", U"$"},    {U"–", U"-"},   {U"—", U"-"},   {U"——", U"-"},
    {U"‘", U"'"},   {U"‘‘", U"\""}, {U"’", U"'"},    {U"’S", U"'s"}, {U"’s", U"'s"}, {U"’’", U"\""},
    {U"“", U"\""},  {U"”", U"\""},  {U"„", U"\""},   {U"…", U"..."}, {U"₣", U"$"},   {U"₩", U"$"},
    {U"€", U"$"},   {U"₹", U"$"},   {U"₺", U"$"},    {U"。", U"."},  {U"！", U"!"},  {U"，", U","},
    {U"：", U":"},  {U"；", U";"},  {U"？", U"?"}};
static_assert(std::is_sorted(std::begin(BASE_NORMS), std::end(BASE_NORMS),
                             [](const auto& a, const auto& b) { return a.word < b.word; }));
constexpr std::size_t LONGEST_BASE_NORM = 4;

const BaseNorm* base_norm(std::u32string_view word) {
  if (word.size() > LONGEST_BASE_NORM) return nullptr;
  const auto* found = std::lower_bound(std::begin(BASE_NORMS), std::end(BASE_NORMS), word,
                                       [](const auto& b, auto w) { return b.word < w; });
  return found != std::end(BASE_NORMS) && found->word == word ? found : nullptr;
}

char32_t shape_character(char32_t c) {
  constexpr char32_t MAX_CODE_POINT = 0x10FFFF;
  if (c < 0x80) {
    if (c >= U'a' && c <= U'z') return U'x';
    if (c >= U'A' && c <= U'Z') return U'X';
    return text::is_ascii_digit(c) ? U'd' : c;
  }
  if (c > MAX_CODE_POINT) return c;
  const auto code_point = static_cast<UChar32>(c);
  if ((U_GET_GC_MASK(code_point) & U_GC_L_MASK) != 0) {
    return u_hasBinaryProperty(code_point, UCHAR_UPPERCASE) != 0 ? U'X' : U'x';
  }
  return text::is_digit(c) ? U'd' : c;
}

std::u32string lower_case(std::u32string_view word) {
  if (std::any_of(word.begin(), word.end(), [](char32_t c) { return c >= 0x80; })) {
    return text::to_lower(word);
  }
  std::u32string out(word);
  for (char32_t& c : out) c = c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c;
  return out;
}

TokenType type_of_word(std::u32string_view word, const std::u32string* norm,
                       const NormTable& norms) {
  constexpr std::size_t SUFFIX = 3;
  TokenType type;
  type.orth = string_id(word);
  type.norm = norm != nullptr ? string_id(*norm) : norms.norm_of(word, type.orth);
  type.prefix = string_id(word.substr(0, 1));
  type.suffix = string_id(word.substr(word.size() - std::min(word.size(), SUFFIX)));
  type.shape = string_id(shape_of(word));
  type.is_space = std::all_of(word.begin(), word.end(), is_python_space);
  return type;
}

struct TypeKey {
  std::u32string_view word;
  std::uint32_t norm;
  bool operator==(const TypeKey&) const = default;
};
struct TypeKeyHash {
  std::size_t operator()(const TypeKey& key) const {
    return std::hash<std::u32string_view>()(key.word) ^ key.norm * std::size_t{0x9E3779B97F4A7C15};
  }
};

}  // namespace

std::uint64_t TokenType::value(Attribute attribute, bool space_after) const {
  switch (attribute) {
    case Attribute::ORTH:
      return orth;
    case Attribute::NORM:
      return norm;
    case Attribute::PREFIX:
      return prefix;
    case Attribute::SUFFIX:
      return suffix;
    case Attribute::SHAPE:
      return shape;
    case Attribute::SPACY:
      return space_after ? 1 : 0;
    case Attribute::IS_SPACE:
      return is_space ? 1 : 0;
  }
  return 0;
}

NormTable::NormTable(const MappedFile& file) {
  MsgpackReader reader(file.bytes(), file.name());
  if (file.bytes().empty()) return;
  for (auto tables = reader.read_map(); tables > 0; --tables) {
    const std::string table(reader.read_bytes());
    if (table != "lexeme_norm") {
      reader.skip();
      continue;
    }
    reader.set_place(table);
    for (auto left = reader.read_map(); left > 0; --left) {
      const auto key = reader.read_unsigned();
      try {
        lexeme_norm_.emplace(key, string_id(text::decode_utf8(reader.read_bytes())));
      } catch (const text::DecodeError&) {
        reader.fail("not UTF-8");
      }
    }
  }
}

StringId NormTable::norm_of(std::u32string_view text, StringId orth) const {
  if (const auto found = lexeme_norm_.find(orth); found != lexeme_norm_.end()) {
    return found->second;
  }
  if (const auto* norm = base_norm(text)) return string_id(norm->norm);
  return string_id(lower_case(text));
}

std::u32string shape_of(std::u32string_view word) {
  constexpr std::size_t LONG = 100;
  constexpr std::size_t LONGEST_RUN = 4;
  if (word.size() >= LONG) return U"LONG";
  std::u32string out;
  std::size_t run = 0;
  char32_t before = 0;
  for (const char32_t c : word) {
    const auto shape = shape_character(c);
    run = run > 0 && shape == before ? run + 1 : 1;
    before = shape;
    if (run <= LONGEST_RUN) out.push_back(shape);
  }
  return out;
}

TypedTokens type_tokens(std::u32string_view text, const std::vector<Token>& tokens,
                        const Tokenizer& tokenizer, const NormTable& norms) {
  TypedTokens out;
  out.type_of.reserve(tokens.size());
  out.space_after.reserve(tokens.size());
  std::unordered_map<TypeKey, std::uint32_t, TypeKeyHash> known;
  for (const auto& token : tokens) {
    const auto word = token.text(text);
    const auto [found, is_new] =
        known.try_emplace({word, token.norm}, static_cast<std::uint32_t>(out.types.size()));
    if (is_new) {
      const auto* norm = token.norm == 0 ? nullptr : &tokenizer.norm(token.norm);
      out.types.push_back(type_of_word(word, norm, norms));
    }
    out.type_of.push_back(found->second);
    out.space_after.push_back(token.space_after);
  }
  return out;
}

}  // namespace core::nlp::spacy
