"""From a text to its final replacements, and to the masked text."""

from core.anonymization_core import (
    _apply_llm_keep_mask_decision,
    apply_document_text_replacements,
    prepare_document_text_replacements,
)

__all__ = [
    "_apply_llm_keep_mask_decision",
    "apply_document_text_replacements",
    "prepare_document_text_replacements",
]
