#include "core/nlp/hybrid_routing_nlp_engine.hpp"

#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

#include "core/errors.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/nlp/spacy/spacy_pipeline.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/recognition/spacy_recognizer.hpp"

namespace core::nlp {
namespace {

bool is_routed(std::string_view language) { return language == "en" || language == "zh"; }

std::shared_ptr<const spacy::SpacyPipeline> load_model(const std::string& name) {
  std::error_code error;
  if (std::filesystem::is_directory(name, error)) return spacy::shared_spacy_pipeline(name);
  throw ValueError("unknown NLP model " + name + ": neither " +
                   std::string(HybridRoutingNlpEngine::EMBEDDED_MODEL) +
                   ", which stands for what is built in, nor the folder of a spaCy model");
}

}  // namespace

HybridRoutingNlpEngine::HybridRoutingNlpEngine(std::string en_model_name)
    : en_model_name_(std::move(en_model_name)) {}

HybridRoutingNlpEngine::~HybridRoutingNlpEngine() = default;

void HybridRoutingNlpEngine::load() {
  if (vocabulary_ != nullptr) return;
  if (en_model_name_ != EMBEDDED_MODEL) {
    spacy_ = load_model(en_model_name_);
    spacy_name_ = spacy_->description().full_name();
  }
  finders_.push_back(std::make_unique<ChineseOrganizationFinder>());
  finders_.push_back(std::make_unique<LatinOrganizationFinder>());
  finders_.push_back(std::make_unique<ChinesePersonFinder>());
  finders_.push_back(std::make_unique<LatinPersonFinder>());
  finders_.push_back(std::make_unique<ChinesePlaceFinder>());
  finders_.push_back(std::make_unique<LatinPlaceFinder>());
  finders_.push_back(std::make_unique<UnexplainedNameFinder>());  // reads what the others found
  vocabulary_ = make_embedded_nlp_engine();
}

recognition::NlpArtifacts HybridRoutingNlpEngine::process_text(std::u32string_view text,
                                                               std::string_view language) const {
  if (vocabulary_ == nullptr) throw ValueError("the NLP engine is not loaded");
  if (!is_routed(language)) {
    throw ValueError("no NLP model for the language " + std::string(language));
  }
  auto artifacts = vocabulary_->process_text(text, language);
  for (const auto& finder : finders_) {
    for (auto& result : finder->analyze(artifacts)) {
      artifacts.entities.push_back({std::move(result), finder->name()});
    }
  }
  if (spacy_ != nullptr && language == "en") add_spacy_entities(artifacts);
  return artifacts;
}

void HybridRoutingNlpEngine::add_spacy_entities(recognition::NlpArtifacts& artifacts) const {
  for (const auto& entity : spacy_->analyze(artifacts.text).entities) {
    const auto kind = recognition::spacy_entity_type(entity.label);
    if (!kind) continue;
    const auto start = static_cast<anonymization::Offset>(entity.start);
    const auto end = static_cast<anonymization::Offset>(entity.end);
    artifacts.entities.push_back({{std::string(*kind), start, end, SPACY_SCORE}, spacy_name_});
  }
}

std::vector<std::string> HybridRoutingNlpEngine::finder_names() const {
  std::vector<std::string> names;
  names.reserve(finders_.size());
  for (const auto& finder : finders_) names.push_back(finder->name());
  return names;
}

std::vector<std::string> HybridRoutingNlpEngine::get_supported_entities(
    std::string_view language) const {
  std::set<std::string> kinds;
  if (!is_routed(language)) return {};
  for (const auto& finder : finders_) {
    kinds.insert(finder->supported_entities().begin(), finder->supported_entities().end());
  }
  if (spacy_ != nullptr && language == "en") {
    for (const auto& label : spacy_->description().labels) {
      if (const auto kind = recognition::spacy_entity_type(label)) kinds.emplace(*kind);
    }
  }
  return {kinds.begin(), kinds.end()};
}

}  // namespace core::nlp
