"""The surfaces of a document that are masked wherever they stand."""

from core.anonymization_core import (
    collect_document_entity_surface_sync_pairs,
    collect_document_org_name_placeholder_pairs,
)

__all__ = [
    "collect_document_entity_surface_sync_pairs",
    "collect_document_org_name_placeholder_pairs",
]
