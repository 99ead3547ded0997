"""The application's own recognizers."""

from core.anonymization_core import (
    _register_china_mobile_recognizers,
)

__all__ = [
    "_register_china_mobile_recognizers",
]
