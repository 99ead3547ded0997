"""Short names that a document defines for itself."""

from core.anonymization_core import (
    scan_defined_alias_candidates,
)

__all__ = [
    "scan_defined_alias_candidates",
]
