#include "documents/text_encoding.hpp"

#include <algorithm>
#include <memory>
#include <optional>

#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include "core/errors.hpp"
#include "core/text/utf8.hpp"
#include "documents/errors.hpp"

namespace documents {
namespace {

constexpr std::string_view UTF8_MARK = "\xEF\xBB\xBF";
constexpr std::string_view UTF16_LE_MARK = "\xFF\xFE";
constexpr std::string_view UTF16_BE_MARK = "\xFE\xFF";
// In Chinese prose nearly every character is of the first standard, GB 2312; bytes
// of another encoding that happen to be legal are spread over the whole table.
constexpr double LEAST_COMMON = 0.9;

constexpr std::string_view GB18030_NAME = "gb18030";

bool is_ascii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

struct ConverterClose {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterClose>;

Converter converter_of(Encoding encoding) {
  const char* name = encoding == Encoding::GB18030    ? "gb18030"
                     : encoding == Encoding::UTF16_LE ? "UTF-16LE"
                                                      : "UTF-16BE";
  UErrorCode error = U_ZERO_ERROR;
  Converter converter(ucnv_open(name, &error));
  if (U_FAILURE(error)) throw core::ExternalError("a converter of ICU is missing");
  ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
  ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &error);
  return converter;
}

std::u32string utf32_of(const icu::UnicodeString& text) {
  std::u32string out;
  for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
    out += static_cast<char32_t>(text.char32At(i));
  }
  return out;
}

// Nothing if the bytes are not of that encoding.
std::optional<std::u32string> decoded_as(Encoding encoding, std::string_view bytes) {
  const auto converter = converter_of(encoding);
  UErrorCode error = U_ZERO_ERROR;
  const icu::UnicodeString text(bytes.data(), static_cast<int32_t>(bytes.size()), converter.get(),
                                error);
  if (U_FAILURE(error)) return std::nullopt;
  return utf32_of(text);
}

// Whether pairs of bytes are mostly those of common characters.
bool reads_like_chinese(std::string_view bytes) {
  std::size_t pairs = 0;
  std::size_t common = 0;
  for (std::size_t i = 0; i + 1 < bytes.size(); ++i) {
    const auto lead = static_cast<unsigned char>(bytes[i]);
    const auto trail = static_cast<unsigned char>(bytes[i + 1]);
    if (lead < 0x80) continue;
    ++pairs;
    if (trail >= 0xA1 && ((lead >= 0xA1 && lead <= 0xA9) || (lead >= 0xB0 && lead <= 0xF7))) {
      ++common;
    }
    ++i;
  }
  return pairs > 0 && static_cast<double>(common) >= LEAST_COMMON * static_cast<double>(pairs);
}

// A UTF-8 file that was cut within its last character.
bool is_cut_utf8(std::string_view bytes, std::size_t bad) {
  constexpr std::size_t LONGEST = 4;
  return bad + LONGEST > bytes.size() && static_cast<unsigned char>(bytes[bad]) >= 0xC2 &&
         bad + 1 < bytes.size() && (static_cast<unsigned char>(bytes[bad + 1]) & 0xC0U) == 0x80;
}

[[noreturn]] void refuse_text(const std::string& why, std::size_t at) {
  throw DocumentError(why + " at byte " + std::to_string(at));
}

std::optional<EncodedText> decode_utf16(std::string_view bytes) {
  const bool little = bytes.starts_with(UTF16_LE_MARK);
  if (!little && !bytes.starts_with(UTF16_BE_MARK)) return std::nullopt;
  EncodedText out{little ? Encoding::UTF16_LE : Encoding::UTF16_BE, true, {}};
  auto text = decoded_as(out.encoding, bytes.substr(UTF16_LE_MARK.size()));
  if (!text) throw DocumentError("not valid UTF-16");
  if (const auto nul = text->find(U'\0'); nul != std::u32string::npos) {
    throw DocumentError("not a text: NUL at character " + std::to_string(nul));
  }
  out.text = std::move(*text);
  return out;
}

}  // namespace

std::string_view encoding_name(Encoding encoding) {
  return encoding == Encoding::GB18030 ? GB18030_NAME : std::string_view();
}

EncodedText decode_text(std::string_view bytes, std::string_view expected) {
  if (auto utf16 = decode_utf16(bytes)) return std::move(*utf16);
  EncodedText out;
  const bool maybe_chinese = expected == GB18030_NAME;
  if (maybe_chinese && is_ascii(bytes)) out.encoding = Encoding::GB18030;
  out.marked = bytes.starts_with(UTF8_MARK);
  const std::size_t skipped = out.marked ? UTF8_MARK.size() : 0;
  const std::size_t nul = bytes.find('\0');
  try {
    out.text = core::text::decode_utf8(bytes.substr(skipped));
  } catch (const core::text::DecodeError& e) {
    const std::size_t bad = skipped + e.byte_offset();
    if (nul != std::string_view::npos && nul < bad) refuse_text("not a text: NUL", nul);
    if (nul != std::string_view::npos || out.marked || is_cut_utf8(bytes, bad) ||
        (!maybe_chinese && !reads_like_chinese(bytes))) {
      refuse_text("not valid UTF-8", bad);
    }
    auto chinese = decoded_as(Encoding::GB18030, bytes);
    if (!chinese) refuse_text("not valid UTF-8", bad);
    return {Encoding::GB18030, false, std::move(*chinese)};
  }
  if (nul != std::string_view::npos) refuse_text("not a text: NUL", nul);
  return out;
}

std::optional<std::u32string> decode_utf16_le(std::string_view bytes) {
  return decoded_as(Encoding::UTF16_LE, bytes);
}

std::optional<std::u32string> decode_gb18030(std::string_view bytes) {
  return decoded_as(Encoding::GB18030, bytes);
}

std::string encode_text(std::u32string_view text, const EncodedText& like) {
  if (like.encoding == Encoding::UTF8) {
    return std::string(like.marked ? UTF8_MARK : "") + core::text::encode_utf8(text);
  }
  icu::UnicodeString utf16;
  for (const char32_t c : text) utf16.append(static_cast<UChar32>(c));
  const auto converter = converter_of(like.encoding);
  UErrorCode error = U_ZERO_ERROR;
  const auto size = utf16.extract(nullptr, 0, converter.get(), error);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  error = U_ZERO_ERROR;
  utf16.extract(bytes.data(), size, converter.get(), error);
  if (U_FAILURE(error)) throw core::ExternalError("the text could not be encoded");
  if (!like.marked) return bytes;
  return std::string(like.encoding == Encoding::UTF16_LE ? UTF16_LE_MARK : UTF16_BE_MARK) + bytes;
}

}  // namespace documents
