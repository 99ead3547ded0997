#include "core/nlp/refining_analyzer.hpp"

#include <algorithm>
#include <utility>

#include "core/errors.hpp"
#include "core/nlp/refinements.hpp"
#include "core/nlp/vocabulary.hpp"

namespace core::nlp {

RefiningAnalyzer::RefiningAnalyzer(std::shared_ptr<const anonymization::Analyzer> analyzer)
    : analyzer_(std::move(analyzer)),
      vocabulary_(make_embedded_nlp_engine()),
      refinements_(refinements()) {
  if (analyzer_ == nullptr) throw ValueError("there is no analyzer to refine");
}

RefiningAnalyzer::~RefiningAnalyzer() = default;

std::vector<RecognizerResult> RefiningAnalyzer::analyze(std::u32string_view text,
                                                        std::string_view language) const {
  return refine(text, language, analyzer_->analyze(text, language));
}

std::vector<RecognizerResult> RefiningAnalyzer::refine(
    std::u32string_view text, std::string_view language,
    std::vector<RecognizerResult> results) const {
  const auto artifacts = vocabulary_->process_text(text, language);
  for (const auto& refinement : refinements_) {
    results = refinement.refine(artifacts, std::move(results));
  }
  std::erase_if(results, [&](const auto& r) {
    return recognition::is_consumed(refinements_, r.entity_type);
  });
  return recognition::remove_duplicates(std::move(results));
}

}  // namespace core::nlp
