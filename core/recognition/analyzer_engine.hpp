// Runs the recognizers of a registry over a text.
//
// An engine may analyse on many threads at once, as long as nobody changes its
// registry meanwhile.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "core/recognition/analysis_request.hpp"
#include "core/recognition/recognizer_registry.hpp"

namespace core::recognition {

// A step that sees the hits of all recognizers and may add, change or drop some.
// Offsets of what it returns lie inside the text.
struct Refinement {
  std::string name;  // where hits are explained
  std::function<std::vector<RecognizerResult>(const NlpArtifacts& artifacts,
                                              std::vector<RecognizerResult> results)>
      refine;
  // Kinds whose hits only serve the step; they are reported to none but who asks
  // for them by kind.
  std::vector<std::string> consumed = {};
};

// Whether one of the steps consumes the kind.
bool is_consumed(const std::vector<Refinement>& refinements, std::string_view entity_type);

class AnalyzerEngine : public anonymization::Analyzer {
 public:
  // A pattern that is weak by itself stays below this without a context word.
  static constexpr double DEFAULT_SCORE_THRESHOLD = 0.4;

  // With the predefined recognizers and, for each language, a SpacyRecognizer of
  // what the NLP engine finds in it.
  AnalyzerEngine(std::unique_ptr<const NlpEngine> nlp_engine,
                 std::vector<std::string> supported_languages,
                 std::vector<Refinement> refinements = {},
                 double score_threshold = DEFAULT_SCORE_THRESHOLD);
  // With these recognizers, for Chinese and English.
  AnalyzerEngine(std::unique_ptr<const NlpEngine> nlp_engine, RecognizerRegistry registry,
                 std::vector<Refinement> refinements = {},
                 double score_threshold = DEFAULT_SCORE_THRESHOLD);

  // The hits sorted by start, without duplicates within a type. None crosses a
  // line end, a tab or a paragraph joiner (U+E000, U+E001).
  std::vector<RecognizerResult> analyze(std::u32string_view text,
                                        std::string_view language) const override;

  // The same, and only what the request asks for. Recognizers and refinements
  // work on all kinds and with the engine's threshold or a lower one, so that
  // what is asked for does not depend on what is not. Throws ValueError for a
  // language or kinds that nobody serves and for a threshold outside 0..1,
  // RegexError for a pattern of the allow list.
  AnalysisResult analyze(const AnalysisRequest& request) const;
  // The same with these recognizers in place of the registry's.
  AnalysisResult analyze(const AnalysisRequest& request, const RecognizerList& recognizers) const;

  const RecognizerRegistry& registry() const { return registry_; }
  RecognizerRegistry& registry() { return registry_; }
  // Runs behind those that are there.
  void add_refinement(Refinement refinement) { refinements_.push_back(std::move(refinement)); }
  const NlpEngine& nlp_engine() const { return *nlp_engine_; }
  const std::vector<std::string>& supported_languages() const { return supported_languages_; }

 private:
  std::vector<const EntityRecognizer*> recognizers_for(const AnalysisRequest& request,
                                                       const RecognizerList& recognizers) const;

  std::unique_ptr<const NlpEngine> nlp_engine_;
  std::vector<std::string> supported_languages_;
  RecognizerRegistry registry_;
  std::vector<Refinement> refinements_;
  double score_threshold_;
};

// Drops every hit that lies within another of its type with at least its score,
// and every one that scores nothing. The rest is sorted by start, the longer first.
std::vector<RecognizerResult> remove_duplicates(std::vector<RecognizerResult> results);

}  // namespace core::recognition
