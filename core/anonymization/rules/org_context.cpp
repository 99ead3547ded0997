#include "core/anonymization/rules/org_context.hpp"

#include <atomic>

#include "core/anonymization/hook.hpp"

namespace core::anonymization {
namespace {

std::atomic<bool> masks_country_in_geo_background = true;

using CountryHook = Hook<std::optional<bool>()>;

CountryHook& country_setting() {
  static CountryHook instance;
  return instance;
}

}  // namespace

bool _mask_country_in_geo_background_enabled() {
  if (const auto setting = country_setting().get()) {
    if (const auto enabled = (*setting)()) return *enabled;
  }
  return country_switch_is_on();
}

bool country_switch_is_on() { return masks_country_in_geo_background.load(); }

void set_mask_country_in_geo_background(bool enabled) {
  masks_country_in_geo_background.store(enabled);
}

void set_country_setting(CountrySetting setting) { country_setting().set(std::move(setting)); }

}  // namespace core::anonymization
