#include "cli/installed.hpp"

#include <system_error>

#include "core/app_paths.hpp"

namespace cli {

namespace fs = std::filesystem;

bool is_installed(const fs::path& executable) {
  std::error_code error;
  return fs::is_regular_file(executable.parent_path() / VEILDOC_MARKER_FROM_BIN, error);
}

void declare_packaged() {
  std::error_code error;
  const auto executable = fs::read_symlink("/proc/self/exe", error);
  if (!error && is_installed(executable)) core::set_packaged_executable(executable);
}

}  // namespace cli
