// How far long work has come, how fast it goes and how long it will take.
#pragma once

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace cli {

// Writes "veildoc: 1200 lines, 3.1 MB/s, 34%, 0:12 left" over and over into one line of
// a terminal, and takes it away at the end. Silent where standard error is no terminal.
// For one thread at a time.
class RateProgress {
 public:
  enum class Unit { BYTES, FILES };
  // Without a total nothing is said of the time that is left.
  RateProgress(std::ostream& err, Unit unit, std::optional<std::uint64_t> total);
  ~RateProgress() { clear(); }
  RateProgress(const RateProgress&) = delete;
  RateProgress& operator=(const RateProgress&) = delete;

  // What is done by now, of the total; and what of that an earlier run did.
  void show(std::uint64_t done, std::uint64_t lines, std::uint64_t before = 0);
  // Takes the line away, until it is shown again.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  std::ostream& err_;
  bool shown_;
  Unit unit_;
  std::optional<std::uint64_t> total_;
  Clock::time_point start_ = Clock::now();
  Clock::time_point next_ = start_;
  bool is_there_ = false;
};

// The line that is shown; `seconds` have passed.
std::string progress_line(RateProgress::Unit unit, std::optional<std::uint64_t> total,
                          std::uint64_t done, std::uint64_t lines, std::uint64_t before,
                          double seconds);

}  // namespace cli
