"""Where the application may put its keep/mask decider.

The core calls this module's filter_replacement_spans(text, spans) at each call:
a function assigned to the name takes the place of ours, which refuses. It is
given the text and the list of (start, end, placeholder), and returns those that
are to be masked. Whatever goes wrong in it leaves all spans masked.
"""

from __future__ import annotations

from typing import Callable, List, Optional, Tuple

from core import anonymization_core

Spans = List[Tuple[int, int, str]]
Decider = Callable[[str, Spans], Spans]

filter_replacement_spans: Decider = anonymization_core.filter_replacement_spans


def set_replacement_span_filter(decider: Optional[Decider]) -> None:
    """Puts the decider in its place; None takes it away."""
    global filter_replacement_spans
    filter_replacement_spans = decider or anonymization_core.filter_replacement_spans


__all__ = [
    "filter_replacement_spans",
    "set_replacement_span_filter",
]
