// Reading the name of a person in Latin letters where one is expected.
#pragma once

#include <cstddef>

#include "core/recognition/nlp_artifacts.hpp"

namespace core::nlp {

// The end of the name that begins at `at`: at least `fewest` words (1 or 2) that
// are neither of the contract's vocabulary nor part of an organization or an
// address. `at` if there is none.
std::size_t latin_name_end(const recognition::NlpArtifacts& artifacts, std::size_t at, int fewest);

// The start of the name of two to four words that ends at `end`; `end` if there is none.
std::size_t latin_name_start(const recognition::NlpArtifacts& artifacts, std::size_t end);

}  // namespace core::nlp
