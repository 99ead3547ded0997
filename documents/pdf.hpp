// PDF, of which the text alone is read and written.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "documents/document.hpp"

namespace documents {

// How much of a file is_pdf looks at.
inline constexpr std::size_t PDF_HEAD = 1024;

bool is_pdf(std::string_view head);

// Asks pdftotext (poppler) for the text. Throws DocumentError for a PDF that is
// encrypted, damaged, or holds no text, and where pdftotext is not there.
std::unique_ptr<Document> read_pdf(std::string_view bytes);

// What pdftotext makes of a PDF, as text in lines of the document's own: each page
// ends with a form feed.
struct PdfText {
  std::u32string text;
  std::vector<std::size_t> pages_without_text;  // from 1
  std::size_t pages = 0;
  std::size_t unreadable = 0;  // characters whose font does not tell what they are
};

// Puts lines together that the layout has cut, so that a name is whole, and spells
// ligatures and radicals as the letters and ideographs that they look like.
PdfText pdf_text(std::string_view extracted);

}  // namespace documents
