// Characters that readers see otherwise than they are written, or not at all.
#pragma once

namespace documents {

inline constexpr char32_t SOFT_HYPHEN = 0xAD;
inline constexpr char32_t NON_BREAKING_HYPHEN = 0x2011;

// Soft hyphens, zero-width characters, marks of writing direction: a reader does not
// see them, and a value is found without them.
constexpr bool is_invisible(char32_t c) {
  return c == SOFT_HYPHEN || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2060 && c <= 0x2064) || c == 0xFEFF;
}

constexpr char32_t seen_as(char32_t c) { return c == NON_BREAKING_HYPHEN ? U'-' : c; }

}  // namespace documents
