// Encodings of plain text, told from the bytes.
#pragma once

#include <string>
#include <string_view>

namespace documents {

enum class Encoding { UTF8, UTF16_LE, UTF16_BE, GB18030 };

struct EncodedText {
  Encoding encoding = Encoding::UTF8;
  bool marked = false;  // begins with a byte order mark, which `text` does not hold
  std::u32string text;
};

// UTF-8; UTF-16 where a byte order mark says so; else GB18030, where nearly all that
// is not ASCII is common Chinese. Throws DocumentError, with the offset of the first
// wrong byte, for what is none of these or holds NUL.
EncodedText decode_text(std::string_view bytes);

// The bytes of another text as they would stand in the same file.
std::string encode_text(std::u32string_view text, const EncodedText& like);

}  // namespace documents
