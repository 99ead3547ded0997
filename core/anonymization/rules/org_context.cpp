#include "core/anonymization/rules/org_context.hpp"

#include <atomic>

namespace core::anonymization {
namespace {

std::atomic<bool> masks_country_in_geo_background = true;

}  // namespace

bool _mask_country_in_geo_background_enabled() { return masks_country_in_geo_background.load(); }

void set_mask_country_in_geo_background(bool enabled) {
  masks_country_in_geo_background.store(enabled);
}

}  // namespace core::anonymization
