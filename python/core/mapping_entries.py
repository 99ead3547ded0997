"""Which surface each placeholder stands for."""

from core.anonymization_core import (
    mapping_entries_from_canonical_replacements,
    mapping_entries_from_replacements,
)

__all__ = [
    "mapping_entries_from_canonical_replacements",
    "mapping_entries_from_replacements",
]
