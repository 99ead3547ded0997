// An analyzer outside, such as a service, among the recognizers of an engine.
//
// The engine then does for its hits what it does for its own: threshold, kinds,
// allow list, refinements, explanations.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "core/recognition/analyzer_engine.hpp"

namespace core::nlp {

class RemoteRecognizer : public recognition::EntityRecognizer {
 public:
  // Asks the analyzer for texts of the language ("zh", "en"). `supported_entities`
  // are the kinds that may be asked for by name; hits of others are reported, too.
  // Throws ValueError if there is no analyzer.
  RemoteRecognizer(std::shared_ptr<const anonymization::Analyzer> analyzer, std::string_view name,
                   std::string_view supported_language,
                   std::vector<std::string> supported_entities);

  // The hits, made usable (make_usable in refinements.hpp). What the analyzer throws
  // comes through.
  std::vector<recognition::RecognizerResult> analyze(
      const recognition::NlpArtifacts& artifacts) const override;

 private:
  std::shared_ptr<const anonymization::Analyzer> analyzer_;
};

// One recognizer for each of both languages.
recognition::RecognizerList remote_recognizers(
    const std::shared_ptr<const anonymization::Analyzer>& analyzer, std::string_view name,
    const std::vector<std::string>& supported_entities);

// An engine with these recognizers and no other, and with the refinements.
std::unique_ptr<recognition::AnalyzerEngine> make_refining_engine(
    recognition::RecognizerList recognizers);

}  // namespace core::nlp
