// Text in pictures that are drawn from records, and pictures that still show a value.
#include "documents/metafile.hpp"

#include <cstdint>

#include <gtest/gtest.h>

#include "documents/errors.hpp"
#include "tests/documents/support.hpp"
#include "tests/support/notation.hpp"

namespace {

using namespace std::string_literals;

std::string little(std::uint32_t value, int size) {
  std::string out;
  for (int i = 0; i < size; ++i) out += static_cast<char>(value >> (8 * i) & 0xFFU);
  return out;
}
std::string u32(std::uint32_t value) { return little(value, 4); }
std::string u16(std::uint32_t value) { return little(value, 2); }

std::string wide(std::string_view text) {
  std::string out;
  for (const char32_t c : test::u32(text)) out += u16(c);
  return out;
}

std::string emf_record(std::uint32_t type, std::string data) {
  data.resize((data.size() + 3) / 4 * 4);
  return u32(type) + u32(static_cast<std::uint32_t>(data.size() + 8)) + data;
}

std::string emf(const std::string& records) {
  return emf_record(1, std::string(32, '\0') + " EMF") + records + emf_record(14, "");
}

// EMR_EXTTEXTOUTW or A: bounds, mode, scales; reference, count, offset, options, box.
std::string text_out(std::uint32_t type, std::uint32_t count, const std::string& bytes,
                     std::uint32_t options = 0) {
  return emf_record(type, std::string(36, '\0') + u32(count) + u32(76) + u32(options) +
                              std::string(20, '\0') + bytes);
}

std::string small_text(std::uint32_t count, std::uint32_t options, const std::string& bytes) {
  return emf_record(108, std::string(8, '\0') + u32(count) + u32(options) + std::string(12, '\0') +
                             std::string((options & 0x100U) != 0 ? 0 : 16, '\0') + bytes);
}

std::string plus_record(std::uint32_t type, const std::string& data) {
  return u16(type) + u16(0) + u32(static_cast<std::uint32_t>(data.size() + 12)) +
         u32(static_cast<std::uint32_t>(data.size())) + data;
}
std::string emf_plus(const std::string& records) {
  return emf_record(70, u32(static_cast<std::uint32_t>(records.size() + 4)) + "EMF+" + records);
}

std::string wmf_record(std::uint32_t function, std::string data) {
  data.resize((data.size() + 1) / 2 * 2);
  return u32(static_cast<std::uint32_t>(data.size() + 6) / 2) + u16(function) + data;
}
std::string wmf(const std::string& records) {
  return u16(1) + u16(9) + u16(0x300) + std::string(12, '\0') + records + wmf_record(0, "");
}
// A piece of an EMF in a comment of a WMF.
std::string enhanced(const std::string& piece) {
  return wmf_record(0x0626, u16(15) + u16(static_cast<std::uint32_t>(34 + piece.size())) + "WMFC" +
                                std::string(18, '\0') +
                                u32(static_cast<std::uint32_t>(piece.size())) + u32(0) + u32(0) +
                                piece);
}

TEST(Metafile, ReadsItsText) {
  const std::string gb = "\xD5\xC5\xCE\xB0\xC3\xF1";  // 张伟民
  const auto whole = emf(text_out(84, 3, wide("张伟民")));
  struct Case {
    const char* why;
    std::string bytes;
    const char* text;
    bool complete = true;
  };
  const Case cases[] = {
      {"ExtTextOutW", whole, "张伟民"},
      {"one record a character",
       emf(text_out(84, 1, wide("张")) + emf_record(33, "") + text_out(84, 2, wide("伟民"))),
       "张伟民"},
      {"ExtTextOutA", emf(text_out(83, 6, gb)), "张伟民"},
      {"SmallTextOut", emf(small_text(3, 0x100, wide("张伟民"))), "张伟民"},
      {"SmallTextOut with a box, in bytes", emf(small_text(5, 0x200, "Zhang")), "Zhang"},
      {"EMF+ DrawString",
       emf(emf_plus(
           plus_record(0x401C, u32(0) + u32(0) + u32(3) + std::string(16, '\0') + wide("张伟民")))),
       "张伟民"},
      {"EMF+ DrawDriverString",
       emf(emf_plus(plus_record(0x4036, u32(0) + u32(1) + u32(0) + u32(3) + wide("张伟民")))),
       "张伟民"},
      {"numbers of glyphs", emf(text_out(84, 3, wide("张伟民"), 0x10)), "", false},
      {"beyond its record", emf(text_out(84, 900, wide("张伟民"))), "", false},
      {"cut", whole.substr(0, whole.size() - 3), "张伟民", false},
      {"WMF TextOut", wmf(wmf_record(0x0521, u16(6) + gb + u16(0) + u16(0))), "张伟民"},
      {"placeable",
       u32(0x9AC6CDD7) + std::string(18, '\0') +
           wmf(wmf_record(0x0A32, u16(0) + u16(0) + u16(6) + u16(0) + gb)),
       "张伟民"},
      {"WMF ExtTextOut with a box",
       wmf(wmf_record(0x0A32, u16(0) + u16(0) + u16(6) + u16(2) + std::string(8, '\0') + gb)),
       "张伟民"},
      {"an EMF in comments of a WMF",
       wmf(enhanced(whole.substr(0, 60)) + enhanced(whole.substr(60))), "张伟民"},
      {"WMF without its end", wmf(wmf_record(0x0521, u16(6) + gb)).substr(0, 34), "张伟民", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto text = documents::metafile_text(c.bytes);
    EXPECT_TRUE(text.is_metafile);
    EXPECT_EQ(test::u8(text.joined()), c.text);
    EXPECT_EQ(text.complete, c.complete);
  }
  for (const auto& other : {""s, "\x01\0\0\0"s, "\x89PNG\r\n\x1A\n"s + std::string(100, '\1')}) {
    EXPECT_FALSE(documents::metafile_text(other).is_metafile);
  }
}

TEST(Metafile, AValueInAPictureIsNoticed) {
  const std::string body = "<w:p><w:r><w:t>张伟民</w:t></w:r></w:p>";
  const auto with = [&](const std::string& picture) {
    return test::docx(body, {{"word/media/a.png", "", "image", picture}});
  };
  const auto split = emf(text_out(84, 1, wide("张")) + text_out(84, 2, wide("伟民")));
  EXPECT_THROW(test::masked(with(split)), documents::LeftoverError);
  const auto other = emf(text_out(84, 2, wide("甲方")));
  EXPECT_EQ(test::masked(with(other)).report.not_examined,
            std::vector<std::string>{"word/media/a.png: picture, but for its text"});
  const auto glyphs = emf(text_out(84, 3, "abcdef", 0x10));
  EXPECT_EQ(test::masked(with(glyphs)).report.not_examined,
            std::vector<std::string>{"word/media/a.png: picture, its text cannot be read"});
}

}  // namespace
