#include "tests/cli/support.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>

#include <sys/stat.h>

#include "tests/support/notation.hpp"

namespace test {
namespace {

class FindingAnalyzer : public core::anonymization::Analyzer {
 public:
  explicit FindingAnalyzer(const Surfaces& surfaces) : surfaces_(surfaces) {}

  std::vector<core::anonymization::RecognizerResult> analyze(std::u32string_view text,
                                                             std::string_view) const override {
    std::vector<core::anonymization::RecognizerResult> results;
    for (const auto& [type, surface] : surfaces_) {
      const auto wanted = u32(surface);
      for (auto at = text.find(wanted); at != std::u32string_view::npos;
           at = text.find(wanted, at + wanted.size())) {
        const auto start = static_cast<core::anonymization::Offset>(at);
        const auto length = static_cast<core::anonymization::Offset>(wanted.size());
        results.push_back({type, start, start + length, 0.9});
      }
    }
    return results;
  }

 private:
  Surfaces surfaces_;
};

}  // namespace

cli::AnalyzerFactory finding(const Surfaces& surfaces) {
  return [surfaces](const cli::AnalyzerOptions&) {
    return std::make_unique<FindingAnalyzer>(surfaces);
  };
}

Ran run(const std::vector<std::string>& args, const std::string& in,
        const cli::AnalyzerFactory& analyzer) {
  std::istringstream input(in);
  std::ostringstream out;
  std::ostringstream err;
  const int code = cli::run(args, input, out, err, analyzer);
  return {code, out.str(), err.str()};
}

Ran run(const std::vector<std::string>& args, const std::string& in) {
  std::istringstream input(in);
  std::ostringstream out;
  std::ostringstream err;
  const int code = cli::run(args, input, out, err);
  return {code, out.str(), err.str()};
}

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) out.push_back(line);
  return out;
}

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

Folder::Folder() {
  auto name = (std::filesystem::temp_directory_path() / "veildoc-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string Folder::write(const std::string& name, const std::string& bytes) const {
  std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
  std::ofstream(path(name), std::ios::binary) << bytes;
  return path(name);
}

std::string Folder::read(const std::string& name) const { return read_file(path(name)); }

std::vector<std::string> Folder::names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path_)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string Folder::mode(const std::string& name) const {
  struct stat status {};
  if (::stat(path(name).c_str(), &status) != 0) return "none";
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "%04o", static_cast<unsigned>(status.st_mode & 07777U));
  return text.data();
}

}  // namespace test
