#include "core/nlp/hybrid_routing_nlp_engine.hpp"

#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

#include "core/errors.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/nlp/vocabulary.hpp"

namespace core::nlp {
namespace {

bool is_routed(std::string_view language) { return language == "en" || language == "zh"; }

[[noreturn]] void refuse_model(const std::string& name) {
  std::error_code error;
  if (std::filesystem::is_directory(name, error)) {
    throw ValueError("the spaCy model in " + name + " cannot be used: such models are not run yet");
  }
  throw ValueError("unknown NLP model " + name + ": only " +
                   std::string(HybridRoutingNlpEngine::EMBEDDED_MODEL) + " is built in");
}

}  // namespace

HybridRoutingNlpEngine::HybridRoutingNlpEngine(std::string en_model_name)
    : en_model_name_(std::move(en_model_name)) {}

void HybridRoutingNlpEngine::load() {
  if (en_model_name_ != EMBEDDED_MODEL) refuse_model(en_model_name_);
  if (vocabulary_ != nullptr) return;
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
  return artifacts;
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
  return {kinds.begin(), kinds.end()};
}

}  // namespace core::nlp
