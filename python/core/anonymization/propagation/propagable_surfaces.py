"""Which surfaces are masked wherever they stand."""

from core.anonymization_core import (
    _NON_PROPAGABLE_LOCATION_SURFACE,
    _NON_PROPAGABLE_ORG_SURFACE,
    _RE_EN_PROPAGABLE_ORG_LEGAL_SUFFIX,
    _RE_PROPAGABLE_ORG_NAME_SUFFIX,
    _looks_like_project_title,
    _looks_like_propagable_location_surface,
    _looks_like_propagable_org_name,
    _replace_party_org_surface_safe,
)

__all__ = [
    "_NON_PROPAGABLE_LOCATION_SURFACE",
    "_NON_PROPAGABLE_ORG_SURFACE",
    "_RE_EN_PROPAGABLE_ORG_LEGAL_SUFFIX",
    "_RE_PROPAGABLE_ORG_NAME_SUFFIX",
    "_looks_like_project_title",
    "_looks_like_propagable_location_surface",
    "_looks_like_propagable_org_name",
    "_replace_party_org_surface_safe",
]
