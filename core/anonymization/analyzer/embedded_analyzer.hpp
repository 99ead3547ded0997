// The analyzer that comes with veildoc: in the process, offline, for Chinese,
// English and both at once.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/anonymization/analyzer.hpp"

namespace core::recognition {
class EntityRecognizer;
}

namespace core::nlp {
class HanlpClient;
}

namespace core::anonymization {

struct EmbeddedOptions {
  // Whether PERCENT and QUANTITY are reported as well.
  bool percentages_and_quantities = false;
  // Further recognizers, none of them null; they run behind all others.
  std::vector<std::shared_ptr<const recognition::EntityRecognizer>> recognizers = {};
  // A service that finds the names in Chinese texts (core/nlp/hanlp_recognizer.hpp);
  // nullptr: the embedded finders do. With a fallback they also serve where it does
  // not answer, and the fallback is told why.
  std::shared_ptr<const nlp::HanlpClient> hanlp = nullptr;
  std::function<void(const std::string& reason)> hanlp_fallback = {};
  // The folder of a spaCy model that finds names in English documents as well; empty:
  // the one that the environment or the installation names, or none.
  std::string spacy_model = {};
};

// Builds the analyzer. Its vocabulary is shared by all analyzers of the process
// and built for the first, as is a spaCy model while any of them is there. May be
// called from any thread. Throws ValueError, naming the file and the reason, for a
// spaCy model that cannot be used.
std::unique_ptr<Analyzer> make_embedded_analyzer(const EmbeddedOptions& options = {});

}  // namespace core::anonymization
