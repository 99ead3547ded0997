// The package of an Office document: named parts in a zip archive.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

struct Part {
  std::string name;  // as in "word/document.xml"
  std::string bytes;
};

// What may be unpacked. A contract of 300 pages takes some megabytes; pictures
// take more, but are hardly packed.
struct PackageLimits {
  std::size_t parts = 5000;
  std::size_t part_bytes = std::size_t{256} << 20U;
  std::size_t all_bytes = std::size_t{512} << 20U;
  // How many bytes may come of one, in parts above `free_bytes`.
  std::size_t ratio = 200;
  std::size_t free_bytes = std::size_t{4} << 20U;
};

bool is_zip(std::string_view bytes);

// The parts in the order of the archive; folders are left out. Throws
// DocumentError for a damaged or encrypted archive, for one beyond the limits, and
// for names that lead out of the package or stand twice.
std::vector<Part> read_package(std::string_view bytes, const PackageLimits& limits = {});

// An archive of the parts in this order, the same for the same parts.
std::string write_package(const std::vector<Part>& parts);

}  // namespace documents
