// False hits and overlapping hits. Records pass through: what stays is the very
// object that came.
#include <algorithm>

#include "python/binding/bindings.hpp"
#include "python/binding/convert.hpp"

#include "core/anonymization/cleanup/filters.hpp"
#include "core/anonymization/cleanup/overlap.hpp"

namespace binding {
namespace {

namespace anonymization = core::anonymization;
using Filter = std::vector<RecognizerResult> (*)(std::u32string_view,
                                                 std::vector<RecognizerResult>);

// A filter judges each hit by itself.
template <Filter filter>
py::list filtered(py::handle text, py::handle results) {
  const auto document = text_of(text, "");
  py::list out;
  for (const auto& record : elements_of(results)) {
    if (!filter(document, {result_of(record, Score::IGNORED)}).empty()) out.append(record);
  }
  return out;
}

py::list at(const std::vector<py::object>& records, const std::vector<std::size_t>& positions) {
  py::list out;
  for (const std::size_t i : positions) out.append(records[i]);
  return out;
}

py::object drop_single_characters(const py::object& results) {
  const auto values = results_of(results, Score::IGNORED);
  if (std::none_of(values.begin(), values.end(), anonymization::is_long_entity)) return results;
  return at(elements_of(results), anonymization::positions_outside_long_entities(values));
}

py::list resolve(py::handle results) {
  const auto records = elements_of(results);
  std::vector<RecognizerResult> values;
  values.reserve(records.size());
  for (const auto& record : records) values.push_back(result_of(record));
  return at(records, anonymization::positions_without_overlaps(values));
}

py::tuple sort_key(py::handle r) {
  const auto [priority, score, length] = anonymization::_overlap_sort_key(result_of(r));
  return py::make_tuple(priority, score, length);
}

}  // namespace

void bind_cleanup(py::module_& m) {
  const auto text = py::arg("text");
  const auto results = py::arg("results");
  define(
      m, "_normalize_fill_underscores_for_analysis",
      [](py::handle s) {
        return str_of(anonymization::_normalize_fill_underscores_for_analysis(text_of(s)));
      },
      "The text with every run of two or more underscores blanked; same length.", text);
  define(m, "_drop_blank_fill_results", filtered<anonymization::_drop_blank_fill_results>,
         "Without results that hold no ideograph, letter or digit.", text, results);
  define(m, "_drop_structural_sequence_results",
         filtered<anonymization::_drop_structural_sequence_results>,
         "Without ordinals, bare month words and section numbers.", text, results);
  define(m, "_drop_generic_institution_noun_results",
         filtered<anonymization::_drop_generic_institution_noun_results>,
         "Without names and places that are generic nouns, numbers, directions and the like.", text,
         results);
  define(
      m, "_is_it_product_compound_not_address",
      [](py::handle surf) {
        return anonymization::_is_it_product_compound_not_address(text_or_empty(surf, "surf"));
      },
      "Whether the surface is a cloud product, not a place.", py::arg("surf"));
  define(
      m, "_overlap_entity_priority",
      [](py::handle type) {
        return anonymization::_overlap_entity_priority(utf8_of(type, "entity_type"));
      },
      "The priority of an entity type; larger wins.", py::arg("entity_type"));
  define(m, "_overlap_sort_key", sort_key, "(priority, score, length)", py::arg("r"));
  define(m, "_drop_single_char_entity_inside_long_entity", drop_single_characters,
         "Without names and places of one character inside one of six or more; the list itself\n"
         "if it has none so long.",
         results);
  define(m, "_resolve_overlaps", resolve,
         "The results that stay, without overlaps, sorted by start.", results);
}

}  // namespace binding
