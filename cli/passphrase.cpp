#include "cli/passphrase.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <iostream>

#include <fcntl.h>
#include <string.h>  // NOLINT(modernize-deprecated-headers): explicit_bzero
#include <termios.h>
#include <unistd.h>

#include "cli/failure.hpp"
#include "cli/files.hpp"

namespace cli {
namespace {

constexpr std::size_t LONGEST_PASSPHRASE = 1024;
constexpr std::array SIGNALS_THAT_END = {SIGINT, SIGTERM, SIGQUIT, SIGHUP, SIGTSTP};

volatile std::sig_atomic_t passphrase_signal = 0;

void note_signal(int number) { passphrase_signal = number; }

// Signals that end the program only interrupt it, until the terminal shows again
// what is typed.
class HeldSignals {
 public:
  HeldSignals() {
    passphrase_signal = 0;
    struct sigaction noting {};
    noting.sa_handler = note_signal;  // without SA_RESTART: read() ends
    for (std::size_t i = 0; i < old_.size(); ++i) {
      ::sigaction(SIGNALS_THAT_END[i], &noting, &old_[i]);
    }
  }
  ~HeldSignals() {
    for (std::size_t i = 0; i < old_.size(); ++i) {
      ::sigaction(SIGNALS_THAT_END[i], &old_[i], nullptr);
    }
    if (passphrase_signal != 0) ::raise(passphrase_signal);
  }
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;

 private:
  std::array<struct sigaction, SIGNALS_THAT_END.size()> old_{};
};

// The terminal of the process, whatever its streams are.
class Terminal {
 public:
  Terminal() : fd_(::open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (fd_ < 0) {
      throw Failure(EXIT_USAGE,
                    "no terminal to ask for the passphrase at: --passphrase-file names a file");
    }
  }
  ~Terminal() { ::close(fd_); }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  // A line, without its end, that is not shown.
  std::string ask(std::string_view prompt) {
    const HeldSignals held;
    struct termios shown {};
    if (::tcgetattr(fd_, &shown) != 0) throw Failure(EXIT_USAGE, "the terminal does not answer");
    auto hidden = shown;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    hidden.c_lflag |= ICANON | ECHONL;
    write(prompt);
    ::tcsetattr(fd_, TCSAFLUSH, &hidden);
    auto line = read_line();
    ::tcsetattr(fd_, TCSAFLUSH, &shown);
    if (passphrase_signal != 0) write("\n");
    return line;
  }

 private:
  void write(std::string_view text) const {
    while (!text.empty()) {
      const auto put = ::write(fd_, text.data(), text.size());
      if (put <= 0) return;
      text.remove_prefix(static_cast<std::size_t>(put));
    }
  }

  std::string read_line() const {
    std::string line;
    line.reserve(LONGEST_PASSPHRASE + 1);  // no copies are left behind as it grows
    char c = 0;
    while (passphrase_signal == 0 && ::read(fd_, &c, 1) == 1 && c != '\n') {
      if (line.size() <= LONGEST_PASSPHRASE) line += c;
    }
    return line;
  }

  int fd_;
};

void check_passphrase(std::string_view text, const std::string& from) {
  if (text.empty()) throw Failure(EXIT_INPUT, from + ": no passphrase");
  if (text.size() > LONGEST_PASSPHRASE) {
    throw Failure(EXIT_INPUT, from + ": too long for a passphrase");
  }
}

Passphrase from_terminal(Asked asked) {
  Terminal terminal;
  Passphrase first(terminal.ask("veildoc: passphrase of the mapping: "));
  check_passphrase(first.text(), "the terminal");
  if (asked == Asked::ONCE) return first;
  const Passphrase second(terminal.ask("veildoc: the same once more: "));
  if (first.text() != second.text()) throw Failure(EXIT_INPUT, "the two passphrases differ");
  return first;
}

}  // namespace

Passphrase::~Passphrase() { ::explicit_bzero(text_.data(), text_.size()); }

Passphrase read_passphrase(const std::string& file, Asked asked) {
  if (file.empty()) return from_terminal(asked);
  const Passphrase whole(read_all(file, std::cin));
  auto line = whole.text();
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (line.find('\n') != std::string_view::npos) {
    throw Failure(EXIT_INPUT, file + ": a passphrase is one line");
  }
  check_passphrase(line, file);
  return Passphrase(std::string(line));
}

}  // namespace cli
