#include "cli/files.hpp"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <istream>
#include <ostream>
#include <random>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/failure.hpp"

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t BLOCK = std::size_t{1} << 20U;
constexpr int NAMES_TO_TRY = 100;
constexpr int DEEPEST_LINK = 40;  // what Linux follows
constexpr mode_t PERMISSION_BITS = 0777;

// A file descriptor that is closed at the end of its scope.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return fd_; }
  bool open() const { return fd_ >= 0; }
  // False if closing reports a write that failed late.
  bool close() {
    const bool good = fd_ < 0 || ::close(fd_) == 0;
    fd_ = -1;
    return good;
  }

 private:
  int fd_;
};

std::string read_stream(std::istream& in) {
  std::string bytes;
  std::string block(BLOCK, '\0');
  while (in) {
    in.read(block.data(), static_cast<std::streamsize>(block.size()));
    bytes.append(block, 0, static_cast<std::size_t>(in.gcount()));
  }
  if (in.bad()) throw Failure(EXIT_INPUT, "cannot read standard input");
  return bytes;
}

std::string read_file(const std::string& path) {
  const auto fail = [&](int error) {
    throw Failure(EXIT_INPUT, with_errno("cannot read " + path, error));
  };
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.open()) fail(errno);
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) fail(errno);
  if (S_ISDIR(status.st_mode)) fail(EISDIR);

  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(status.st_size) + 1);
  std::string block(BLOCK, '\0');
  while (true) {
    const auto got = ::read(file.get(), block.data(), block.size());
    if (got == 0) return bytes;
    if (got > 0) {
      bytes.append(block, 0, static_cast<std::size_t>(got));
    } else if (errno != EINTR) {
      fail(errno);
    }
  }
}

// Returns 0 or an errno value.
int write_bytes(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto put = ::write(fd, bytes.data(), bytes.size());
    if (put >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(put));
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

// Creates a file of its own name in `folder`. Returns its descriptor, or -1 with errno.
int create_temporary(const fs::path& folder, mode_t mode, std::string& name) {
  std::random_device random;
  for (int i = 0; i < NAMES_TO_TRY; ++i) {
    name = (folder / (".veildoc-" + std::to_string(random()) + ".tmp")).string();
    const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
    if (fd >= 0 || errno != EEXIST) return fd;
  }
  return -1;
}

// Fills `fd` and brings it to the disk. Returns 0 or an errno value.
int fill(Descriptor& file, std::string_view bytes, const struct stat* replaced) {
  if (replaced != nullptr && ::fchmod(file.get(), replaced->st_mode & PERMISSION_BITS) != 0) {
    return errno;
  }
  if (const int error = write_bytes(file.get(), bytes); error != 0) return error;
  if (::fsync(file.get()) != 0) return errno;
  return file.close() ? 0 : errno;
}

// The file that a path leads to, which need not exist. The links of open
// descriptors (/dev/stdout, /dev/fd/3) are not followed: the file behind one is
// somebody's open file, not a name to put another file under.
std::string behind_links(const std::string& path) {
  fs::path target = path;
  std::error_code error;
  for (int i = 0; i < DEEPEST_LINK && fs::is_symlink(target, error); ++i) {
    if (fs::weakly_canonical(target.parent_path(), error).string().starts_with("/proc/")) break;
    const auto next = fs::read_symlink(target, error);
    if (error) break;
    target = target.parent_path() / next;
  }
  return target.string();
}

[[noreturn]] void cannot_write(const std::string& path, int error) {
  throw Failure(EXIT_FAILED, with_errno("cannot write " + path, error));
}

}  // namespace

bool same_file(const std::string& a, const std::string& b) {
  std::error_code error;
  if (fs::equivalent(a, b, error)) return true;
  const auto settled = [&](const std::string& path) {
    return fs::weakly_canonical(fs::absolute(behind_links(path), error), error);
  };
  return settled(a) == settled(b);
}

bool is_special_file(const std::string& path) {
  std::error_code error;
  const auto target = behind_links(path);
  const auto status = fs::status(target, error);
  return fs::exists(status) && (!fs::is_regular_file(status) || fs::is_symlink(target, error));
}

std::string read_all(const std::string& path, std::istream& in) {
  return path == "-" ? read_stream(in) : read_file(path);
}

void write_all(std::ostream& out, std::string_view bytes) {
  errno = 0;
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.flush();
  if (out) return;
  if (errno == EPIPE) throw ClosedPipe();
  throw Failure(EXIT_FAILED, with_errno("cannot write standard output", errno == 0 ? EIO : errno));
}

PendingFile::PendingFile(const std::string& path, std::string_view bytes, Privacy privacy)
    : path_(path), target_(behind_links(path)) {
  struct stat status {};
  const bool exists = ::stat(target_.c_str(), &status) == 0;
  if (!exists && errno != ENOENT) cannot_write(path_, errno);
  if (exists && S_ISDIR(status.st_mode)) cannot_write(path_, EISDIR);
  if (is_special_file(path_)) {
    direct_ = bytes;
    return;
  }

  const auto folder = fs::path(target_).parent_path();
  const bool secret = privacy == Privacy::SECRET;
  Descriptor file(
      create_temporary(folder.empty() ? "." : folder, secret ? 0600 : 0666, temporary_));
  if (!file.open()) {
    temporary_.clear();
    cannot_write(path_, errno);
  }
  if (const int error = fill(file, bytes, exists && !secret ? &status : nullptr); error != 0) {
    ::unlink(temporary_.c_str());
    cannot_write(path_, error);
  }
}

PendingFile::~PendingFile() {
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void PendingFile::commit() {
  if (temporary_.empty()) {
    Descriptor file(::open(target_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
    if (!file.open()) cannot_write(path_, errno);
    const int error = write_bytes(file.get(), direct_);
    if (error == EPIPE) throw ClosedPipe();
    if (error != 0) cannot_write(path_, error);
    return;
  }
  if (::rename(temporary_.c_str(), target_.c_str()) != 0) cannot_write(path_, errno);
  temporary_.clear();
}

}  // namespace cli
