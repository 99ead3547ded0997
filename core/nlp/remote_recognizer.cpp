#include "core/nlp/remote_recognizer.hpp"

#include <utility>

#include "core/errors.hpp"
#include "core/nlp/refinements.hpp"
#include "core/nlp/vocabulary.hpp"

namespace core::nlp {

RemoteRecognizer::RemoteRecognizer(std::shared_ptr<const anonymization::Analyzer> analyzer,
                                   std::string_view name, std::string_view supported_language,
                                   std::vector<std::string> supported_entities)
    : EntityRecognizer(std::string(name), std::move(supported_entities),
                       std::string(supported_language)),
      analyzer_(std::move(analyzer)) {
  if (analyzer_ == nullptr) throw ValueError("there is no analyzer to ask");
}

std::vector<RecognizerResult> RemoteRecognizer::analyze(const NlpArtifacts& artifacts) const {
  return make_usable(artifacts, analyzer_->analyze(artifacts.text, supported_language()));
}

recognition::RecognizerList remote_recognizers(
    const std::shared_ptr<const anonymization::Analyzer>& analyzer, std::string_view name,
    const std::vector<std::string>& supported_entities) {
  recognition::RecognizerList list;
  for (const auto* language : {"en", "zh"}) {
    list.push_back(
        std::make_shared<RemoteRecognizer>(analyzer, name, language, supported_entities));
  }
  return list;
}

std::unique_ptr<recognition::AnalyzerEngine> make_refining_engine(
    recognition::RecognizerList recognizers) {
  recognition::RecognizerRegistry registry;
  registry.recognizers() = std::move(recognizers);
  return std::make_unique<recognition::AnalyzerEngine>(make_embedded_nlp_engine(),
                                                       std::move(registry), refinements());
}

}  // namespace core::nlp
