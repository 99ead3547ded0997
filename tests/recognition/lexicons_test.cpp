#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "core/text/utf8.hpp"

namespace {

// Every list: UTF-8, sorted by its first column, each word once, no stray blanks.
TEST(Lexicons, AreSortedAndUnique) {
  int lists = 0;
  for (const auto& file : std::filesystem::directory_iterator(VEILDOC_DATA_DIR)) {
    if (file.path().extension() != ".txt") continue;
    SCOPED_TRACE(file.path().filename().string());
    ++lists;
    std::ifstream in(file.path(), std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), {});
    EXPECT_NO_THROW(core::text::decode_utf8(bytes));
    EXPECT_TRUE(bytes.starts_with("# ")) << "no header";
    std::string last;
    std::istringstream content(bytes);
    for (std::string line; std::getline(content, line);) {
      if (line.empty() || line.front() == '#') continue;
      const std::string word = line.substr(0, line.find('\t'));
      EXPECT_LT(last, word);
      EXPECT_FALSE(word.empty() || word.front() == ' ' || word.back() == ' ') << line;
      last = word;
    }
  }
  EXPECT_GE(lists, 14);
}

}  // namespace
