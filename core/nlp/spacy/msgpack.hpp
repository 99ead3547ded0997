// Reads msgpack (https://msgpack.org) where it
// lies: nothing is copied and nothing is built, so that weights can stay in the
// mapped file, and a file that lies about its sizes costs no memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace core::nlp::spacy {

// A cursor over bytes that outlive it. Every method throws ModelError, naming
// file, place and offset, for bytes that end early and for a value of another kind.
class MsgpackReader {
 public:
  // `file` and `place` are for messages.
  MsgpackReader(std::string_view bytes, std::string file, std::string place = {});

  bool at_end() const { return at_ == bytes_.size(); }
  // Throws if anything follows.
  void expect_end() const;

  // Whether the next value is nil; it is passed over if so.
  bool take_nil();
  bool read_bool();
  std::uint64_t read_unsigned();
  std::int64_t read_integer();
  // Any kind of number.
  double read_number();
  // A string or a binary, as bytes. Returns a view into the bytes.
  std::string_view read_bytes();
  bool next_is_bytes() const;
  // How many values, or pairs of key and value, follow. Never more than the bytes
  // that are left could hold.
  std::size_t read_array();
  std::size_t read_map();
  // Passes over one value, however deep.
  void skip();

  // Throws ModelError for the place that was read last.
  [[noreturn]] void fail(std::string_view reason) const;
  const std::string& file() const { return file_; }
  void set_place(std::string place) { place_ = std::move(place); }

 private:
  std::uint8_t peek() const;
  std::uint8_t take();
  std::uint64_t take_big_endian(std::size_t bytes);
  std::string_view take_bytes(std::uint64_t count);
  std::size_t checked_count(std::uint64_t count, std::size_t least_bytes) const;
  std::uint64_t skip_one();
  void skip_scalar();

  std::string_view bytes_;
  std::size_t at_ = 0;
  std::string file_;
  std::string place_;
};

}  // namespace core::nlp::spacy
