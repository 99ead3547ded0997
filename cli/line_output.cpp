#include "cli/line_output.hpp"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <ostream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/failure.hpp"

namespace cli {
namespace {

constexpr std::size_t MOST_BUFFERED = std::size_t{1} << 20U;
constexpr mode_t ORDINARY_MODE = 0666;
constexpr mode_t SECRET_MODE = 0600;

bool is_there(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

[[noreturn]] void fail_to_write(const std::string& path, int error) {
  if (error == EPIPE) throw ClosedPipe();
  throw Failure(EXIT_FAILED, with_errno("cannot write " + path, error));
}

}  // namespace

LineOutput::LineOutput(const std::string& path, std::ostream& out, Privacy privacy, Start start)
    : path_(path), out_(out) {
  if (path_.empty()) return;
  if (is_special_file(path_)) {
    fd_ = ::open(path_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    if (fd_ < 0) fail_to_write(path_, errno);
    return;
  }
  partial_ = path_ + ".partial";
  open(privacy, start);
}

void LineOutput::open(Privacy privacy, Start start) {
  const bool resume = start == Start::RESUME;
  if (resume && !is_there(partial_) && is_there(path_)) {
    finished_ = true;
    return;
  }
  if (start == Start::FRESH) {
    if (is_there(path_)) {
      throw Failure(EXIT_FAILED, path_ + " is there already (--overwrite replaces it)");
    }
    if (is_there(partial_)) {
      throw Failure(EXIT_FAILED, partial_ +
                                     " is what an interrupted run left (--resume goes on with "
                                     "it, --overwrite begins anew)");
    }
  }
  fd_ = ::open(partial_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW,
               privacy == Privacy::SECRET ? SECRET_MODE : ORDINARY_MODE);
  if (fd_ < 0) fail_to_write(partial_, errno);
  if (::flock(fd_, LOCK_EX | LOCK_NB) != 0) {
    throw Failure(EXIT_FAILED, partial_ + ": another veildoc is working on it");
  }
  if (!resume) go_on_at(0);
}

LineOutput::~LineOutput() {
  if (fd_ < 0) return;
  try {
    flush();
  } catch (const std::exception&) {
    // Told already, by the flush that failed first.
  }
  struct stat status {};
  const bool nothing = !partial_.empty() && ::fstat(fd_, &status) == 0 && status.st_size == 0;
  if (nothing && !in_place_) ::unlink(partial_.c_str());
  ::close(fd_);
}

void LineOutput::go_on_at(std::uint64_t size) {
  const auto at = static_cast<off_t>(size);
  if (::ftruncate(fd_, at) != 0 || ::lseek(fd_, at, SEEK_SET) != at) {
    fail_to_write(partial_, errno);
  }
}

void LineOutput::write(std::string_view bytes) {
  if (fd_ < 0) {
    errno = 0;
    out_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out_) fail_to_write("standard output", errno == 0 ? EIO : errno);
    return;
  }
  buffer_ += bytes;
  if (buffer_.size() >= MOST_BUFFERED) flush();
}

void LineOutput::flush() {
  if (fd_ < 0) return write_all(out_, "");
  std::string_view rest = buffer_;
  while (!rest.empty()) {
    const auto put = ::write(fd_, rest.data(), rest.size());
    if (put >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(put));
    } else if (errno != EINTR) {
      fail_to_write(partial_.empty() ? path_ : partial_, errno);
    }
  }
  buffer_.clear();
}

void LineOutput::finish() {
  flush();
  if (partial_.empty()) return;
  if (::fsync(fd_) != 0) fail_to_write(partial_, errno);
  if (std::rename(partial_.c_str(), path_.c_str()) != 0) fail_to_write(path_, errno);
  in_place_ = true;
}

}  // namespace cli
