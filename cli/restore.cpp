// The command `veildoc restore`.
#include "core/restore/restore.hpp"

#include <iostream>
#include <ostream>
#include <string>

#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/masking.hpp"
#include "cli/passphrase.hpp"
#include "cli/restore_report.hpp"
#include "core/matter/matter_file.hpp"
#include "core/restore/sealed_mapping.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

constexpr std::string_view RESTORE_DETAILS =
    "Reads MASKED, a text that veildoc anonymize wrote and that somebody may have edited\n"
    "since, and MAPPING, the file of --mapping, and writes the text with the originals.\n"
    "\n"
    "A text that nobody edited comes back byte by byte. In an edited one placeholders may\n"
    "have been moved, repeated, quoted or respelled: [机构1] is also restored as\n"
    "【机构1】, [ 机构 1 ], [ORG1] or [org-1]. Where a placeholder stands for several\n"
    "spellings of a name, the text around it decides which of them comes back, then its\n"
    "order; else it is the first one, with a warning. What is not in the mapping, and a\n"
    "placeholder that lost its brackets, is left, with a warning.\n"
    "\n"
    "Exit code of --check: 0 if everything comes back, 1 if something would be left or\n"
    "is a guess.\n"
    "\n"
    "Examples:\n"
    "  veildoc restore edited.txt contract.mapping.json -o contract.txt\n"
    "  veildoc restore --check edited.txt contract.mapping.json\n"
    "  veildoc restore edited.txt sealed.json --passphrase-file secret.txt > contract.txt\n"
    "\n"
    "Exit codes: see veildoc --help.\n";

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
  std::string_view about() const override { return "Puts the originals back into a masked text."; }
  std::string_view details() const override { return RESTORE_DETAILS; }
  void declare(Options& options) override;
  void check(const Options& options) override;
  void execute(const Context& context) override;

 private:
  std::string masked_;  // "-" is standard input
  std::string mapping_;
  std::string output_;  // empty: standard output
  std::string passphrase_file_;
  bool check_ = false;
  bool show_surfaces_ = false;
};

void Restore::declare(Options& options) {
  options.argument("MASKED", masked_, "The masked text; - is standard input", true);
  options.argument("MAPPING", mapping_, "Its mapping, or its matter", true);
  options.file("-o,--output", output_, "Write to this file (mode 0600), not to standard output");
  options.file("--passphrase-file", passphrase_file_,
               "The passphrase of a sealed mapping is in this file\n(default: asked for at the "
               "terminal)");
  options.flag("--check", check_, "Write no text, tell what would be restored");
  options.flag("--show-surfaces", show_surfaces_, "Show originals in what is told");
}

void Restore::check(const Options& options) {
  if (mapping_ == "-") throw Failure(EXIT_USAGE, "MAPPING needs a file");
  if (check_ && options.given("--output")) {
    throw Failure(EXIT_USAGE, "--check writes no text: it does not go with --output");
  }
  if (!output_.empty() && same_file(output_, mapping_)) {
    throw Failure(EXIT_USAGE, "--output names the mapping");
  }
  if (output_ == "-") output_.clear();
}

void Restore::execute(const Context& context) {
  const auto bytes = read_all(masked_, context.in);
  const auto input = decode(bytes, masked_ == "-" ? "standard input" : masked_);
  const auto hash = core::restore::sha256_hex(bytes);
  const auto mapping = read_mapping_file(mapping_, passphrase_file_, hash);
  const bool unchanged = hash == mapping.masked_sha256;
  auto findings = core::restore::find_restorable(input.text, mapping);
  if (unchanged) {
    // What reads like a placeholder without brackets did so in the document.
    std::erase_if(findings, [](const auto& finding) {
      return finding.outcome == core::restore::Outcome::NO_BRACKETS;
    });
  }
  const RestoreReport report{input.text, mapping, findings, unchanged, show_surfaces_};
  if (check_) {
    write_all(context.out, report.check());
    if (report.is_in_doubt()) {
      throw Failure(EXIT_FAILED, "something would be left or is a guess");
    }
    return;
  }
  std::string restored = input.marked ? std::string(Input::BYTE_ORDER_MARK) : std::string();
  restored += core::text::encode_utf8(core::restore::restored_text(input.text, mapping, findings));
  report.warn(context.err);
  if (output_.empty()) return write_all(context.out, restored);
  PendingFile file(output_, restored, Privacy::SECRET);
  file.commit();
}

}  // namespace

std::unique_ptr<Command> make_restore_command() { return std::make_unique<Restore>(); }

}  // namespace cli
