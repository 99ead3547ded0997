// The mapping as a file: JSON, described in docs/mapping.md.
//
// What is read is distrusted: it may be damaged, of another version, or no mapping
// at all. Messages never quote it.
#pragma once

#include <string>
#include <string_view>

#include "core/errors.hpp"
#include "core/restore/mapping.hpp"

namespace core::restore {

// A file that is no mapping or cannot be read; what() says why: "damaged: entry 3:
// no surface".
class MappingError : public ValueError {
  using ValueError::ValueError;
};

inline constexpr std::string_view MAPPING_FORMAT = "veildoc-mapping";
inline constexpr int MAPPING_VERSION = 1;

std::string write_mapping(const Mapping& mapping);

// Throws MappingError, also for a sealed mapping (sealed_mapping.hpp).
Mapping read_mapping(std::string_view bytes);

}  // namespace core::restore
