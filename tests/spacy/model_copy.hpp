// A copy of one of the small models, to be changed.
#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

#include "tests/spacy/parity.hpp"

namespace test {

class ModelCopy {
 public:
  explicit ModelCopy(const std::string& model) {
    static std::atomic<int> count{0};
    path_ = std::filesystem::temp_directory_path() /
            ("spacy_test_" + std::to_string(::getpid()) + "_" + std::to_string(count++));
    std::filesystem::copy(small_models() / model, path_, std::filesystem::copy_options::recursive);
  }
  ~ModelCopy() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  ModelCopy(const ModelCopy&) = delete;
  ModelCopy& operator=(const ModelCopy&) = delete;

  const std::filesystem::path& path() const { return path_; }

  std::string read(const std::string& file) const {
    std::ifstream in(path_ / file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  void write(const std::string& file, const std::string& bytes) const {
    std::ofstream(path_ / file, std::ios::binary | std::ios::trunc) << bytes;
  }
  // Replaces the first occurrence; false if there is none.
  bool edit(const std::string& file, const std::string& from, const std::string& to) const {
    auto bytes = read(file);
    const auto at = bytes.find(from);
    if (at == bytes.npos) return false;
    write(file, bytes.replace(at, from.size(), to));
    return true;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace test
