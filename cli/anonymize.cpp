#include "cli/anonymize.hpp"

#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <unistd.h>

#include "cli/document_json.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/anonymization_core.hpp"
#include "core/errors.hpp"
#include "core/recognition/recognizer_file.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

namespace anonymization = core::anonymization;

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

struct Input {
  bool marked = false;  // begins with a byte order mark, which `text` does not hold
  std::u32string text;
};

Input decode(std::string_view bytes, const std::string& name) {
  const auto refuse = [&](const std::string& why, std::size_t at) {
    throw Failure(EXIT_INPUT, name + ": " + why + " at byte " + std::to_string(at));
  };
  Input input;
  input.marked = bytes.starts_with(BYTE_ORDER_MARK);
  const std::size_t skipped = input.marked ? BYTE_ORDER_MARK.size() : 0;
  const std::size_t nul = bytes.find('\0');
  try {
    input.text = core::text::decode_utf8(bytes.substr(skipped));
  } catch (const core::text::DecodeError& e) {
    const std::size_t bad = skipped + e.byte_offset();
    if (bad < nul) refuse("not valid UTF-8", bad);
  }
  if (nul != std::string_view::npos) refuse("not a text: NUL", nul);
  return input;
}

// Tells the failures of the analyzer from all others.
class GuardedAnalyzer : public anonymization::Analyzer {
 public:
  GuardedAnalyzer(const AnalyzerFactory& make, const AnalyzerOptions& options) {
    guard([&] { analyzer_ = make(options); });
  }

  std::vector<anonymization::RecognizerResult> analyze(std::u32string_view text,
                                                       std::string_view language) const override {
    std::vector<anonymization::RecognizerResult> results;
    guard([&] { results = analyzer_->analyze(text, language); });
    return results;
  }

 private:
  // Only our own errors promise not to quote the document.
  template <typename Action>
  static void guard(const Action& action) {
    try {
      action();
    } catch (const core::Error& e) {
      throw Failure(EXIT_ANALYZER, std::string("the analyzer failed: ") + e.what());
    } catch (const std::exception&) {
      throw Failure(EXIT_ANALYZER, "the analyzer failed");
    }
  }

  std::unique_ptr<anonymization::Analyzer> analyzer_;
};

void warn_of_placeholders(std::u32string_view text, std::ostream& err) {
  const auto count = anonymization::find_numbered_placeholders(text).size();
  if (count == 0) return;
  err << "veildoc: warning: the document already holds " << count
      << (count == 1 ? " text that reads" : " texts that read")
      << " like a placeholder; kept as it is\n";
}

core::recognition::RecognizerList recognizers_of(const std::string& file) {
  if (file.empty()) return {};
  try {
    return core::recognition::load_recognizers(file);
  } catch (const core::Error& e) {
    throw Failure(EXIT_INPUT, e.what());
  }
}

anonymization::AnonymizedDocument mask(std::u32string_view text, const AnonymizeOptions& options,
                                       const AnalyzerFactory& make_analyzer) {
  const GuardedAnalyzer analyzer(make_analyzer,
                                 {options.profile, recognizers_of(options.recognizers)});
  const auto aliases =
      options.aliases == "one" ? anonymization::Aliases::ONE : anonymization::Aliases::SEPARATE;
  auto document =
      anonymization::anonymize_document(text, analyzer, options.language, options.profile, aliases);
  if (options.labels == "core") return document;
  const auto locale = options.labels == "auto" ? document.language : options.labels;
  return anonymization::with_labels(std::move(document), locale);
}

// Everything is ready on the disk before anything is put in place.
void write(const std::string& bytes, const std::optional<std::string>& mapping,
           const AnonymizeOptions& options, std::ostream& out) {
  std::optional<PendingFile> mapping_file;
  std::optional<PendingFile> output_file;
  if (mapping) mapping_file.emplace(options.mapping, *mapping, Privacy::SECRET);
  if (!options.output.empty()) {
    output_file.emplace(options.output, bytes, options.json ? Privacy::SECRET : Privacy::ORDINARY);
  }
  if (mapping_file) mapping_file->commit();
  if (output_file) {
    output_file->commit();
  } else {
    write_all(out, bytes);
  }
}

}  // namespace

void anonymize(const AnonymizeOptions& options, const Streams& streams,
               const AnalyzerFactory& make_analyzer) {
  if (!options.input_named && &streams.in == &std::cin && ::isatty(STDIN_FILENO) != 0) {
    streams.err << "veildoc: reading standard input; Ctrl-D ends it\n" << std::flush;
  }
  const auto name = options.input == "-" ? std::string("standard input") : options.input;
  const Input input = decode(read_all(options.input, streams.in), name);
  warn_of_placeholders(input.text, streams.err);

  const auto document = mask(input.text, options, make_analyzer);
  std::string bytes;
  if (options.json) {
    bytes = document_json(document, input.text);
  } else {
    if (input.marked) bytes = BYTE_ORDER_MARK;
    bytes += core::text::encode_utf8(document.text);
  }
  std::optional<std::string> mapping;
  if (!options.mapping.empty()) mapping = mapping_json(document);
  write(bytes, mapping, options, streams.out);
}

}  // namespace cli
