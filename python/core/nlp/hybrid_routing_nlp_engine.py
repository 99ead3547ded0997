"""The NLP engine for both languages."""

from core.anonymization_core import (
    HybridRoutingNlpEngine,
)

__all__ = [
    "HybridRoutingNlpEngine",
]
