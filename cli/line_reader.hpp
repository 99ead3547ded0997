// Lines of an input of any size, read in bounded memory.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

namespace cli {

struct InputLine {
  std::uint64_t number = 0;  // from 1
  std::string bytes;         // without its end
  bool too_long = false;     // then without its bytes
  bool ended = true;         // by a line feed, which the last one may lack
  std::uint64_t behind = 0;  // offset in bytes of what follows it
};

class LineReader {
 public:
  // "-" is `in`. No more than `longest` bytes of a line are kept. `stop` is asked now and
  // then while nothing comes. Throws Failure(EXIT_INPUT).
  LineReader(const std::string& path, std::istream& in, std::size_t longest,
             std::function<bool()> stop = {});
  ~LineReader();
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  // False at the end, or when told to stop. Throws Failure(EXIT_INPUT).
  bool next(InputLine& line);

  // In bytes, of a regular file.
  std::optional<std::uint64_t> size() const { return size_; }

 private:
  bool fill();
  bool wait() const;

  std::string name_;
  std::istream& in_;
  int fd_ = -1;  // -1: the stream
  bool own_ = false;
  std::size_t longest_;
  std::function<bool()> stop_;
  std::optional<std::uint64_t> size_;
  std::string block_;
  std::size_t at_ = 0;   // in the block
  std::size_t end_ = 0;  // of what was read into it
  std::uint64_t number_ = 0;
  std::uint64_t offset_ = 0;
  bool stopped_ = false;
};

}  // namespace cli
