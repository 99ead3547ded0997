// How far long work has come, for somebody who waits at a terminal.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

namespace cli {

// Writes "veildoc: 12 of 36" over and over into one line of a terminal, and
// takes it away at the end. Silent where standard error is no terminal.
class Progress {
 public:
  Progress(std::ostream& err, std::size_t steps);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void step();

 private:
  std::ostream& err_;
  bool shown_;
  std::size_t steps_;
  std::size_t done_ = 0;
};

}  // namespace cli
