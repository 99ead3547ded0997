#include "core/text/utf8.hpp"

#include <algorithm>
#include <cstdint>

namespace core::text {
namespace {

struct Lead {
  int length;         // bytes in the sequence; 0 for a byte that cannot begin one
  char32_t bits;      // payload of the lead byte
  std::uint8_t low;   // range of the second byte, which excludes overlong forms,
  std::uint8_t high;  // surrogates and values above U+10FFFF
};

// Table 3-7 of the Unicode Standard, "Well-Formed UTF-8 Byte Sequences".
Lead lead_of(std::uint8_t b) {
  if (b < 0x80) return {1, b, 0, 0};
  if (b < 0xC2) return {0, 0, 0, 0};
  if (b < 0xE0) return {2, b & 0x1FU, 0x80, 0xBF};
  if (b == 0xE0) return {3, 0, 0xA0, 0xBF};
  if (b == 0xED) return {3, 0xD, 0x80, 0x9F};
  if (b < 0xF0) return {3, b & 0xFU, 0x80, 0xBF};
  if (b == 0xF0) return {4, 0, 0x90, 0xBF};
  if (b < 0xF4) return {4, b & 0x7U, 0x80, 0xBF};
  if (b == 0xF4) return {4, 4, 0x80, 0x8F};
  return {0, 0, 0, 0};
}

// Decodes the sequence at `at` and moves `at` behind it.
char32_t decode_one(std::string_view bytes, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
  const Lead lead = lead_of(byte(at));
  if (lead.length == 0 || bytes.size() - at < static_cast<std::size_t>(lead.length)) {
    throw DecodeError(at);
  }
  char32_t c = lead.bits;
  for (int i = 1; i < lead.length; ++i) {
    const auto b = byte(at + static_cast<std::size_t>(i));
    const bool good = i == 1 ? b >= lead.low && b <= lead.high : (b & 0xC0U) == 0x80U;
    if (!good) throw DecodeError(at);
    c = (c << 6U) | (b & 0x3FU);
  }
  at += static_cast<std::size_t>(lead.length);
  return c;
}

bool continues(std::uint8_t byte) { return (byte & 0xC0U) == 0x80U; }

// Whether a sequence of three bytes stands at `at` whose lead takes any two bytes that
// continue it, as all but the first and that of the surrogates do.
bool is_plain_triple(std::string_view bytes, std::size_t at) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[at + i]); };
  return bytes.size() - at > 2 && byte(0) > 0xE0 && byte(0) < 0xF0 && byte(0) != 0xED &&
         continues(byte(1)) && continues(byte(2));
}

char32_t plain_triple(std::string_view bytes, std::size_t at) {
  const auto payload = [&](std::size_t i) {
    return static_cast<char32_t>(static_cast<std::uint8_t>(bytes[at + i]) & 0x3FU);
  };
  return ((payload(0) & 0xFU) << 12U) | (payload(1) << 6U) | payload(2);
}

// How many bytes the characters take.
std::size_t encoded_size(std::u32string_view text) {
  std::size_t size = text.size();
  for (const char32_t c : text) {
    size += static_cast<std::size_t>(c >= 0x80) + static_cast<std::size_t>(c >= 0x800) +
            static_cast<std::size_t>(c >= 0x10000);
  }
  return size;
}

// Writes the character and returns where the next one goes.
char* write_character(char* to, char32_t c) {
  const auto tail = [c](unsigned shift) {
    return static_cast<char>(0x80U | ((c >> shift) & 0x3FU));
  };
  if (c < 0x80) {
    *to++ = static_cast<char>(c);
  } else if (c < 0x800) {
    *to++ = static_cast<char>(0xC0U | (c >> 6U));
    *to++ = tail(0);
  } else if (c < 0x10000) {
    *to++ = static_cast<char>(0xE0U | (c >> 12U));
    *to++ = tail(6);
    *to++ = tail(0);
  } else {
    *to++ = static_cast<char>(0xF0U | (c >> 18U));
    *to++ = tail(12);
    *to++ = tail(6);
    *to++ = tail(0);
  }
  return to;
}

}  // namespace

DecodeError::DecodeError(std::size_t byte_offset)
    : ValueError("not valid UTF-8 at byte " + std::to_string(byte_offset)),
      byte_offset_(byte_offset) {}

std::u32string decode_utf8(std::string_view bytes) {
  const auto inside = std::count_if(bytes.begin(), bytes.end(),
                                    [](char c) { return continues(static_cast<std::uint8_t>(c)); });
  std::u32string out(bytes.size() - static_cast<std::size_t>(inside), U'\0');
  char32_t* to = out.data();
  for (std::size_t at = 0; at < bytes.size();) {
    const auto b = static_cast<std::uint8_t>(bytes[at]);
    if (b < 0x80) {
      *to++ = b;
      ++at;
    } else if (is_plain_triple(bytes, at)) {
      *to++ = plain_triple(bytes, at);
      at += 3;
    } else {
      const char32_t c = decode_one(bytes, at);
      *to++ = c;
    }
  }
  return out;
}

std::string encode_utf8(std::u32string_view text) {
  std::string out(encoded_size(text), '\0');
  char* to = out.data();
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char32_t c = text[i];
    if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
      throw ValueError("not a Unicode scalar value at position " + std::to_string(i));
    }
    to = write_character(to, c);
  }
  return out;
}

}  // namespace core::text
