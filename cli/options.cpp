#include "cli/options.hpp"

#include <vector>

#include <CLI/CLI.hpp>

#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "core/anonymization/strategy.hpp"
#include "core/errors.hpp"

namespace cli {
namespace {

constexpr auto ABOUT =
    "veildoc masks contracts written in Chinese, English or both.\n"
    "Every party, person, address, date, amount and number becomes a stable numbered\n"
    "placeholder ([机构1], [ORG1], [DATE3]); a mapping, kept apart, leads back.\n";

constexpr auto ANONYMIZE_ABOUT =
    "Masks one document of plain text.\n"
    "Reads FILE and writes the masked text to standard output, and nothing else.";

constexpr auto DETAILS =
    "What is written where:\n"
    "  masked text    standard output, or the file of -o; not a byte is added\n"
    "  mapping        only the file of --mapping (mode 0600), or the object of --json\n"
    "  messages       standard error; they never quote the document\n"
    "  Files are replaced in one step, never left half-written.\n"
    "\n"
    "Input is UTF-8. Line ends and a byte order mark are kept as they are.\n"
    "\n"
    "Profiles:\n"
    "  contract_default  everything that is recognized\n"
    "  strict            that, and percentages and quantities\n"
    "  identity          parties, persons, places, contacts and identifying numbers;\n"
    "                    dates, amounts, percentages and quantities stay readable\n"
    "\n"
    "Examples:\n"
    "  veildoc anonymize contract.txt > masked.txt\n"
    "  veildoc anonymize contract.txt -o masked.txt --mapping contract.mapping.json\n"
    "  veildoc anonymize --language en --labels en - < agreement.txt\n"
    "  veildoc anonymize --json contract.txt | jq -r '.mapping[] | .placeholder'\n"
    "\n"
    "Exit codes:\n"
    "  0  done (also when the reader of the output went away early, as head does)\n"
    "  1  failed otherwise, for example the output could not be written\n"
    "  2  the command line is wrong\n"
    "  3  the input or the file of recognizers could not be read or understood\n"
    "  4  the analyzer failed\n";

// One of `values`; the page of help shows them, and the default, itself.
void add_choice(CLI::App& command, const std::string& name, std::string& value,
                const std::vector<std::string>& values, const std::string& description) {
  CLI::Validator known = CLI::IsMember(values);
  command.add_option(name, value, description + " (default: " + value + ")")
      ->check(known.description(""))
      ->type_name(CLI::detail::join(values, "|"));
}

void add_anonymize_options(CLI::App& command, AnonymizeOptions& options) {
  command.add_option("FILE", options.input, "The document; - or nothing is standard input")
      ->type_name("");
  add_choice(command, "-l,--language", options.language, {"auto", "zh", "en"},
             "Language of the document");
  command
      .add_option("--profile", options.profile,
                  "What is masked, see Profiles (default: " + options.profile + ")")
      ->type_name("NAME");
  add_choice(command, "--labels", options.labels, {"auto", "zh", "en", "core"},
             "How organizations and addresses read:\nzh [机构1], en [ORG1], auto as the language "
             "of the document,\ncore as the library writes them");
  add_choice(command, "--aliases", options.aliases, {"one", "separate"},
             "Names by which one party or person goes (北京华信科技有限公司\nand 华信科技): one "
             "placeholder, or separate ones");
  command
      .add_option("--recognizers", options.recognizers,
                  "Find what this file describes as well (JSON or YAML,\nsee docs/recognizers.md)")
      ->type_name("FILE");
  command.add_option("-o,--output", options.output, "Write to this file, not to standard output")
      ->type_name("FILE");
  command.add_option("--mapping", options.mapping, "Write the mapping to this file, as JSON")
      ->type_name("FILE");
  command.add_flag("--json", options.json,
                   "Write one JSON object instead of the text: language,\ntext, mapping, "
                   "replacements. It holds the original surfaces");
}

void check_files(const CLI::App& command, const AnonymizeOptions& options) {
  const auto empty = [&](const char* name, const std::string& path) {
    return command.count(name) > 0 && path.empty();
  };
  if (empty("FILE", options.input) || empty("--output", options.output) ||
      empty("--mapping", options.mapping) || empty("--recognizers", options.recognizers)) {
    throw Failure(EXIT_USAGE, "a file needs a name");
  }
  if (options.mapping.empty()) return;
  if (options.mapping == "-" || is_special_file(options.mapping)) {
    throw Failure(EXIT_USAGE, "--mapping needs a regular file");
  }
  if (!options.output.empty() && same_file(options.mapping, options.output)) {
    throw Failure(EXIT_USAGE, "--mapping and --output name the same file");
  }
  if (options.input != "-" && same_file(options.mapping, options.input)) {
    throw Failure(EXIT_USAGE, "--mapping names the input file");
  }
}

void check_profile(const std::string& profile) {
  try {
    core::anonymization::_resolve_semantic_strategy_steps(profile, "en");
  } catch (const core::ValueError& e) {
    throw Failure(EXIT_USAGE, std::string("--profile: ") + e.what());
  }
}

}  // namespace

std::variant<AnonymizeOptions, Answer> parse_options(std::span<const std::string> args) {
  AnonymizeOptions options;
  CLI::App app(ABOUT, "veildoc");
  app.set_version_flag("--version", "veildoc " VEILDOC_VERSION);
  app.set_help_flag("-h,--help", "Print this page and exit");
  app.require_subcommand(1);
  app.footer(DETAILS);
  auto* command = app.add_subcommand("anonymize", ANONYMIZE_ABOUT);
  command->footer(DETAILS);
  add_anonymize_options(*command, options);

  try {
    app.parse(std::vector<std::string>(args.rbegin(), args.rend()));
  } catch (const CLI::CallForHelp&) {
    if (command->parsed()) return Answer{command->help("veildoc")};
    return Answer{app.help("", CLI::AppFormatMode::All)};
  } catch (const CLI::CallForVersion& e) {
    return Answer{std::string(e.what()) + "\n"};
  } catch (const CLI::ParseError& e) {
    throw Failure(EXIT_USAGE, e.what());
  }
  options.input_named = command->count("FILE") > 0;
  check_files(*command, options);
  if (options.output == "-") options.output.clear();
  check_profile(options.profile);
  return options;
}

}  // namespace cli
