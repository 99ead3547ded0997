#include "documents/pdf.hpp"

#include <algorithm>

#include <unicode/normalizer2.h>

#include "core/anonymization/placeholders.hpp"
#include "core/masked_stretches.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"
#include "documents/characters.hpp"
#include "documents/child_process.hpp"
#include "documents/errors.hpp"
#include "documents/joiner_escapes.hpp"

namespace documents {
namespace {

namespace anonymization = core::anonymization;
namespace text = core::text;

constexpr std::string_view SIGNATURE = "%PDF-";
constexpr char32_t PAGE_END = U'\f';

// 第三条 付款, 3.1 付款, （二）, (a), • : a line that begins something.
const text::Regex RE_PDF_ITEM(
    "RE_PDF_ITEM",
    UR"(^\s*(?:第\s?[0-9一二三四五六七八九十百]{1,6}\s?[条章节款编]|[（(]?[0-9A-Za-z一二三四五六七八九十]{1,4}[)）、.．]|[0-9]+(?:\.[0-9]+)+|[•·●▪◆■□\-–—]))");
// 甲方（盖章）：, Signed by:
const text::Regex RE_PDF_LABEL("RE_PDF_LABEL", UR"(^[^：:。，,;；]{1,24}[：:])");
constexpr std::u32string_view SENTENCE_ENDS = U"。；：！？.;:!?…";

bool is_wide(char32_t c) {
  constexpr char32_t FIRST_WIDE = 0x2E80;
  constexpr char32_t LAST_CJK_OF_BMP = 0xD7FF;
  constexpr char32_t FIRST_FULL_WIDTH = 0xFF01;
  constexpr char32_t LAST_FULL_WIDTH = 0xFF60;
  constexpr char32_t FIRST_PLANE_2 = 0x20000;
  return (c >= FIRST_WIDE && c <= LAST_CJK_OF_BMP) ||
         (c >= FIRST_FULL_WIDTH && c <= LAST_FULL_WIDTH) || c >= FIRST_PLANE_2;
}

std::size_t width_of(std::u32string_view line) {
  return line.size() + static_cast<std::size_t>(std::count_if(line.begin(), line.end(), is_wide));
}

std::vector<std::u32string_view> split(std::u32string_view whole, char32_t at) {
  std::vector<std::u32string_view> parts;
  while (true) {
    const auto end = whole.find(at);
    parts.push_back(whole.substr(0, end));
    if (end == text::NPOS) return parts;
    whole.remove_prefix(end + 1);
  }
}

// Radicals (⽂ for 文), compatibility ideographs and ligatures (ﬁ for fi).
bool has_plain_twin(char32_t c) {
  return (c >= 0x2E80 && c <= 0x2FDF) || (c >= 0xF900 && c <= 0xFAFF) ||
         (c >= 0xFB00 && c <= 0xFB06);
}

std::u32string plain(std::u32string_view extracted) {
  UErrorCode status = U_ZERO_ERROR;
  const auto* nfkc = icu::Normalizer2::getNFKCInstance(status);
  std::u32string out;
  out.reserve(extracted.size());
  for (const char32_t c : extracted) {
    if (c == U'\0' || c == U'\r') continue;
    icu::UnicodeString twin;
    const bool has_twin = has_plain_twin(c) && U_SUCCESS(status) &&
                          nfkc->getDecomposition(static_cast<UChar32>(c), twin) != 0;
    if (!has_twin) {
      out += c;
      continue;
    }
    for (int32_t i = 0; i < twin.length(); i = twin.moveIndex32(i, 1)) {
      out += static_cast<char32_t>(twin.char32At(i));
    }
  }
  return out;
}

// Whether `next` goes on with what the layout cut at the end of `line`; `full` is the
// width of the widest line of the page.
bool goes_on(std::u32string_view line, std::u32string_view next, std::size_t full) {
  constexpr std::size_t PERCENT = 100;
  constexpr std::size_t NEARLY_FULL = 80;
  constexpr std::size_t NARROWEST = 24;
  if (line.empty() || next.empty() || full < NARROWEST) return false;
  if (width_of(line) * PERCENT < full * NEARLY_FULL) return false;
  if (SENTENCE_ENDS.find(line.back()) != text::NPOS) return false;
  return !RE_PDF_ITEM.match(next) && !RE_PDF_LABEL.match(next);
}

void append_line(std::u32string& out, std::u32string_view next) {
  if (out.back() == SOFT_HYPHEN) {
    out.pop_back();
  } else if (out.back() != U'-' && !is_wide(out.back()) && !is_wide(next.front())) {
    out += U' ';
  }
  out += next;
}

// The gap that a layout leaves between ideographs and figures is no space: 东湖大道
// 68 号 is 东湖大道68号, 2026 年 is 2026年. A letter that stands alone (A 座) is like one.
std::u32string without_gaps(std::u32string_view line) {
  std::u32string out;
  const auto at = [&](std::size_t i) { return i < line.size() ? line[i] : U' '; };
  const auto is_figure = [&](std::size_t i) {
    const bool alone = (i == 0 || at(i - 1) == U' ') && at(i + 1) == U' ';
    return text::is_ascii_digit(at(i)) || (alone && text::is_ascii_alpha(at(i)));
  };
  for (std::size_t i = 0; i < line.size(); ++i) {
    const bool gap =
        line[i] == U' ' && i > 0 &&
        ((is_wide(line[i - 1]) && is_figure(i + 1)) || (is_figure(i - 1) && is_wide(at(i + 1))));
    if (!gap) out += line[i];
  }
  return out;
}

std::u32string page_text(std::u32string_view page) {
  std::vector<std::u32string> lines;
  for (const auto line : split(page, U'\n')) lines.push_back(without_gaps(text::strip(line)));
  std::size_t full = 0;
  for (const auto& line : lines) full = std::max(full, width_of(line));
  std::u32string out;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    // A large gap between two lines reads like an empty one.
    const bool over_gap = i > 1 && lines[i - 1].empty() && goes_on(lines[i - 2], lines[i], full);
    if (over_gap || (i > 0 && goes_on(lines[i - 1], lines[i], full))) {
      out.resize(out.size() - (over_gap ? 2 : 1));  // line ends
      append_line(out, lines[i]);
    } else {
      out += lines[i];
    }
    out += U'\n';
  }
  while (out.ends_with(U"\n\n")) out.pop_back();
  return out;
}

std::size_t count_unreadable(std::u32string_view page) {
  return static_cast<std::size_t>(std::count_if(page.begin(), page.end(), [](char32_t c) {
    return c == U'\uFFFD' || (c >= 0xE000 && c <= 0xF8FF) || c >= 0xF0000;
  }));
}

class PdfDocument : public Document {
 public:
  explicit PdfDocument(PdfText source)
      : text_(std::move(source.text)), escapes_(JoinerEscapes::of(text_)) {
    text_ = escapes_.escape(std::move(text_));
    report_.format = "pdf";
    report_.warnings.emplace_back(
        "of a PDF the text alone is written, without layout and pictures");
    for (const auto page : source.pages_without_text) {
      report_.not_examined.push_back("page " + std::to_string(page) + ": no text, a picture");
    }
    if (source.unreadable > 0) {
      report_.warnings.push_back(std::to_string(source.unreadable) +
                                 " characters have no meaning in their font; look for what they "
                                 "hide");
    }
  }

  const std::u32string& text() const override { return text_; }
  std::u32string as_written(std::u32string part) const override {
    return escapes_.restore(std::move(part));
  }
  std::string write(const anonymization::AnonymizedDocument& masked) override {
    report_.count("text", anonymization::masked_placeholders(masked));
    return text::encode_utf8(as_written(masked.text));
  }
  const Report& report() const override { return report_; }
  // The file is none, but what is written of it is.
  bool is_plain_text() const override { return true; }

  void warn(std::string warning) { report_.warnings.push_back(std::move(warning)); }

 private:
  std::u32string text_;
  JoinerEscapes escapes_;
  Report report_;
};

// The end of the file names its tables; without it the rest is guesswork.
void refuse_truncated(std::string_view bytes) {
  constexpr std::size_t TAIL = 2048;
  const auto tail = bytes.substr(bytes.size() - std::min(bytes.size(), TAIL));
  if (tail.find("%%EOF") == std::string_view::npos) {
    throw DocumentError("a damaged PDF: its end is missing");
  }
}

void check_child(const ChildResult& result) {
  using End = ChildResult::End;
  constexpr int NOT_ALLOWED = 3;
  const auto says = [&](std::string_view what) { return result.err.find(what) != text::NPOS; };
  switch (result.end) {
    case End::NOT_FOUND:
      throw DocumentError(
          "a PDF is read with pdftotext, which is not there; install "
          "poppler-utils, or save it as .docx or as text");
    case End::TOO_LONG:
      throw DocumentError("a PDF whose text takes too long to be found");
    case End::TOO_MUCH:
      throw DocumentError("a PDF with more text than is read");
    case End::CRASHED:
      throw DocumentError("a damaged PDF, or one that takes too much memory");
    default:
      break;
  }
  if (says("Incorrect password") || says("Unsupported version/revision of Standard security") ||
      says("security handler")) {
    throw DocumentError("an encrypted PDF is not read; save it without a password");
  }
  if (result.code == NOT_ALLOWED) {
    throw DocumentError("the PDF does not allow its text to be copied");
  }
  if (result.code != 0) throw DocumentError("a damaged PDF");
}

}  // namespace

bool is_pdf(std::string_view head) {
  if (head.starts_with("\xEF\xBB\xBF")) head.remove_prefix(3);
  const auto begin = head.find_first_not_of(" \t\r\n");
  return begin != std::string_view::npos && head.substr(begin).starts_with(SIGNATURE);
}

PdfText pdf_text(std::string_view extracted) {
  PdfText out;
  const auto whole = plain(text::decode_utf8(extracted));
  auto pages = split(whole, PAGE_END);
  if (pages.size() > 1 && text::strip(pages.back()).empty()) pages.pop_back();
  for (const auto page : pages) {
    ++out.pages;
    if (text::strip(page).empty()) out.pages_without_text.push_back(out.pages);
    if (out.pages > 1) (out.text += PAGE_END) += U'\n';
    out.unreadable += count_unreadable(page);
    out.text += page_text(page);
  }
  return out;
}

std::unique_ptr<Document> read_pdf(std::string_view bytes) {
  refuse_truncated(bytes);
  const auto result = run_child({"pdftotext", "-enc", "UTF-8", "-eol", "unix", "-", "-"}, bytes);
  check_child(result);
  auto source = pdf_text(result.out);
  if (source.pages_without_text.size() == source.pages) {
    throw DocumentError("a PDF without text; what is scanned needs a text recognition first");
  }
  auto document = std::make_unique<PdfDocument>(std::move(source));
  if (result.err.find("Syntax Error") != std::string::npos) {
    document->warn("the PDF is damaged in places; text may be missing");
  }
  return document;
}

}  // namespace documents
