// Analyzers and recognizers, the core's for Python and Python's for the core.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "python/binding/convert.hpp"
#include "python/binding/native_call.hpp"

#include "core/anonymization/analyzer.hpp"
#include "core/nlp/refining_analyzer.hpp"
#include "core/recognition/analyzer_engine.hpp"

namespace binding {

using core::anonymization::Analyzer;
using core::recognition::AnalyzerEngine;
using core::recognition::EntityRecognizer;
using core::recognition::RecognizerList;

// The registry of Python code: a list that anybody may change at any time. An
// analysis works on what it held when the analysis began.
struct Registry {
  py::list recognizers;
};

// An engine and its registry, which may be any object with a list `recognizers`.
struct Engine {
  std::shared_ptr<const AnalyzerEngine> engine;
  py::object registry;
};

// An analyzer argument: the engine, a RefiningAnalyzer, or any object with
// analyze(text=..., language=...). Built with the GIL, used without. What the
// object raises comes through.
class PythonAnalyzer : public Analyzer {
 public:
  explicit PythonAnalyzer(py::handle analyzer);
  std::vector<RecognizerResult> analyze(std::u32string_view text,
                                        std::string_view language) const override;

 private:
  Held analyzer_;
};

// A recognizer written in Python, as Presidio's are: supported_entities,
// supported_language, name and analyze(text=..., entities=..., nlp_artifacts=None).
// Hits outside the text are cut to it.
class PythonRecognizer : public EntityRecognizer {
 public:
  explicit PythonRecognizer(py::handle recognizer);
  std::vector<RecognizerResult> analyze(
      const core::recognition::NlpArtifacts& artifacts) const override;

  const py::object& object() const { return *recognizer_; }

 private:
  Held recognizer_;
};

// The recognizers of a Python list, and the Python objects of a native list.
RecognizerList recognizers_of(py::handle iterable);
std::shared_ptr<const EntityRecognizer> recognizer_of(py::handle recognizer);
py::object object_of(const std::shared_ptr<const EntityRecognizer>& recognizer);
py::list list_of(const RecognizerList& recognizers);

// The kinds that are named, or where none are those of the embedded finders.
std::vector<std::string> entities_or_embedded(const py::object& supported_entities,
                                              std::string_view language);

}  // namespace binding
