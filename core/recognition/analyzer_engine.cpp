#include "core/recognition/analyzer_engine.hpp"

#include <algorithm>
#include <numeric>
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

// Names of the steps, where hits are explained.
constexpr auto THRESHOLD = "threshold";
constexpr auto DUPLICATES = "duplicates";
constexpr auto ONLY_SHIELDS = "kinds that only shield";
constexpr auto KINDS = "kinds asked for";
constexpr auto ALLOW_LIST = "allow list";

using Results = std::vector<RecognizerResult>;

Results drop_below(double threshold, Results results) {
  std::erase_if(results, [&](const auto& r) { return !(r.score >= threshold); });
  return results;
}

Results drop_other_kinds(const std::vector<std::string>& kinds, Results results) {
  std::erase_if(results, [&](const auto& r) { return !contains(kinds, r.entity_type); });
  return results;
}

Results drop_consumed(const std::vector<Refinement>& refinements, Results results) {
  std::erase_if(results, [&](const auto& r) { return is_consumed(refinements, r.entity_type); });
  return results;
}

Results drop_allowed(const AnalysisRequest& request, Results results) {
  const AllowList allow_list(request.allow_list, request.allow_list_match);
  std::erase_if(results, [&](const auto& r) {
    return allow_list.allows(text::slice(request.text, r.start, r.end));
  });
  return results;
}

// The hits of one analysis on their way, explained if that is asked for.
class Hits {
 public:
  explicit Hits(const AnalysisRequest& request)
      : text_(request.text), explained_(request.return_decision_process) {}

  void collect(const EntityRecognizer& recognizer, const NlpArtifacts& artifacts) {
    if (!explained_) {
      for (auto& r : recognizer.analyze(artifacts)) add(std::move(r));
      return;
    }
    for (auto& [r, explanation] : recognizer.explain(artifacts)) {
      if (add(std::move(r))) log_.note(results_.back(), std::move(explanation));
    }
  }

  // Replaces the list by what the step makes of it.
  template <class Step>
  void run(const std::string& name, const Step& step) {
    if (!explained_) {
      results_ = step(std::move(results_));
      return;
    }
    auto after = step(results_);
    log_.note_step(name, results_, after);
    results_ = std::move(after);
  }

  AnalysisResult take() && {
    AnalysisResult out{std::move(results_)};
    if (!explained_) return out;
    for (const auto& r : out.results) out.explanations.push_back(log_.of(r));
    out.lost = log_.take_lost();
    return out;
  }

 private:
  bool add(RecognizerResult r) {
    if (!keep_in_cell(text_, r)) return false;
    results_.push_back(std::move(r));
    return true;
  }

  std::u32string_view text_;
  bool explained_;
  Results results_;
  DecisionLog log_;
};

}  // namespace

bool is_consumed(const std::vector<Refinement>& refinements, std::string_view entity_type) {
  return std::any_of(refinements.begin(), refinements.end(),
                     [&](const auto& step) { return contains(step.consumed, entity_type); });
}

std::vector<RecognizerResult> remove_duplicates(std::vector<RecognizerResult> results) {
  std::vector<std::uint32_t> order(results.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(), [&](auto i, auto j) {
    const auto& a = results[i];
    const auto& b = results[j];
    return std::tuple(a.start, -a.end, -a.score) < std::tuple(b.start, -b.end, -b.score);
  });
  std::vector<RecognizerResult> kept;
  kept.reserve(results.size());
  // Per type the ends and scores of kept hits that may still contain what comes.
  using Ends = std::vector<std::pair<anonymization::Offset, double>>;
  std::vector<std::pair<std::string, Ends>> open_ends;  // of few types
  const auto ends_of = [&](const std::string& type) -> Ends& {
    for (auto& [known, ends] : open_ends) {
      if (known == type) return ends;
    }
    return open_ends.emplace_back(type, Ends()).second;
  };
  for (const auto i : order) {
    auto& r = results[i];
    if (r.score <= 0) continue;
    auto& ends = ends_of(r.entity_type);
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
    const AnalysisRequest& request, const RecognizerList& all) const {
  if (!contains(supported_languages_, request.language)) {
    throw ValueError("the analyzer does not serve the language " + request.language);
  }
  std::vector<const EntityRecognizer*> recognizers;
  for (const auto* list : {&all, &request.ad_hoc_recognizers}) {
    for (const auto& recognizer : *list) {
      const auto& language = recognizer->supported_language();
      if (language.empty() || language == request.language) recognizers.push_back(recognizer.get());
    }
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
  return analyze(request, registry_.recognizers());
}

AnalysisResult AnalyzerEngine::analyze(const AnalysisRequest& request,
                                       const RecognizerList& all) const {
  const double threshold = request.score_threshold.value_or(score_threshold_);
  if (!(threshold >= 0 && threshold <= 1)) {
    throw ValueError("score_threshold must be a number from 0 to 1");
  }
  const auto recognizers = recognizers_for(request, all);
  NlpArtifacts artifacts = nlp_engine_->process_text(request.text, request.language);
  artifacts.context = request.context;
  Hits hits(request);
  for (const auto* recognizer : recognizers) hits.collect(*recognizer, artifacts);
  artifacts.entities = {};  // are hits now
  const auto at_least = [](double limit) {
    return [limit](Results results) { return drop_below(limit, std::move(results)); };
  };
  hits.run(THRESHOLD, at_least(std::min(threshold, score_threshold_)));
  hits.run(DUPLICATES, remove_duplicates);
  for (const auto& refinement : refinements_) {
    hits.run(refinement.name,
             [&](Results results) { return refinement.refine(artifacts, std::move(results)); });
  }
  if (request.entities.empty()) {
    hits.run(ONLY_SHIELDS, [&](Results r) { return drop_consumed(refinements_, std::move(r)); });
  } else {
    hits.run(KINDS, [&](Results r) { return drop_other_kinds(request.entities, std::move(r)); });
  }
  hits.run(THRESHOLD, at_least(threshold));
  hits.run(ALLOW_LIST, [&](Results results) { return drop_allowed(request, std::move(results)); });
  hits.run(DUPLICATES, remove_duplicates);
  return std::move(hits).take();
}

}  // namespace core::recognition
