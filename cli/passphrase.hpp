// Passphrases: asked for at the terminal, or in a file. Never an argument, which
// others on the machine can see.
#pragma once

#include <string>
#include <string_view>

namespace cli {

// Does not stay in memory.
class Passphrase {
 public:
  explicit Passphrase(std::string text) : text_(std::move(text)) {}
  ~Passphrase();
  Passphrase(Passphrase&& other) noexcept : text_(std::move(other.text_)) {}
  Passphrase(const Passphrase&) = delete;
  Passphrase& operator=(const Passphrase&) = delete;
  Passphrase& operator=(Passphrase&& other) noexcept {
    text_.swap(other.text_);
    return *this;
  }

  std::string_view text() const { return text_; }

 private:
  std::string text_;
};

enum class Asked {
  ONCE,
  TWICE,  // a new one: what was mistyped would be lost
};

// The line in `file`; if that is empty, what is typed at the terminal, which does
// not show it. Throws Failure(EXIT_INPUT) for what is no passphrase, and
// Failure(EXIT_USAGE) where there is no terminal.
Passphrase read_passphrase(const std::string& file, Asked asked);

}  // namespace cli
