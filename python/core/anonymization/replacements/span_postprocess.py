"""Cleans replacement lists between numbering and writing."""

from core.anonymization_core import (
    _COVER_LINE_ORG_CONNECTIVES,
    _RE_DEFINED_ALIAS_ORG_LEFT,
    _RE_DEFINED_ALIAS_ORG_TRAILING_CLOSER,
    _RE_FALSE_ORG_OUTLINE_SECTION,
    _RE_FALSE_ORG_YEAR_SPAN,
    _clip_replacements_at_embedded_docx_joiners,
    _filter_weak_org_replacements,
    _split_replacements_at_joiner,
    _strip_docx_joiner_sequences,
    _trim_org_replacement_spans_at_defined_alias_closers,
)

__all__ = [
    "_COVER_LINE_ORG_CONNECTIVES",
    "_RE_DEFINED_ALIAS_ORG_LEFT",
    "_RE_DEFINED_ALIAS_ORG_TRAILING_CLOSER",
    "_RE_FALSE_ORG_OUTLINE_SECTION",
    "_RE_FALSE_ORG_YEAR_SPAN",
    "_clip_replacements_at_embedded_docx_joiners",
    "_filter_weak_org_replacements",
    "_split_replacements_at_joiner",
    "_strip_docx_joiner_sequences",
    "_trim_org_replacement_spans_at_defined_alias_closers",
]
