#include "core/recognition/analyzer_engine.hpp"

#include <algorithm>
#include <map>
#include <tuple>

#include "core/recognition/predefined/selection.hpp"
#include "core/recognition/spacy_recognizer.hpp"
#include "core/text/unicode.hpp"

namespace core::recognition {
namespace {

bool is_cell_end(char32_t c) {
  return c == U'\n' || c == U'\r' || c == U'\t' || c == 0xE000 || c == 0xE001;
}

// Cuts the hit at the first character that ends a cell; false if nothing is left.
bool keep_in_cell(std::u32string_view text, RecognizerResult& r) {
  const auto surface = text::slice(text, r.start, r.end);
  const auto cut = std::find_if(surface.begin(), surface.end(), is_cell_end);
  r.end = r.start + (cut - surface.begin());
  while (r.end > r.start && text::is_space(text[static_cast<std::size_t>(r.end - 1)])) --r.end;
  return r.end > r.start;
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

std::vector<RecognizerResult> AnalyzerEngine::analyze(std::u32string_view text,
                                                      std::string_view language) const {
  const NlpArtifacts artifacts = nlp_engine_->process_text(text, language);
  std::vector<RecognizerResult> results;
  for (const auto* recognizer : registry_.get_recognizers(language)) {
    for (auto& r : recognizer->analyze(artifacts)) {
      if (r.score >= score_threshold_ && keep_in_cell(text, r)) results.push_back(std::move(r));
    }
  }
  results = remove_duplicates(std::move(results));
  for (const auto& refine : refinements_) results = refine(artifacts, std::move(results));
  return remove_duplicates(std::move(results));
}

}  // namespace core::recognition
