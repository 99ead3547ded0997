"""The analyzer service of Presidio, over HTTP."""

from core.anonymization_core import (
    PresidioRemoteAnalyzer,
)

__all__ = [
    "PresidioRemoteAnalyzer",
]
