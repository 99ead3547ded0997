// Where the application is installed.
//
// A packaged application is one that was installed or unpacked as a whole, with
// its resources beside it; a build tree is not. Nobody can tell from inside, so
// the program says it once, at its start. May be called from any thread.
#pragma once

#include <filesystem>
#include <optional>

namespace core {

// Declares the running program packaged, with this executable; nullopt (the
// state at the start) says that it is not.
void set_packaged_executable(std::optional<std::filesystem::path> executable);
std::optional<std::filesystem::path> packaged_executable();

// The folder of further resources (models) beside the executable: exe_dir/adv_util.
std::filesystem::path resolve_adv_util_dir(const std::filesystem::path& exe_dir);

// The folder that the application was installed into: the one above bin/, or the
// folder of the executable where there is no bin/. Of a program that is not
// packaged, the same for the executable that runs.
std::filesystem::path resolve_app_root();

}  // namespace core
