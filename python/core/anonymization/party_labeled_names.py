"""Organization names behind a party label."""

from core.anonymization_core import (
    _collect_party_labeled_org_names,
    _expand_party_org_mentions,
)

__all__ = [
    "_collect_party_labeled_org_names",
    "_expand_party_org_mentions",
]
