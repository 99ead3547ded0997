// One line of `veildoc batch`: JSON in, JSON out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "cli/line_reader.hpp"
#include "cli/masking.hpp"

namespace cli {

struct LineOptions {
  bool numbered = false;  // each line of the output begins with its number
  bool mapping = true;    // the originals are in it
  std::size_t longest = 0;
};

struct MaskedLine {
  std::string json;  // with a line end
  bool is_error = false;
};

// The same line always gives the same answer. May be called from any thread.
class LineMasker {
 public:
  // They outlive it.
  LineMasker(const MaskingOptions& masking, const GuardedAnalyzer& analyzer,
             const OverrideLists& overrides, const LineOptions& options)
      : masking_(masking), analyzer_(analyzer), overrides_(overrides), options_(options) {}

  // {"id", "text", "mapping", "language"} for {"id", "text", ...}, or {"id", "line",
  // "error"}. Throws ServiceFailure.
  MaskedLine mask(const InputLine& line) const;

 private:
  const MaskingOptions& masking_;
  const GuardedAnalyzer& analyzer_;
  const OverrideLists& overrides_;
  LineOptions options_;
};

// Whether there is nothing in the line but white space: it gives no line of output.
bool is_blank(const InputLine& line);

}  // namespace cli
