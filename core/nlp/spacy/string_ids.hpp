// The numbers by which a model knows strings.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace core::nlp::spacy {

using StringId = std::uint64_t;

// 0 for "", the small number of a reserved string (data/spacy_symbols.txt), else
// the 64-bit MurmurHash2 of the UTF-8 bytes with seed 1. A surrogate counts as
// three bytes, a value above U+10FFFF as U+FFFD.
StringId string_id(std::u32string_view text);

// The hash alone.
std::uint64_t murmur_hash_64a(std::string_view bytes, std::uint64_t seed);

// The four numbers from which the rows of a hash table of embeddings follow:
// a MurmurHash3 for keys of eight bytes.
std::array<std::uint32_t, 4> embedding_hash(std::uint64_t key, std::uint32_t seed);

}  // namespace core::nlp::spacy
