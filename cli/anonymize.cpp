// The command `veildoc anonymize`.
#include <algorithm>
#include <filesystem>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>

#include "cli/anonymize_files.hpp"
#include "cli/document_json.hpp"
#include "cli/document_masker.hpp"
#include "cli/documents.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/masking.hpp"
#include "cli/matter_store.hpp"
#include "cli/passphrase.hpp"
#include "cli/progress.hpp"
#include "cli/review_table.hpp"
#include "core/restore/mapping_file.hpp"
#include "core/restore/sealed_mapping.hpp"

namespace cli {
namespace {

constexpr std::string_view ANONYMIZE_DETAILS =
    "Reads FILE, plain text or a Word document (.docx), and writes it masked, in the same\n"
    "format, to standard output, and nothing else. Of a PDF the text alone is written.\n"
    "\n"
    "What is written where:\n"
    "  document       standard output, or the file of -o; to a text not a byte is added\n"
    "  mapping        only the files of --mapping, --mappings and --matter (mode 0600,\n"
    "                 sealed with --encrypt), or the object of --json\n"
    "  messages       standard error; they never quote the document\n"
    "  Files are replaced in one step, never left half-written.\n"
    "\n"
    "Text is UTF-8, UTF-16 with a byte order mark, or GB18030. Encoding, line ends and a\n"
    "byte order mark are kept as they are. Of a .docx all stories are masked, and what\n"
    "tells of people beside the text is taken out.\n"
    "\n"
    "Several documents:\n"
    "  Each FILE may be a folder, in which all files are read but hidden ones. Their\n"
    "  places below it are kept in the folder of -o. What is no document is told and left\n"
    "  out, and what fails with one does not stop the others. Nothing is overwritten\n"
    "  without --overwrite, and no input ever. Each document has numbers of its own, but\n"
    "  with --matter the same party has the same number in all of them, and in all that\n"
    "  are masked with this file later.\n"
    "\n";

constexpr std::string_view ANONYMIZE_EXAMPLES =
    "\n"
    "Examples:\n"
    "  veildoc anonymize contract.txt > masked.txt\n"
    "  veildoc anonymize contract.txt -o masked.txt --mapping contract.mapping.json\n"
    "  veildoc anonymize --dry-run contract.txt --keep public.txt --mask secret.txt\n"
    "  veildoc anonymize contract.docx -o masked.docx --report report.json\n"
    "  veildoc anonymize contracts -o masked --mappings secret/mappings\n"
    "  veildoc anonymize lease.docx annex.docx -o masked --matter secret/lease.json\n"
    "  veildoc anonymize --language en --labels en - < agreement.txt\n"
    "  veildoc anonymize --json contract.txt | jq -r '.mapping[] | .placeholder'\n"
    "\n"
    "Exit codes: see veildoc --help.\n";

constexpr std::size_t STEPS = 2;  // of progress: analysed, masked

class Anonymize : public Command {
 public:
  std::string_view name() const override { return "anonymize"; }
  std::string_view about() const override { return "Masks one document, or several."; }
  std::string_view details() const override { return details_; }
  void declare(Options& options) override;
  void check(const Options& options) override;
  void execute(const Context& context) override;

 private:
  // All that is written of one document.
  struct Ready {
    std::string bytes;
    std::optional<std::string> mapping;
    std::optional<std::string> report;
    std::unique_ptr<PendingFile> matter;
  };

  const std::string& input() const { return files_.inputs.front(); }
  void check_dry_run(const Options& options) const;
  void check_several(const Options& options) const;
  void check_one(const Options& options);
  void check_secrets() const;
  void check_report() const;
  void execute_one(const Context& context);
  void write(const Ready& ready, std::ostream& out) const;

  const std::string details_ = std::string(ANONYMIZE_DETAILS)
                                   .append(PROFILES_HELP)
                                   .append("\n")
                                   .append(SERVICES_HELP)
                                   .append(ANONYMIZE_EXAMPLES);
  MaskingOptions masking_;
  // Of one document and of several; an input "-" is standard input, and an empty
  // output standard output.
  FilesOptions files_;
  bool input_named_ = false;
  bool several_ = false;
  std::string mapping_;  // of one document; empty: none is written
  bool json_ = false;
};

void Anonymize::declare(Options& options) {
  options.arguments("FILE", files_.inputs,
                    "The document; - or nothing is standard input. Several, or a\nfolder, need "
                    "-o DIR");
  masking_.declare_language(options);
  masking_.declare_profile(options);
  masking_.declare_labels(options);
  masking_.declare_aliases(options);
  masking_.declare_recognizers(options);
  masking_.declare_overrides(options);
  masking_.declare_services(options);
  options.file("-o,--output", files_.output,
               "Write to this file, not to standard output; of several\ndocuments, into this "
               "folder");
  options.file("--mapping", mapping_, "Write the mapping to this file, as JSON");
  options.folder("--mappings", files_.mappings,
                 "Of several documents, write the mapping of each into this\nfolder");
  options.file("--matter", files_.matter,
               "Number as this file says, and add to it: one placeholder\na party in all "
               "documents of a matter");
  options.flag("--encrypt", files_.encrypt, "Seal mappings and matter with a passphrase");
  options.file("--passphrase-file", files_.passphrase_file,
               "The passphrase is in this file (default: asked for at the\nterminal)");
  options.flag("--overwrite", files_.overwrite,
               "Of several documents, replace outputs that are there");
  options.flag("--dry-run", files_.dry_run,
               "Write a table of what would be masked instead of the text.\nIt holds the original "
               "surfaces");
  options.file("--report", files_.report,
               "Write to this file, as JSON, what was masked, by kind and\nplace, and what was not "
               "examined; no text of the document");
  options.flag("--json", json_,
               "Write one JSON object instead of the text: language,\ntext, mapping, "
               "replacements. It holds the original surfaces");
}

void Anonymize::check_dry_run(const Options& options) const {
  if (!files_.dry_run) return;
  for (const auto* name : {"--output", "--mapping", "--mappings", "--report", "--json"}) {
    if (options.given(name)) {
      throw Failure(EXIT_USAGE, std::string("--dry-run does not go with ") + name);
    }
  }
}

void Anonymize::check(const Options& options) {
  masking_.check(options);
  check_dry_run(options);
  input_named_ = !files_.inputs.empty();
  if (!input_named_) files_.inputs = {"-"};
  const auto is_folder = [](const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
  };
  several_ = files_.inputs.size() > 1 || is_folder(input()) || is_folder(files_.output) ||
             options.given("--mappings");
  check_secrets();
  if (several_) {
    check_several(options);
  } else {
    check_one(options);
  }
}

void Anonymize::check_several(const Options& options) const {
  for (const auto* name : {"--mapping", "--json"}) {
    if (!options.given(name)) continue;
    throw Failure(EXIT_USAGE, std::string(name) + " is for one document; of several, --mappings " +
                                  "writes the mapping of each and --matter one of all");
  }
  if (std::count(files_.inputs.begin(), files_.inputs.end(), "-") > 0) {
    throw Failure(EXIT_USAGE, "standard input is one document, and there are several");
  }
  if (!files_.dry_run && (files_.output.empty() || files_.output == "-")) {
    throw Failure(EXIT_USAGE, "several documents need -o DIR");
  }
  std::error_code error;
  for (const auto& folder : {files_.output, files_.mappings}) {
    if (!folder.empty() && std::filesystem::exists(folder, error) &&
        !std::filesystem::is_directory(folder, error)) {
      throw Failure(EXIT_USAGE, folder + ": several documents are written into a folder");
    }
  }
  if (!files_.mappings.empty() && same_file(files_.mappings, files_.output)) {
    throw Failure(EXIT_USAGE,
                  "--mappings and --output name the same folder; whoever gets the "
                  "documents would have the originals");
  }
  if (!files_.report.empty() && !files_.matter.empty() && same_file(files_.report, files_.matter)) {
    throw Failure(EXIT_USAGE, "--report names a file of another option");
  }
}

void Anonymize::check_secrets() const {
  if (!files_.matter.empty() && (files_.matter == "-" || is_special_file(files_.matter))) {
    throw Failure(EXIT_USAGE, "--matter needs a regular file");
  }
  if (files_.encrypt && mapping_.empty() && files_.mappings.empty() && files_.matter.empty()) {
    throw Failure(EXIT_USAGE, "--encrypt needs --mapping, --mappings or --matter");
  }
  if (!files_.encrypt && files_.matter.empty() && !files_.passphrase_file.empty()) {
    throw Failure(EXIT_USAGE, "--passphrase-file needs --encrypt or --matter");
  }
}

void Anonymize::check_one(const Options& options) {
  if (options.given("--overwrite")) {
    throw Failure(EXIT_USAGE, "--overwrite is for several documents; the file of -o is replaced");
  }
  const auto check_secret = [&](const std::string& path, const std::string& name) {
    if (path.empty()) return;
    if (path == "-" || is_special_file(path)) {
      throw Failure(EXIT_USAGE, name + " needs a regular file");
    }
    if (!files_.output.empty() && same_file(path, files_.output)) {
      throw Failure(EXIT_USAGE, name + " and --output name the same file");
    }
    if (input() != "-" && same_file(path, input())) {
      throw Failure(EXIT_USAGE, name + " names the input file");
    }
  };
  check_secret(mapping_, "--mapping");
  check_secret(files_.matter, "--matter");
  if (!mapping_.empty() && !files_.matter.empty() && same_file(mapping_, files_.matter)) {
    throw Failure(EXIT_USAGE, "--mapping and --matter name the same file");
  }
  check_report();
  if (files_.output == "-") files_.output.clear();
}

void Anonymize::check_report() const {
  if (files_.report.empty()) return;
  for (const auto* other : {&input(), &files_.output, &mapping_, &files_.matter}) {
    if (!other->empty() && *other != "-" && same_file(files_.report, *other)) {
      throw Failure(EXIT_USAGE, "--report names a file of another option");
    }
  }
}

void Anonymize::execute(const Context& context) {
  if (several_) return anonymize_files(files_, masking_, context);
  execute_one(context);
}

void Anonymize::execute_one(const Context& context) {
  const auto source = read_document(input(), input_named_, context);
  if (source->report().format == "pdf" && files_.output.ends_with(".pdf")) {
    throw Failure(EXIT_USAGE, files_.output + ": of a PDF plain text is written; name it .txt");
  }
  const auto& text = source->text();
  std::optional<MatterStore> matter;
  std::optional<Passphrase> passphrase;
  if (!files_.matter.empty()) {
    matter.emplace(files_.matter, files_.encrypt, files_.passphrase_file,
                   files_.dry_run ? MatterStore::Use::LOOK : MatterStore::Use::WRITE);
  } else if (files_.encrypt) {
    passphrase = read_passphrase(files_.passphrase_file, Asked::TWICE);
  }
  warn_of_placeholders(text, context.err);
  const auto overrides = OverrideLists(masking_).find(text, &context.err);
  const GuardedAnalyzer analyzer(context, masking_);
  const DocumentMasker masker(masking_, analyzer, matter ? &matter->matter() : nullptr);
  std::optional<Progress> progress(std::in_place, context.err, STEPS);
  std::ostringstream warnings;
  auto masked = masker.mask(*source, overrides,
                            {.bytes = !files_.dry_run,
                             .mapping = !mapping_.empty() || files_.dry_run,
                             .matter = matter.has_value()},
                            warnings, [&] { progress->step(); });
  progress.reset();  // takes its line away before anything else is told
  context.err << warnings.str();
  warn_of_unmaskable(masked.unmaskable, context.err);
  if (files_.dry_run) return write_all(context.out, review_table(*masked.mapping));
  Ready ready;
  if (masked.mapping) {
    ready.mapping = core::restore::write_mapping(*masked.mapping);
    const auto& key = matter ? matter->passphrase() : passphrase;
    if (key) ready.mapping = core::restore::seal_mapping(*ready.mapping, key->text());
  }
  if (matter) {
    const auto name = std::filesystem::path(input_name(input())).filename().string();
    matter->matter().add(
        {name, masked.document.language, masked.matter->masked_sha256, masked.matter->encoding},
        *masked.matter);
    ready.matter = matter->write();
  }
  ready.bytes = std::move(masked.bytes);
  if (json_) ready.bytes = document_json(masked.document, source->as_written(text));
  if (!files_.report.empty()) {
    ready.report = report_json(source->report(), masked.document.language);
  }
  warn_of_report(source->report(), context.err);
  write(ready, context.out);
}

// Everything is ready on the disk before anything is put in place.
void Anonymize::write(const Ready& ready, std::ostream& out) const {
  std::optional<PendingFile> mapping_file;
  std::optional<PendingFile> report_file;
  std::optional<PendingFile> output_file;
  if (ready.mapping) mapping_file.emplace(mapping_, *ready.mapping, Privacy::SECRET);
  if (ready.report) report_file.emplace(files_.report, *ready.report, Privacy::ORDINARY);
  if (!files_.output.empty()) {
    output_file.emplace(files_.output, ready.bytes, json_ ? Privacy::SECRET : Privacy::ORDINARY);
  }
  // First: a document whose numbers nobody knows could never be restored.
  if (ready.matter) ready.matter->commit();
  if (mapping_file) mapping_file->commit();
  if (report_file) report_file->commit();
  if (output_file) {
    output_file->commit();
  } else {
    write_all(out, ready.bytes);
  }
}

}  // namespace

std::unique_ptr<Command> make_anonymize_command() { return std::make_unique<Anonymize>(); }

}  // namespace cli
