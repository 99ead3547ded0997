"""How many threads an engine for Chinese texts may start."""

from core.anonymization_core import (
    apply_zh_nlp_cpu_throttle,
)

__all__ = [
    "apply_zh_nlp_cpu_throttle",
]
