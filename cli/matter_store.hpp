// The file of --matter.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cli/files.hpp"
#include "cli/passphrase.hpp"
#include "core/matter/matter.hpp"

namespace cli {

// A lock of one process on a file, by a file beside it that goes away with the lock.
class FileLock {
 public:
  // Throws Failure(EXIT_FAILED) if another process has it, or it cannot be had.
  explicit FileLock(const std::string& path);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  std::string lock_;
  int fd_ = -1;
};

class MatterStore {
 public:
  enum class Use {
    WRITE,  // locked until the store goes
    LOOK,
  };
  // Reads the file; a matter without one begins empty. Asks for the passphrase of a
  // sealed one, or of a new one that is to be sealed. Throws Failure.
  MatterStore(const std::string& path, bool encrypt, const std::string& passphrase_file, Use use);

  core::matter::Matter& matter() { return matter_; }
  // Of a sealed matter.
  const std::optional<Passphrase>& passphrase() const { return passphrase_; }
  // The file as it is to be, not yet in place.
  std::unique_ptr<PendingFile> write() const;

 private:
  std::string path_;
  std::optional<FileLock> lock_;
  std::optional<Passphrase> passphrase_;
  core::matter::Matter matter_;
};

}  // namespace cli
