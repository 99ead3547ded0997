#include "documents/masked_file.hpp"

#include <utility>

#include "documents/document.hpp"
#include "documents/errors.hpp"
#include "documents/masked_docx.hpp"
#include "documents/package.hpp"
#include "documents/text_encoding.hpp"

namespace documents {
namespace {

class MaskedText : public MaskedFile {
 public:
  explicit MaskedText(EncodedText source) : source_(std::move(source)) {}

  const std::u32string& text() const override { return source_.text; }
  std::string story_at(std::size_t) const override { return {}; }
  std::string write(const core::restore::Mapping& mapping,
                    const std::vector<core::restore::Finding>& findings) override {
    return encode_text(core::restore::restored_text(source_.text, mapping, findings), source_);
  }

 private:
  EncodedText source_;
};

}  // namespace

std::unique_ptr<MaskedFile> read_masked_file(std::string_view bytes, std::string_view encoding) {
  if (is_zip(bytes)) return read_masked_docx(bytes);
  if (bytes.starts_with("%PDF-")) {
    throw DocumentError("a PDF is not restored; restore the text or .docx that was masked");
  }
  // A page of HTML that somebody made of a masked text is a text with placeholders.
  if (!bytes.starts_with('<')) refuse_other_files(bytes);
  return std::make_unique<MaskedText>(decode_text(bytes, encoding));
}

}  // namespace documents
