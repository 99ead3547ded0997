"""Settings on how organizations are read in their context.

The core asks this module's _mask_country_in_geo_background_enabled at each call:
a function assigned to the name takes the place of ours.
"""

from core.anonymization_core import (
    _mask_country_in_geo_background_enabled,
    set_mask_country_in_geo_background,
)

__all__ = [
    "_mask_country_in_geo_background_enabled",
    "set_mask_country_in_geo_background",
]
