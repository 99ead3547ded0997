#include "cli/run.hpp"

#include <exception>
#include <ostream>
#include <variant>

#include "cli/command.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/options.hpp"
#include "cli/services.hpp"

namespace cli {
int run(std::span<const std::string> args, std::istream& in, std::ostream& out, std::ostream& err,
        const AnalyzerFactory& make_analyzer) {
  try {
    const auto commands = all_commands();
    const auto parsed = parse_command_line(args, commands);
    if (const auto* answer = std::get_if<Answer>(&parsed)) {
      write_all(out, answer->text);
    } else {
      std::get<Command*>(parsed)->execute({in, out, err, make_analyzer});
    }
    return EXIT_DONE;
  } catch (const ClosedPipe&) {
    return EXIT_DONE;
  } catch (const std::exception&) {
    const auto told = told_of_current_exception();
    err << "veildoc: " << told.message << '\n';
    if (told.code == EXIT_USAGE) err << "veildoc: see veildoc --help\n";
    err << std::flush;
    return told.code;
  }
}

int run(std::span<const std::string> args, std::istream& in, std::ostream& out, std::ostream& err) {
  return run(args, in, out, err, make_default_analyzer);
}

}  // namespace cli
