// Canonical placeholders, and the surfaces that are masked wherever they stand.
#include "python/binding/analyzers.hpp"
#include "python/binding/bindings.hpp"

#include "core/anonymization/identity/location_identity.hpp"
#include "core/anonymization/identity/org_identity.hpp"
#include "core/anonymization/propagation/canonical_placeholders.hpp"
#include "core/anonymization/propagation/propagable_surfaces.hpp"
#include "core/anonymization/propagation/surface_spread.hpp"
#include "core/anonymization/propagation/surface_sync_pairs.hpp"

namespace binding {
namespace {

namespace anonymization = core::anonymization;

// What is the same for organizations and for places.
struct SurfaceKind {
  PlaceholderByKey (*build)(std::u32string_view, const std::vector<Replacement>&, std::string_view);
  std::u32string (*look_up)(std::u32string_view, Offset, Offset, std::u32string_view,
                            const PlaceholderByKey&);
  std::u32string (*key)(std::u32string_view, Offset, Offset);
};
constexpr SurfaceKind ORGANIZATIONS = {anonymization::build_okey_to_canonical_org_placeholders,
                                       anonymization::canonical_org_placeholder_for_span,
                                       anonymization::_organization_identity_key};
constexpr SurfaceKind LOCATIONS = {anonymization::build_okey_to_canonical_location_placeholders,
                                   anonymization::canonical_location_placeholder_for_span,
                                   anonymization::_location_identity_key};

template <const SurfaceKind& kind>
py::dict build(py::handle text, py::handle replacements, py::handle language) {
  const auto document = text_of(text);
  const auto spans = replacements_of(replacements);
  const auto requested = utf8_or_empty(language, "language");
  return dict_of(without_gil([&] { return kind.build(document, spans, requested); }));
}

// Of the map only the entry of the span is read, so that a caller may ask span by span.
template <const SurfaceKind& kind>
py::object look_up(py::handle text, py::handle start, py::handle end, const py::object& placeholder,
                   py::handle okey_to_ph) {
  const auto surface = surface_of(text, start, end);
  const auto length = static_cast<Offset>(surface.size());
  const auto current = text_of(placeholder, "placeholder");
  const auto key = kind.key(surface, 0, length);
  PlaceholderByKey entry;
  const py::object found = okey_to_ph.attr("get")(str_of(key));
  if (!found.is_none()) entry.insert(key, text_of(found, "okey_to_ph"));
  const auto canonical = kind.look_up(surface, 0, length, current, entry);
  if (canonical == current) return placeholder;
  return str_of(canonical);
}

py::list sync_pairs(py::handle text, py::handle analyzer, py::handle language,
                    py::handle replacements, py::handle okey_to_org) {
  const auto document = document_of(text);
  const PythonAnalyzer python(analyzer);
  const auto requested = utf8_or_empty(language, "language");
  std::optional<std::vector<Replacement>> spans;
  if (!replacements.is_none()) spans = replacements_of(replacements);
  std::optional<PlaceholderByKey> map;
  if (!okey_to_org.is_none()) map = placeholders_of(okey_to_org, "okey_to_org");
  const auto pairs = without_gil([&] {
    return anonymization::collect_document_entity_surface_sync_pairs(
        document, python, requested, spans ? &*spans : nullptr, map ? &*map : nullptr);
  });
  py::list out;
  for (const auto& [surface, placeholder] : pairs) {
    out.append(py::make_tuple(str_of(surface), str_of(placeholder)));
  }
  return out;
}

py::list org_name_pairs(py::handle text, py::handle analyzer, py::handle language) {
  const auto document = document_of(text);
  const PythonAnalyzer python(analyzer);
  const auto requested = utf8_or_empty(language, "language");
  return list_of(without_gil([&] {
    return anonymization::collect_document_org_name_placeholder_pairs(document, python, requested);
  }));
}

py::object replace_surface(const py::object& text, py::handle name, py::handle placeholder) {
  const auto surface = text_or_empty(name, "name");
  const auto document = text_of(text);
  if (surface.empty()) return text;
  return str_of(anonymization::_replace_party_org_surface_safe(
      document, surface, text_of(placeholder, "placeholder")));
}

void bind_canonical(py::module_& m) {
  const auto text = py::arg("text");
  const auto replacements = py::arg("replacements");
  const auto language = py::arg("language");
  define(m, "build_okey_to_canonical_org_placeholders", build<ORGANIZATIONS>,
         "Identity key to placeholder of the organizations, in first-seen order.", text,
         replacements, language);
  define(m, "build_okey_to_canonical_location_placeholders", build<LOCATIONS>,
         "Identity key to placeholder of the places, in first-seen order.", text, replacements,
         language);
  define(m, "canonical_org_placeholder_for_span", look_up<ORGANIZATIONS>,
         "The placeholder that the map holds for the organization of the span; `placeholder`\n"
         "itself if it is of another kind or the map lacks the key.",
         text, py::arg("start"), py::arg("end"), py::arg("placeholder"), py::arg("okey_to_ph"));
  define(m, "canonical_location_placeholder_for_span", look_up<LOCATIONS>,
         "The placeholder that the map holds for the place of the span; `placeholder` itself if\n"
         "it is of another kind or the map lacks the key.",
         text, py::arg("start"), py::arg("end"), py::arg("placeholder"), py::arg("okey_to_ph"));
}

}  // namespace

void bind_propagation(py::module_& m) {
  bind_canonical(m);
  define(m, "collect_document_entity_surface_sync_pairs", sync_pairs,
         "(surface, placeholder) of the organizations and addresses that are masked wherever\n"
         "they stand, the longest first. What is None is computed with the analyzer.",
         py::arg("text"), py::arg("analyzer"), py::arg("language"),
         py::arg("replacements") = py::none(), py::arg("okey_to_org") = py::none());
  define(m, "collect_document_org_name_placeholder_pairs", org_name_pairs,
         "(placeholder, surface) of the organizations among them.", py::arg("text"),
         py::arg("analyzer"), py::arg("language"));
  define(m, "_replace_party_org_surface_safe", replace_surface,
         "The text with the placeholder over every safe occurrence of the name.", py::arg("text"),
         py::arg("name"), py::arg("placeholder"));
  define(
      m, "_looks_like_project_title",
      [](py::handle frag) {
        return anonymization::_looks_like_project_title(text_of(frag, "frag"));
      },
      "Whether the fragment reads like the title of a project.", py::arg("frag"));
  define(
      m, "_looks_like_propagable_org_name",
      [](py::handle name) {
        return anonymization::_looks_like_propagable_org_name(text_or_empty(name, "name"));
      },
      "Whether an organization surface may be masked document-wide.", py::arg("name"));
  define(
      m, "_looks_like_propagable_location_surface",
      [](py::handle name) {
        return anonymization::_looks_like_propagable_location_surface(text_or_empty(name, "name"));
      },
      "Whether a location surface may be masked document-wide.", py::arg("name"));
}

}  // namespace binding
