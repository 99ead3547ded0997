// The entry points, and the steps that they are made of.
#include <algorithm>

#include "python/binding/analyzers.hpp"
#include "python/binding/bindings.hpp"

#include "core/anonymization/llm_decider.hpp"
#include "core/anonymization_core.hpp"
#include "core/document_text.hpp"
#include "core/entity_sync.hpp"
#include "core/errors.hpp"
#include "core/mapping_entries.hpp"

namespace binding {
namespace {

namespace anonymization = core::anonymization;
using anonymization::Aliases;
using anonymization::AnonymizedDocument;

// The four arguments of an entry point.
struct Request {
  std::u32string text;
  PythonAnalyzer analyzer;
  std::string language;
  std::string profile;
};

Request request_of(py::handle text, py::handle analyzer, py::handle language, py::handle profile) {
  return {document_of(text), PythonAnalyzer(analyzer), utf8_or_empty(language, "language"),
          utf8_of(profile, "strategy_profile")};
}

py::str anonymize(py::handle text, py::handle analyzer, py::handle language, py::handle profile) {
  const auto r = request_of(text, analyzer, language, profile);
  return str_of(without_gil([&] {
    return anonymization::anonymize_with_numbered_placeholders(r.text, r.analyzer, r.language,
                                                               r.profile);
  }));
}

py::tuple anonymize_and_map(py::handle text, py::handle analyzer, py::handle language,
                            py::handle profile) {
  const auto r = request_of(text, analyzer, language, profile);
  const auto [masked, mapping] = without_gil([&] {
    return anonymization::anonymize_with_numbered_placeholders_and_mapping(r.text, r.analyzer,
                                                                           r.language, r.profile);
  });
  return py::make_tuple(str_of(masked), list_of(mapping));
}

Aliases aliases_of(py::handle name) {
  const auto aliases = utf8_of(name, "aliases");
  if (aliases == "one") return Aliases::ONE;
  if (aliases == "separate") return Aliases::SEPARATE;
  throw core::ValueError("aliases must be \"separate\" or \"one\", not \"" + aliases + "\"");
}

// Spans in any order, as the core takes them: sorted, disjoint, none of them empty.
anonymization::Stretches stretches_of(py::handle spans, const char* what, std::size_t size) {
  anonymization::Stretches out;
  anonymization::Stretches given;
  for (const auto& span : elements_of(spans)) {
    const auto ends = unpack(span, 2);
    const auto start = offset_of(ends[0]);
    const auto end = offset_of(ends[1]);
    if (start < 0 || end < start || static_cast<std::size_t>(end) > size) {
      throw core::ValueError(std::string(what) + " has a span that is not in the text");
    }
    if (start < end) given.emplace_back(start, end);
  }
  std::sort(given.begin(), given.end());
  for (const auto& [start, end] : given) {
    if (!out.empty() && start <= out.back().second) {
      out.back().second = std::max(out.back().second, end);
    } else {
      out.emplace_back(start, end);
    }
  }
  return out;
}

AnonymizedDocument anonymize_document(py::handle text, py::handle analyzer, py::handle language,
                                      py::handle profile, py::handle aliases, py::handle keep,
                                      py::handle mask) {
  const auto r = request_of(text, analyzer, language, profile);
  const auto how = aliases_of(aliases);
  const anonymization::Overrides overrides{stretches_of(keep, "keep", r.text.size()),
                                           stretches_of(mask, "mask", r.text.size())};
  return without_gil([&] {
    return anonymization::anonymize_document(r.text, r.analyzer, r.language, r.profile, how,
                                             overrides);
  });
}

AnonymizedDocument with_labels(const AnonymizedDocument& document, py::handle locale) {
  return anonymization::with_labels(document, utf8_of(locale, "locale"));
}

py::list list_of_placements(const AnonymizedDocument& document) {
  py::list out;
  for (const auto& [start, end, surface] : document.placements) {
    out.append(py::make_tuple(start, end, str_of(surface)));
  }
  return out;
}

py::tuple prepare(py::handle text, py::handle analyzer, py::handle language, py::handle profile,
                  py::handle joiner) {
  const auto r = request_of(text, analyzer, language, profile);
  const auto separator = text_or_empty(joiner, "joiner");
  const auto [filtered, org_by_okey] = without_gil([&] {
    return anonymization::prepare_document_text_replacements(r.text, r.analyzer, r.language,
                                                             r.profile, separator);
  });
  return py::make_tuple(list_of(filtered), dict_of(org_by_okey));
}

// The decider is Python's here, and so are the spans: they pass as they are.
py::object apply_decision(py::handle text, const py::object& filtered) {
  try {
    const auto decider = py::module_::import("core.anonymization.llm_decider");
    return decider.attr("filter_replacement_spans")(text, filtered);
  } catch (py::error_already_set& error) {
    if (!error.matches(PyExc_Exception)) throw;
    return filtered;
  }
}

// The arguments of what is done with finished replacements.
struct Finished {
  std::u32string text;
  std::vector<Replacement> replacements;
  PlaceholderByKey org_by_okey;
  std::string language;
};

Finished finished_of(py::handle text, py::handle replacements, py::handle org_by_okey,
                     py::handle language) {
  return {text_of(text), replacements_of(replacements), placeholders_of(org_by_okey, "org_by_okey"),
          utf8_or_empty(language, "language")};
}

py::str apply(py::handle text, py::handle replacements, py::handle org_by_okey,
              py::handle language) {
  const auto f = finished_of(text, replacements, org_by_okey, language);
  return str_of(without_gil([&] {
    return anonymization::apply_document_text_replacements(f.text, f.replacements, f.org_by_okey,
                                                           f.language);
  }));
}

py::list map_canonical(py::handle text, py::handle replacements, py::handle org_by_okey,
                       py::handle language) {
  const auto f = finished_of(text, replacements, org_by_okey, language);
  return list_of(without_gil([&] {
    return anonymization::mapping_entries_from_canonical_replacements(f.text, f.replacements,
                                                                      f.org_by_okey, f.language);
  }));
}

py::list map_plain(py::handle text, py::handle replacements) {
  return list_of(anonymization::mapping_entries_from_replacements(text_of(text),
                                                                  replacements_of(replacements)));
}

py::str sync(py::handle out, py::handle src_text, py::handle analyzer, py::handle language,
             py::handle replacements, py::handle org_by_okey) {
  const auto masked = text_of(out, "out");
  const auto f = finished_of(src_text, replacements, org_by_okey, language);
  const PythonAnalyzer python(analyzer);
  return str_of(without_gil([&] {
    return anonymization::_apply_entity_surface_sync_to_text(masked, f.text, python, f.language,
                                                             f.replacements, f.org_by_okey);
  }));
}

void bind_document(py::module_& m) {
  py::class_<AnonymizedDocument>(m, "AnonymizedDocument",
                                 "All that anonymize_document learns about a text.")
      .def_property_readonly(
          "language", [](const AnonymizedDocument& d) { return str_of(d.language); },
          "'en' or 'zh'.")
      .def_property_readonly(
          "text", [](const AnonymizedDocument& d) { return str_of(d.text); }, "The masked text.")
      .def_property_readonly(
          "replacements", [](const AnonymizedDocument& d) { return list_of(d.replacements); },
          "(start, end, placeholder) over the original text.")
      .def_property_readonly(
          "mapping", [](const AnonymizedDocument& d) { return list_of(d.mapping); },
          "(placeholder, surface) of each replacement, in text order.")
      .def_property_readonly("placements", list_of_placements,
                             "(start, end, surface) over the masked text, spread mentions "
                             "included.");
  define(m, "anonymize_document", anonymize_document,
         "Masks one text and tells all that was learnt about it.\n\n"
         "With aliases 'one', the names by which one party or person goes share a\n"
         "placeholder where the document leaves no doubt; with 'separate' each has its own.\n"
         "`keep` and `mask` are spans (start, end) of the text that stay readable or are masked\n"
         "whatever the analyzer says; keeping wins.",
         py::arg("text"), py::arg("analyzer"), py::arg("language") = "en",
         py::arg("strategy_profile") = "contract_default", py::arg("aliases") = "separate",
         py::arg("keep") = py::make_tuple(), py::arg("mask") = py::make_tuple());
  define(m, "with_labels", with_labels,
         "The document with organizations and addresses as 'zh' ([机构1], [地址1]) or\n"
         "'en' ([ORG1], [ADDRESS1]) reads them.",
         py::arg("document"), py::arg("locale"));
}

void bind_steps(py::module_& m) {
  define(m, "prepare_document_text_replacements", prepare,
         "The final replacements of a text, and the canonical placeholders of the\n"
         "organizations among them by identity key. Spans are cut at `joiner` or, where it is\n"
         "empty, at the paragraph joiners.",
         py::arg("text"), py::arg("analyzer"), py::arg("language"),
         py::arg("strategy_profile") = "contract_default", py::arg("joiner") = "");
  define(m, "_apply_llm_keep_mask_decision", apply_decision,
         "What core.anonymization.llm_decider.filter_replacement_spans, looked up now, leaves\n"
         "of the spans; the list itself if that fails.",
         py::arg("text"), py::arg("filtered"));
  define(m, "apply_document_text_replacements", apply,
         "The text with the canonical placeholders written over the spans.", py::arg("text"),
         py::arg("filtered_replacements"), py::arg("org_by_okey"), py::arg("language") = "zh");
  define(m, "mapping_entries_from_canonical_replacements", map_canonical,
         "(placeholder, surface) of each span, with the placeholders that\n"
         "apply_document_text_replacements writes.",
         py::arg("text"), py::arg("filtered_replacements"), py::arg("org_by_okey"),
         py::arg("language") = "zh");
  define(m, "mapping_entries_from_replacements", map_plain,
         "(placeholder, surface) of each span, with the placeholders of the list.", py::arg("text"),
         py::arg("replacements"));
  define(m, "_apply_entity_surface_sync_to_text", sync,
         "`out`, the masked text, with further mentions of its organizations and places masked.",
         py::arg("out"), py::arg("src_text"), py::arg("analyzer"), py::arg("language"),
         py::arg("filtered_replacements"), py::arg("org_by_okey"));
  define(
      m, "_document_text_entity_sync_locale",
      [](py::handle language, py::handle text) {
        return str_of(anonymization::_document_text_entity_sync_locale(
            utf8_or_empty(language, "language"), text_of(text)));
      },
      "'zh' for a text with an ideograph and for unknown languages, else 'en'.",
      py::arg("language"), py::arg("text"));
}

}  // namespace

void bind_entry_points(py::module_& m) {
  define(m, "anonymize_with_numbered_placeholders", anonymize,
         "The text with every sensitive span as a numbered placeholder.\n\n"
         "analyzer: what build_analyzer() makes, or any object with\n"
         "analyze(text=..., language=...) whose hits have entity_type, start, end and score.\n"
         "language: 'en', 'zh' or 'auto'.\n"
         "strategy_profile: 'contract_default', 'strict' or 'identity'.",
         py::arg("text"), py::arg("analyzer"), py::arg("language") = "en",
         py::arg("strategy_profile") = "contract_default");
  define(m, "anonymize_with_numbered_placeholders_and_mapping", anonymize_and_map,
         "The masked text, and (placeholder, surface) of each replaced span in text order.",
         py::arg("text"), py::arg("analyzer"), py::arg("language") = "en",
         py::arg("strategy_profile") = "contract_default");
  bind_document(m);
  bind_steps(m);
}

}  // namespace binding
