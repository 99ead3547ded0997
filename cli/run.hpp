// The command `veildoc` as a function, so that tests can call it.
#pragma once

#include <iosfwd>
#include <span>
#include <string>

namespace cli {

// What the process ends with.
enum ExitCode {
  EXIT_DONE = 0,
  EXIT_FAILED = 1,          // anything that none of the others names, such as an unwritable output
  EXIT_USAGE = 2,           // the command line is wrong
  EXIT_INPUT = 3,           // the input could not be read or decoded
  EXIT_ANALYZER = 4,        // the analyzer failed or could not be reached
};

// `args` without the program's name. Returns an ExitCode.
int run(std::span<const std::string> args, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace cli
