"""Names of countries and territories."""

from core.anonymization_core import (
    _canonical_geo_country_identity_fragment,
    _geo_country_mask_as_address_enabled,
    _org_span_is_bare_geo_country,
)

__all__ = [
    "_canonical_geo_country_identity_fragment",
    "_geo_country_mask_as_address_enabled",
    "_org_span_is_bare_geo_country",
]
