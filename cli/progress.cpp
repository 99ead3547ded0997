#include "cli/progress.hpp"

#include <iostream>

#include <unistd.h>

namespace cli {

Progress::Progress(std::ostream& err, std::size_t steps)
    : err_(err),
      shown_(&err == &std::cerr && ::isatty(STDERR_FILENO) != 0 && steps > 1),
      steps_(steps) {}

// Back to the start of the line, and the line cleared.
Progress::~Progress() {
  if (shown_ && done_ > 0) err_ << "\r\x1B[K" << std::flush;
}

void Progress::step() {
  ++done_;
  if (shown_) err_ << "\rveildoc: " << done_ << " of " << steps_ << std::flush;
}

}  // namespace cli
