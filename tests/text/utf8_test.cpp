#include "core/text/utf8.hpp"

#include <gtest/gtest.h>

#include "tests/support/notation.hpp"

namespace core::text {
namespace {

TEST(Utf8, RoundTripsEveryLength) {
  const std::string_view texts[] = {
      "", "a", "é", "甲方", "😀𠀀", "\U0010FFFF", std::string_view("\0x", 2)};
  for (const auto text : texts) EXPECT_EQ(encode_utf8(decode_utf8(text)), text);
  EXPECT_EQ(decode_utf8("a😀𠀀"), U"a😀𠀀");
}

TEST(Utf8, RefusesBadSequencesAndTellsWhere) {
  struct Case {
    const char* why;
    std::string_view bytes;
    std::size_t offset;
  };
  constexpr Case cases[] = {
      {"a stray continuation byte", "ab\x80", 2},
      {"an overlong slash", "a\xC0\xAF", 1},
      {"an overlong form of three bytes", "\xE0\x9F\xBF", 0},
      {"an overlong form of four bytes", "\xF0\x8F\xBF\xBF", 0},
      {"a surrogate", "甲\xED\xA0\x80", 3},
      {"above U+10FFFF", "\xF4\x90\x80\x80", 0},
      {"a lead byte that no sequence has", "\xFF", 0},
      {"cut off at the end", "甲\xE7\x94", 3},
      {"cut off by an ASCII letter", "\xE7\x94x", 0},
      {"the third byte is wrong", "\xF0\x9F\x41\x80", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    try {
      decode_utf8(c.bytes);
      ADD_FAILURE() << "decoded";
    } catch (const DecodeError& e) {
      EXPECT_EQ(e.byte_offset(), c.offset);
      EXPECT_EQ(std::string(e.what()), "not valid UTF-8 at byte " + std::to_string(c.offset));
    }
  }
}

TEST(Utf8, DoesNotEncodeWhatIsNoScalarValue) {
  EXPECT_THROW(encode_utf8(std::u32string(1, char32_t{0xD800})), ValueError);
  EXPECT_THROW(encode_utf8(std::u32string(1, char32_t{0x110000})), ValueError);
}

}  // namespace
}  // namespace core::text
