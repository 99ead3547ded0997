// How a command ends early.
#pragma once

#include <stdexcept>
#include <string>

#include "cli/run.hpp"

namespace cli {

// Ends the command with `code`; what() is the message for standard error,
// without the program's name. It never holds text of the document.
class Failure : public std::runtime_error {
 public:
  Failure(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

// A service does not answer as it should: what goes wrong once goes on going wrong.
class ServiceFailure : public Failure {
 public:
  explicit ServiceFailure(const std::string& message) : Failure(EXIT_ANALYZER, message) {}
};

// The reader of standard output is gone: nobody is left to tell anything.
class ClosedPipe : public std::exception {};

// The exception that is being handled, as a command ends with it.
struct Told {
  ExitCode code;
  std::string message;  // never text of the document
};
Told told_of_current_exception();

// "what: No such file or directory" for an errno value.
std::string with_errno(const std::string& what, int error_number);

}  // namespace cli
