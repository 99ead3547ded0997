"""Parties that the application knows by name."""

from core.anonymization_core import (
    avs_workgroup_party_canonical_org_key_from_span_text,
    set_known_parties,
)

__all__ = [
    "avs_workgroup_party_canonical_org_key_from_span_text",
    "set_known_parties",
]
