"""The language in which a text is analysed."""

from core.anonymization_core import (
    infer_language_from_text,
    resolve_analyze_language,
)

__all__ = [
    "infer_language_from_text",
    "resolve_analyze_language",
]
