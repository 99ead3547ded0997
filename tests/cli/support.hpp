// What the tests of the command share: a call, files to call it on, and an
// analyzer that knows a few surfaces.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "cli/run.hpp"

namespace test {

struct Ran {
  int code = 0;
  std::string out;
  std::string err;
};

// Finds every occurrence of its surfaces.
using Surfaces = std::vector<std::pair<std::string, std::string>>;  // entity type, surface
cli::AnalyzerFactory finding(const Surfaces& surfaces);

Ran run(const std::vector<std::string>& args, const std::string& in,
        const cli::AnalyzerFactory& analyzer);
// With the analyzer that the command has by itself.
Ran run(const std::vector<std::string>& args, const std::string& in = "");

// A text by its lines.
std::vector<std::string> lines(const std::string& text);

// The bytes of a file; none if there is no such file.
std::string read_file(const std::string& path);

// A folder that goes away with its owner.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string path(const std::string& name) const { return (path_ / name).string(); }
  std::string write(const std::string& name, const std::string& bytes) const;
  std::string read(const std::string& name) const;
  // Names in the folder, sorted.
  std::vector<std::string> names() const;
  // The permission bits of a file, as in "0600".
  std::string mode(const std::string& name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace test
