// The command `veildoc anonymize`.
#include <optional>
#include <ostream>
#include <string>

#include "cli/document_json.hpp"
#include "cli/documents.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/masking.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/nlp/other_scripts.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

namespace anonymization = core::anonymization;

constexpr std::string_view ANONYMIZE_DETAILS =
    "Reads FILE, plain text or a Word document (.docx), and writes it masked, in the same\n"
    "format, to standard output, and nothing else.\n"
    "\n"
    "What is written where:\n"
    "  document       standard output, or the file of -o; to a text not a byte is added\n"
    "  mapping        only the file of --mapping (mode 0600), or the object of --json\n"
    "  messages       standard error; they never quote the document\n"
    "  Files are replaced in one step, never left half-written.\n"
    "\n"
    "Text is UTF-8, UTF-16 with a byte order mark, or GB18030. Encoding, line ends and a\n"
    "byte order mark are kept as they are. Of a .docx all stories are masked, and what\n"
    "tells of people beside the text is taken out.\n"
    "\n";

constexpr std::string_view ANONYMIZE_EXAMPLES =
    "\n"
    "Examples:\n"
    "  veildoc anonymize contract.txt > masked.txt\n"
    "  veildoc anonymize contract.txt -o masked.txt --mapping contract.mapping.json\n"
    "  veildoc anonymize contract.docx -o masked.docx --report report.json\n"
    "  veildoc anonymize --language en --labels en - < agreement.txt\n"
    "  veildoc anonymize --json contract.txt | jq -r '.mapping[] | .placeholder'\n"
    "\n"
    "Exit codes: see veildoc --help.\n";

void warn_of_placeholders(std::u32string_view text, std::ostream& err) {
  const auto count = anonymization::find_numbered_placeholders(text).size();
  if (count == 0) return;
  err << "veildoc: warning: the document already holds " << count
      << (count == 1 ? " text that reads" : " texts that read")
      << " like a placeholder; kept as it is\n";
}

// A name without one Latin letter, digit or common ideograph is taken for a blank
// to fill in.
void warn_of_unmaskable(std::size_t count, std::ostream& err) {
  if (count == 0) return;
  err << "veildoc: warning: " << count << (count == 1 ? " name" : " names")
      << " in other scripts (Cyrillic, kana, hangul, rare ideographs) cannot be masked;"
         " veildoc analyze --explain tells where\n";
}

class Anonymize : public Command {
 public:
  std::string_view name() const override { return "anonymize"; }
  std::string_view about() const override { return "Masks one document."; }
  std::string_view details() const override { return details_; }
  void declare(Options& options) override;
  void check(const Options& options) override;
  void execute(const Context& context) override;

 private:
  void check_report() const;
  void write(const std::string& bytes, const std::optional<std::string>& mapping,
             const std::optional<std::string>& report, std::ostream& out) const;

  const std::string details_ = std::string(ANONYMIZE_DETAILS)
                                   .append(PROFILES_HELP)
                                   .append("\n")
                                   .append(SERVICES_HELP)
                                   .append(ANONYMIZE_EXAMPLES);
  MaskingOptions masking_;
  std::string input_ = "-";  // "-" is standard input
  bool input_named_ = false;
  std::string output_;   // empty: standard output
  std::string mapping_;  // empty: none is written
  std::string report_;   // empty: none is written
  bool json_ = false;
};

void Anonymize::declare(Options& options) {
  options.argument("FILE", input_, "The document; - or nothing is standard input");
  masking_.declare_language(options);
  masking_.declare_profile(options);
  masking_.declare_labels(options);
  masking_.declare_aliases(options);
  masking_.declare_recognizers(options);
  masking_.declare_services(options);
  options.file("-o,--output", output_, "Write to this file, not to standard output");
  options.file("--mapping", mapping_, "Write the mapping to this file, as JSON");
  options.file("--report", report_,
               "Write to this file, as JSON, what was masked, by kind and\nplace, and what was not "
               "examined; no text of the document");
  options.flag("--json", json_,
               "Write one JSON object instead of the text: language,\ntext, mapping, "
               "replacements. It holds the original surfaces");
}

void Anonymize::check(const Options& options) {
  masking_.check(options);
  input_named_ = options.given("FILE");
  if (!mapping_.empty()) {
    if (mapping_ == "-" || is_special_file(mapping_)) {
      throw Failure(EXIT_USAGE, "--mapping needs a regular file");
    }
    if (!output_.empty() && same_file(mapping_, output_)) {
      throw Failure(EXIT_USAGE, "--mapping and --output name the same file");
    }
    if (input_ != "-" && same_file(mapping_, input_)) {
      throw Failure(EXIT_USAGE, "--mapping names the input file");
    }
  }
  check_report();
  if (output_ == "-") output_.clear();
}

void Anonymize::check_report() const {
  if (report_.empty()) return;
  for (const auto* other : {&input_, &output_, &mapping_}) {
    if (!other->empty() && *other != "-" && same_file(report_, *other)) {
      throw Failure(EXIT_USAGE, "--report names a file of another option");
    }
  }
}

void Anonymize::execute(const Context& context) {
  const auto document = read_document(input_, input_named_, context);
  const auto& text = document->text();
  warn_of_placeholders(text, context.err);
  const GuardedAnalyzer analyzer(context, masking_);
  const auto [analysis_text, language] = analysis_input(text, masking_);
  const auto hits = analyzer.analyze(analysis_text, language);
  warn_of_unmaskable(core::nlp::unmaskable_names(analysis_text, hits).size(), context.err);
  const auto masked = mask(text, masking_, KnownHits(hits));
  auto bytes = document->write(masked);
  const auto written = documents::as_written(masked, *document);
  if (json_) bytes = document_json(written, document->as_written(text));
  std::optional<std::string> mapping;
  if (!mapping_.empty()) mapping = mapping_json(written);
  std::optional<std::string> report;
  if (!report_.empty()) report = report_json(document->report(), masked.language);
  warn_of_report(document->report(), context.err);
  write(bytes, mapping, report, context.out);
}

// Everything is ready on the disk before anything is put in place.
void Anonymize::write(const std::string& bytes, const std::optional<std::string>& mapping,
                      const std::optional<std::string>& report, std::ostream& out) const {
  std::optional<PendingFile> mapping_file;
  std::optional<PendingFile> report_file;
  std::optional<PendingFile> output_file;
  if (mapping) mapping_file.emplace(mapping_, *mapping, Privacy::SECRET);
  if (report) report_file.emplace(report_, *report, Privacy::ORDINARY);
  if (!output_.empty()) {
    output_file.emplace(output_, bytes, json_ ? Privacy::SECRET : Privacy::ORDINARY);
  }
  if (mapping_file) mapping_file->commit();
  if (report_file) report_file->commit();
  if (output_file) {
    output_file->commit();
  } else {
    write_all(out, bytes);
  }
}

}  // namespace

std::unique_ptr<Command> make_anonymize_command() { return std::make_unique<Anonymize>(); }

}  // namespace cli
