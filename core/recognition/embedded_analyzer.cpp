#include "core/recognition/embedded_analyzer.hpp"

#include "core/nlp/name_finders.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/recognition/analyzer_engine.hpp"
#include "core/recognition/predefined/predefined.hpp"

namespace core::recognition {

std::unique_ptr<anonymization::Analyzer> make_embedded_analyzer(const EmbeddedOptions& options) {
  RecognizerRegistry registry;
  add_contact_recognizers(registry);
  add_identity_number_recognizers(registry);
  add_banking_recognizers(registry);
  add_date_recognizers(registry);
  add_money_recognizers(registry);
  if (options.percentages_and_quantities) add_quantity_recognizers(registry);
  registry.add_recognizer(std::make_shared<nlp::ChineseOrganizationFinder>());
  registry.add_recognizer(std::make_shared<nlp::LatinOrganizationFinder>());
  registry.add_recognizer(std::make_shared<nlp::ChinesePersonFinder>());
  registry.add_recognizer(std::make_shared<nlp::LatinPersonFinder>());
  registry.add_recognizer(std::make_shared<nlp::ChinesePlaceFinder>());
  registry.add_recognizer(std::make_shared<nlp::LatinPlaceFinder>());
  return std::make_unique<AnalyzerEngine>(
      nlp::make_embedded_nlp_engine(), std::move(registry),
      std::vector<Refinement>{nlp::add_neighbouring_persons, nlp::drop_misplaced,
                              nlp::add_further_mentions, nlp::drop_misplaced});
}

}  // namespace core::recognition
