// A file of a model, in memory as far as it is read.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace core::nlp::spacy {

// Maps the file for reading, so that tables of which a text touches a few rows
// cost no memory, and processes share what they read. The file must not be
// changed in place while it is mapped; to exchange a model, put another file
// under its name.
class MappedFile {
 public:
  // Throws ModelError for a file that cannot be read, and for what is no file.
  explicit MappedFile(const std::filesystem::path& path);
  // Bytes that are in memory anyway, and stay there.
  MappedFile(std::string name, std::string_view bytes);
  ~MappedFile();
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  std::string_view bytes() const { return bytes_; }
  // For messages.
  const std::string& name() const { return name_; }

 private:
  std::string name_;
  std::string_view bytes_;
  bool is_mapped_ = false;
};

// The whole of a small text file. Throws ModelError, also for one that is larger
// than any such file is (8 MiB).
std::string read_small_file(const std::filesystem::path& path);

}  // namespace core::nlp::spacy
