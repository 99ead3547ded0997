"""Paragraph joiners, and the pattern of an amount written out in English.

The core reads this module's _DOCX_PARA_JOINER_SEQUENCES at each call: strings
assigned to the name take the place of ours.
"""

from core.anonymization_core import (
    _DOCX_PARA_JOINER_SEQUENCES,
    _RE_EN_WRITTEN_CURRENCY_IN_PARENS,
)

__all__ = [
    "_DOCX_PARA_JOINER_SEQUENCES",
    "_RE_EN_WRITTEN_CURRENCY_IN_PARENS",
]
