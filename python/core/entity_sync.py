"""Spreads placeholders over mentions that the analyzer missed."""

from core.anonymization_core import (
    _apply_entity_surface_sync_to_text,
    _document_text_entity_sync_locale,
)

__all__ = [
    "_apply_entity_surface_sync_to_text",
    "_document_text_entity_sync_locale",
]
