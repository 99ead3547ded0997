#include "cli/options.hpp"

#include <cmath>

#include <CLI/CLI.hpp>

#include "cli/failure.hpp"

namespace cli {
namespace {

constexpr auto ABOUT =
    "veildoc masks contracts written in Chinese, English or both.\n"
    "Every party, person, address, date, amount and number becomes a stable numbered\n"
    "placeholder ([机构1], [ORG1], [DATE3]); a mapping, kept apart, leads back.\n";

constexpr auto COMMON_DETAILS =
    "veildoc COMMAND --help tells all about one command.\n"
    "\n"
    "Examples:\n"
    "  veildoc anonymize contract.txt > masked.txt\n"
    "  veildoc anonymize contract.txt -o masked.txt --mapping contract.mapping.json\n"
    "  veildoc anonymize contracts -o masked --matter secret/matter.json\n"
    "  veildoc restore edited.txt contract.mapping.json -o restored.txt\n"
    "  veildoc analyze --explain contract.txt\n"
    "\n"
    "Exit codes:\n"
    "  0  done (also when the reader of the output went away early, as head does)\n"
    "  1  failed otherwise, for example the output could not be written\n"
    "  2  the command line is wrong\n"
    "  3  the input, the mapping, the matter or the file of recognizers could not be read\n"
    "     or understood\n"
    "  4  the analyzer failed, or a service that it asks\n"
    "130  interrupted, with what was finished in place\n";

std::string no_empty_name(const std::string& given) {
  return given.empty() ? "a file needs a name" : "";
}

std::string number_text(double value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

}  // namespace

void Options::argument(const std::string& name, std::string& value, const std::string& description,
                       bool required) {
  app_.add_option(name, value, description)
      ->type_name("")
      ->required(required)
      ->check(CLI::Validator(no_empty_name, ""));
}

void Options::arguments(const std::string& name, std::vector<std::string>& values,
                        const std::string& description) {
  app_.add_option(name, values, description)
      ->type_name("")
      ->check(CLI::Validator(no_empty_name, ""));
}

void Options::text(const std::string& names, std::string& value, const std::string& kind,
                   const std::string& description) {
  app_.add_option(names, value, description)->type_name(kind);
}

void Options::file(const std::string& names, std::string& value, const std::string& description) {
  app_.add_option(names, value, description)
      ->type_name("FILE")
      ->check(CLI::Validator(no_empty_name, ""));
}

void Options::folder(const std::string& names, std::string& value, const std::string& description) {
  app_.add_option(names, value, description)
      ->type_name("DIR")
      ->check(CLI::Validator(no_empty_name, ""));
}

void Options::choice(const std::string& names, std::string& value,
                     const std::vector<std::string>& values, const std::string& description) {
  CLI::Validator known = CLI::IsMember(values);
  app_.add_option(names, value, description + " (default: " + value + ")")
      ->check(known.description(""))
      ->type_name(CLI::detail::join(values, "|"));
}

void Options::list(const std::string& names, std::vector<std::string>& values,
                   const std::string& kind, const std::string& description) {
  const auto split = [&values](const std::string& given) {
    values = CLI::detail::split(given, ',');
  };
  app_.add_option_function<std::string>(names, split, description)->type_name(kind);
}

void Options::number(const std::string& names, std::optional<double>& value, double most,
                     const std::string& kind, const std::string& description) {
  const auto in_range = [most](const std::string& given) {
    double number = -1;
    const bool is_number = CLI::detail::lexical_cast(given, number) && std::isfinite(number);
    if (is_number && number >= 0 && number <= most) return std::string();
    return "must be a number from 0 to " + number_text(most);
  };
  app_.add_option(names, value, description)->type_name(kind)->check(CLI::Validator(in_range, ""));
}

void Options::flag(const std::string& names, bool& value, const std::string& description) {
  app_.add_flag(names, value, description);
}

bool Options::given(const std::string& name) const { return app_.count(name) > 0; }

std::variant<Command*, Answer> parse_command_line(
    std::span<const std::string> args, const std::vector<std::unique_ptr<Command>>& commands) {
  CLI::App app(ABOUT, "veildoc");
  app.set_version_flag("--version", "veildoc " VEILDOC_VERSION);
  app.set_help_flag("-h,--help", "Print this page and exit");
  app.require_subcommand(1);
  app.footer(COMMON_DETAILS);
  for (const auto& command : commands) {
    auto* part = app.add_subcommand(std::string(command->name()), std::string(command->about()));
    part->footer(std::string(command->details()));
    Options options(*part);
    command->declare(options);
  }
  try {
    app.parse(std::vector<std::string>(args.rbegin(), args.rend()));
  } catch (const CLI::CallForHelp&) {
    const auto parsed = app.get_subcommands();
    return Answer{parsed.empty() ? app.help() : parsed.front()->help("veildoc")};
  } catch (const CLI::CallForVersion& e) {
    return Answer{std::string(e.what()) + "\n"};
  } catch (const CLI::ParseError& e) {
    throw Failure(EXIT_USAGE, e.what());
  }
  auto* parsed = app.get_subcommands().front();
  for (const auto& command : commands) {
    if (command->name() != parsed->get_name()) continue;
    command->check(Options(*parsed));
    return command.get();
  }
  throw Failure(EXIT_USAGE, "no such command");
}

}  // namespace cli
