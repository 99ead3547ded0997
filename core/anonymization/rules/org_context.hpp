// Settings on how organizations are read in their context.
#pragma once

#include <functional>
#include <optional>

namespace core::anonymization {

// Whether a country that an analyzer reports as an organization is masked as an
// address. On until it is switched off. May be called from any thread. Throws
// what the application's setting throws.
bool _mask_country_in_geo_background_enabled();
void set_mask_country_in_geo_background(bool enabled);

// The switch alone.
bool country_switch_is_on();

// A setting that the application keeps itself: asked at each call, before the
// switch, which counts where it answers nothing. An empty function removes it.
using CountrySetting = std::function<std::optional<bool>()>;
void set_country_setting(CountrySetting setting);

}  // namespace core::anonymization
