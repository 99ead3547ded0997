// Word documents (.docx).
#pragma once

#include <memory>
#include <string_view>

#include "documents/document.hpp"

namespace documents {

// Throws DocumentError for a package that is no Word document, holds macros, or text
// in a format of its own, and for a damaged one.
std::unique_ptr<Document> read_docx(std::string_view bytes);

}  // namespace documents
