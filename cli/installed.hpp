// Whether this program was installed, or runs where it was built.
#pragma once

#include <filesystem>

namespace cli {

// The install step puts a marker beside the command's folder; a build tree and a
// copy of the program alone have none.
bool is_installed(const std::filesystem::path& executable);

// Tells the core of an installed program; to be called once, at the start.
void declare_packaged();

}  // namespace cli
