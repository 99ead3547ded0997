#include "documents/package.hpp"

#include <algorithm>
#include <memory>
#include <unordered_set>

#include <zip.h>

#include "documents/errors.hpp"
#include "documents/names.hpp"

namespace documents {
namespace {

constexpr std::size_t LONGEST_NAME = 1000;
constexpr zip_uint16_t EARLIEST_DATE = (1U << 5U) | 1U;  // 1980-01-01, where the format begins

struct ZipDiscard {
  void operator()(zip_t* zip) const { zip_discard(zip); }
};
struct SourceFree {
  void operator()(zip_source_t* source) const { zip_source_free(source); }
};
struct FileClose {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using Zip = std::unique_ptr<zip_t, ZipDiscard>;
using Source = std::unique_ptr<zip_source_t, SourceFree>;

[[noreturn]] void refuse_package(const std::string& why) {
  throw DocumentError("the package " + why);
}

Zip open_archive(std::string_view bytes) {
  zip_error_t error;
  zip_error_init(&error);
  Source source(zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error));
  Zip zip(source ? zip_open_from_source(source.get(), ZIP_RDONLY, &error) : nullptr);
  zip_error_fini(&error);
  if (!zip) refuse_package("is damaged: no complete zip archive");
  static_cast<void>(source.release());  // belongs to the archive now
  return zip;
}

// A name may be told in a message: it is no text of the document, but a person
// could have chosen it, so odd ones are not.
bool is_safe_name(std::string_view name) {
  if (name.empty() || name.size() > LONGEST_NAME || name.front() == '/') return false;
  if (name.find_first_of("\\:") != std::string_view::npos) return false;
  if (std::any_of(name.begin(), name.end(),
                  [](char c) { return static_cast<unsigned char>(c) < 0x20; })) {
    return false;
  }
  for (std::size_t at = 0; at <= name.size();) {
    const auto end = std::min(name.find('/', at), name.size());
    const auto step = name.substr(at, end - at);
    if (step == ".." || step == ".") return false;
    at = end + 1;
  }
  return true;
}

zip_stat_t checked_stat(zip_t* zip, zip_uint64_t index, const PackageLimits& limits) {
  constexpr zip_uint64_t WANTED = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE;
  const auto which = "entry " + std::to_string(index + 1);
  zip_stat_t stat;
  if (zip_stat_index(zip, index, 0, &stat) != 0 || (stat.valid & WANTED) != WANTED) {
    refuse_package("is damaged: " + which);
  }
  if (!is_safe_name(stat.name)) refuse_package("names a part that it may not: " + which);
  if ((stat.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && stat.encryption_method != ZIP_EM_NONE) {
    refuse_package("is encrypted: " + which);
  }
  if (stat.size > limits.part_bytes ||
      (stat.size > limits.free_bytes && stat.size / limits.ratio > stat.comp_size)) {
    refuse_package("unpacks to too much: " + which);
  }
  return stat;
}

std::string unpacked(zip_t* zip, zip_uint64_t index, std::size_t size) {
  const std::unique_ptr<zip_file_t, FileClose> file(zip_fopen_index(zip, index, 0));
  const auto which = "entry " + std::to_string(index + 1);
  if (!file) refuse_package("is damaged: " + which);
  std::string bytes(size, '\0');
  std::size_t got = 0;
  while (got < size) {
    const auto read = zip_fread(file.get(), bytes.data() + got, size - got);
    if (read <= 0) refuse_package("is damaged: " + which);
    got += static_cast<std::size_t>(read);
  }
  char beyond = 0;  // at the end the checksum is compared
  if (zip_fread(file.get(), &beyond, 1) != 0) refuse_package("is damaged: " + which);
  return bytes;
}

void add_part(zip_t* zip, const Part& part) {
  Source source(zip_source_buffer(zip, part.bytes.data(), part.bytes.size(), 0));
  if (!source) throw core::ExternalError("the package could not be written");
  const auto index = zip_file_add(zip, part.name.c_str(), source.get(), ZIP_FL_ENC_UTF_8);
  if (index < 0) throw core::ExternalError("the package could not be written");
  static_cast<void>(source.release());  // belongs to the archive now
  const auto at = static_cast<zip_uint64_t>(index);
  zip_set_file_compression(zip, at, ZIP_CM_DEFLATE, 0);
  zip_file_set_dostime(zip, at, 0, EARLIEST_DATE, 0);
}

std::string all_of(zip_source_t* source) {
  zip_stat_t stat;
  if (zip_source_stat(source, &stat) != 0 || zip_source_open(source) != 0) {
    throw core::ExternalError("the package could not be written");
  }
  std::string bytes(stat.size, '\0');
  const auto got = zip_source_read(source, bytes.data(), bytes.size());
  zip_source_close(source);
  if (got < 0 || static_cast<std::size_t>(got) != bytes.size()) {
    throw core::ExternalError("the package could not be written");
  }
  return bytes;
}

}  // namespace

bool is_zip(std::string_view bytes) {
  return bytes.starts_with("PK\x03\x04") || bytes.starts_with("PK\x05\x06");
}

std::vector<Part> read_package(std::string_view bytes, const PackageLimits& limits) {
  const Zip zip = open_archive(bytes);
  const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(zip.get(), 0));
  if (count > limits.parts) refuse_package("has too many parts");
  std::vector<Part> parts;
  std::unordered_set<std::string> seen;
  std::size_t all = 0;
  for (zip_uint64_t i = 0; i < count; ++i) {
    const auto stat = checked_stat(zip.get(), i, limits);
    const std::string name = stat.name;
    if (name.ends_with('/')) continue;
    if (!seen.insert(ascii_lower(name)).second) {
      refuse_package("has two parts of one name: entry " + std::to_string(i + 1));
    }
    all += stat.size;
    if (all > limits.all_bytes) refuse_package("unpacks to too much");
    parts.push_back({name, unpacked(zip.get(), i, stat.size)});
  }
  return parts;
}

std::string write_package(const std::vector<Part>& parts) {
  zip_error_t error;
  zip_error_init(&error);
  Source source(zip_source_buffer_create(nullptr, 0, 0, &error));
  if (source) zip_source_keep(source.get());
  Zip zip(source ? zip_open_from_source(source.get(), ZIP_CREATE | ZIP_TRUNCATE, &error) : nullptr);
  zip_error_fini(&error);
  if (!zip) throw core::ExternalError("the package could not be written");
  for (const auto& part : parts) add_part(zip.get(), part);
  if (zip_close(zip.get()) != 0) throw core::ExternalError("the package could not be written");
  static_cast<void>(zip.release());  // closed
  return all_of(source.get());
}

}  // namespace documents
