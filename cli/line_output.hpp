// The output of a long run, which can be gone on with after an interrupt.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

#include "cli/files.hpp"

namespace cli {

// Writes to FILE.partial, which becomes FILE when all is done; to a special file or
// `out` as it stands. Not to be used by two threads at once. All calls throw
// Failure(EXIT_FAILED), and ClosedPipe where the reader is gone.
class LineOutput {
 public:
  enum class Start {
    FRESH,    // refuses a FILE and a FILE.partial that are there
    REPLACE,  // takes no notice of them
    RESUME,   // goes on behind what is in FILE.partial
  };
  // `path` may be empty: `out`.
  LineOutput(const std::string& path, std::ostream& out, Privacy privacy, Start start);
  ~LineOutput();
  LineOutput(const LineOutput&) = delete;
  LineOutput& operator=(const LineOutput&) = delete;

  // Whether an earlier run finished FILE, so that nothing is left to resume.
  bool is_finished() const { return finished_; }
  // FILE.partial; empty if there is none.
  const std::string& partial() const { return partial_; }

  // Cuts FILE.partial behind `size` bytes and goes on there.
  void go_on_at(std::uint64_t size);
  void write(std::string_view bytes);
  void flush();
  // Puts FILE in place.
  void finish();

 private:
  void open(Privacy privacy, Start start);

  std::string path_;
  std::string partial_;
  std::ostream& out_;
  int fd_ = -1;  // -1: the stream
  std::string buffer_;
  bool finished_ = false;
  bool in_place_ = false;
};

}  // namespace cli
