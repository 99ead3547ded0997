// The names in Chinese texts that the NLP engine found, or a service of HanLP.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/recognition/spacy_recognizer.hpp"

namespace core::nlp {

class HanlpClient;

// What is done when the service does not answer: the embedded finders serve, and
// this is told why. It must be callable from any thread. Empty: the error comes
// through.
using HanlpFallback = std::function<void(const std::string& reason)>;

// Stands where SpacyRecognizer stands for other languages.
class HanlpRecognizer : public recognition::NlpEntityRecognizer {
 public:
  // What the embedded finders found.
  HanlpRecognizer(std::string supported_language, std::vector<std::string> supported_entities);
  // What the service finds, of these kinds; and of the embedded finders the names
  // without an ideograph, which a service for Chinese does not know. analyze()
  // throws what the client throws. Throws ValueError if there is no client.
  HanlpRecognizer(std::string supported_language, std::vector<std::string> supported_entities,
                  std::shared_ptr<const HanlpClient> client, HanlpFallback fallback = {});

  std::vector<recognition::RecognizerResult> analyze(
      const recognition::NlpArtifacts& artifacts) const override;
  std::vector<recognition::ExplainedResult> explain(
      const recognition::NlpArtifacts& artifacts) const override;

 private:
  std::shared_ptr<const HanlpClient> client_;
  HanlpFallback fallback_;
};

}  // namespace core::nlp
