// RecognizerResult and the errors.
#include "python/binding/bindings.hpp"
#include "python/binding/convert.hpp"
#include <pybind11/stl.h>

#include "core/errors.hpp"

namespace binding {
namespace {

using core::recognition::AnalysisExplanation;

Result make_result(py::handle type, py::handle start, py::handle end, py::handle score,
                   std::optional<AnalysisExplanation> explanation) {
  return {{utf8_of(type, "entity_type"), offset_of(start), offset_of(end),
           py::float_(py::reinterpret_borrow<py::object>(score))},
          std::move(explanation)};
}

py::dict dict_of_result(const Result& r) {
  using namespace py::literals;  // NOLINT(google-build-using-namespace): the suffix _a
  return py::dict("entity_type"_a = str_of(r.entity_type), "start"_a = r.start, "end"_a = r.end,
                  "score"_a = r.score);
}

py::str repr(const Result& r) {
  return py::str("RecognizerResult(entity_type={!r}, start={}, end={}, score={})")
      .format(str_of(r.entity_type), r.start, r.end, r.score);
}

// Beside the four fields the state holds what tells an alias candidate from a hit.
py::tuple state_of(const Result& r) {
  return py::make_tuple(str_of(r.entity_type), r.start, r.end, r.score, r.defined_at);
}

Result result_of_state(const py::tuple& state) {
  const auto fields = unpack(state, 5);
  return {{utf8_of(fields[0], "entity_type"), offset_of(fields[1]), offset_of(fields[2]),
           py::cast<double>(fields[3]), offset_of(fields[4])},
          {}};
}

void bind_explanation(py::module_& m) {
  py::class_<AnalysisExplanation>(m, "AnalysisExplanation",
                                  "How an analyzer came to a hit; holds no text of the document.")
      .def_readonly("recognizer", &AnalysisExplanation::recognizer)
      .def_readonly("pattern_name", &AnalysisExplanation::pattern_name)
      .def_readonly("original_score", &AnalysisExplanation::original_score)
      .def_readonly("score", &AnalysisExplanation::score)
      .def_readonly("supportive_context_word", &AnalysisExplanation::supportive_context_word)
      .def_readonly("validation_result", &AnalysisExplanation::validation_result)
      .def("__repr__", [](const AnalysisExplanation& e) {
        return py::str("AnalysisExplanation(recognizer={!r}, pattern_name={!r}, score={})")
            .format(str_of(e.recognizer), str_of(e.pattern_name), e.score);
      });
}

}  // namespace

void bind_results(py::module_& m) {
  bind_explanation(m);
  py::class_<Result> result(m, "RecognizerResult",
                            "One hit: entity_type over text[start:end], with a score.");
  define_init(result, py::init(&make_result), "The four fields, read-only.", py::arg("entity_type"),
              py::arg("start"), py::arg("end"), py::arg("score"),
              py::arg("analysis_explanation") = py::none());
  result.def_property_readonly("entity_type", [](const Result& r) { return str_of(r.entity_type); })
      .def_readonly("start", &Result::start)
      .def_readonly("end", &Result::end)
      .def_readonly("score", &Result::score)
      .def_readonly("analysis_explanation", &Result::analysis_explanation)
      .def("to_dict", dict_of_result, "The four fields.")
      .def("__repr__", repr)
      .def("__eq__",
           [](const Result& a, const py::object& b) -> py::object {
             if (!py::isinstance<Result>(b)) {
               return py::reinterpret_borrow<py::object>(Py_NotImplemented);
             }
             return py::bool_(state_of(a).equal(state_of(py::cast<const Result&>(b))));
           })
      .def("__hash__", [](const Result& r) { return py::hash(state_of(r)); })
      .def(py::pickle(&state_of, &result_of_state));
}

void bind_errors(py::module_& m) {
  py::register_exception<core::Error>(m, "Error", PyExc_RuntimeError);
  py::register_exception<core::RegexError>(m, "RegexError", PyExc_ValueError);
  py::register_exception<core::ExternalError>(m, "ExternalError", PyExc_OSError);
  py::register_exception_translator([](std::exception_ptr thrown) {  // NOLINT: pybind11's signature
    try {
      if (thrown) std::rethrow_exception(thrown);
    } catch (const core::TypeError& e) {
      PyErr_SetString(PyExc_TypeError, e.what());
    } catch (const core::ValueError& e) {
      PyErr_SetString(PyExc_ValueError, e.what());
    }
  });
}

}  // namespace binding
