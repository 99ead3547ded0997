"""The names in Chinese texts that the NLP engine found."""

from core.anonymization_core import (
    HanlpRecognizer,
)

__all__ = [
    "HanlpRecognizer",
]
