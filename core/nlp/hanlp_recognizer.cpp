#include "core/nlp/hanlp_recognizer.hpp"

#include <utility>

#include "core/recognition/spacy_recognizer.hpp"

namespace core::nlp {

HanlpRecognizer::HanlpRecognizer(std::string supported_language,
                                 std::vector<std::string> supported_entities)
    : EntityRecognizer("HanlpRecognizer", std::move(supported_entities),
                       std::move(supported_language)) {}

std::vector<recognition::RecognizerResult> HanlpRecognizer::analyze(
    const recognition::NlpArtifacts& artifacts) const {
  return recognition::entities_for(*this, artifacts);
}

}  // namespace core::nlp
