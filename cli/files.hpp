// Files and streams of the command: read whole, replaced in one step.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace cli {

// Whether two paths name one file; either may not exist yet.
bool same_file(const std::string& a, const std::string& b);

// Whether the path names something that is there and is no regular file: a
// folder, a device, a pipe, an open descriptor such as /dev/stdout.
bool is_special_file(const std::string& path);

// The bytes of a file, or of `in` where `path` is "-".
// Throws Failure(EXIT_INPUT) if they cannot be read.
std::string read_all(const std::string& path, std::istream& in);

// Writes and flushes. Throws ClosedPipe if the reader is gone, Failure(EXIT_FAILED)
// if it fails otherwise.
void write_all(std::ostream& out, std::string_view bytes);

// Who may read a file that is written.
enum class Privacy {
  ORDINARY,  // as the umask says; a file that is replaced keeps its mode
  SECRET,    // mode 0600
};

// A file that appears whole or not at all: the bytes go to a temporary file of
// the same folder, and commit() puts it in place. Without commit() the
// temporary file is removed. A symbolic link is followed. A special file is
// written by commit() as it stands.
//
// Constructor and commit() throw Failure(EXIT_FAILED).
class PendingFile {
 public:
  PendingFile(const std::string& path, std::string_view bytes, Privacy privacy);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  void commit();

 private:
  std::string path_;       // as the user wrote it, for messages
  std::string target_;     // behind symbolic links
  std::string temporary_;  // empty: none is there
  std::string direct_;     // bytes for what is no regular file
};

}  // namespace cli
