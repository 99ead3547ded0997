// The command line of veildoc.
#pragma once

#include <span>
#include <string>
#include <variant>

namespace cli {

struct AnonymizeOptions {
  std::string input = "-";  // "-" is standard input
  bool input_named = false;
  std::string language = "auto";
  std::string profile = "contract_default";
  std::string labels = "auto";
  std::string aliases = "one";
  std::string output;       // empty: standard output
  std::string mapping;      // empty: none is written
  std::string recognizers;  // a file; empty: none
  bool json = false;
};

// Text to print and be done with: a help page, the version.
struct Answer {
  std::string text;
};

// Throws Failure(EXIT_USAGE) for a command line that cannot be followed.
std::variant<AnonymizeOptions, Answer> parse_options(std::span<const std::string> args);

}  // namespace cli
