#include "documents/picture_metadata.hpp"

#include <cstddef>
#include <cstdint>

#include "core/text/word_set.hpp"

namespace documents {
namespace {

constexpr std::string_view PNG_HEAD = "\x89PNG\r\n\x1A\n";
constexpr std::string_view JPEG_HEAD = "\xFF\xD8";
constexpr auto PNG_METADATA = core::text::type_names({"tEXt", "zTXt", "iTXt", "eXIf", "tIME"});

// A number in the byte order of both formats.
std::size_t number_at(std::string_view bytes, std::size_t at, std::size_t size) {
  std::size_t value = 0;
  for (std::size_t i = 0; i < size; ++i) {
    value = value << 8U | static_cast<std::uint8_t>(bytes[at + i]);
  }
  return value;
}

std::optional<std::string> stripped_png(std::string_view bytes) {
  constexpr std::size_t AROUND = 12;  // length, kind, checksum
  std::string out(PNG_HEAD);
  for (auto at = PNG_HEAD.size(); at < bytes.size();) {
    if (bytes.size() - at < AROUND) return std::nullopt;
    const auto size = number_at(bytes, at, 4) + AROUND;
    if (size > bytes.size() - at) return std::nullopt;
    const auto kind = bytes.substr(at + 4, 4);
    if (!PNG_METADATA.contains(kind)) out += bytes.substr(at, size);
    at += size;
    if (kind == "IEND") break;  // what follows is no part of the picture
  }
  return out;
}

// Segments of applications but those that say how to decode (JFIF, ICC, Adobe), and
// comments.
bool is_jpeg_metadata(std::uint8_t marker, std::string_view content) {
  constexpr std::uint8_t COMMENT = 0xFE;
  constexpr std::uint8_t FIRST_APPLICATION = 0xE0;
  constexpr std::uint8_t LAST_APPLICATION = 0xEF;
  if (marker == COMMENT) return true;
  if (marker < FIRST_APPLICATION || marker > LAST_APPLICATION) return false;
  return !content.starts_with(std::string_view("JFIF\0", 5)) &&
         !content.starts_with(std::string_view("ICC_PROFILE\0", 12)) &&
         !content.starts_with("Adobe");
}

std::optional<std::string> stripped_jpeg(std::string_view bytes) {
  constexpr std::uint8_t START_OF_SCAN = 0xDA;
  std::string out(JPEG_HEAD);
  auto at = JPEG_HEAD.size();
  while (bytes.size() - at >= 4) {
    const auto marker = static_cast<std::uint8_t>(bytes[at + 1]);
    if (static_cast<std::uint8_t>(bytes[at]) != 0xFF) return std::nullopt;
    if (marker == START_OF_SCAN) return out.append(bytes.substr(at));
    const auto size = number_at(bytes, at + 2, 2);
    if (size < 2 || size + 2 > bytes.size() - at) return std::nullopt;
    if (!is_jpeg_metadata(marker, bytes.substr(at + 4, size - 2))) {
      out.append(bytes.substr(at, size + 2));
    }
    at += size + 2;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> without_metadata(std::string_view picture) {
  std::optional<std::string> out;
  if (picture.starts_with(PNG_HEAD)) out = stripped_png(picture);
  if (picture.starts_with(JPEG_HEAD)) out = stripped_jpeg(picture);
  if (out && out->size() == picture.size()) return std::nullopt;
  return out;
}

}  // namespace documents
