"""Which of several overlapping hits stays."""

from core.anonymization_core import (
    _CONTIGUOUS_ENTITY_TYPES_FOR_NESTED_GUARD,
    _ENTITY_OVERLAP_PRIORITY,
    _drop_single_char_entity_inside_long_entity,
    _overlap_entity_priority,
    _overlap_sort_key,
    _resolve_overlaps,
)

__all__ = [
    "_CONTIGUOUS_ENTITY_TYPES_FOR_NESTED_GUARD",
    "_ENTITY_OVERLAP_PRIORITY",
    "_drop_single_char_entity_inside_long_entity",
    "_overlap_entity_priority",
    "_overlap_sort_key",
    "_resolve_overlaps",
]
