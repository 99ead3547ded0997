"""The names in Chinese texts, from the NLP engine or a service of HanLP."""

from core.anonymization_core import (
    HanlpRecognizer,
)

__all__ = [
    "HanlpRecognizer",
]
