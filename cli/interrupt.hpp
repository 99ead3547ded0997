// Ctrl-C, and the signal by which a machine is shut down, for commands that end
// with what is finished in place.
#pragma once

#include <array>
#include <csignal>

namespace cli {

// While it lives, the first SIGINT or SIGTERM is only noted, and a second one ends
// the process. One at a time.
class InterruptWatch {
 public:
  InterruptWatch();
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  // From any thread.
  bool interrupted() const;

 private:
  std::array<struct sigaction, 2> old_{};
};

}  // namespace cli
