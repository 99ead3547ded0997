// The command `veildoc anonymize`.
#include <optional>
#include <ostream>
#include <string>

#include "cli/document_json.hpp"
#include "cli/documents.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/masking.hpp"
#include "cli/passphrase.hpp"
#include "cli/progress.hpp"
#include "cli/review_table.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/nlp/other_scripts.hpp"
#include "core/restore/restore.hpp"
#include "core/restore/sealed_mapping.hpp"
#include "core/text/utf8.hpp"
#include "documents/leftovers.hpp"

namespace cli {
namespace {

namespace anonymization = core::anonymization;

constexpr std::string_view ANONYMIZE_DETAILS =
    "Reads FILE, plain text or a Word document (.docx), and writes it masked, in the same\n"
    "format, to standard output, and nothing else.\n"
    "\n"
    "What is written where:\n"
    "  document       standard output, or the file of -o; to a text not a byte is added\n"
    "  mapping        only the file of --mapping (mode 0600, sealed with --encrypt), or\n"
    "                 the object of --json\n"
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
    "  veildoc anonymize --dry-run contract.txt --keep public.txt --mask secret.txt\n"
    "  veildoc anonymize contract.docx -o masked.docx --report report.json\n"
    "  veildoc anonymize --language en --labels en - < agreement.txt\n"
    "  veildoc anonymize --json contract.txt | jq -r '.mapping[] | .placeholder'\n"
    "\n"
    "Exit codes: see veildoc --help.\n";

constexpr std::size_t STEPS = 2;  // of progress: analysed, masked

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

// The mapping of a document, whose masked text is written as `bytes`. What it does
// not lead back to is told at once.
core::restore::Mapping mapping_of(const anonymization::AnonymizedDocument& document,
                                  std::string_view bytes, std::u32string_view original,
                                  std::ostream& err) {
  namespace restore = core::restore;
  auto mapping = restore::make_mapping(document);
  mapping.masked_sha256 = restore::sha256_hex(bytes);
  const auto findings = restore::find_restorable(document.text, mapping);
  if (restore::restored_text(document.text, mapping, findings) != original) {
    err << "veildoc: warning: the mapping does not lead back to the whole document\n";
  }
  return mapping;
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
  void check_dry_run(const Options& options) const;
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
  bool encrypt_ = false;
  std::string passphrase_file_;  // empty: asked for
  std::string report_;           // empty: none is written
  bool json_ = false;
  bool dry_run_ = false;
};

void Anonymize::declare(Options& options) {
  options.argument("FILE", input_, "The document; - or nothing is standard input");
  masking_.declare_language(options);
  masking_.declare_profile(options);
  masking_.declare_labels(options);
  masking_.declare_aliases(options);
  masking_.declare_recognizers(options);
  masking_.declare_overrides(options);
  masking_.declare_services(options);
  options.file("-o,--output", output_, "Write to this file, not to standard output");
  options.file("--mapping", mapping_, "Write the mapping to this file, as JSON");
  options.flag("--encrypt", encrypt_, "Seal the mapping with a passphrase");
  options.file("--passphrase-file", passphrase_file_,
               "The passphrase is in this file (default: asked for at the\nterminal)");
  options.flag("--dry-run", dry_run_,
               "Write a table of what would be masked instead of the text.\nIt holds the original "
               "surfaces");
  options.file("--report", report_,
               "Write to this file, as JSON, what was masked, by kind and\nplace, and what was not "
               "examined; no text of the document");
  options.flag("--json", json_,
               "Write one JSON object instead of the text: language,\ntext, mapping, "
               "replacements. It holds the original surfaces");
}

void Anonymize::check_dry_run(const Options& options) const {
  if (!dry_run_) return;
  for (const auto* name : {"--output", "--mapping", "--report", "--json"}) {
    if (options.given(name)) {
      throw Failure(EXIT_USAGE, std::string("--dry-run does not go with ") + name);
    }
  }
}

void Anonymize::check(const Options& options) {
  masking_.check(options);
  check_dry_run(options);
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
  if (encrypt_ && mapping_.empty()) throw Failure(EXIT_USAGE, "--encrypt needs --mapping");
  if (!encrypt_ && !passphrase_file_.empty()) {
    throw Failure(EXIT_USAGE, "--passphrase-file needs --encrypt");
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
  const auto source = read_document(input_, input_named_, context);
  const auto& text = source->text();
  std::optional<Passphrase> passphrase;
  if (encrypt_) passphrase = read_passphrase(passphrase_file_, Asked::TWICE);
  warn_of_placeholders(text, context.err);
  const auto overrides = read_overrides(text, masking_, context.err);
  const GuardedAnalyzer analyzer(context, masking_);
  const auto [analysis_text, language] = analysis_input(text, masking_);
  std::optional<Progress> progress(std::in_place, context.err, STEPS);
  const auto hits = analyzer.analyze(analysis_text, language);
  progress->step();
  const auto masked = mask(text, masking_, KnownHits(hits), overrides);
  progress.reset();  // takes its line away before anything else is told
  warn_of_unmaskable(core::nlp::unmaskable_names(analysis_text, hits).size(), context.err);
  source->set_kept([&] {
    return documents::kept_on_purpose(text, hits, masked.language, masking_.profile, overrides);
  });
  const auto written = documents::as_written(masked, *source);
  if (dry_run_) return write_all(context.out, review_table(core::restore::make_mapping(written)));
  const auto original = source->written(masked).original;
  auto bytes = source->write(masked);
  std::optional<std::string> mapping;
  if (!mapping_.empty()) {
    auto way_back = mapping_of(written, bytes, original, context.err);
    way_back.encoding = source->encoding();
    mapping = core::restore::write_mapping(way_back);
    if (passphrase) mapping = core::restore::seal_mapping(*mapping, passphrase->text());
  }
  if (json_) bytes = document_json(written, source->as_written(text));
  std::optional<std::string> report;
  if (!report_.empty()) report = report_json(source->report(), masked.language);
  warn_of_report(source->report(), context.err);
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
