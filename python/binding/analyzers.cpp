#include "python/binding/analyzers.hpp"

#include <algorithm>

namespace binding {
namespace {

// Whether `object` is a T of ours whose class, or one derived from it in Python,
// has no analyze of its own.
template <class T>
bool is_native(py::handle object) {
  if (!py::isinstance<T>(object)) return false;
  return py::type::of(object).attr("analyze").is(py::type::of<T>().attr("analyze"));
}

std::string language_of(py::handle recognizer) {
  const py::object language = py::getattr(recognizer, "supported_language", py::none());
  return utf8_or_empty(language, "supported_language");
}

std::string name_of(py::handle recognizer) {
  const auto type = py::type::handle_of(recognizer);
  return utf8_of(py::getattr(recognizer, "name", type.attr("__name__")), "name");
}

}  // namespace

PythonAnalyzer::PythonAnalyzer(py::handle analyzer)
    : analyzer_(hold(py::reinterpret_borrow<py::object>(analyzer))) {}

std::vector<RecognizerResult> PythonAnalyzer::analyze(std::u32string_view text,
                                                      std::string_view language) const {
  const WithGil gil;
  if (is_native<Engine>(*analyzer_)) {
    const auto& [engine, registry] = py::cast<const Engine&>(*analyzer_);
    const auto recognizers = recognizers_of(registry.attr("recognizers"));
    const WithoutGil release;
    return engine->analyze({.text = text, .language = std::string(language)}, recognizers).results;
  }
  if (is_native<core::nlp::RefiningAnalyzer>(*analyzer_)) {
    const auto& refining = py::cast<const core::nlp::RefiningAnalyzer&>(*analyzer_);
    const WithoutGil release;
    return refining.analyze(text, language);
  }
  return results_of(analyzer_->attr("analyze")(py::arg("text") = str_of(text),
                                               py::arg("language") = str_of(language)));
}

PythonRecognizer::PythonRecognizer(py::handle recognizer)
    : EntityRecognizer(name_of(recognizer),
                       utf8s_of(recognizer.attr("supported_entities"), "supported_entities"),
                       language_of(recognizer)),
      recognizer_(hold(py::reinterpret_borrow<py::object>(recognizer))) {}

std::vector<RecognizerResult> PythonRecognizer::analyze(
    const core::recognition::NlpArtifacts& artifacts) const {
  const WithGil gil;
  const py::object found =
      recognizer_->attr("analyze")(py::arg("text") = str_of(artifacts.text),
                                   py::arg("entities") = binding::list_of(supported_entities()),
                                   py::arg("nlp_artifacts") = py::none());
  if (found.is_none()) return {};
  auto results = results_of(found);
  const auto length = static_cast<Offset>(artifacts.text.size());
  for (auto& r : results) {
    r.start = std::clamp<Offset>(r.start, 0, length);
    r.end = std::clamp<Offset>(r.end, r.start, length);
  }
  return results;
}

std::shared_ptr<const EntityRecognizer> recognizer_of(py::handle recognizer) {
  if (is_native<EntityRecognizer>(recognizer)) {
    return py::cast<std::shared_ptr<EntityRecognizer>>(recognizer);
  }
  return std::make_shared<const PythonRecognizer>(recognizer);
}

RecognizerList recognizers_of(py::handle iterable) {
  RecognizerList out;
  for (const auto& recognizer : elements_of(iterable)) out.push_back(recognizer_of(recognizer));
  return out;
}

py::object object_of(const std::shared_ptr<const EntityRecognizer>& recognizer) {
  if (const auto* python = dynamic_cast<const PythonRecognizer*>(recognizer.get())) {
    return python->object();
  }
  return py::cast(std::const_pointer_cast<EntityRecognizer>(recognizer));
}

py::list list_of(const RecognizerList& recognizers) {
  py::list out;
  for (const auto& recognizer : recognizers) out.append(object_of(recognizer));
  return out;
}

}  // namespace binding
