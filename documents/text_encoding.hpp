// Encodings of plain text, told from the bytes.
#pragma once

#include <optional>
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
//
// `expected` is the name of the encoding that the text once had, as below: bytes that
// do not show another one are of it.
EncodedText decode_text(std::string_view bytes, std::string_view expected = {});

// "gb18030"; empty for an encoding that the bytes show by themselves.
std::string_view encoding_name(Encoding encoding);

// The bytes of another text as they would stand in the same file.
std::string encode_text(std::u32string_view text, const EncodedText& like);

// Strings of other files. Nothing if the bytes are not of that encoding.
std::optional<std::u32string> decode_utf16_le(std::string_view bytes);
std::optional<std::u32string> decode_gb18030(std::string_view bytes);

}  // namespace documents
