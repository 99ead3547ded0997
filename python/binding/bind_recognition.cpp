// Recognizers and their registry.
#include <algorithm>

#include "python/binding/analyzers.hpp"
#include "python/binding/bindings.hpp"
#include <pybind11/stl/filesystem.h>

#include "core/anonymization/recognizers/china_recognizers.hpp"
#include "core/errors.hpp"
#include "core/nlp/hanlp_recognizer.hpp"
#include "core/nlp/hybrid_routing_nlp_engine.hpp"
#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/recognizer_file.hpp"
#include "core/recognition/spacy_recognizer.hpp"

namespace binding {
namespace {

namespace anonymization = core::anonymization;
namespace recognition = core::recognition;
using core::nlp::HanlpRecognizer;
using core::nlp::HybridRoutingNlpEngine;
using recognition::PatternRecognizer;
using recognition::SpacyRecognizer;
using recognition::UserPattern;

double score_of(py::handle value, const char* what) {
  const double score = py::float_(py::reinterpret_borrow<py::object>(value));
  if (!(score >= 0 && score <= 1)) {
    throw core::ValueError(std::string(what) + " must be a number from 0 to 1");
  }
  return score;
}

UserPattern pattern_of(py::handle pattern) {
  if (py::isinstance<UserPattern>(pattern)) return py::cast<const UserPattern&>(pattern);
  return {utf8_of(pattern.attr("name"), "name"), text_of(pattern.attr("regex"), "regex"),
          score_of(pattern.attr("score"), "score")};
}

std::shared_ptr<PatternRecognizer> make_pattern_recognizer(
    py::handle entity, const py::object& patterns, const py::object& deny_list,
    const py::object& context, py::handle name, py::handle language, py::handle deny_list_score) {
  recognition::PatternRecognizerConfig config{
      .name = utf8_of(name, "name"),
      .entity = utf8_of(entity, "supported_entity"),
      .language = utf8_or_empty(language, "supported_language"),
      .context_after = recognition::USER_CONTEXT_WINDOW,
      .deny_list_score = score_of(deny_list_score, "deny_list_score")};
  if (!patterns.is_none()) {
    for (const auto& pattern : elements_of(patterns)) {
      config.user_patterns.push_back(pattern_of(pattern));
    }
  }
  if (!deny_list.is_none()) config.deny_list = texts_of(deny_list, "deny_list");
  if (!context.is_none()) config.context = texts_of(context, "context");
  if (config.user_patterns.empty() && config.deny_list.empty()) {
    throw core::ValueError(config.name + ": neither patterns nor a deny_list");
  }
  return std::make_shared<PatternRecognizer>(std::move(config));
}

py::object utf8_or_none(const std::string& value) {
  if (value.empty()) return py::none();
  return str_of(value);
}

const HybridRoutingNlpEngine& embedded_engine() {
  static const auto instance = [] {
    auto engine = std::make_unique<HybridRoutingNlpEngine>(
        std::string(HybridRoutingNlpEngine::EMBEDDED_MODEL));
    engine->load();
    return engine;
  }();
  return *instance;
}

template <class Recognizer>
std::shared_ptr<Recognizer> make_nlp_recognizer(py::handle language, const py::object& entities) {
  const auto code = utf8_of(language, "supported_language");
  return std::make_shared<Recognizer>(code, entities_or_embedded(entities, code));
}

// The hits of one recognizer alone, of the kinds that are asked for.
py::list recognize(const EntityRecognizer& recognizer, py::handle text, const py::object& entities,
                   const py::object&) {
  const auto document = text_of(text);
  std::vector<std::string> kinds;
  if (!entities.is_none()) kinds = utf8s_of(entities, "entities");
  auto results = without_gil([&] {
    const auto& language = recognizer.supported_language();
    return recognizer.analyze(
        embedded_engine().process_text(document, language == "en" ? "en" : "zh"));
  });
  std::erase_if(results, [&](const auto& r) {
    return !kinds.empty() && std::find(kinds.begin(), kinds.end(), r.entity_type) == kinds.end();
  });
  return list_of(std::move(results));
}

// --- The registry ---

Registry make_registry(const py::object& recognizers) {
  Registry registry;
  if (!recognizers.is_none()) registry.recognizers = py::list(recognizers);
  return registry;
}

// A SpacyRecognizer, ours or that of another library, for Chinese.
bool is_zh_spacy(const py::object& recognizer) {
  const py::object language = py::getattr(recognizer, "supported_language", py::none());
  if (!language.equal(py::str("zh"))) return false;
  const py::tuple classes = py::type::of(recognizer).attr("__mro__");
  return std::any_of(classes.begin(), classes.end(), [](py::handle type) {
    return py::str("SpacyRecognizer").equal(type.attr("__name__"));
  });
}

void swap_zh_spacy(const py::object& registry, py::handle zh_supported_entities) {
  const auto kinds = utf8s_of(zh_supported_entities, "zh_supported_entities");
  py::list swapped;
  bool replaced = false;
  const auto add_hanlp = [&] { swapped.append(std::make_shared<HanlpRecognizer>("zh", kinds)); };
  for (const auto& recognizer : elements_of(registry.attr("recognizers"))) {
    if (is_zh_spacy(recognizer)) {
      add_hanlp();
      replaced = true;
    } else {
      swapped.append(recognizer);
    }
  }
  if (!replaced) add_hanlp();
  registry.attr("recognizers") = swapped;
}

void register_china(const py::object& registry, bool include_country_lexicon) {
  recognition::RecognizerRegistry added;
  anonymization::_register_china_mobile_recognizers(added, include_country_lexicon);
  for (const auto& recognizer : added.recognizers()) {
    registry.attr("recognizers").attr("append")(object_of(recognizer));
  }
}

void remove(Registry& registry, py::handle name) {
  py::list kept;
  for (const auto recognizer : registry.recognizers) {
    if (!name.equal(recognizer.attr("name"))) kept.append(recognizer);
  }
  registry.recognizers = kept;
}

py::list of_language(const Registry& registry, py::handle language) {
  const auto code = utf8_of(language, "language");
  py::list out;
  for (const auto& recognizer : recognizers_of(registry.recognizers)) {
    const auto& own = recognizer->supported_language();
    if (own.empty() || own == code) out.append(object_of(recognizer));
  }
  return out;
}

void add(Registry& registry, const py::object& recognizer) {
  recognizer_of(recognizer);  // refuses what is none
  registry.recognizers.append(recognizer);
}

py::list supported_entities(const Registry& registry, py::handle language) {
  recognition::RecognizerRegistry native;
  native.recognizers() = recognizers_of(registry.recognizers);
  return list_of(native.get_supported_entities(utf8_of(language, "language")));
}

void bind_registry(py::module_& m) {
  py::class_<Registry> registry(
      m, "RecognizerRegistry",
      "The recognizers of an analyzer: a list that may be changed at any time. An analysis\n"
      "works on what it held when the analysis began.");
  registry.def_readwrite("recognizers", &Registry::recognizers);
  define_init(registry, py::init(&make_registry), "With these recognizers.",
              py::arg("recognizers") = py::none());
  define_method(registry, "add_recognizer", add,
                "Adds one of ours, or any object that has supported_entities, supported_language\n"
                "and analyze(text=..., entities=..., nlp_artifacts=None).",
                py::arg("recognizer"));
  define_method(registry, "remove_recognizer", remove, "Removes all recognizers of the name.",
                py::arg("recognizer_name"));
  define_method(registry, "get_recognizers", of_language, "Those that read texts of the language.",
                py::arg("language"));
  define_method(registry, "get_supported_entities", supported_entities,
                "The kinds that they report, sorted.", py::arg("language"));
  define(m, "_swap_zh_spacy_recognizer_for_hanlp", swap_zh_spacy,
         "Exchanges every Chinese SpacyRecognizer, in its place, for a HanlpRecognizer; where\n"
         "there is none, adds one at the end.",
         py::arg("registry"), py::arg("zh_supported_entities"));
  define(m, "_register_china_mobile_recognizers", register_china,
         "Adds the recognizers for identifiers of mainland China and, if asked for, the one of\n"
         "country names.",
         py::arg("registry"), py::arg("include_zh_supplement_country_lexicon"));
}

void bind_patterns(py::module_& m) {
  py::class_<UserPattern> pattern(m, "Pattern",
                                  "A regular expression (PCRE2) and its score, 0 to 1.");
  define_init(pattern, py::init([](py::handle name, py::handle regex, py::handle score) {
                return UserPattern{utf8_of(name, "name"), text_of(regex, "regex"),
                                   score_of(score, "score")};
              }),
              "Letters match either case, unless the expression says (?-i).", py::arg("name"),
              py::arg("regex"), py::arg("score"));
  pattern.def_property_readonly("name", [](const UserPattern& p) { return str_of(p.name); })
      .def_property_readonly("regex", [](const UserPattern& p) { return str_of(p.regex); })
      .def_readonly("score", &UserPattern::score);
  py::class_<PatternRecognizer, EntityRecognizer, std::shared_ptr<PatternRecognizer>> recognizer(
      m, "PatternRecognizer", "Finds what matches a pattern or stands in a list of words.");
  define_init(recognizer, py::init(&make_pattern_recognizer),
              "Patterns: Pattern, or any object with name, regex and score. A word of `context`\n"
              "near a hit raises its score. Without a language every text is read.",
              py::arg("supported_entity"), py::arg("patterns") = py::none(),
              py::arg("deny_list") = py::none(), py::arg("context") = py::none(),
              py::arg("name") = "PatternRecognizer", py::arg("supported_language") = py::none(),
              py::arg("deny_list_score") = 1.0);
  define(
      m, "load_recognizers",
      [](const std::filesystem::path& file) {
        return list_of(recognition::load_recognizers(file));
      },
      "The recognizers that a JSON or YAML file describes.", py::arg("path"));
}

template <class Recognizer>
void bind_nlp_recognizer(py::module_& m, const char* name, const char* doc, const char* language) {
  py::class_<Recognizer, EntityRecognizer, std::shared_ptr<Recognizer>> recognizer(m, name, doc);
  define_init(recognizer, py::init(&make_nlp_recognizer<Recognizer>),
              "Of these kinds, or of all that the embedded engine finds.",
              py::arg("supported_language") = language, py::arg("supported_entities") = py::none());
}

}  // namespace

std::vector<std::string> entities_or_embedded(const py::object& supported_entities,
                                              std::string_view language) {
  if (!supported_entities.is_none()) return utf8s_of(supported_entities, "supported_entities");
  return embedded_engine().get_supported_entities(language);
}

void bind_recognition(py::module_& m) {
  py::class_<EntityRecognizer, std::shared_ptr<EntityRecognizer>> recognizer(
      m, "EntityRecognizer", "One finder of one or more kinds of entities.");
  recognizer
      .def_property_readonly("name", [](const EntityRecognizer& r) { return str_of(r.name()); })
      .def_property_readonly(
          "supported_entities",
          [](const EntityRecognizer& r) { return list_of(r.supported_entities()); })
      .def_property_readonly(
          "supported_language",
          [](const EntityRecognizer& r) { return utf8_or_none(r.supported_language()); },
          "'zh' or 'en'; None for a recognizer that reads every text.")
      .def("__repr__", [](const EntityRecognizer& r) {
        return py::str("<recognizer {!r} of {}>")
            .format(str_of(r.name()), list_of(r.supported_entities()));
      });
  define_method(recognizer, "analyze", recognize,
                "The hits of this recognizer alone; nlp_artifacts is not read.", py::arg("text"),
                py::arg("entities") = py::none(), py::arg("nlp_artifacts") = py::none());
  bind_patterns(m);
  bind_nlp_recognizer<SpacyRecognizer>(m, "SpacyRecognizer",
                                       "Reports the names that the NLP engine found.", "en");
  bind_registry(m);
}

}  // namespace binding
