// Clauses end to end. A file of tests/golden holds a clause with the hits of an
// analyzer marked as {TYPE|surface}, a line "----", and the masked text.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "core/anonymization_core.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

std::string read(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

TEST(Golden, ClausesAreMaskedAsTheyRead) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(VEILDOC_GOLDEN_DIR)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  ASSERT_FALSE(files.empty());
  const std::string separator = "----\n";
  for (const auto& file : files) {
    SCOPED_TRACE(file.filename().string());
    const auto content = read(file);
    const auto at = content.find(separator);
    ASSERT_NE(at, std::string::npos);
    const auto doc = test::parse(content.substr(0, at));
    const auto masked =
        anonymize_with_numbered_placeholders(doc.text, test::ScriptedAnalyzer(doc.results), "auto");
    EXPECT_EQ(test::u8(masked), content.substr(at + separator.size()));
  }
}

}  // namespace
}  // namespace core::anonymization
