// Mapping files that only a passphrase opens (libsodium: the key by Argon2id, the
// content by XChaCha20-Poly1305), and hashes of masked documents.
//
// May be called from any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/restore/mapping_file.hpp"

namespace core::restore {

// SHA-256 in lower-case hexadecimal.
std::string sha256_hex(std::string_view bytes);

// What it costs to make the key of a passphrase, and so to try one.
struct SealCost {
  std::size_t passes = 3;
  std::size_t memory = std::size_t{256} << 20U;  // in bytes
};

// Seals a mapping file. Throws ExternalError if there is not enough memory.
std::string seal_mapping(std::string_view mapping_file, std::string_view passphrase,
                         const SealCost& cost = {});

// Whether a file is a sealed mapping. Throws MappingError for what is no mapping file.
bool is_sealed_mapping(std::string_view bytes);

// The mapping file that was sealed. Throws MappingError for a wrong passphrase and
// for a file that was changed (nobody can tell these two apart), and for one that is
// no sealed mapping; ExternalError if there is not enough memory.
std::string open_sealed_mapping(std::string_view bytes, std::string_view passphrase);

}  // namespace core::restore
