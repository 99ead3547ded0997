// The command `veildoc batch`.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>

#include "cli/anonymize_files.hpp"
#include "cli/batch_lines.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/masking.hpp"

namespace cli {
namespace {

constexpr std::string_view BATCH_DETAILS =
    "Masks archives: as many texts at once as -j says, in bounded memory.\n"
    "\n"
    "JSON Lines (INPUT is a file, or - for standard input):\n"
    "  in   {\"id\": 7, \"text\": \"...\", ...}   one object a line\n"
    "  out  {\"id\": 7, \"text\": \"...\", \"mapping\": [...], \"language\": \"zh\"}\n"
    "  A line that cannot be masked gives {\"id\": ..., \"line\": 12, \"error\": \"...\"}, and\n"
    "  the others go on. The order is kept; with --unordered each line begins with its\n"
    "  \"line\" and is written when it is ready. The mapping is that of a mapping file and\n"
    "  holds the originals; --no-mapping leaves it out.\n"
    "  The file of -o grows as FILE.partial and has its name when it is whole.\n"
    "\n"
    "Documents (INPUT is a folder):\n"
    "  As veildoc anonymize FOLDER -o DIR: the same layout, what fails is told and left out.\n"
    "\n"
    "Each text has numbers of its own; veildoc anonymize --matter has one numbering for\n"
    "many documents.\n"
    "\n"
    "Interrupted (Ctrl-C) it writes what is finished and ends with exit code 130. --resume\n"
    "goes on: behind the last whole line of FILE.partial, whose first and last line are\n"
    "compared with the input; or with the documents that have no output yet.\n"
    "\n";

constexpr std::string_view BATCH_EXAMPLES =
    "\n"
    "Examples:\n"
    "  veildoc batch -j 8 archive.jsonl -o masked.jsonl\n"
    "  veildoc batch -j 8 archive.jsonl -o masked.jsonl --resume\n"
    "  zcat archive.jsonl.gz | veildoc batch - --no-mapping | gzip > masked.jsonl.gz\n"
    "  veildoc batch -j 8 contracts -o masked --mappings secret/mappings\n"
    "\n"
    "Exit codes: see veildoc --help; 3 also if a line or a document was not masked.\n";

constexpr double MOST_JOBS = 1024;
constexpr std::size_t MEGABYTE = 1'000'000;
constexpr std::size_t LONGEST_LINE_MB = 64;
constexpr double MOST_LINE_MB = 4096;

bool is_folder(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

std::optional<std::size_t> whole_number(const std::optional<double>& value,
                                        const std::string& option) {
  if (!value) return {};
  if (*value < 1 || *value != std::floor(*value)) {
    throw Failure(EXIT_USAGE, option + ": a whole number from 1 on");
  }
  return static_cast<std::size_t>(*value);
}

class Batch : public Command {
 public:
  std::string_view name() const override { return "batch"; }
  std::string_view about() const override {
    return "Masks JSON Lines or a folder of documents, many at once.";
  }
  std::string_view details() const override { return details_; }
  void declare(Options& options) override;
  void check(const Options& options) override;
  void execute(const Context& context) override;

 private:
  void check_lines(const Options& options);
  void check_documents(const Options& options) const;

  const std::string details_ = std::string(BATCH_DETAILS)
                                   .append(PROFILES_HELP)
                                   .append("\n")
                                   .append(SERVICES_HELP)
                                   .append(BATCH_EXAMPLES);
  MaskingOptions masking_;
  FilesOptions documents_;
  LinesOptions lines_;
  std::string input_ = "-";
  std::string output_;
  std::optional<double> jobs_;
  std::optional<double> longest_;
  bool no_mapping_ = false;
  bool of_documents_ = false;
};

void Batch::declare(Options& options) {
  options.argument("INPUT", input_, "JSON Lines, or a folder; - or nothing is standard input");
  options.number("-j,--jobs", jobs_, MOST_JOBS, "N",
                 "So many texts at once (default: as many as there are\nprocessors)");
  options.file("-o,--output", output_,
               "Write to this file, not to standard output; of a folder,\ninto this one");
  options.flag("--resume", documents_.resume, "Go on with what an interrupted run left");
  options.flag("--overwrite", documents_.overwrite, "Replace outputs that are there");
  options.flag("--unordered", lines_.unordered, "Write lines as they are ready");
  options.flag("--no-mapping", no_mapping_, "Write lines without the originals");
  options.number("--longest-line", longest_, MOST_LINE_MB, "MB",
                 "Longer lines are not masked (default: 64)");
  options.folder("--mappings", documents_.mappings,
                 "Write the mapping of each document into this folder");
  options.flag("--encrypt", documents_.encrypt, "Seal them with a passphrase");
  options.file("--passphrase-file", documents_.passphrase_file,
               "The passphrase is in this file (default: asked for at the\nterminal)");
  options.file("--report", documents_.report,
               "Write to this file what was masked in each document");
  masking_.declare_language(options);
  masking_.declare_profile(options);
  masking_.declare_labels(options);
  masking_.declare_aliases(options);
  masking_.declare_recognizers(options);
  masking_.declare_overrides(options);
  masking_.declare_services(options);
}

void Batch::check(const Options& options) {
  masking_.check(options);
  const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
  lines_.jobs = whole_number(jobs_, "--jobs").value_or(processors);
  documents_.jobs = lines_.jobs;
  lines_.longest = whole_number(longest_, "--longest-line").value_or(LONGEST_LINE_MB) * MEGABYTE;
  if (output_ == "-") output_.clear();
  if (documents_.resume && documents_.overwrite) {
    throw Failure(EXIT_USAGE, "--resume keeps what --overwrite replaces");
  }
  if (documents_.resume && output_.empty()) {
    throw Failure(EXIT_USAGE, "--resume needs the -o of the run that it goes on with");
  }
  of_documents_ = is_folder(input_);
  if (of_documents_) {
    check_documents(options);
  } else {
    check_lines(options);
  }
}

void Batch::check_lines(const Options& options) {
  for (const auto* name : {"--mappings", "--encrypt", "--passphrase-file", "--report"}) {
    if (!options.given(name)) continue;
    throw Failure(EXIT_USAGE, std::string(name) + " is for a folder of documents");
  }
  if (!output_.empty() && is_folder(output_)) {
    throw Failure(EXIT_USAGE, output_ + ": JSON Lines are written into a file");
  }
  if (!output_.empty() && input_ != "-" && same_file(output_, input_)) {
    throw Failure(EXIT_USAGE, "--output names the input file");
  }
  if (documents_.resume && is_special_file(output_)) {
    throw Failure(EXIT_USAGE, "--resume needs a regular file");
  }
}

void Batch::check_documents(const Options& options) const {
  for (const auto* name : {"--unordered", "--no-mapping", "--longest-line"}) {
    if (!options.given(name)) continue;
    throw Failure(EXIT_USAGE, std::string(name) + " is for JSON Lines");
  }
  if (output_.empty()) throw Failure(EXIT_USAGE, "a folder of documents needs -o DIR");
  std::error_code error;
  for (const auto& folder : {output_, documents_.mappings}) {
    if (!folder.empty() && std::filesystem::exists(folder, error) && !is_folder(folder)) {
      throw Failure(EXIT_USAGE, folder + ": documents are written into a folder");
    }
  }
  if (!documents_.mappings.empty() && same_file(documents_.mappings, output_)) {
    throw Failure(EXIT_USAGE,
                  "--mappings and --output name the same folder; whoever gets the "
                  "documents would have the originals");
  }
  if (documents_.encrypt && documents_.mappings.empty()) {
    throw Failure(EXIT_USAGE, "--encrypt needs --mappings");
  }
  if (!documents_.encrypt && !documents_.passphrase_file.empty()) {
    throw Failure(EXIT_USAGE, "--passphrase-file needs --encrypt");
  }
}

void Batch::execute(const Context& context) {
  if (of_documents_) {
    documents_.inputs = {input_};
    documents_.output = output_;
    return anonymize_files(documents_, masking_, context);
  }
  lines_.input = input_;
  lines_.output = output_;
  lines_.mapping = !no_mapping_;
  if (documents_.resume) lines_.start = LineOutput::Start::RESUME;
  if (documents_.overwrite) lines_.start = LineOutput::Start::REPLACE;
  batch_lines(lines_, masking_, context);
}

}  // namespace

std::unique_ptr<Command> make_batch_command() { return std::make_unique<Batch>(); }

}  // namespace cli
