#include "core/nlp/spacy/static_vectors.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <system_error>

#include <nlohmann/json.hpp>

#include "core/nlp/spacy/model_error.hpp"
#include "core/nlp/spacy/msgpack.hpp"

namespace core::nlp::spacy {
namespace {

void check_mode(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::exists(file, error)) return;
  const auto json = nlohmann::json::parse(read_small_file(file), nullptr, false);
  if (!json.is_object()) throw ModelError(file.string(), "", "not a JSON object");
  const auto mode = json.find("mode");
  if (mode != json.end() && *mode != "default") {
    throw ModelError(file.string(), "mode", "only vectors of the mode \"default\" are supported");
  }
}

// The value behind 'key': in the header, up to the next comma outside parentheses.
std::string_view header_value(std::string_view header, std::string_view key) {
  const auto at = header.find("'" + std::string(key) + "':");
  if (at == header.npos) return {};
  auto rest = header.substr(at + key.size() + 3);
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  const auto end = rest.starts_with('(') ? rest.find(')') : rest.find_first_of(",}");
  return rest.substr(0, end);
}

// "(514157, 300" -> 514157, 300
bool read_shape(std::string_view shape, std::size_t& rows, std::size_t& width) {
  if (!shape.starts_with('(')) return false;
  const char* at = shape.data() + 1;
  const char* end = shape.data() + shape.size();
  auto [behind, error] = std::from_chars(at, end, rows);
  if (error != std::errc() || behind == end || *behind != ',') return false;
  do ++behind;
  while (behind != end && *behind == ' ');
  const auto [last, second_error] = std::from_chars(behind, end, width);
  return second_error == std::errc() && last == end;
}

}  // namespace

std::shared_ptr<const StaticVectors> open_static_vectors(const std::filesystem::path& vocab) {
  std::error_code error;
  for (const auto* file : {"vectors", "key2row"}) {
    if (!std::filesystem::exists(vocab / file, error)) return nullptr;
  }
  check_mode(vocab / "vectors.cfg");
  return std::make_shared<StaticVectors>(std::make_unique<MappedFile>(vocab / "vectors"),
                                         MappedFile(vocab / "key2row"));
}

StaticVectors::StaticVectors(std::unique_ptr<const MappedFile> table, const MappedFile& keys)
    : file_(std::move(table)) {
  read_table();
  read_keys(keys);
}

// The format is that of numpy, version 1.0 to 3.0.
void StaticVectors::read_table() {
  const auto bytes = file_->bytes();
  const auto fail = [&](std::string_view why) { throw ModelError(file_->name(), "header", why); };
  constexpr std::size_t PREAMBLE = 10;
  if (bytes.size() < PREAMBLE || !bytes.starts_with("\x93NUMPY")) fail("not an array of numpy");
  const auto byte = [&](std::size_t i) {
    return std::size_t{static_cast<unsigned char>(bytes[i])};
  };
  std::size_t header = PREAMBLE;
  std::size_t length = byte(8) | byte(9) << 8;
  if (byte(6) > 1) {
    header += 2;
    if (bytes.size() < header) fail("ends early");
    length |= byte(10) << 16 | byte(11) << 24;
  }
  if (length > bytes.size() - header) fail("ends early");
  data_ = header + length;
  const auto text = bytes.substr(header, length);
  if (!header_value(text, "descr").starts_with("'<f4'")) fail("not of 32-bit floats");
  if (!header_value(text, "fortran_order").starts_with("False")) fail("not in the order of C");
  if (!read_shape(header_value(text, "shape"), rows_, width_)) fail("not a table");
  constexpr std::size_t WIDEST = 1 << 16;
  if (width_ > WIDEST || rows_ > std::numeric_limits<std::uint32_t>::max()) fail("absurd size");
  if (rows_ * width_ * sizeof(float) != bytes.size() - data_) fail("data do not fit the shape");
}

void StaticVectors::read_keys(const MappedFile& keys) {
  MsgpackReader reader(keys.bytes(), keys.name());
  const auto count = reader.read_map();
  key_to_row_.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto key = reader.read_unsigned();
    const auto row = reader.read_unsigned();
    if (row >= rows_) reader.fail("a row that the vectors do not have");
    key_to_row_.emplace_back(key, static_cast<std::uint32_t>(row));
  }
  reader.expect_end();
  std::sort(key_to_row_.begin(), key_to_row_.end());
}

bool StaticVectors::copy(StringId orth, float* out) const {
  const auto found = std::lower_bound(key_to_row_.begin(), key_to_row_.end(),
                                      std::pair<StringId, std::uint32_t>(orth, 0));
  if (found == key_to_row_.end() || found->first != orth || width_ == 0) return false;
  const auto bytes = width_ * sizeof(float);
  std::memcpy(out, file_->bytes().data() + data_ + found->second * bytes, bytes);
  if (!std::all_of(out, out + width_, [](float x) { return std::isfinite(x); })) {
    throw ModelError(file_->name(), "row " + std::to_string(found->second),
                     "holds a value that is no number");
  }
  return true;
}

}  // namespace core::nlp::spacy
