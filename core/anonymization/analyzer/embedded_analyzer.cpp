#include "core/anonymization/analyzer/embedded_analyzer.hpp"

#include "core/anonymization/analyzer/analyzer_construction.hpp"
#include "core/nlp/hanlp_recognizer.hpp"
#include "core/recognition/own_kinds.hpp"
#include "core/recognition/predefined/predefined.hpp"

namespace core::anonymization {
namespace {

void use_service(const EmbeddedOptions& options, recognition::RecognizerRegistry& registry) {
  for (auto& recognizer : registry.recognizers()) {
    if (dynamic_cast<const nlp::HanlpRecognizer*>(recognizer.get()) == nullptr) continue;
    recognizer = std::make_shared<nlp::HanlpRecognizer>(recognizer->supported_language(),
                                                        recognizer->supported_entities(),
                                                        options.hanlp, options.hanlp_fallback);
  }
}

}  // namespace

std::unique_ptr<Analyzer> make_embedded_analyzer(const EmbeddedOptions& options) {
  auto analyzer = build_analyzer(true, options.spacy_model);
  if (options.hanlp != nullptr) use_service(options, analyzer->registry());
  if (options.percentages_and_quantities) {
    recognition::add_quantity_recognizers(analyzer->registry());
  }
  analyzer->add_refinement(
      recognition::prefer_kinds(recognition::own_kinds(analyzer->registry(), options.recognizers)));
  for (const auto& recognizer : options.recognizers) {
    analyzer->registry().add_recognizer(recognizer);
  }
  return analyzer;
}

}  // namespace core::anonymization
