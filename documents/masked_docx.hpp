// A masked Word document on its way back. What masking took out of it (properties,
// authors, targets of links) is in no mapping and stays out.
#pragma once

#include <memory>
#include <string_view>

#include "documents/masked_file.hpp"

namespace documents {

// Throws DocumentError for what is no .docx that can be read.
std::unique_ptr<MaskedFile> read_masked_docx(std::string_view bytes);

}  // namespace documents
