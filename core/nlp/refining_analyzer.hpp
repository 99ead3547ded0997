// Any analyzer with the refinements of the embedded one.
//
//   const RefiningAnalyzer analyzer(std::make_shared<RemoteAnalyzer>(...));
//   anonymize_with_numbered_placeholders(text, analyzer, "auto")
//
// A remote service, an object of another language: whatever finds names misses
// mentions of them, cuts addresses in pieces and takes labels for names. The
// stages of refinements() repair that on its hits.
#pragma once

#include <memory>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "core/recognition/analyzer_engine.hpp"

namespace core::nlp {

class RefiningAnalyzer : public anonymization::Analyzer {
 public:
  // Throws ValueError if there is no analyzer.
  explicit RefiningAnalyzer(std::shared_ptr<const anonymization::Analyzer> analyzer);
  ~RefiningAnalyzer() override;

  // The refined hits, sorted by start, without duplicates within a kind and without
  // those of shield_kinds(). The hits of the analyzer inside may be anything; see
  // make_usable. What it throws comes through.
  std::vector<anonymization::RecognizerResult> analyze(std::u32string_view text,
                                                       std::string_view language) const override;

  // The same for hits that are there already.
  std::vector<anonymization::RecognizerResult> refine(
      std::u32string_view text, std::string_view language,
      std::vector<anonymization::RecognizerResult> results) const;

 private:
  std::shared_ptr<const anonymization::Analyzer> analyzer_;
  std::unique_ptr<const recognition::NlpEngine> vocabulary_;
  std::vector<recognition::Refinement> refinements_;
};

}  // namespace core::nlp
