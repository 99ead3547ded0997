#include "cli/run.hpp"

#include <new>
#include <ostream>
#include <variant>

#include "cli/anonymize.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/options.hpp"
#include "core/anonymization/analyzer/embedded_analyzer.hpp"
#include "core/errors.hpp"

namespace cli {
namespace {

std::unique_ptr<core::anonymization::Analyzer> embedded_analyzer(const AnalyzerOptions& options) {
  return core::anonymization::make_embedded_analyzer(
      {.percentages_and_quantities = options.profile == "strict",
       .recognizers = options.recognizers});
}

int fail(std::ostream& err, ExitCode code, std::string_view message) {
  err << "veildoc: " << message << '\n' << std::flush;
  return code;
}

}  // namespace

int run(std::span<const std::string> args, std::istream& in, std::ostream& out, std::ostream& err,
        const AnalyzerFactory& make_analyzer) {
  try {
    const auto command = parse_options(args);
    if (const auto* answer = std::get_if<Answer>(&command)) {
      write_all(out, answer->text);
    } else {
      anonymize(std::get<AnonymizeOptions>(command), {in, out, err}, make_analyzer);
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
  return run(args, in, out, err, embedded_analyzer);
}

}  // namespace cli
