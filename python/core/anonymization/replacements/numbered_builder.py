"""Turns an analyzer's hits into numbered replacements."""

from core.anonymization_core import (
    build_numbered_replacements,
)

__all__ = [
    "build_numbered_replacements",
]
