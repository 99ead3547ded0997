"""Puts the entity analyzer together."""

from core.anonymization_core import (
    _swap_zh_spacy_recognizer_for_hanlp,
    build_analyzer,
)

__all__ = [
    "_swap_zh_spacy_recognizer_for_hanlp",
    "build_analyzer",
]
