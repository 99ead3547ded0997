#include "cli/interrupt.hpp"

#include <atomic>

namespace cli {
namespace {

constexpr std::array WATCHED_SIGNALS = {SIGINT, SIGTERM};

std::atomic<bool> interrupt_noted = false;
static_assert(std::atomic<bool>::is_always_lock_free);  // so that a handler may set it

void note_interrupt(int) { interrupt_noted = true; }

}  // namespace

InterruptWatch::InterruptWatch() {
  interrupt_noted = false;
  struct sigaction noting {};
  noting.sa_handler = note_interrupt;
  // Without SA_RESTART, so that reading ends; the second signal does what it always does.
  noting.sa_flags = static_cast<int>(SA_RESETHAND);
  for (std::size_t i = 0; i < old_.size(); ++i) {
    ::sigaction(WATCHED_SIGNALS[i], nullptr, &old_[i]);
    // Who is told to ignore it (nohup, a background job) goes on to.
    if (old_[i].sa_handler != SIG_IGN) ::sigaction(WATCHED_SIGNALS[i], &noting, nullptr);
  }
}

InterruptWatch::~InterruptWatch() {
  for (std::size_t i = 0; i < old_.size(); ++i) {
    ::sigaction(WATCHED_SIGNALS[i], &old_[i], nullptr);
  }
}

bool InterruptWatch::interrupted() const { return interrupt_noted; }

}  // namespace cli
