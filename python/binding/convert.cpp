#include "python/binding/convert.hpp"

#include <algorithm>
#include <array>

#include "core/text/unicode.hpp"

namespace binding {
namespace {

std::string type_name(py::handle value) { return Py_TYPE(value.ptr())->tp_name; }

[[noreturn]] void refuse(const char* expected, const char* what, py::handle value) {
  // The name without the module, as type(value).__name__ is.
  const auto name = py::cast<std::string>(py::type::handle_of(value).attr("__name__"));
  const auto place = *what == '\0' ? std::string() : std::string(" for ") + what;
  throw py::type_error(std::string("Expected ") + expected + place + ", got " + name);
}

void check_str(py::handle value, const char* what) {
  if (PyUnicode_Check(value.ptr()) == 0) refuse("str", what, value);
}

std::u32string code_points(py::handle text) {
  const auto length = static_cast<std::size_t>(PyUnicode_GetLength(text.ptr()));
  std::u32string out(length + 1, U'\0');
  static_assert(sizeof(Py_UCS4) == sizeof(char32_t));
  auto* buffer = reinterpret_cast<Py_UCS4*>(out.data());
  if (PyUnicode_AsUCS4(text.ptr(), buffer, static_cast<Py_ssize_t>(out.size()), 1) == nullptr) {
    throw py::error_already_set();
  }
  out.resize(length);
  return out;
}

}  // namespace

std::u32string text_of(py::handle value, const char* what) {
  check_str(value, what);
  return code_points(value);
}

std::u32string text_or_empty(py::handle value, const char* what) {
  return value.is_none() ? std::u32string() : text_of(value, what);
}

std::u32string document_of(py::handle text) { return text_of(text, "anonymization text"); }

std::string utf8_of(py::handle value, const char* what) {
  check_str(value, what);
  Py_ssize_t size = 0;
  const char* bytes = PyUnicode_AsUTF8AndSize(value.ptr(), &size);
  if (bytes == nullptr) throw py::error_already_set();
  return {bytes, static_cast<std::size_t>(size)};
}

std::string utf8_or_empty(py::handle value, const char* what) {
  return value.is_none() ? std::string() : utf8_of(value, what);
}

py::str str_of(std::u32string_view text) {
  auto* str = PyUnicode_FromKindAndData(PyUnicode_4BYTE_KIND, text.data(),
                                        static_cast<Py_ssize_t>(text.size()));
  if (str == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(str);
}

py::str str_of(std::string_view utf8) { return {utf8.data(), utf8.size()}; }

py::object str_or_none(std::u32string_view text) {
  if (text.empty()) return py::none();
  return str_of(text);
}

Offset offset_of(py::handle value) {
  const auto offset = PyNumber_AsSsize_t(value.ptr(), nullptr);
  if (offset == -1 && PyErr_Occurred() != nullptr) throw py::error_already_set();
  return offset;
}

std::u32string surface_of(py::handle text, py::handle start, py::handle end) {
  check_str(text, "text");
  const auto length = PyUnicode_GetLength(text.ptr());
  const auto from = std::clamp<Offset>(offset_of(start), 0, length);
  const auto to = std::clamp<Offset>(offset_of(end), from, length);
  auto* surface = PyUnicode_Substring(text.ptr(), from, to);
  if (surface == nullptr) throw py::error_already_set();
  return code_points(py::reinterpret_steal<py::str>(surface));
}

std::vector<std::u32string> texts_of(py::handle iterable, const char* what) {
  if (PyUnicode_Check(iterable.ptr()) != 0) refuse("a list of str", what, iterable);
  std::vector<std::u32string> out;
  for (const auto& item : elements_of(iterable)) out.push_back(text_of(item, what));
  return out;
}

std::vector<std::string> utf8s_of(py::handle iterable, const char* what) {
  if (PyUnicode_Check(iterable.ptr()) != 0) refuse("a list of str", what, iterable);
  std::vector<std::string> out;
  for (const auto& item : elements_of(iterable)) out.push_back(utf8_of(item, what));
  return out;
}

py::list list_of(const std::vector<std::string>& values) {
  py::list out;
  for (const auto& value : values) out.append(str_of(value));
  return out;
}

std::vector<py::object> elements_of(py::handle iterable) {
  std::vector<py::object> out;
  if (PyList_Check(iterable.ptr()) != 0 || PyTuple_Check(iterable.ptr()) != 0) {
    out.reserve(static_cast<std::size_t>(PySequence_Fast_GET_SIZE(iterable.ptr())));
  }
  for (const auto item : py::iter(iterable))
    out.push_back(py::reinterpret_borrow<py::object>(item));
  return out;
}

std::vector<py::object> unpack(py::handle iterable, std::size_t count) {
  if (Py_TYPE(iterable.ptr())->tp_iter == nullptr && PySequence_Check(iterable.ptr()) == 0) {
    throw py::type_error("cannot unpack non-iterable " + type_name(iterable) + " object");
  }
  auto out = elements_of(iterable);
  if (out.size() > count) {
    throw py::value_error("too many values to unpack (expected " + std::to_string(count) + ")");
  }
  if (out.size() < count) {
    throw py::value_error("not enough values to unpack (expected " + std::to_string(count) +
                          ", got " + std::to_string(out.size()) + ")");
  }
  return out;
}

Replacement replacement_of(py::handle triple) {
  const auto fields = unpack(triple, 3);
  return {offset_of(fields[0]), offset_of(fields[1]), text_of(fields[2], "placeholder")};
}

std::vector<Replacement> replacements_of(py::handle triples) {
  std::vector<Replacement> out;
  for (const auto& triple : elements_of(triples)) out.push_back(replacement_of(triple));
  return out;
}

py::tuple tuple_of(const Replacement& replacement) {
  return py::make_tuple(replacement.start, replacement.end, str_of(replacement.placeholder));
}

py::list list_of(const std::vector<Replacement>& replacements) {
  py::list out(replacements.size());
  for (std::size_t i = 0; i < replacements.size(); ++i) out[i] = tuple_of(replacements[i]);
  return out;
}

py::list list_of(const std::vector<MappingEntry>& entries) {
  py::list out(entries.size());
  for (std::size_t i = 0; i < entries.size(); ++i) {
    out[i] = py::make_tuple(str_of(entries[i].placeholder), str_of(entries[i].surface));
  }
  return out;
}

PlaceholderByKey placeholders_of(py::handle mapping, const char* what) {
  if (!py::hasattr(mapping, "items")) refuse("dict", what, mapping);
  PlaceholderByKey out;
  for (const auto& item : elements_of(mapping.attr("items")())) {
    const auto pair = unpack(item, 2);
    out.insert(text_of(pair[0], what), text_of(pair[1], what));
  }
  return out;
}

py::dict dict_of(const PlaceholderByKey& placeholders) {
  py::dict out;
  for (const auto& [key, placeholder] : placeholders) out[str_of(key)] = str_of(placeholder);
  return out;
}

RecognizerResult result_of(py::handle record, Score score) {
  if (py::isinstance<Result>(record)) return py::cast<const Result&>(record);
  RecognizerResult result{utf8_of(record.attr("entity_type"), "entity_type"),
                          offset_of(record.attr("start")), offset_of(record.attr("end"))};
  if (score == Score::READ) result.score = py::float_(record.attr("score"));
  return result;
}

std::vector<RecognizerResult> results_of(py::handle records, Score score) {
  std::vector<RecognizerResult> out;
  for (const auto& record : elements_of(records)) out.push_back(result_of(record, score));
  return out;
}

py::list list_of(std::vector<RecognizerResult> results) {
  py::list out(results.size());
  for (std::size_t i = 0; i < results.size(); ++i) {
    out[i] = py::cast(Result{std::move(results[i]), {}});
  }
  return out;
}

std::string documented(const char* name, const std::vector<std::string>& parameters,
                       const char* doc) {
  std::string out = std::string(name) + "(";
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    out += (i == 0 ? "" : ", ") + parameters[i];
  }
  return out + ")\n--\n\n" + doc;
}

}  // namespace binding
