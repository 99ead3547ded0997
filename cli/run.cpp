#include "cli/run.hpp"

#include <new>
#include <ostream>
#include <variant>

#include "cli/command.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/options.hpp"
#include "cli/services.hpp"
#include "core/errors.hpp"

namespace cli {
namespace {

int fail(std::ostream& err, ExitCode code, std::string_view message) {
  err << "veildoc: " << message << '\n' << std::flush;
  return code;
}

}  // namespace

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
  } catch (const Failure& e) {
    fail(err, e.code(), e.what());
    if (e.code() == EXIT_USAGE) err << "veildoc: see veildoc --help\n";
    return e.code();
  } catch (const core::Error& e) {
    return fail(err, EXIT_FAILED, e.what());
  } catch (const std::bad_alloc&) {
    return fail(err, EXIT_FAILED, "out of memory");
  } catch (const std::exception&) {
    // Its message is not ours: it might quote the document.
    return fail(err, EXIT_FAILED, "unexpected failure");
  }
}

int run(std::span<const std::string> args, std::istream& in, std::ostream& out, std::ostream& err) {
  return run(args, in, out, err, make_default_analyzer);
}

}  // namespace cli
