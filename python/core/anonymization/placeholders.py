"""Placeholder strings, made and read back."""

from core.anonymization_core import (
    ensure_ascii_placeholder_brackets,
    expand_span_to_absorb_wrapping_brackets,
    format_card_last4_placeholder,
    format_numbered_placeholder,
    parse_numbered_placeholder,
)

__all__ = [
    "ensure_ascii_placeholder_brackets",
    "expand_span_to_absorb_wrapping_brackets",
    "format_card_last4_placeholder",
    "format_numbered_placeholder",
    "parse_numbered_placeholder",
]
