#include "core/app_paths.hpp"

#include <mutex>
#include <system_error>

namespace core {
namespace {

namespace fs = std::filesystem;

struct PackagedExecutable {
  std::mutex mutex;
  std::optional<fs::path> path;
};

PackagedExecutable& declared() {
  static PackagedExecutable instance;
  return instance;
}

fs::path running_executable() {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error);
}

}  // namespace

void set_packaged_executable(std::optional<fs::path> executable) {
  const std::lock_guard lock(declared().mutex);
  declared().path = std::move(executable);
}

std::optional<fs::path> packaged_executable() {
  const std::lock_guard lock(declared().mutex);
  return declared().path;
}

fs::path resolve_adv_util_dir(const fs::path& exe_dir) { return exe_dir / "adv_util"; }

fs::path resolve_app_root() {
  std::error_code error;
  const auto executable = packaged_executable().value_or(running_executable());
  auto folder = fs::weakly_canonical(executable, error).parent_path();
  return folder.filename() == "bin" ? folder.parent_path() : folder;
}

}  // namespace core
