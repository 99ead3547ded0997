// Identity keys.
#include "python/binding/bindings.hpp"
#include "python/binding/convert.hpp"

#include "core/anonymization/avs_workgroup_party.hpp"
#include "core/anonymization/country_names.hpp"
#include "core/anonymization/identity/date_money.hpp"
#include "core/anonymization/identity/location_identity.hpp"
#include "core/anonymization/identity/org_identity.hpp"
#include "core/anonymization/identity/tag_and_key.hpp"
#include "core/person_clustering.hpp"

namespace binding {
namespace {

namespace anonymization = core::anonymization;
using SpanKey = std::u32string (*)(std::u32string_view, Offset, Offset);

// These keys read nothing but the span.
template <SpanKey key>
py::str span_key(py::handle text, py::handle start, py::handle end) {
  const auto surface = surface_of(text, start, end);
  return str_of(key(surface, 0, static_cast<Offset>(surface.size())));
}

py::str generic_key(py::handle type, py::handle text, py::handle start, py::handle end) {
  const auto surface = surface_of(text, start, end);
  return str_of(anonymization::_generic_entity_identity_key(
      utf8_of(type, "entity_type"), surface, 0, static_cast<Offset>(surface.size())));
}

py::tuple tag_and_key(py::handle tag, py::handle para_text, py::handle start, py::handle end) {
  const auto pair = anonymization::_global_placeholder_tag_and_key(
      utf8_of(tag, "tag"), text_of(para_text, "para_text"), offset_of(start), offset_of(end));
  return py::make_tuple(str_of(pair.tag), str_of(pair.key));
}

py::object digit_run(py::handle frag) {
  const auto run = anonymization::_money_digit_run_span(text_of(frag, "frag"));
  if (!run) return py::none();
  return py::make_tuple(run->first, run->second);
}

py::dict person_numbers(py::handle text, py::handle persons) {
  const auto document = text_of(text);
  py::dict out;
  for (const auto& [span, number] :
       core::person_span_to_placeholder_num(document, results_of(persons, Score::IGNORED))) {
    out[py::make_tuple(span.first, span.second)] = number;
  }
  return out;
}

void bind_organizations_and_places(py::module_& m) {
  const auto text = py::arg("text");
  const auto start = py::arg("start");
  const auto end = py::arg("end");
  define(m, "_organization_identity_key", span_key<anonymization::_organization_identity_key>,
         "The identity key of an organization span; equal keys, one party.", text, start, end);
  define(
      m, "_normalize_party_org_identity_fragment",
      [](py::handle s) {
        return str_of(
            anonymization::_normalize_party_org_identity_fragment(text_or_empty(s, "fragment")));
      },
      "The normalised name of an organization, letter case kept.", py::arg("fragment"));
  define(m, "_location_identity_key", span_key<anonymization::_location_identity_key>,
         "The identity key of a location span.", text, start, end);
  define(
      m, "location_identity_key_from_surface",
      [](py::handle s) {
        return str_of(
            anonymization::location_identity_key_from_surface(text_or_empty(s, "surface")));
      },
      "The identity key of a place, '' for a surface without content.", py::arg("surface"));
  define(
      m, "_normalize_location_surface",
      [](py::handle s) {
        return str_of(anonymization::_normalize_location_surface(text_or_empty(s, "surface")));
      },
      "The surface without white space and punctuation.", py::arg("surface"));
  define(
      m, "address_unification_keys_equivalent",
      [](py::handle a, py::handle b) {
        return anonymization::address_unification_keys_equivalent(text_or_empty(a, "a"),
                                                                  text_or_empty(b, "b"));
      },
      "Whether two keys that may differ name one address.", py::arg("a"), py::arg("b"));
}

void bind_countries_and_parties(py::module_& m) {
  define(
      m, "_canonical_geo_country_identity_fragment",
      [](py::handle span) {
        return str_or_none(
            anonymization::_canonical_geo_country_identity_fragment(text_or_empty(span, "span")));
      },
      "The canonical name of the country that the span names; None if it names none.",
      py::arg("span"));
  define(m, "_geo_country_mask_as_address_enabled",
         anonymization::_geo_country_mask_as_address_enabled,
         "Whether a bare country reported as an organization is masked as an address.");
  define(
      m, "_org_span_is_bare_geo_country",
      [](py::handle span, py::handle geo) {
        return anonymization::_org_span_is_bare_geo_country(text_of(span, "span"),
                                                            text_or_empty(geo, "geo"));
      },
      "Whether the span consists of the country `geo` alone.", py::arg("span"), py::arg("geo"));
  define(
      m, "avs_workgroup_party_canonical_org_key_from_span_text",
      [](py::handle span) {
        return str_or_none(anonymization::avs_workgroup_party_canonical_org_key_from_span_text(
            text_or_empty(span, "span")));
      },
      "The canonical key of the known party that the span names; None if it names none.",
      py::arg("span"));
  define(m, "person_identity_key", span_key<core::person_identity_key>,
         "A key that is equal for spellings of one person; '' for a span without a name.",
         py::arg("text"), py::arg("start"), py::arg("end"));
  define(m, "person_span_to_placeholder_num", person_numbers,
         "(start, end) to number of each PERSON result; spellings of one person share it.",
         py::arg("text"), py::arg("persons"));
}

}  // namespace

void bind_identity(py::module_& m) {
  const auto text = py::arg("text");
  const auto start = py::arg("start");
  const auto end = py::arg("end");
  bind_organizations_and_places(m);
  bind_countries_and_parties(m);
  define(m, "_datetime_identity_key", span_key<anonymization::_datetime_identity_key>,
         "The identity key of a date.", text, start, end);
  define(m, "_money_digit_run_span", digit_run,
         "(start, end) of the first figure of an amount; None without a digit.", py::arg("frag"));
  define(
      m, "_money_replacement_phrase",
      [](py::handle frag, py::handle money_ph) {
        return str_of(anonymization::_money_replacement_phrase(text_of(frag, "frag"),
                                                               text_of(money_ph, "money_ph")));
      },
      "The amount with its figure replaced by the placeholder.", py::arg("frag"),
      py::arg("money_ph"));
  define(m, "_generic_entity_identity_key", generic_key,
         "The identity key of a span of any other type.", py::arg("entity_type"), text, start, end);
  define(m, "_global_placeholder_tag_and_key", tag_and_key,
         "(tag, key): spans with equal pairs share a number.", py::arg("tag"), py::arg("para_text"),
         start, end);
}

}  // namespace binding
