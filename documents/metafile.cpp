#include "documents/metafile.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>

#include "documents/text_encoding.hpp"

namespace documents {
namespace {

// Numbers in the byte order of all three formats; nothing beyond the end.
class Fields {
 public:
  explicit Fields(std::string_view bytes) : bytes_(bytes) {}

  std::size_t size() const { return bytes_.size(); }
  std::uint32_t u16(std::size_t at) const { return number(at, 2); }
  std::uint32_t u32(std::size_t at) const { return number(at, 4); }
  std::string_view part(std::size_t from, std::size_t size) const {
    return from > bytes_.size() ? std::string_view() : bytes_.substr(from, size);
  }

 private:
  std::uint32_t number(std::size_t at, std::size_t size) const {
    std::uint32_t out = 0;
    for (std::size_t i = size; i > 0 && at + size <= bytes_.size(); --i) {
      out = out << 8U | static_cast<unsigned char>(bytes_[at + i - 1]);
    }
    return out;
  }
  std::string_view bytes_;
};

// [MS-EMF] 2.1.1
constexpr std::uint32_t EMR_HEADER = 1;
constexpr std::uint32_t EMR_COMMENT = 70;
constexpr std::uint32_t EMR_EXTTEXTOUTA = 83;
constexpr std::uint32_t EMR_EXTTEXTOUTW = 84;
constexpr std::uint32_t EMR_POLYTEXTOUTA = 96;
constexpr std::uint32_t EMR_POLYTEXTOUTW = 97;
constexpr std::uint32_t EMR_SMALLTEXTOUT = 108;
constexpr std::string_view EMF_SIGNATURE = " EMF";
constexpr std::size_t EMF_SIGNATURE_AT = 40;
constexpr std::string_view EMF_PLUS_SIGNATURE = "EMF+";
// [MS-EMF] 2.1.11
constexpr std::uint32_t ETO_GLYPH_INDEX = 0x10;
constexpr std::uint32_t ETO_NO_RECT = 0x100;
constexpr std::uint32_t ETO_SMALL_CHARS = 0x200;
// [MS-EMFPLUS] 2.1.1.1
constexpr std::uint32_t PLUS_DRAW_STRING = 0x401C;
constexpr std::uint32_t PLUS_DRAW_DRIVER_STRING = 0x4036;
constexpr std::uint32_t PLUS_GLYPHS_ARE_CHARACTERS = 1;
// [MS-WMF] 2.1.1.1
constexpr std::uint32_t META_TEXTOUT = 0x0521;
constexpr std::uint32_t META_EXTTEXTOUT = 0x0A32;
constexpr std::uint32_t META_ESCAPE = 0x0626;
constexpr std::uint32_t MFCOMMENT = 0x000F;
constexpr std::string_view ENHANCED_METAFILE_SIGNATURE = "WMFC";
constexpr std::uint32_t PLACEABLE_KEY = 0x9AC6CDD7;
constexpr std::size_t PLACEABLE_SIZE = 22;
constexpr std::size_t WMF_HEADER_SIZE = 18;
constexpr std::uint32_t OPAQUE_OR_CLIPPED = 0x0006;

class Reader {
 public:
  void read(std::string_view bytes) {
    if (is_emf(bytes)) {
      out_.is_metafile = true;
      emf(bytes);
    } else if (is_wmf(bytes)) {
      out_.is_metafile = true;
      wmf(bytes);
    }
  }
  MetafileText take() { return std::move(out_); }

 private:
  static bool is_emf(std::string_view bytes) {
    return Fields(bytes).u32(0) == EMR_HEADER &&
           Fields(bytes).part(EMF_SIGNATURE_AT, EMF_SIGNATURE.size()) == EMF_SIGNATURE;
  }
  static bool is_wmf(std::string_view bytes) {
    const Fields f(bytes);
    if (f.u32(0) == PLACEABLE_KEY) return true;
    const auto version = f.u16(4);
    return (f.u16(0) == 1 || f.u16(0) == 2) && f.u16(2) == WMF_HEADER_SIZE / 2 &&
           (version == 0x0100 || version == 0x0300);
  }

  void add(std::optional<std::u32string> text) {
    if (!text) {
      out_.complete = false;
    } else if (!text->empty()) {
      out_.records.push_back(std::move(*text));
    }
  }
  void wide(std::string_view bytes) { add(decode_utf16_le(bytes)); }
  void narrow(std::string_view bytes) { add(decode_gb18030(bytes)); }

  void emf(std::string_view bytes) {
    const Fields f(bytes);
    std::size_t at = 0;
    while (at + 8 <= f.size()) {
      const std::size_t size = f.u32(at + 4);
      if (size < 8 || size > f.size() - at) break;
      emf_record(f.u32(at), bytes.substr(at, size));
      at += size;
    }
    if (at != f.size()) out_.complete = false;
  }

  void emf_record(std::uint32_t type, std::string_view record) {
    const Fields f(record);
    if (type == EMR_EXTTEXTOUTA || type == EMR_EXTTEXTOUTW) {
      emf_text(f, 36, type == EMR_EXTTEXTOUTW);
    } else if (type == EMR_POLYTEXTOUTA || type == EMR_POLYTEXTOUTW) {
      const std::size_t count = f.u32(36);
      for (std::size_t i = 0; i < count && 40 + i * 40 < f.size(); ++i) {
        emf_text(f, 40 + i * 40, type == EMR_POLYTEXTOUTW);
      }
    } else if (type == EMR_SMALLTEXTOUT) {
      small_text(f);
    } else if (type == EMR_COMMENT && f.part(12, 4) == EMF_PLUS_SIGNATURE) {
      emf_plus(f.part(16, f.u32(8) < 4 ? 0 : f.u32(8) - 4));
    }
  }

  // An EmrText object ([MS-EMF] 2.2.5) at `at`.
  void emf_text(const Fields& f, std::size_t at, bool is_wide) {
    const std::size_t count = f.u32(at + 8);
    const std::size_t from = f.u32(at + 12);
    string(f, from, count, f.u32(at + 16), is_wide);
  }

  void small_text(const Fields& f) {
    const auto options = f.u32(20);
    const std::size_t from = (options & ETO_NO_RECT) != 0 ? 36 : 52;
    string(f, from, f.u32(16), options, (options & ETO_SMALL_CHARS) == 0);
  }

  void string(const Fields& f, std::size_t from, std::size_t count, std::uint32_t options,
              bool is_wide) {
    if (count == 0) return;
    const std::size_t size = is_wide ? count * 2 : count;
    if ((options & ETO_GLYPH_INDEX) != 0 || from > f.size() || size > f.size() - from) {
      out_.complete = false;
      return;
    }
    is_wide ? wide(f.part(from, size)) : narrow(f.part(from, size));
  }

  void emf_plus(std::string_view bytes) {
    const Fields f(bytes);
    std::size_t at = 0;
    while (at + 12 <= f.size()) {
      const std::size_t size = f.u32(at + 4);
      if (size < 12 || size > f.size() - at) break;
      const auto type = f.u16(at);
      const Fields data(bytes.substr(at + 12, size - 12));
      if (type == PLUS_DRAW_STRING) string(data, 28, data.u32(8), 0, true);
      if (type == PLUS_DRAW_DRIVER_STRING) {
        const bool characters = (data.u32(4) & PLUS_GLYPHS_ARE_CHARACTERS) != 0;
        string(data, 16, data.u32(12), characters ? 0 : ETO_GLYPH_INDEX, true);
      }
      at += size;
    }
    if (at != f.size()) out_.complete = false;
  }

  void wmf(std::string_view bytes) {
    const Fields f(bytes);
    std::size_t at = WMF_HEADER_SIZE + (f.u32(0) == PLACEABLE_KEY ? PLACEABLE_SIZE : 0);
    std::string enhanced;
    bool ended = false;
    while (!ended && at + 6 <= f.size()) {
      const std::size_t size = std::size_t{f.u32(at)} * 2;
      if (size < 6 || size > f.size() - at) break;
      wmf_record(Fields(bytes.substr(at, size)), enhanced);
      ended = f.u16(at + 4) == 0;
      at += size;
    }
    if (!ended) out_.complete = false;
    if (is_emf(enhanced)) emf(enhanced);
  }

  void wmf_record(const Fields& f, std::string& enhanced) {
    const auto function = f.u16(4);
    if (function == META_TEXTOUT) {
      string(f, 8, f.u16(6), 0, false);
    } else if (function == META_EXTTEXTOUT) {
      const auto options = f.u16(12);
      string(f, (options & OPAQUE_OR_CLIPPED) != 0 ? 22 : 14, f.u16(10), options, false);
    } else if (function == META_ESCAPE && f.u16(6) == MFCOMMENT &&
               f.part(10, 4) == ENHANCED_METAFILE_SIGNATURE) {
      enhanced += f.part(44, f.u32(32));
    }
  }

  MetafileText out_;
};

}  // namespace

std::u32string MetafileText::joined() const {
  std::u32string out;
  for (const auto& record : records) out += record;
  return out;
}

MetafileText metafile_text(std::string_view bytes) {
  Reader reader;
  reader.read(bytes);
  return reader.take();
}

}  // namespace documents
