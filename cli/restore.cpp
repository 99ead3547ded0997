// The command `veildoc restore`.
#include "core/restore/restore.hpp"

#include <iostream>
#include <memory>
#include <ostream>
#include <string>

#include <unistd.h>

#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/masking.hpp"
#include "cli/passphrase.hpp"
#include "cli/restore_report.hpp"
#include "core/matter/matter_file.hpp"
#include "core/restore/sealed_mapping.hpp"
#include "core/text/utf8.hpp"
#include "documents/errors.hpp"
#include "documents/masked_file.hpp"

namespace cli {
namespace {

constexpr std::string_view RESTORE_DETAILS =
    "Reads MASKED, a text or a Word document (.docx) that veildoc anonymize wrote and that\n"
    "somebody may have edited since, and MAPPING, the file of --mapping, and writes it in\n"
    "the same format with the originals.\n"
    "\n"
    "A text that nobody edited comes back byte by byte; a .docx with the same paragraphs\n"
    "and formats, but for properties, authors, targets of links and whatever else masking\n"
    "took out. In an edited one placeholders may have been moved, repeated, quoted or\n"
    "respelled: [机构1] is also restored as 【机构1】, [ 机构 1 ], [ORG1] or [org-1]. Where\n"
    "a placeholder stands for several spellings of a name, the text around it decides which\n"
    "of them comes back, then its order; else it is the first one, with a warning. What is\n"
    "not in the mapping, and a placeholder that lost its brackets, is left, with a warning.\n"
    "\n"
    "What MASKED holds is told from its content: the mapping of a .docx also restores a text\n"
    "that was copied out of it, and that of a text a .docx that it was pasted into.\n"
    "\n"
    "Exit code of --check: 0 if everything comes back, 1 if something would be left or\n"
    "is a guess.\n"
    "\n"
    "Examples:\n"
    "  veildoc restore edited.txt contract.mapping.json -o contract.txt\n"
    "  veildoc restore edited.docx contract.mapping.json -o contract.docx\n"
    "  veildoc restore --check edited.docx contract.mapping.json\n"
    "  veildoc restore edited.txt sealed.json --passphrase-file secret.txt > contract.txt\n"
    "\n"
    "Exit codes: see veildoc --help.\n";

std::unique_ptr<documents::MaskedFile> read_masked(const std::string& path, std::string_view bytes,
                                                   const std::string& encoding) {
  try {
    return documents::read_masked_file(bytes, encoding);
  } catch (const documents::DocumentError& e) {
    throw Failure(EXIT_INPUT, input_name(path) + ": " + e.what());
  }
}

// The mapping for the masked document with this hash, also out of the file of a matter.
core::restore::Mapping read_mapping_file(const std::string& path,
                                         const std::string& passphrase_file,
                                         const std::string& masked_sha256) {
  auto bytes = read_all(path, std::cin);
  try {
    if (core::restore::is_sealed_mapping(bytes)) {
      const auto passphrase = read_passphrase(passphrase_file, Asked::ONCE);
      bytes = core::restore::open_sealed_mapping(bytes, passphrase.text());
    }
    return core::matter::read_mapping_of(bytes, masked_sha256);
  } catch (const core::text::DecodeError&) {
    throw Failure(EXIT_INPUT, path + ": damaged: not UTF-8");
  } catch (const core::restore::MappingError& e) {
    throw Failure(EXIT_INPUT, path + ": " + e.what());
  }
}

class Restore : public Command {
 public:
  std::string_view name() const override { return "restore"; }
  std::string_view about() const override {
    return "Puts the originals back into a masked document.";
  }
  std::string_view details() const override { return RESTORE_DETAILS; }
  void declare(Options& options) override;
  void check(const Options& options) override;
  void execute(const Context& context) override;

 private:
  void refuse_terminal(const Context& context) const;

  std::string masked_;  // "-" is standard input
  std::string mapping_;
  std::string output_;  // empty: standard output
  std::string passphrase_file_;
  bool check_ = false;
  bool show_surfaces_ = false;
};

void Restore::declare(Options& options) {
  options.argument("MASKED", masked_, "The masked document; - is standard input", true);
  options.argument("MAPPING", mapping_, "Its mapping, or its matter", true);
  options.file("-o,--output", output_,
               "Write to this file (mode 0600), not to standard output. A .docx\nis not "
               "written to a terminal");
  options.file("--passphrase-file", passphrase_file_,
               "The passphrase of a sealed mapping is in this file\n(default: asked for at the "
               "terminal)");
  options.flag("--check", check_, "Write no document, tell what would be restored");
  options.flag("--show-surfaces", show_surfaces_, "Show originals in what is told");
}

void Restore::check(const Options& options) {
  if (mapping_ == "-") throw Failure(EXIT_USAGE, "MAPPING needs a file");
  if (check_ && options.given("--output")) {
    throw Failure(EXIT_USAGE, "--check writes no document: it does not go with --output");
  }
  if (!output_.empty() && same_file(output_, mapping_)) {
    throw Failure(EXIT_USAGE, "--output names the mapping");
  }
  if (output_ == "-") output_.clear();
}

void Restore::execute(const Context& context) {
  const auto bytes = read_all(masked_, context.in);
  const auto hash = core::restore::sha256_hex(bytes);
  const auto mapping = read_mapping_file(mapping_, passphrase_file_, hash);
  const auto file = read_masked(masked_, bytes, mapping.encoding);
  if (!check_ && !file->is_text()) refuse_terminal(context);
  const bool unchanged = hash == mapping.masked_sha256;
  auto findings = core::restore::find_restorable(file->text(), mapping);
  if (unchanged) {
    // What reads like a placeholder without brackets did so in the document.
    std::erase_if(findings, [](const auto& finding) {
      return finding.outcome == core::restore::Outcome::NO_BRACKETS;
    });
  }
  const RestoreReport report{*file, mapping, findings, unchanged, show_surfaces_};
  if (check_) {
    write_all(context.out, report.check());
    if (report.is_in_doubt()) {
      throw Failure(EXIT_FAILED, "something would be left or is a guess");
    }
    return;
  }
  report.warn(context.err);
  const auto restored = file->write(mapping, findings);
  if (output_.empty()) return write_all(context.out, restored);
  PendingFile pending(output_, restored, Privacy::SECRET);
  pending.commit();
}

void Restore::refuse_terminal(const Context& context) const {
  if (output_.empty() && &context.out == &std::cout && ::isatty(STDOUT_FILENO) != 0) {
    throw Failure(EXIT_USAGE, "a .docx is not written to a terminal: -o names a file for it");
  }
}

}  // namespace

std::unique_ptr<Command> make_restore_command() { return std::make_unique<Restore>(); }

}  // namespace cli
