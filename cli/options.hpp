// The command line of veildoc.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "cli/command.hpp"

namespace CLI {  // NOLINT(readability-identifier-naming): the library's
class App;
}

namespace cli {

// Declares what a command takes. `names` is "-s,--long" or the name of an
// argument, and the value stays as it is where the command line does not name it.
class Options {
 public:
  explicit Options(CLI::App& app) : app_(app) {}

  // Without a value on the command line the argument is an error if it is required.
  void argument(const std::string& name, std::string& value, const std::string& description,
                bool required = false);
  // One or more of them.
  void arguments(const std::string& name, std::vector<std::string>& values,
                 const std::string& description);
  void text(const std::string& names, std::string& value, const std::string& kind,
            const std::string& description);
  // A file; its name must not be empty.
  void file(const std::string& names, std::string& value, const std::string& description);
  // One of `values`; the page of help shows them, and the default, itself.
  void choice(const std::string& names, std::string& value, const std::vector<std::string>& values,
              const std::string& description);
  void folder(const std::string& names, std::string& value, const std::string& description);
  // Separated by commas.
  void list(const std::string& names, std::vector<std::string>& values, const std::string& kind,
            const std::string& description);
  // A number of 0..most.
  void number(const std::string& names, std::optional<double>& value, double most,
              const std::string& kind, const std::string& description);
  void flag(const std::string& names, bool& value, const std::string& description);

  // Whether the command line names it.
  bool given(const std::string& name) const;

 private:
  CLI::App& app_;
};

// Text to print and be done with: a page of help, the version.
struct Answer {
  std::string text;
};

// The command that `args` name, with its values; one of `commands`. Throws
// Failure(EXIT_USAGE) for a command line that cannot be followed.
std::variant<Command*, Answer> parse_command_line(
    std::span<const std::string> args, const std::vector<std::unique_ptr<Command>>& commands);

}  // namespace cli
