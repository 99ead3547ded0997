// Builds what core::text::FlatTrie reads.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tools {

// Words and their payloads. Words are not empty, lie below
// FlatTrieLayout::CODE_POINTS; payloads are at most FlatTrie::MAX_PAYLOAD.
using TrieEntries = std::map<std::u32string, std::uint32_t>;

// The trie, in the layout that core/text/flat_trie.hpp describes. The same
// entries give the same words on every machine of one byte order.
// Throws std::invalid_argument for entries that do not fit.
std::vector<std::uint64_t> build_flat_trie(const TrieEntries& entries);

}  // namespace tools
