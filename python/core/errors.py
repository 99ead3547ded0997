"""The errors that are none of Python's own."""

from core.anonymization_core import (
    Error,
    ExternalError,
    RegexError,
)

__all__ = [
    "Error",
    "ExternalError",
    "RegexError",
]
