"""When two places or addresses are the same place."""

from core.anonymization_core import (
    _location_identity_key,
    _normalize_location_surface,
    address_unification_keys_equivalent,
    location_identity_key_from_surface,
)

__all__ = [
    "_location_identity_key",
    "_normalize_location_surface",
    "address_unification_keys_equivalent",
    "location_identity_key_from_surface",
]
