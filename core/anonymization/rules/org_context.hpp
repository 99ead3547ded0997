// Settings on how organizations are read in their context.
#pragma once

namespace core::anonymization {

// Whether a country that an analyzer reports as an organization is masked as an
// address. On until it is switched off. May be called from any thread.
bool _mask_country_in_geo_background_enabled();
void set_mask_country_in_geo_background(bool enabled);

}  // namespace core::anonymization
