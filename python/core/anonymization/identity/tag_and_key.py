"""The identity pair of a span."""

from core.anonymization_core import (
    _generic_entity_identity_key,
    _global_placeholder_tag_and_key,
)

__all__ = [
    "_generic_entity_identity_key",
    "_global_placeholder_tag_and_key",
]
