#include "documents/document.hpp"

#include <algorithm>

#include "core/anonymization/placeholders.hpp"
#include "core/masked_stretches.hpp"
#include "core/text/view_map.hpp"
#include "documents/docx.hpp"
#include "documents/errors.hpp"
#include "documents/joiner_escapes.hpp"
#include "documents/package.hpp"
#include "documents/pdf.hpp"
#include "documents/text_encoding.hpp"

namespace documents {
namespace {

namespace anonymization = core::anonymization;

class TextDocument : public Document {
 public:
  explicit TextDocument(EncodedText source)
      : source_(std::move(source)), escapes_(JoinerEscapes::of(source_.text)) {
    source_.text = escapes_.escape(std::move(source_.text));
    report_.format = "text";
  }

  const std::u32string& text() const override { return source_.text; }
  std::u32string as_written(std::u32string text) const override {
    return escapes_.restore(std::move(text));
  }
  std::string write(const anonymization::AnonymizedDocument& masked) override {
    report_.count("text", anonymization::masked_placeholders(masked));
    return encode_text(as_written(masked.text), source_);
  }
  std::string_view encoding() const override { return encoding_name(source_.encoding); }
  const Report& report() const override { return report_; }
  bool is_plain_text() const override { return true; }

 private:
  EncodedText source_;
  JoinerEscapes escapes_;
  Report report_;
};

// What other files begin with, and how they are refused.
struct Signature {
  std::string_view begin;
  const char* why;
};
constexpr Signature SIGNATURES[] = {
    {"{\\rtf", "rich text (RTF) is not read; save it as .docx"},
    {"<?xml", "XML is not read; save it as .docx or as text"},
    {"<!DOCTYPE", "HTML is not read; save it as .docx or as text"},
    {"<html", "HTML is not read; save it as .docx or as text"},
    {"\x1F\x8B", "a compressed file is not read; unpack it first"},
};
constexpr std::string_view OLE_FILE = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
// How the directory of an encrypted .docx names what it holds, in UTF-16.
constexpr std::string_view ENCRYPTED_PACKAGE("E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0",
                                             32);

}  // namespace

void refuse_other_files(std::string_view bytes) {
  if (bytes.starts_with(OLE_FILE)) {
    throw DocumentError(bytes.find(ENCRYPTED_PACKAGE) != std::string_view::npos
                            ? "an encrypted document is not read; save it without a password"
                            : "a legacy Office file (.doc) is not read; save it as .docx");
  }
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  for (const auto& signature : SIGNATURES) {
    if (bytes.starts_with(signature.begin)) throw DocumentError(signature.why);
  }
}

void Report::count(const std::string& story, const std::string& kind, std::size_t times) {
  const auto found = std::find_if(stories.begin(), stories.end(),
                                  [&](const auto& entry) { return entry.first == story; });
  auto& entry = found == stories.end()
                    ? stories.emplace_back(story, std::map<std::string, std::size_t>())
                    : *found;
  entry.second[kind] += times;
}

void Report::count(const std::string& story, const std::vector<std::u32string_view>& placeholders) {
  core::text::ViewMap<std::size_t> times;
  for (const auto placeholder : placeholders) ++times.add(placeholder).first.value;
  for (const auto& [placeholder, count_of_it] : times.entries()) {
    const auto parsed = anonymization::parse_numbered_placeholder(placeholder);
    count(story, parsed ? parsed->tag : std::string(anonymization::entity_type::CARD_LAST4),
          count_of_it);
  }
}

WrittenText Document::written(const anonymization::AnonymizedDocument& masked) {
  WrittenText out{as_written(masked.text), masked.placements, as_written(text())};
  for (auto& p : out.placements) p.surface = as_written(std::move(p.surface));
  return out;
}

const anonymization::Stretches& Document::kept() {
  if (const auto ask = std::exchange(ask_kept_, {})) kept_ = ask();
  return kept_;
}

std::unique_ptr<Document> read_document(std::string_view bytes) {
  if (is_zip(bytes)) return read_docx(bytes);
  if (is_pdf(bytes.substr(0, PDF_HEAD))) return read_pdf(bytes);
  refuse_other_files(bytes);
  return std::make_unique<TextDocument>(decode_text(bytes));
}

std::unique_ptr<Document> make_text_document(std::u32string text) {
  return std::make_unique<TextDocument>(EncodedText{.text = std::move(text)});
}

anonymization::AnonymizedDocument as_written(anonymization::AnonymizedDocument masked,
                                             Document& document) {
  if (document.is_plain_text()) {  // nothing but characters changes
    masked.text = document.as_written(std::move(masked.text));
    for (auto& p : masked.placements) p.surface = document.as_written(std::move(p.surface));
  } else {
    auto written = document.written(masked);
    masked.text = std::move(written.text);
    masked.placements = std::move(written.placements);
  }
  for (auto& entry : masked.mapping) {
    entry.surface = document.as_written(std::move(entry.surface));
  }
  return masked;
}

}  // namespace documents
