#include "core/anonymization/analyzer/analyzer_construction.hpp"

#include <utility>

#include "core/anonymization/analyzer/model_path.hpp"
#include "core/anonymization/recognizers/china_recognizers.hpp"
#include "core/nlp/cpu_throttle.hpp"
#include "core/nlp/hanlp_recognizer.hpp"
#include "core/nlp/hybrid_routing_nlp_engine.hpp"
#include "core/nlp/refinements.hpp"
#include "core/recognition/spacy_recognizer.hpp"

namespace core::anonymization {
namespace {

bool is_zh_spacy(const recognition::EntityRecognizer& recognizer) {
  return recognizer.supported_language() == "zh" &&
         dynamic_cast<const recognition::SpacyRecognizer*>(&recognizer) != nullptr;
}

}  // namespace

void _swap_zh_spacy_recognizer_for_hanlp(recognition::RecognizerRegistry& registry,
                                         const std::vector<std::string>& zh_supported_entities) {
  recognition::RecognizerList swapped;
  bool replaced = false;
  const auto add_hanlp = [&] {
    swapped.push_back(std::make_shared<nlp::HanlpRecognizer>("zh", zh_supported_entities));
  };
  for (const auto& recognizer : registry.recognizers()) {
    if (is_zh_spacy(*recognizer)) {
      add_hanlp();
      replaced = true;
    } else {
      swapped.push_back(recognizer);
    }
  }
  if (!replaced) add_hanlp();
  registry.recognizers() = std::move(swapped);
}

std::unique_ptr<recognition::AnalyzerEngine> build_analyzer(
    bool include_zh_supplement_country_lexicon, const std::string& en_model) {
  nlp::apply_zh_nlp_cpu_throttle();
  auto engine = std::make_unique<nlp::HybridRoutingNlpEngine>(
      en_model.empty() ? resolve_spacy_model_path("en", nlp::HybridRoutingNlpEngine::EMBEDDED_MODEL)
                       : en_model);
  engine->load();
  const auto zh_supported_entities = engine->get_supported_entities("zh");
  auto analyzer = std::make_unique<recognition::AnalyzerEngine>(
      std::move(engine), std::vector<std::string>{"en", "zh"}, nlp::refinements());
  _swap_zh_spacy_recognizer_for_hanlp(analyzer->registry(), zh_supported_entities);
  _register_china_mobile_recognizers(analyzer->registry(), include_zh_supplement_country_lexicon);
  return analyzer;
}

}  // namespace core::anonymization
