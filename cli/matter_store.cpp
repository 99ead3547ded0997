#include "cli/matter_store.hpp"

#include <cerrno>
#include <filesystem>
#include <iostream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/failure.hpp"
#include "core/matter/matter_file.hpp"
#include "core/restore/sealed_mapping.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

namespace restore = core::restore;

constexpr mode_t OWN_FILE = 0600;

// Whether the open file is still what its name leads to.
bool is_in_place(int fd, const std::string& path) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(fd, &opened) == 0 && ::stat(path.c_str(), &named) == 0 &&
         opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

bool exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

}  // namespace

FileLock::FileLock(const std::string& path) : lock_(path + ".lock") {
  while (true) {
    fd_ = ::open(lock_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, OWN_FILE);
    if (fd_ < 0) throw Failure(EXIT_FAILED, with_errno("cannot lock " + path, errno));
    if (::flock(fd_, LOCK_EX | LOCK_NB) != 0) {
      const int error = errno;
      ::close(fd_);
      throw Failure(EXIT_FAILED, error == EWOULDBLOCK ? path + ": another veildoc is working on it"
                                                      : with_errno("cannot lock " + path, error));
    }
    // Who had it before took the file away between our opening and locking it.
    if (is_in_place(fd_, lock_)) return;
    ::close(fd_);
  }
}

FileLock::~FileLock() {
  ::unlink(lock_.c_str());
  ::close(fd_);
}

MatterStore::MatterStore(const std::string& path, bool encrypt, const std::string& passphrase_file,
                         Use use)
    : path_(path) {
  if (use == Use::WRITE) lock_.emplace(path);
  if (!exists(path)) {
    if (encrypt) passphrase_ = read_passphrase(passphrase_file, Asked::TWICE);
    return;
  }
  auto bytes = read_all(path, std::cin);
  try {
    if (restore::is_sealed_mapping(bytes)) {
      passphrase_ = read_passphrase(passphrase_file, Asked::ONCE);
      bytes = restore::open_sealed_mapping(bytes, passphrase_->text());
    } else if (encrypt) {
      passphrase_ = read_passphrase(passphrase_file, Asked::TWICE);
    }
    matter_ = core::matter::read_matter(bytes);
  } catch (const core::text::DecodeError&) {
    throw Failure(EXIT_INPUT, path + ": damaged: not UTF-8");
  } catch (const restore::MappingError& e) {
    throw Failure(EXIT_INPUT, path + ": " + e.what());
  }
}

std::unique_ptr<PendingFile> MatterStore::write() const {
  auto bytes = core::matter::write_matter(matter_);
  if (passphrase_) bytes = restore::seal_mapping(bytes, passphrase_->text());
  return std::make_unique<PendingFile>(path_, bytes, Privacy::SECRET);
}

}  // namespace cli
