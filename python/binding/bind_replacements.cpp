// The numbered builder and what cleans its lists.
#include <algorithm>
#include <unordered_map>

#include "python/binding/analyzers.hpp"
#include "python/binding/bindings.hpp"

#include "core/anonymization/party_labeled_names.hpp"
#include "core/anonymization/replacements/numbered_builder.hpp"
#include "core/anonymization/replacements/span_postprocess.hpp"
#include "core/anonymization/rules/helpers.hpp"

namespace binding {
namespace {

namespace anonymization = core::anonymization;

// Replacements with the objects that they were read from.
struct Triples {
  explicit Triples(py::handle triples) : objects(elements_of(triples)) {
    values.reserve(objects.size());
    for (const auto& object : objects) values.push_back(replacement_of(object));
  }

  // The tuple itself; of another sequence, a tuple with its values.
  py::object object(std::size_t i) const {
    return PyTuple_CheckExact(objects[i].ptr()) != 0 ? objects[i] : tuple_of(values[i]);
  }

  std::vector<py::object> objects;
  std::vector<Replacement> values;
};

py::list build_replacements(py::handle text, py::handle analyzer, py::handle language,
                            py::handle profile) {
  const auto document = document_of(text);
  const PythonAnalyzer python(analyzer);
  const auto requested = utf8_or_empty(language, "language");
  const auto name = utf8_of(profile, "strategy_profile");
  return list_of(without_gil([&] {
    return anonymization::build_numbered_replacements(document, python, requested, name);
  }));
}

py::list filter_weak(py::handle replacements, py::handle src_text) {
  const Triples triples(replacements);
  const auto text = text_of(src_text, "src_text");
  py::list out;
  for (std::size_t i = 0; i < triples.values.size(); ++i) {
    if (!anonymization::_filter_weak_org_replacements({triples.values[i]}, text).empty()) {
      out.append(triples.object(i));
    }
  }
  return out;
}

py::object split(const py::object& replacements, py::handle src_text, py::handle joiner) {
  const auto separator = text_or_empty(joiner, "joiner");
  if (separator.empty()) return replacements;
  return list_of(anonymization::_split_replacements_at_joiner(
      replacements_of(replacements), text_of(src_text, "src_text"), separator));
}

py::object clip(const py::object& replacements, py::handle text) {
  const auto src_text = text_of(text);
  const auto joiners = anonymization::docx_para_joiner_sequences();
  const bool none_occurs = std::none_of(joiners.begin(), joiners.end(), [&](const auto& joiner) {
    return !joiner.empty() && src_text.find(joiner) != std::u32string::npos;
  });
  if (none_occurs) return replacements;
  return list_of(anonymization::_clip_replacements_at_embedded_docx_joiners(
      replacements_of(replacements), src_text));
}

py::list trim(py::handle replacements, py::handle src_text) {
  const Triples triples(replacements);
  const auto trimmed = anonymization::_trim_org_replacement_spans_at_defined_alias_closers(
      triples.values, text_of(src_text, "src_text"));
  py::list out;
  for (std::size_t i = 0; i < trimmed.size(); ++i) {
    const bool unchanged = trimmed[i] == triples.values[i];
    out.append(unchanged ? triples.object(i) : tuple_of(trimmed[i]));
  }
  return out;
}

py::tuple expand(py::handle text, py::handle replacements, py::handle org_num_by_key,
                 std::int64_t org_counter, py::handle placeholder_locale) {
  std::unordered_map<std::u32string, std::int64_t> numbers;
  for (const auto& item : elements_of(org_num_by_key.attr("items")())) {
    const auto pair = unpack(item, 2);
    numbers.emplace(text_of(pair[0], "org_num_by_key"), py::cast<std::int64_t>(pair[1]));
  }
  const auto document = text_of(text);
  const auto spans = replacements_of(replacements);
  const auto locale = utf8_of(placeholder_locale, "placeholder_locale");
  const auto expanded = without_gil([&] {
    return anonymization::_expand_party_org_mentions({.text = document,
                                                      .replacements = spans,
                                                      .org_num_by_key = numbers,
                                                      .org_counter = org_counter,
                                                      .placeholder_locale = locale});
  });
  return py::make_tuple(list_of(expanded.replacements), expanded.org_counter);
}

py::list labeled_names(py::handle text) {
  py::list out;
  for (const auto& name : anonymization::_collect_party_labeled_org_names(text_of(text))) {
    out.append(str_of(name));
  }
  return out;
}

}  // namespace

void bind_replacements(py::module_& m) {
  define(m, "build_numbered_replacements", build_replacements,
         "(start, end, placeholder) of every entity of the text, sorted by start; one number an\n"
         "entity, counted from 1 in order of first appearance.",
         py::arg("text"), py::arg("analyzer"), py::arg("language") = "en",
         py::arg("strategy_profile") = "contract_default");
  define(m, "_filter_weak_org_replacements", filter_weak,
         "Without organizations over a year, an outline number or a lone connective.",
         py::arg("replacements"), py::arg("src_text"));
  define(m, "_split_replacements_at_joiner", split,
         "Every span cut around each occurrence of the joiner; the list itself for ''.",
         py::arg("replacements"), py::arg("src_text"), py::arg("joiner"));
  define(
      m, "_strip_docx_joiner_sequences",
      [](py::handle text) {
        return str_of(anonymization::_strip_docx_joiner_sequences(text_of(text)));
      },
      "The text without paragraph joiners and hash markers.", py::arg("text"));
  define(m, "_clip_replacements_at_embedded_docx_joiners", clip,
         "Every span cut at the paragraph joiners; the list itself where the text has none.",
         py::arg("replacements"), py::arg("text"));
  define(m, "_trim_org_replacement_spans_at_defined_alias_closers", trim,
         "Organization spans of definition clauses end before the closing quote.",
         py::arg("replacements"), py::arg("src_text"));
  define(m, "_expand_party_org_mentions", expand,
         "(replacements, org_counter) with further mentions of labelled parties.", py::arg("text"),
         py::arg("replacements"), py::arg("org_num_by_key"), py::arg("org_counter"),
         py::arg("placeholder_locale"));
  define(m, "_collect_party_labeled_org_names", labeled_names,
         "The organization names behind party labels, in order of first appearance.",
         py::arg("text"));
}

}  // namespace binding
