// The analyzer that comes with veildoc: in the process, offline, for Chinese,
// English and both at once.
#pragma once

#include <memory>

#include "core/anonymization/analyzer.hpp"

namespace core::anonymization {

struct EmbeddedOptions {
  // Whether PERCENT and QUANTITY are reported as well.
  bool percentages_and_quantities = false;
};

// Builds the analyzer. Its vocabulary is shared by all analyzers of the process
// and built for the first. May be called from any thread. Throws ValueError if
// the environment or the installation names another model than the embedded one.
std::unique_ptr<Analyzer> make_embedded_analyzer(const EmbeddedOptions& options = {});

}  // namespace core::anonymization
