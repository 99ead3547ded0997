"""When two dates are one, and what of an amount is replaced."""

from core.anonymization_core import (
    _RE_CN_UPPER_DIGITS_MIX,
    _datetime_identity_key,
    _money_digit_run_span,
    _money_replacement_phrase,
)

__all__ = [
    "_RE_CN_UPPER_DIGITS_MIX",
    "_datetime_identity_key",
    "_money_digit_run_span",
    "_money_replacement_phrase",
]
