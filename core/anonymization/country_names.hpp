// Names of countries and territories, in Chinese and English.
//
// The canonical name is the usual short Chinese form: 美国, 香港, 刚果(金). It is
// reached from short, official and historic names (美利坚合众国, USA, U.S.,
// Republic of Korea, 中华人民共和国).
//
// Sources: the names that ICU's locale data gives every region code of ISO
// 3166-1, and data/country_names.txt for the rest.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace core::anonymization {

// The canonical name of the country that `span` names, compared after
// _normalize_location_surface and case folding, with or without "the" in front;
// empty if it names none.
std::u32string _canonical_geo_country_identity_fragment(std::u32string_view span);

// Every name as it is spelled in the sources, none twice but for letter case,
// white space and punctuation.
const std::vector<std::u32string>& known_country_names();

// Whether a bare country reported as an organization is masked as an address.
// Reads the setting in rules/org_context at each call; true where that fails.
bool _geo_country_mask_as_address_enabled();

// Whether an organization span consists of the country alone: its canonical
// name is `geo`, and `geo` is not empty.
bool _org_span_is_bare_geo_country(std::u32string_view span, std::u32string_view geo);

}  // namespace core::anonymization
