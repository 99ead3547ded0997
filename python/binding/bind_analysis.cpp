// The NLP engine, the analyzer engine and the analyzers made of them.
#include "python/binding/analyzers.hpp"
#include "python/binding/bindings.hpp"
#include "python/binding/paths.hpp"

#include "core/anonymization/analyzer/analyzer_construction.hpp"
#include "core/errors.hpp"
#include "core/nlp/hybrid_routing_nlp_engine.hpp"

namespace binding {
namespace {

namespace recognition = core::recognition;
using core::nlp::HybridRoutingNlpEngine;
using core::nlp::RefiningAnalyzer;

// An NLP engine that Python code holds as well.
class SharedNlpEngine : public recognition::NlpEngine {
 public:
  explicit SharedNlpEngine(std::shared_ptr<const HybridRoutingNlpEngine> engine)
      : engine_(std::move(engine)) {}

  recognition::NlpArtifacts process_text(std::u32string_view text,
                                         std::string_view language) const override {
    return engine_->process_text(text, language);
  }
  std::vector<std::string> get_supported_entities(std::string_view language) const override {
    return engine_->get_supported_entities(language);
  }

 private:
  std::shared_ptr<const HybridRoutingNlpEngine> engine_;
};

Engine with_registry(std::shared_ptr<const AnalyzerEngine> engine) {
  py::object registry = py::cast(Registry{list_of(engine->registry().recognizers())});
  return {std::move(engine), std::move(registry)};
}

Engine make_engine(const py::object& registry, std::shared_ptr<HybridRoutingNlpEngine> nlp_engine,
                   const py::object& languages, double threshold) {
  if (nlp_engine == nullptr) {
    nlp_engine = std::make_shared<HybridRoutingNlpEngine>(
        std::string(HybridRoutingNlpEngine::EMBEDDED_MODEL));
    nlp_engine->load();
  }
  auto shared = std::make_unique<SharedNlpEngine>(std::move(nlp_engine));
  std::vector<std::string> codes = {"en", "zh"};
  if (!languages.is_none()) codes = utf8s_of(languages, "supported_languages");
  auto engine = std::make_shared<const AnalyzerEngine>(
      std::move(shared), std::move(codes), std::vector<recognition::Refinement>(), threshold);
  if (registry.is_none()) return with_registry(std::move(engine));
  return {std::move(engine), registry};
}

// What analyze() may be asked beside the text and its language.
struct Options {
  py::object entities;
  py::object score_threshold;
  bool return_decision_process;
  py::object ad_hoc_recognizers;
  py::object context;
  py::object allow_list;
  py::object allow_list_match;
};

recognition::AnalysisRequest request_of(py::handle language, const Options& options) {
  recognition::AnalysisRequest request{.language = utf8_of(language, "language")};
  if (!options.entities.is_none()) request.entities = utf8s_of(options.entities, "entities");
  if (!options.score_threshold.is_none()) {
    request.score_threshold = py::float_(options.score_threshold);
  }
  if (!options.ad_hoc_recognizers.is_none()) {
    request.ad_hoc_recognizers = recognizers_of(options.ad_hoc_recognizers);
  }
  if (!options.context.is_none()) request.context = texts_of(options.context, "context");
  if (!options.allow_list.is_none()) {
    request.allow_list = texts_of(options.allow_list, "allow_list");
  }
  const auto match = utf8_of(options.allow_list_match, "allow_list_match");
  if (match != "exact" && match != "regex") {
    throw core::ValueError("allow_list_match must be \"exact\" or \"regex\", not \"" + match +
                           "\"");
  }
  if (match == "regex") request.allow_list_match = recognition::AllowListMatch::REGEX;
  request.return_decision_process = options.return_decision_process;
  return request;
}

py::list analyze(const Engine& self, py::handle text, py::handle language, const Options& options) {
  const auto document = text_of(text);
  auto request = request_of(language, options);
  request.text = document;
  const auto recognizers = recognizers_of(self.registry.attr("recognizers"));
  auto found = without_gil([&] { return self.engine->analyze(request, recognizers); });
  py::list out;
  for (std::size_t i = 0; i < found.results.size(); ++i) {
    Result result{std::move(found.results[i]), {}};
    if (i < found.explanations.size()) {
      result.analysis_explanation = std::move(found.explanations[i]);
    }
    out.append(py::cast(std::move(result)));
  }
  return out;
}

std::shared_ptr<HybridRoutingNlpEngine> nlp_engine_of(const Engine& self) {
  const auto* engine = &self.engine->nlp_engine();
  const auto* hybrid = dynamic_cast<const HybridRoutingNlpEngine*>(engine);
  if (hybrid == nullptr) return nullptr;
  return {std::const_pointer_cast<AnalyzerEngine>(self.engine),
          const_cast<HybridRoutingNlpEngine*>(hybrid)};  // NOLINT: Python knows no const
}

Engine build_analyzer(bool include_country_lexicon) {
  read_frozen_flag();
  std::shared_ptr<const AnalyzerEngine> engine =
      without_gil([&] { return core::anonymization::build_analyzer(include_country_lexicon); });
  return with_registry(std::move(engine));
}

py::list analyze_with_options(const Engine& self, py::handle text, py::handle language,
                              py::object entities, py::object score_threshold,
                              bool return_decision_process, py::object ad_hoc_recognizers,
                              py::object context, py::object allow_list,
                              py::object allow_list_match) {
  return analyze(self, text, language,
                 {std::move(entities), std::move(score_threshold), return_decision_process,
                  std::move(ad_hoc_recognizers), std::move(context), std::move(allow_list),
                  std::move(allow_list_match)});
}

void bind_engine(py::module_& m) {
  py::class_<Engine> engine(m, "AnalyzerEngine",
                            "Runs the recognizers of a registry over a text. One engine serves\n"
                            "many texts, also from several threads at once.");
  define_init(engine, py::init(&make_engine),
              "Without a registry: the predefined recognizers and what the NLP engine finds.",
              py::arg("registry") = py::none(), py::arg("nlp_engine") = py::none(),
              py::arg("supported_languages") = py::none(),
              py::arg("default_score_threshold") = AnalyzerEngine::DEFAULT_SCORE_THRESHOLD);
  define_method(engine, "analyze", analyze_with_options,
                "The hits as a list of RecognizerResult, sorted by start.", py::arg("text"),
                py::arg("language"), py::arg("entities") = py::none(),
                py::arg("score_threshold") = py::none(), py::arg("return_decision_process") = false,
                py::arg("ad_hoc_recognizers") = py::none(), py::arg("context") = py::none(),
                py::arg("allow_list") = py::none(), py::arg("allow_list_match") = "exact");
  engine
      .def_readwrite("registry", &Engine::registry,
                     "A RecognizerRegistry, or any object with a list `recognizers`.")
      .def_property_readonly("nlp_engine", nlp_engine_of)
      .def_property_readonly("supported_languages", [](const Engine& self) {
        return list_of(self.engine->supported_languages());
      });
}

py::list analyze_refined(const RefiningAnalyzer& self, py::handle text, py::handle language) {
  const auto document = text_of(text);
  const auto code = utf8_of(language, "language");
  return list_of(without_gil([&] { return self.analyze(document, code); }));
}

py::list refine(const RefiningAnalyzer& self, py::handle text, py::handle language,
                py::handle results) {
  const auto document = text_of(text);
  const auto code = utf8_of(language, "language");
  auto hits = results_of(results);
  return list_of(without_gil([&] { return self.refine(document, code, std::move(hits)); }));
}

void bind_refining(py::module_& m) {
  py::class_<RefiningAnalyzer> refining(
      m, "RefiningAnalyzer",
      "Any analyzer with the refinements of the embedded one: further mentions of a name that\n"
      "it found, addresses that it cut in pieces, labels that it took for names.");
  define_init(
      refining, py::init([](py::handle analyzer) {
        return std::make_unique<RefiningAnalyzer>(std::make_shared<const PythonAnalyzer>(analyzer));
      }),
      "Refines the hits of this analyzer.", py::arg("analyzer"));
  define_method(refining, "analyze", analyze_refined, "The refined hits, sorted by start.",
                py::arg("text"), py::arg("language"));
  define_method(refining, "refine", refine, "The same for hits that are there already.",
                py::arg("text"), py::arg("language"), py::arg("results"));
}

}  // namespace

void bind_analysis(py::module_& m) {
  py::class_<HybridRoutingNlpEngine, std::shared_ptr<HybridRoutingNlpEngine>> nlp_engine(
      m, "HybridRoutingNlpEngine", "Routes each language to what finds names in it.");
  define_init(
      nlp_engine, py::init([](py::handle en_model_name) {
        return std::make_shared<HybridRoutingNlpEngine>(utf8_of(en_model_name, "en_model_name"));
      }),
      "The model for English, by name or directory.",
      py::arg("en_model_name") = str_of(HybridRoutingNlpEngine::EMBEDDED_MODEL));
  nlp_engine.def_property_readonly("en_model_name", [](const HybridRoutingNlpEngine& self) {
    return str_of(self.en_model_name());
  });
  define_method(nlp_engine, "load", &HybridRoutingNlpEngine::load, "Gets ready to process texts.");
  define_method(
      nlp_engine, "get_supported_entities",
      [](const HybridRoutingNlpEngine& self, py::handle language) {
        return list_of(self.get_supported_entities(utf8_of(language, "language")));
      },
      "The kinds of the names that it finds, sorted.", py::arg("language"));
  bind_engine(m);
  bind_refining(m);
  define(m, "build_analyzer", build_analyzer,
         "The analyzer for 'en' and 'zh' that needs no model and no network. Build it once and\n"
         "use it for many texts, from any thread.",
         py::arg("include_zh_supplement_country_lexicon") = true);
}

}  // namespace binding
