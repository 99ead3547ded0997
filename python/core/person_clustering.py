"""Which spellings name one person."""

from core.anonymization_core import (
    person_identity_key,
    person_span_to_placeholder_num,
)

__all__ = [
    "person_identity_key",
    "person_span_to_placeholder_num",
]
