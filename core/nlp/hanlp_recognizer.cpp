#include "core/nlp/hanlp_recognizer.hpp"

#include <utility>

#include "core/errors.hpp"
#include "core/nlp/hanlp_client.hpp"
#include "core/text/unicode.hpp"

namespace core::nlp {

using recognition::ExplainedResult;
using recognition::NlpArtifacts;
using recognition::RecognizerResult;

HanlpRecognizer::HanlpRecognizer(std::string supported_language,
                                 std::vector<std::string> supported_entities)
    : NlpEntityRecognizer("HanlpRecognizer", std::move(supported_entities),
                          std::move(supported_language)) {}

HanlpRecognizer::HanlpRecognizer(std::string supported_language,
                                 std::vector<std::string> supported_entities,
                                 std::shared_ptr<const HanlpClient> client, HanlpFallback fallback)
    : NlpEntityRecognizer("HanlpRecognizer", std::move(supported_entities),
                          std::move(supported_language)),
      client_(std::move(client)),
      fallback_(std::move(fallback)) {
  if (client_ == nullptr) throw ValueError("there is no HanLP service to ask");
}

std::vector<RecognizerResult> HanlpRecognizer::analyze(const NlpArtifacts& artifacts) const {
  if (client_ == nullptr) return NlpEntityRecognizer::analyze(artifacts);
  std::vector<RecognizerResult> results;
  for (auto& hit : explain(artifacts)) results.push_back(std::move(hit.result));
  return results;
}

std::vector<ExplainedResult> HanlpRecognizer::explain(const NlpArtifacts& artifacts) const {
  auto embedded = NlpEntityRecognizer::explain(artifacts);
  if (client_ == nullptr) return embedded;
  std::vector<RecognizerResult> found;
  try {
    found = client_->find(artifacts.text);
  } catch (const remote::ServiceUnavailable& e) {
    if (!fallback_) throw;
    fallback_(e.what());
    return embedded;
  }
  std::erase_if(embedded, [&](const auto& hit) {
    return text::contains_ideograph(text::slice(artifacts.text, hit.result.start, hit.result.end));
  });
  for (auto& result : found) {
    if (!reports(result)) continue;
    const double score = result.score;
    embedded.push_back({std::move(result), {name(), "service", score, score}});
  }
  return embedded;
}

}  // namespace core::nlp
