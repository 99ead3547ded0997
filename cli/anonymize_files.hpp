// `veildoc anonymize` on several files, or a folder of them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/command.hpp"
#include "cli/masking.hpp"

namespace cli {

struct FilesOptions {
  std::vector<std::string> inputs;
  std::string output;    // a folder
  std::string mappings;  // the same; empty: none are written
  std::string matter;    // a file; empty: each document has numbers of its own
  std::string report;    // the same
  bool overwrite = false;
  bool resume = false;   // leave documents whose outputs are there
  std::size_t jobs = 1;  // at once; 1 with a matter
  bool encrypt = false;
  std::string passphrase_file;
  bool dry_run = false;
};

// What fails with one file is told, and the others go on. Throws Failure, with what
// became of all, if one was not masked.
void anonymize_files(const FilesOptions& options, const MaskingOptions& masking,
                     const Context& context);

}  // namespace cli
