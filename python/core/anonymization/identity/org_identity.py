"""When two mentions of an organization are one party."""

from core.anonymization_core import (
    _RE_JOINER_FRAGMENT_IN_ORG_SPAN,
    _normalize_party_org_identity_fragment,
    _organization_identity_key,
)

__all__ = [
    "_RE_JOINER_FRAGMENT_IN_ORG_SPAN",
    "_normalize_party_org_identity_fragment",
    "_organization_identity_key",
]
