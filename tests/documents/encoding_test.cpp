// Plain text: encodings are told from the bytes and kept.
#include <gtest/gtest.h>

#include "core/anonymization_core.hpp"
#include "tests/documents/support.hpp"

namespace {

using namespace std::string_literals;

std::string masked_text(const std::string& bytes) {
  const auto document = documents::read_document(bytes);
  return document->write(
      core::anonymization::anonymize_document(document->text(), test::finding_analyzer(), "zh"));
}

TEST(TextEncoding, IsKept) {
  struct Case {
    const char* why;
    std::string in;
    std::string out;
  };
  const Case cases[] = {
      {"UTF-8", "签字：张伟民\r\n", "签字：[NAME1]\r\n"},
      {"UTF-8 with mark", "\xEF\xBB\xBF张伟民\n\r", "\xEF\xBB\xBF[NAME1]\n\r"},
      {"UTF-16 LE", "\xFF\xFE\x20\x5F\x1F\x4F\x11\x6C\x0D\0\x0A\0"s,
       "\xFF\xFE[\0N\0A\0M\0E\0\x31\0]\0\x0D\0\x0A\0"s},
      {"UTF-16 BE", "\xFE\xFF\x5F\x20\x4F\x1F\x6C\x11"s, "\xFE\xFF\0[\0N\0A\0M\0E\0\x31\0]"s},
      {"GB18030", "\xC7\xA9\xD7\xD6\xA3\xBA\xD5\xC5\xCE\xB0\xC3\xF1\r\n",
       "\xC7\xA9\xD7\xD6\xA3\xBA[NAME1]\r\n"},
      {"characters of joiners", "\uE000¶\uE001张伟民\uE001", "\uE000¶\uE001[NAME1]\uE001"},
      {"and those that would stand for them", "\uE000\U000F0000\U000F0001张伟民",
       "\uE000\U000F0000\U000F0001[NAME1]"},
      {"Markdown", "# 张伟民\n\n- **lin@example.com**\n", "# [NAME1]\n\n- **[EMAIL1]**\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(masked_text(c.in), c.out);
  }
}

TEST(TextEncoding, IsRefusedWhereItIsNone) {
  const std::pair<std::string, const char*> cases[] = {
      {"甲方\xFF", "not valid UTF-8 at byte 6"},
      // A UTF-8 file that was cut; the bytes would be GB18030 as well.
      {"ab\xE4\xB8", "not valid UTF-8 at byte 2"},
      // Latin-1: legal in GB18030, but no Chinese.
      {"Soci\xE9t\xE9 g\xE9n\xE9rale", "not valid UTF-8 at byte 4"},
      {"\xFF\xFE\x41"s, "not valid UTF-16"},
      {"\xFF\xFE\0\0"s, "NUL at character 0"},
      {"a\0b"s, "NUL at byte 1"},
  };
  for (const auto& [bytes, says] : cases) {
    SCOPED_TRACE(says);
    EXPECT_NE(test::refusal(bytes).find(says), std::string::npos) << test::refusal(bytes);
  }
}

}  // namespace
