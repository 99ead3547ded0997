// What every command of veildoc is made of; one file each.
#pragma once

#include <iosfwd>
#include <memory>
#include <string_view>
#include <vector>

#include "cli/run.hpp"

namespace cli {

class Options;

// Where a command reads and writes, and where its analyzer comes from.
struct Context {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  const AnalyzerFactory& make_analyzer;
};

class Command {
 public:
  Command() = default;
  virtual ~Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  virtual std::string_view name() const = 0;
  // For the list of commands, and the head and the foot of its page of help.
  virtual std::string_view about() const = 0;
  virtual std::string_view details() const = 0;

  // Declares arguments and options; they are bound to the command's members.
  virtual void declare(Options& options) = 0;
  // Throws Failure(EXIT_USAGE) for values that do not go together.
  virtual void check(const Options& options) = 0;
  // Throws Failure and ClosedPipe.
  virtual void execute(const Context& context) = 0;
};

std::unique_ptr<Command> make_analyze_command();
std::unique_ptr<Command> make_anonymize_command();
std::unique_ptr<Command> make_batch_command();
std::unique_ptr<Command> make_evaluate_command();
std::unique_ptr<Command> make_models_command();
std::unique_ptr<Command> make_recognizers_command();
std::unique_ptr<Command> make_restore_command();

// All of them, in the order in which they are listed.
std::vector<std::unique_ptr<Command>> all_commands();

}  // namespace cli
