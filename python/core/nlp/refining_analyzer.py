"""Any analyzer with the refinements of the embedded one."""

from core.anonymization_core import (
    RefiningAnalyzer,
)

__all__ = [
    "RefiningAnalyzer",
]
