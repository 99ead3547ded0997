// Another program, kept within bounds, that reads bytes and writes bytes.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

struct ChildLimits {
  std::chrono::seconds time{120};                // by the clock
  std::chrono::seconds processor{60};            // of the processor
  std::size_t memory = std::size_t{2} << 30U;    // of its addresses
  std::size_t output = std::size_t{256} << 20U;  // on standard output
};

struct ChildResult {
  enum class End { EXITED, TOO_LONG, TOO_MUCH, CRASHED, NOT_FOUND };
  End end = End::EXITED;
  int code = 0;  // where it exited
  std::string out;
  std::string err;  // the first bytes of standard error
};

// Runs a program of the PATH with `input` as its standard input, which never touches
// the disk. It can write no file and leaves no core; it ends when we do. May be called
// from any thread. Throws core::ExternalError where the system has no room for it.
ChildResult run_child(const std::vector<std::string>& command, std::string_view input,
                      const ChildLimits& limits = {});

}  // namespace documents
