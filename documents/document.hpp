// Documents as files: what is analysed of one, and the file with placeholders in it.
//
//   auto document = documents::read_document(bytes);
//   const auto masked = anonymize_document(document->text(), analyzer);
//   const auto masked_bytes = document->write(masked);  // of the same format
//
// What a file holds is told from its content, never from its name.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization_core.hpp"
#include "documents/written_text.hpp"

namespace documents {

// What became of a document. No text of it stands here.
struct Report {
  std::string format;  // "text", "docx" or "pdf"
  // Placeholders written, by story and kind, stories in reading order.
  std::vector<std::pair<std::string, std::map<std::string, std::size_t>>> stories;
  std::vector<std::string> not_examined;  // parts, each with what it is
  std::vector<std::string> removed;       // the same
  std::vector<std::string> warnings;

  void count(const std::string& story, const std::string& kind, std::size_t times = 1);
  // By the kinds of the placeholders.
  void count(const std::string& story, const std::vector<std::u32string_view>& placeholders);
};

class Document {
 public:
  Document() = default;
  virtual ~Document() = default;
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  // What is to be analysed. Paragraphs that were pasted together are set off by
  // joiners; none of these stands in the document itself.
  virtual const std::u32string& text() const = 0;
  // The text, or what an analysis made of a part of it, as the document has it.
  virtual std::u32string as_written(std::u32string text) const = 0;
  // How to learn what of text() was left on purpose. It is asked at most once, by
  // written() or write(), and only if something was left that reads like a masked text.
  using Kept = std::function<core::anonymization::Stretches()>;
  void set_kept(Kept kept) { ask_kept_ = std::move(kept); }
  // What people read in the file that write() makes of `masked`; before and behind it.
  virtual WrittenText written(const core::anonymization::AnonymizedDocument& masked);
  // The file in which text() is masked; to be called once. Throws LeftoverError if
  // something that is masked could still be read in it.
  virtual std::string write(const core::anonymization::AnonymizedDocument& masked) = 0;
  // Complete behind write().
  virtual const Report& report() const = 0;
  // Whether the file is text itself, so that the masked text is the file.
  virtual bool is_plain_text() const = 0;
  // Of a text that its bytes may not show once it is masked: see Mapping::encoding.
  virtual std::string_view encoding() const { return {}; }

 protected:
  const core::anonymization::Stretches& kept();

 private:
  Kept ask_kept_;
  core::anonymization::Stretches kept_;
};

// Throws DocumentError, saying what to do, for a file of a known other format.
void refuse_other_files(std::string_view bytes);

// Plain text in UTF-8, UTF-16 with a byte order mark or GB18030, a .docx, or a PDF, of
// which write() gives plain text. Throws DocumentError for anything else, and for a
// damaged file.
std::unique_ptr<Document> read_document(std::string_view bytes);

// Text that stands in no file.
std::unique_ptr<Document> make_text_document(std::u32string text);

// The document as people read it: placements over its text, and the surfaces as they
// stand there.
core::anonymization::AnonymizedDocument as_written(core::anonymization::AnonymizedDocument masked,
                                                   Document& document);

}  // namespace documents
