// `veildoc batch` on JSON Lines.
#pragma once

#include <cstddef>
#include <string>

#include "cli/command.hpp"
#include "cli/line_output.hpp"
#include "cli/masking.hpp"

namespace cli {

struct LinesOptions {
  std::string input = "-";
  std::string output;  // empty: standard output
  LineOutput::Start start = LineOutput::Start::FRESH;
  std::size_t jobs = 1;
  bool unordered = false;
  bool mapping = true;
  std::size_t longest = 0;  // of a line, in bytes
};

// Throws Failure, with what became of all, if a line was not masked.
void batch_lines(const LinesOptions& options, const MaskingOptions& masking,
                 const Context& context);

}  // namespace cli
