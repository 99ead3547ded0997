// UTF-8 at the edges of the program.
//
// Decoding is strict: overlong forms, surrogates, values above U+10FFFF and
// stray or missing continuation bytes are refused. May be called from any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/errors.hpp"

namespace core::text {

// Bytes that are not UTF-8. byte_offset() is where the first bad sequence begins.
class DecodeError : public ValueError {
 public:
  explicit DecodeError(std::size_t byte_offset);
  std::size_t byte_offset() const { return byte_offset_; }

 private:
  std::size_t byte_offset_;
};

// Throws DecodeError if `bytes` is not valid UTF-8. A byte order mark is kept as U+FEFF.
std::u32string decode_utf8(std::string_view bytes);

// Throws ValueError, naming the position, if `text` holds a surrogate or a value above U+10FFFF.
std::string encode_utf8(std::u32string_view text);

}  // namespace core::text
