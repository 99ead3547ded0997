#include "core/recognition/analyzer_engine.hpp"

#include <algorithm>
#include <map>
#include <tuple>

#include "core/errors.hpp"
#include "core/recognition/allow_list.hpp"
#include "core/recognition/decision_log.hpp"
#include "core/recognition/predefined/selection.hpp"
#include "core/recognition/spacy_recognizer.hpp"
#include "core/recognition/word_edges.hpp"
#include "core/text/unicode.hpp"

namespace core::recognition {
namespace {

// Cuts the hit at the first character that ends a cell; false if nothing is left.
bool keep_in_cell(std::u32string_view text, RecognizerResult& r) {
  const auto surface = text::slice(text, r.start, r.end);
  const auto cut = std::find_if(surface.begin(), surface.end(), is_cell_end);
  r.end = r.start + (cut - surface.begin());
  while (r.end > r.start && text::is_space(text[static_cast<std::size_t>(r.end - 1)])) --r.end;
  return r.end > r.start;
}

bool contains(const std::vector<std::string>& list, std::string_view value) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

bool serves(const EntityRecognizer& recognizer, const std::vector<std::string>& kinds) {
  const auto& own = recognizer.supported_entities();
  return std::any_of(own.begin(), own.end(), [&](const auto& k) { return contains(kinds, k); });
}

// The hits of one recognizer that reach the threshold; noted if there is a log.
void collect(const EntityRecognizer& recognizer, const NlpArtifacts& artifacts, double threshold,
             std::vector<RecognizerResult>& out, DecisionLog* log) {
  const auto keep = [&](RecognizerResult& r) {
    return r.score >= threshold && keep_in_cell(artifacts.text, r);
  };
  if (log == nullptr) {
    for (auto& r : recognizer.analyze(artifacts)) {
      if (keep(r)) out.push_back(std::move(r));
    }
    return;
  }
  for (auto& [r, explanation] : recognizer.explain(artifacts)) {
    if (!keep(r)) continue;
    log->note(r, std::move(explanation));
    out.push_back(std::move(r));
  }
}

// Drops what the request does not ask for.
void select(const AnalysisRequest& request, double threshold,
            std::vector<RecognizerResult>& results) {
  const AllowList allow_list(request.allow_list, request.allow_list_match);
  std::erase_if(results, [&](const auto& r) {
    if (!request.entities.empty() && !contains(request.entities, r.entity_type)) return true;
    return r.score < threshold || allow_list.allows(text::slice(request.text, r.start, r.end));
  });
}

}  // namespace

std::vector<RecognizerResult> remove_duplicates(std::vector<RecognizerResult> results) {
  std::stable_sort(results.begin(), results.end(), [](const auto& a, const auto& b) {
    return std::tuple(a.start, -a.end, -a.score) < std::tuple(b.start, -b.end, -b.score);
  });
  std::vector<RecognizerResult> kept;
  kept.reserve(results.size());
  // Per type the ends and scores of kept hits that may still contain what comes.
  std::map<std::string, std::vector<std::pair<anonymization::Offset, double>>> open_ends;
  for (auto& r : results) {
    if (r.score <= 0) continue;
    auto& ends = open_ends[r.entity_type];
    std::erase_if(ends, [&](const auto& e) { return e.first <= r.start; });
    const bool covered = std::any_of(ends.begin(), ends.end(), [&](const auto& e) {
      return e.first >= r.end && e.second >= r.score;
    });
    if (covered) continue;
    ends.emplace_back(r.end, r.score);
    kept.push_back(std::move(r));
  }
  return kept;
}

AnalyzerEngine::AnalyzerEngine(std::unique_ptr<const NlpEngine> nlp_engine,
                               std::vector<std::string> supported_languages,
                               std::vector<Refinement> refinements, double score_threshold)
    : nlp_engine_(std::move(nlp_engine)),
      supported_languages_(std::move(supported_languages)),
      refinements_(std::move(refinements)),
      score_threshold_(score_threshold) {
  load_predefined_recognizers(registry_);
  for (const auto& language : supported_languages_) {
    registry_.add_recognizer(
        std::make_shared<SpacyRecognizer>(language, nlp_engine_->get_supported_entities(language)));
  }
}

AnalyzerEngine::AnalyzerEngine(std::unique_ptr<const NlpEngine> nlp_engine,
                               RecognizerRegistry registry, std::vector<Refinement> refinements,
                               double score_threshold)
    : nlp_engine_(std::move(nlp_engine)),
      supported_languages_{"en", "zh"},
      registry_(std::move(registry)),
      refinements_(std::move(refinements)),
      score_threshold_(score_threshold) {}

std::vector<const EntityRecognizer*> AnalyzerEngine::recognizers_for(
    const AnalysisRequest& request) const {
  if (!contains(supported_languages_, request.language)) {
    throw ValueError("the analyzer does not serve the language " + request.language);
  }
  auto recognizers = registry_.get_recognizers(request.language);
  for (const auto& ad_hoc : request.ad_hoc_recognizers) {
    const auto& language = ad_hoc->supported_language();
    if (language.empty() || language == request.language) recognizers.push_back(ad_hoc.get());
  }
  if (!request.entities.empty() &&
      std::none_of(recognizers.begin(), recognizers.end(),
                   [&](const auto* r) { return serves(*r, request.entities); })) {
    throw ValueError("No matching recognizers were found to serve the request.");
  }
  return recognizers;
}

std::vector<RecognizerResult> AnalyzerEngine::analyze(std::u32string_view text,
                                                      std::string_view language) const {
  return analyze(AnalysisRequest{.text = text, .language = std::string(language)}).results;
}

AnalysisResult AnalyzerEngine::analyze(const AnalysisRequest& request) const {
  const double threshold = request.score_threshold.value_or(score_threshold_);
  if (!(threshold >= 0 && threshold <= 1)) {
    throw ValueError("score_threshold must be a number from 0 to 1");
  }
  const auto recognizers = recognizers_for(request);
  NlpArtifacts artifacts = nlp_engine_->process_text(request.text, request.language);
  artifacts.context = request.context;
  DecisionLog log;
  AnalysisResult out;
  for (const auto* recognizer : recognizers) {
    collect(*recognizer, artifacts, std::min(threshold, score_threshold_), out.results,
            request.return_decision_process ? &log : nullptr);
  }
  out.results = remove_duplicates(std::move(out.results));
  for (const auto& refinement : refinements_) {
    out.results = refinement.refine(artifacts, std::move(out.results));
    if (request.return_decision_process) log.note_new(out.results, refinement.name);
  }
  select(request, threshold, out.results);
  out.results = remove_duplicates(std::move(out.results));
  if (request.return_decision_process) {
    for (const auto& r : out.results) out.explanations.push_back(log.of(r));
  }
  return out;
}

}  // namespace core::recognition
