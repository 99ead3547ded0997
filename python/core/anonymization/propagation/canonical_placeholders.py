"""One placeholder for each organization and each address of a document."""

from core.anonymization_core import (
    build_okey_to_canonical_location_placeholders,
    build_okey_to_canonical_org_placeholders,
    canonical_location_placeholder_for_span,
    canonical_org_placeholder_for_span,
)

__all__ = [
    "build_okey_to_canonical_location_placeholders",
    "build_okey_to_canonical_org_placeholders",
    "canonical_location_placeholder_for_span",
    "canonical_org_placeholder_for_span",
]
