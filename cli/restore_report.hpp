// What `veildoc restore` tells of a document.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "core/restore/restore.hpp"
#include "documents/masked_file.hpp"

namespace cli {

struct RestoreReport {
  const documents::MaskedFile& file;  // as it was edited
  const core::restore::Mapping& mapping;
  const std::vector<core::restore::Finding>& findings;
  bool unchanged = false;  // since it was masked
  bool show_surfaces = false;

  // Whether something stays, or is a guess.
  bool is_in_doubt() const;

  // One line for each kind of thing that somebody should look at.
  void warn(std::ostream& err) const;
  // All about it, for --check: counts, and what warn() tells in a table.
  std::string check() const;
};

}  // namespace cli
