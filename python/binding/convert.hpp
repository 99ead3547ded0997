// Python values as the core's, and back. Everything here needs the GIL.
//
// A str is its code points, so that offsets are the same on both sides; lone
// surrogates come and go as they are. What a value should have been is said in a
// TypeError that names the argument, never its content.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <pybind11/pybind11.h>

#include "core/anonymization/result.hpp"
#include "core/recognition/explanation.hpp"

namespace binding {

namespace py = pybind11;
using core::anonymization::MappingEntry;
using core::anonymization::Offset;
using core::anonymization::PlaceholderByKey;
using core::anonymization::RecognizerResult;
using core::anonymization::Replacement;

// A hit as Python code holds it.
struct Result : RecognizerResult {
  std::optional<core::recognition::AnalysisExplanation> analysis_explanation;
};

// --- Strings and numbers ---

// Throws TypeError "Expected str for WHAT, got TYPE" for anything but a str; with
// an empty `what` the message is "Expected str, got TYPE".
std::u32string text_of(py::handle value, const char* what = "text");
// None is "".
std::u32string text_or_empty(py::handle value, const char* what);
// UTF-8. Throws UnicodeEncodeError for a lone surrogate.
std::string utf8_of(py::handle value, const char* what);
std::string utf8_or_empty(py::handle value, const char* what);
// The document that an entry point is given.
std::u32string document_of(py::handle text);

py::str str_of(std::u32string_view text);
py::str str_of(std::string_view utf8);
// "" is None.
py::object str_or_none(std::u32string_view text);

// An integer; one beyond the range counts as its end.
Offset offset_of(py::handle value);
// What `text` holds from `start` to `end`, clamped; the rest is not looked at.
std::u32string surface_of(py::handle text, py::handle start, py::handle end);

std::vector<std::u32string> texts_of(py::handle iterable, const char* what);
std::vector<std::string> utf8s_of(py::handle iterable, const char* what);
py::list list_of(const std::vector<std::string>& values);

// --- Sequences ---

// The `count` elements of an iterable; fails as unpacking does for another number.
std::vector<py::object> unpack(py::handle iterable, std::size_t count);
// All elements of an iterable.
std::vector<py::object> elements_of(py::handle iterable);

// --- Records ---

// (start, end, placeholder)
Replacement replacement_of(py::handle triple);
std::vector<Replacement> replacements_of(py::handle triples);
py::tuple tuple_of(const Replacement& replacement);
py::list list_of(const std::vector<Replacement>& replacements);

// (placeholder, surface)
py::list list_of(const std::vector<MappingEntry>& entries);

PlaceholderByKey placeholders_of(py::handle mapping, const char* what);
py::dict dict_of(const PlaceholderByKey& placeholders);

// Anything that has entity_type, start and end; its score is read only where it
// counts.
enum class Score { READ, IGNORED };
RecognizerResult result_of(py::handle record, Score score = Score::READ);
std::vector<RecognizerResult> results_of(py::handle records, Score score = Score::READ);
py::list list_of(std::vector<RecognizerResult> results);

// --- Functions ---

// "name(a, b='x')" of the arguments that a function is defined with, in the form
// from which Python takes the signature of a built-in function.
inline std::string parameter(const py::arg& a) { return a.name; }
inline std::string parameter(const py::arg_v& a) {
  return std::string(a.name) + "=" + py::cast<std::string>(py::repr(a.value));
}
std::string documented(const char* name, const std::vector<std::string>& parameters,
                       const char* doc);

template <class Function, class... Args>
void define(py::module_& m, const char* name, const Function& function, const char* doc,
            const Args&... args) {
  m.def(name, function, args..., documented(name, {parameter(args)...}, doc).c_str());
}

// The same for a method; the signature is for the reader alone.
template <class Class, class Function, class... Args>
void define_method(Class& c, const char* name, const Function& function, const char* doc,
                   const Args&... args) {
  c.def(name, function, args..., documented(name, {"self", parameter(args)...}, doc).c_str());
}

template <class Class, class Constructor, class... Args>
void define_init(Class& c, Constructor&& constructor, const char* doc, const Args&... args) {
  c.def(std::forward<Constructor>(constructor), args...,
        documented("__init__", {"self", parameter(args)...}, doc).c_str());
}

}  // namespace binding
