"""An analyzer outside, such as a service, among the recognizers of an engine."""

from core.anonymization_core import (
    remote_recognizers,
)

__all__ = [
    "remote_recognizers",
]
