// Placeholders, languages, defined aliases, and the records that pass between all.
#include "python/binding/bindings.hpp"
#include "python/binding/convert.hpp"

#include "core/anonymization/analyzer/language.hpp"
#include "core/anonymization/constants.hpp"
#include "core/anonymization/doc_alias_scan.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/errors.hpp"
#include "core/nlp/cpu_throttle.hpp"

namespace binding {
namespace {

namespace anonymization = core::anonymization;

py::object parse(py::handle placeholder) {
  const auto parsed =
      anonymization::parse_numbered_placeholder(text_of(placeholder, "placeholder"));
  if (!parsed) return py::none();
  return py::make_tuple(str_of(parsed->tag), parsed->number);
}

// A falsy request is "auto".
py::str resolve_language(py::handle requested, py::handle text) {
  const bool is_given = PyObject_IsTrue(requested.ptr()) == 1;
  const auto request = is_given ? utf8_of(requested, "requested") : std::string();
  return str_of(anonymization::resolve_analyze_language(request, document_of(text)));
}

void bind_placeholders(py::module_& m) {
  define(
      m, "format_numbered_placeholder",
      [](py::handle tag, std::int64_t number, py::handle locale) {
        return str_of(anonymization::format_numbered_placeholder(utf8_of(tag, "tag"), number,
                                                                 utf8_or_empty(locale, "locale")));
      },
      "('ORG', 1) as '[机构1]'; every locale but 'zh' writes the tag, '[ORG1]'.", py::arg("tag"),
      py::arg("number"), py::arg("locale") = "zh");
  define(m, "parse_numbered_placeholder", parse,
         "(tag, number) of a numbered placeholder of any locale; None for any other string.",
         py::arg("placeholder"));
  define(
      m, "ensure_ascii_placeholder_brackets",
      [](py::handle placeholder) {
        return str_of(
            anonymization::ensure_ascii_placeholder_brackets(text_of(placeholder, "placeholder")));
      },
      "The placeholder with its brackets as [ and ].", py::arg("placeholder"));
  define(
      m, "format_card_last4_placeholder",
      [](py::handle surface) {
        return str_of(anonymization::format_card_last4_placeholder(text_of(surface, "surface")));
      },
      "'[CARD_****1234]' of a surface that ends in 1234.", py::arg("surface"));
  define(
      m, "expand_span_to_absorb_wrapping_brackets",
      [](py::handle text, py::handle start, py::handle end) {
        const auto [from, to] = anonymization::expand_span_to_absorb_wrapping_brackets(
            text_of(text), offset_of(start), offset_of(end));
        return py::make_tuple(from, to);
      },
      "(start, end) widened by the pair of brackets that directly encloses the span.",
      py::arg("text"), py::arg("start"), py::arg("end"));
}

}  // namespace

void bind_siblings(py::module_& m) {
  bind_placeholders(m);
  define(m, "resolve_analyze_language", resolve_language,
         "'en' or 'zh': the language that is requested, or that of the text.", py::arg("requested"),
         py::arg("text"));
  define(
      m, "infer_language_from_text",
      [](py::handle text) {
        return str_of(anonymization::infer_language_from_text(text_of(text)));
      },
      "'zh' or 'en', from the text alone.", py::arg("text"));
  define(
      m, "scan_defined_alias_candidates",
      [](py::handle text) {
        return list_of(anonymization::scan_defined_alias_candidates(text_of(text)));
      },
      "ORGANIZATION results over the short names that a document defines for itself.",
      py::arg("text"));
  define(
      m, "_is_cn_generic_research_center_narrative",
      [](py::handle surface) {
        return anonymization::_is_cn_generic_research_center_narrative(
            text_or_empty(surface, "surface"));
      },
      "Whether a surface speaks of research centres in general.", py::arg("surface"));
  define(m, "apply_zh_nlp_cpu_throttle", core::nlp::apply_zh_nlp_cpu_throttle,
         "Limits an engine for Chinese texts to one thread.");
}

}  // namespace binding
