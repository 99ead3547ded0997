#include "core/nlp/spacy/msgpack.hpp"

#include <bit>
#include <limits>
#include <utility>

#include "core/nlp/spacy/model_error.hpp"

namespace core::nlp::spacy {
namespace {

// The first byte of a value.
enum Tag : std::uint8_t {
  FIXMAP = 0x80,
  FIXARRAY = 0x90,
  FIXSTR = 0xA0,
  NIL_TAG = 0xC0,
  FALSE_TAG = 0xC2,
  TRUE_TAG = 0xC3,
  BIN8 = 0xC4,
  BIN16 = 0xC5,
  BIN32 = 0xC6,
  EXT8 = 0xC7,
  EXT32 = 0xC9,
  FLOAT32 = 0xCA,
  FLOAT64 = 0xCB,
  UINT8 = 0xCC,
  UINT64 = 0xCF,
  INT8 = 0xD0,
  INT64 = 0xD3,
  FIXEXT1 = 0xD4,
  FIXEXT16 = 0xD8,
  STR8 = 0xD9,
  STR32 = 0xDB,
  ARRAY16 = 0xDC,
  ARRAY32 = 0xDD,
  MAP16 = 0xDE,
  MAP32 = 0xDF,
  NEGATIVE_FIXINT = 0xE0,
};

std::int64_t sign_extended(std::uint64_t value, std::size_t bytes) {
  const auto shift = 64 - 8 * bytes;
  return static_cast<std::int64_t>(value << shift) >> shift;
}

}  // namespace

MsgpackReader::MsgpackReader(std::string_view bytes, std::string file, std::string place)
    : bytes_(bytes), file_(std::move(file)), place_(std::move(place)) {}

void MsgpackReader::fail(std::string_view reason) const {
  throw ModelError(file_, place_, std::string(reason) + " at byte " + std::to_string(at_));
}

void MsgpackReader::expect_end() const {
  if (!at_end()) fail("more than was expected");
}

std::uint8_t MsgpackReader::peek() const {
  if (at_end()) fail("ends early");
  return static_cast<std::uint8_t>(bytes_[at_]);
}

std::uint8_t MsgpackReader::take() {
  const auto byte = peek();
  ++at_;
  return byte;
}

std::uint64_t MsgpackReader::take_big_endian(std::size_t bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < bytes; ++i) value = value << 8 | take();
  return value;
}

std::string_view MsgpackReader::take_bytes(std::uint64_t count) {
  if (count > bytes_.size() - at_) fail("ends early");
  const auto out = bytes_.substr(at_, static_cast<std::size_t>(count));
  at_ += out.size();
  return out;
}

std::size_t MsgpackReader::checked_count(std::uint64_t count, std::size_t least_bytes) const {
  if (count > (bytes_.size() - at_) / least_bytes) fail("ends early");
  return static_cast<std::size_t>(count);
}

bool MsgpackReader::take_nil() {
  if (peek() != NIL_TAG) return false;
  ++at_;
  return true;
}

bool MsgpackReader::read_bool() {
  const auto tag = peek();
  if (tag != TRUE_TAG && tag != FALSE_TAG) fail("true or false was expected");
  ++at_;
  return tag == TRUE_TAG;
}

std::int64_t MsgpackReader::read_integer() {
  const auto tag = peek();
  if (tag < FIXMAP || tag >= NEGATIVE_FIXINT) {
    ++at_;
    return static_cast<std::int8_t>(tag);
  }
  if (tag >= INT8 && tag <= INT64) {
    ++at_;
    const auto bytes = std::size_t{1} << (tag - INT8);
    return sign_extended(take_big_endian(bytes), bytes);
  }
  const auto value = read_unsigned();
  if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    fail("number out of range");
  }
  return static_cast<std::int64_t>(value);
}

std::uint64_t MsgpackReader::read_unsigned() {
  const auto tag = peek();
  if (tag >= UINT8 && tag <= UINT64) {
    ++at_;
    return take_big_endian(std::size_t{1} << (tag - UINT8));
  }
  if (tag >= FIXMAP && !(tag >= INT8 && tag <= INT64)) fail("a number from 0 on was expected");
  const auto value = read_integer();
  if (value < 0) fail("a number from 0 on was expected");
  return static_cast<std::uint64_t>(value);
}

double MsgpackReader::read_number() {
  switch (peek()) {
    case FLOAT32:
      ++at_;
      return std::bit_cast<float>(static_cast<std::uint32_t>(take_big_endian(4)));
    case FLOAT64:
      ++at_;
      return std::bit_cast<double>(take_big_endian(8));
    default:
      return static_cast<double>(read_integer());
  }
}

bool MsgpackReader::next_is_bytes() const {
  const auto tag = peek();
  return (tag >= FIXSTR && tag < NIL_TAG) || (tag >= BIN8 && tag <= BIN32) ||
         (tag >= STR8 && tag <= STR32);
}

std::string_view MsgpackReader::read_bytes() {
  if (!next_is_bytes()) fail("a string was expected");
  const auto tag = take();
  if (tag < NIL_TAG) return take_bytes(tag & 0x1F);
  const auto size_bytes = std::size_t{1} << (tag >= STR8 ? tag - STR8 : tag - BIN8);
  return take_bytes(take_big_endian(size_bytes));
}

std::size_t MsgpackReader::read_array() {
  const auto tag = peek();
  if (tag >= FIXARRAY && tag < FIXSTR) {
    ++at_;
    return checked_count(tag & 0x0F, 1);
  }
  if (tag != ARRAY16 && tag != ARRAY32) fail("a list was expected");
  ++at_;
  return checked_count(take_big_endian(tag == ARRAY16 ? 2 : 4), 1);
}

std::size_t MsgpackReader::read_map() {
  const auto tag = peek();
  if (tag >= FIXMAP && tag < FIXARRAY) {
    ++at_;
    return checked_count(tag & 0x0F, 2);
  }
  if (tag != MAP16 && tag != MAP32) fail("a map was expected");
  ++at_;
  return checked_count(take_big_endian(tag == MAP16 ? 2 : 4), 2);
}

// Passes over the head of a value; returns how many values it consists of.
std::uint64_t MsgpackReader::skip_one() {
  const auto tag = peek();
  if (next_is_bytes()) {
    read_bytes();
  } else if ((tag >= FIXMAP && tag < FIXARRAY) || tag == MAP16 || tag == MAP32) {
    return 2 * std::uint64_t{read_map()};
  } else if ((tag >= FIXARRAY && tag < FIXSTR) || tag == ARRAY16 || tag == ARRAY32) {
    return read_array();
  } else {
    skip_scalar();
  }
  return 0;
}

void MsgpackReader::skip_scalar() {
  const auto tag = take();
  if (tag < FIXMAP || tag >= NEGATIVE_FIXINT) return;
  if (tag == NIL_TAG || tag == FALSE_TAG || tag == TRUE_TAG) return;
  if (tag == FLOAT32 || tag == FLOAT64) {
    take_bytes(tag == FLOAT32 ? 4 : 8);
  } else if (tag >= UINT8 && tag <= INT64) {
    take_bytes(std::uint64_t{1} << ((tag - UINT8) % 4));
  } else if (tag >= FIXEXT1 && tag <= FIXEXT16) {
    take_bytes(1 + (std::uint64_t{1} << (tag - FIXEXT1)));
  } else if (tag >= EXT8 && tag <= EXT32) {
    const auto size = take_big_endian(std::size_t{1} << (tag - EXT8));
    take_bytes(1);
    take_bytes(size);
  } else {
    fail("not msgpack");
  }
}

void MsgpackReader::skip() {
  // Each value takes at least a byte, so that the number of steps is bounded.
  for (std::uint64_t pending = 1; pending > 0; --pending) pending += skip_one();
}

}  // namespace core::nlp::spacy
