#include "core/anonymization/analyzer/embedded_analyzer.hpp"

#include "core/anonymization/analyzer/analyzer_construction.hpp"
#include "core/recognition/predefined/predefined.hpp"

namespace core::anonymization {

std::unique_ptr<Analyzer> make_embedded_analyzer(const EmbeddedOptions& options) {
  auto analyzer = build_analyzer();
  if (options.percentages_and_quantities) {
    recognition::add_quantity_recognizers(analyzer->registry());
  }
  for (const auto& recognizer : options.recognizers) {
    analyzer->registry().add_recognizer(recognizer);
  }
  return analyzer;
}

}  // namespace core::anonymization
