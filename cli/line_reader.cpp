#include "cli/line_reader.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iostream>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/failure.hpp"
#include "cli/masking.hpp"

namespace cli {
namespace {

constexpr std::size_t READ_BLOCK = std::size_t{1} << 20U;
constexpr int STOP_ASKED_MS = 200;

}  // namespace

LineReader::LineReader(const std::string& path, std::istream& in, std::size_t longest,
                       std::function<bool()> stop)
    : name_(input_name(path)),
      in_(in),
      longest_(longest),
      stop_(std::move(stop)),
      block_(READ_BLOCK, '\0') {
  if (path != "-") {
    fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    own_ = true;
    if (fd_ < 0) throw Failure(EXIT_INPUT, with_errno("cannot read " + name_, errno));
  } else if (&in == &std::cin) {
    fd_ = STDIN_FILENO;
  }
  struct stat status {};
  if (fd_ >= 0 && ::fstat(fd_, &status) == 0 && S_ISREG(status.st_mode)) {
    size_ = static_cast<std::uint64_t>(status.st_size);
  }
}

LineReader::~LineReader() {
  if (own_) ::close(fd_);
}

// False when told to stop.
bool LineReader::wait() const {
  while (true) {
    if (stop_ && stop_()) return false;
    if (size_) return true;
    pollfd waiting{fd_, POLLIN, 0};
    if (::poll(&waiting, 1, STOP_ASKED_MS) > 0) return true;
  }
}

// False at the end.
bool LineReader::fill() {
  at_ = 0;
  end_ = 0;
  if (fd_ < 0) {
    if (stop_ && stop_()) {
      stopped_ = true;
      return false;
    }
    in_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
    end_ = static_cast<std::size_t>(in_.gcount());
    if (in_.bad()) throw Failure(EXIT_INPUT, "cannot read " + name_);
    return end_ > 0;
  }
  while (true) {
    if (!wait()) {
      stopped_ = true;
      return false;
    }
    const auto got = ::read(fd_, block_.data(), block_.size());
    if (got >= 0) {
      end_ = static_cast<std::size_t>(got);
      return end_ > 0;
    }
    if (errno != EINTR) throw Failure(EXIT_INPUT, with_errno("cannot read " + name_, errno));
  }
}

bool LineReader::next(InputLine& line) {
  line.bytes.clear();
  line.too_long = false;
  line.ended = false;
  bool any = false;
  while (!line.ended) {
    if (at_ == end_ && !fill()) break;
    any = true;
    const auto* begin = block_.data() + at_;
    const auto* found = static_cast<const char*>(std::memchr(begin, '\n', end_ - at_));
    const auto length = found == nullptr ? end_ - at_ : static_cast<std::size_t>(found - begin);
    line.too_long = line.too_long || line.bytes.size() + length > longest_;
    if (line.too_long) {
      line.bytes = std::string();
    } else {
      line.bytes.append(begin, length);
    }
    line.ended = found != nullptr;
    const auto taken = length + (line.ended ? 1 : 0);
    at_ += taken;
    offset_ += taken;
  }
  // Half a line is none, unless the input ends with it.
  if (!any || stopped_) return false;
  constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
  line.number = ++number_;
  line.behind = offset_;
  if (line.number == 1 && line.bytes.starts_with(BYTE_ORDER_MARK)) {
    line.bytes.erase(0, BYTE_ORDER_MARK.size());
  }
  return true;
}

}  // namespace cli
