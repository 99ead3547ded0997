#include "core/nlp/spacy/string_ids.hpp"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>
#include <unordered_map>

#include "core/text/lexicon.hpp"

namespace core::text::lexicon_data {
extern const std::string_view spacy_symbols;
}

namespace core::nlp::spacy {
namespace {

using Symbols = std::unordered_map<std::u32string, StringId>;

Symbols read_symbols() {
  Symbols out;
  for (const auto& row : text::lexicon_rows(text::lexicon_data::spacy_symbols)) {
    StringId number = 0;
    for (const char32_t digit : row.at(1)) number = number * 10 + (digit - U'0');
    out.emplace(row.at(0), number);
  }
  return out;
}

const Symbols& symbols() {
  static const Symbols instance = read_symbols();
  return instance;
}

void append_utf8(std::string& out, char32_t c) {
  if (c > 0x10FFFF) c = 0xFFFD;
  const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (c < 0x80) return put(c);
  if (c < 0x800) {
    put(0xC0 | c >> 6);
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12);
    put(0x80 | (c >> 6 & 0x3F));
  } else {
    put(0xF0 | c >> 18);
    put(0x80 | (c >> 12 & 0x3F));
    put(0x80 | (c >> 6 & 0x3F));
  }
  put(0x80 | (c & 0x3F));
}

std::uint64_t little_endian(const char* bytes, std::size_t count) {
  std::uint64_t out = 0;
  for (std::size_t i = count; i-- > 0;) out = out << 8 | static_cast<std::uint8_t>(bytes[i]);
  return out;
}

std::uint64_t mixed(std::uint64_t k) {
  k ^= k >> 33;
  k *= 0xff51afd7ed558ccdU;
  k ^= k >> 33;
  k *= 0xc4ceb9fe1a85ec53U;
  return k ^ k >> 33;
}

}  // namespace

std::uint64_t murmur_hash_64a(std::string_view bytes, std::uint64_t seed) {
  constexpr std::uint64_t M = 0xc6a4a7935bd1e995;
  constexpr int R = 47;
  std::uint64_t h = seed ^ bytes.size() * M;
  std::size_t at = 0;
  for (; at + 8 <= bytes.size(); at += 8) {
    std::uint64_t k = little_endian(bytes.data() + at, 8) * M;
    k ^= k >> R;
    h ^= k * M;
    h *= M;
  }
  if (at < bytes.size()) {
    h ^= little_endian(bytes.data() + at, bytes.size() - at);
    h *= M;
  }
  h ^= h >> R;
  h *= M;
  return h ^ h >> R;
}

StringId string_id(std::u32string_view text) {
  constexpr std::uint64_t SEED = 1;
  constexpr std::size_t LONGEST_SYMBOL = 32;
  if (text.empty()) return 0;
  if (text.size() <= LONGEST_SYMBOL) {
    const auto found = symbols().find(std::u32string(text));
    if (found != symbols().end()) return found->second;
  }
  std::string bytes;
  bytes.reserve(text.size());
  for (const char32_t c : text) append_utf8(bytes, c);
  return murmur_hash_64a(bytes, SEED);
}

std::array<std::uint32_t, 4> embedding_hash(std::uint64_t key, std::uint32_t seed) {
  constexpr std::uint64_t KEY_BYTES = 8;
  std::uint64_t h1 = std::rotl(key * 0x87c37b91114253d5U, 31) * 0x4cf5ad432745937fU;
  h1 ^= seed;
  h1 ^= KEY_BYTES;
  std::uint64_t h2 = seed ^ KEY_BYTES;
  h1 += h2;
  h2 += h1;
  h1 = mixed(h1);
  h2 = mixed(h2);
  h1 += h2;
  h2 += h1;
  return {static_cast<std::uint32_t>(h1), static_cast<std::uint32_t>(h1 >> 32),
          static_cast<std::uint32_t>(h2), static_cast<std::uint32_t>(h2 >> 32)};
}

}  // namespace core::nlp::spacy
