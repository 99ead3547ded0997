// The command `veildoc anonymize`.
#pragma once

#include <iosfwd>

#include "cli/options.hpp"
#include "cli/run.hpp"

namespace cli {

// Where a command reads and writes.
struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
};

// Throws Failure and ClosedPipe.
void anonymize(const AnonymizeOptions& options, const Streams& streams,
               const AnalyzerFactory& make_analyzer);

}  // namespace cli
