// The matter as a file: a mapping file (docs/mapping.md) of all its documents, in
// which each occurrence tells its document.
//
// What is read is distrusted, as a mapping file is, and messages never quote it.
#pragma once

#include <string>
#include <string_view>

#include "core/matter/matter.hpp"
#include "core/restore/mapping_file.hpp"

namespace core::matter {

std::string write_matter(const Matter& matter);

// Throws restore::MappingError, also for the mapping of a single document and for a
// sealed file.
Matter read_matter(std::string_view bytes);

// The mapping for a masked document from a mapping file of either kind. Of a matter it
// is that of the document with this hash; if there is none, or there are several with
// other originals, that of all documents together. Throws restore::MappingError.
restore::Mapping read_mapping_of(std::string_view bytes, std::string_view masked_sha256);

}  // namespace core::matter
