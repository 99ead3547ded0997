"""Which of an analyzer's hits a profile masks.

A step is called with the text, the text that was analysed (of the same length)
and the list of results, and returns the results that go on. The core asks this
module's _resolve_semantic_strategy_steps at each call.
"""

from __future__ import annotations

from typing import Any, Callable, Iterable

from core.anonymization_core import (
    StrategyStep,
    _resolve_semantic_strategy_steps as _built_in_strategy_steps,
)

Step = Callable[[str, str, "list[Any]"], "Iterable[Any]"]
_profiles: dict[str, tuple[list[Step], list[Step]]] = {}


def set_strategy_steps(
    profile: str, before_overlaps: Iterable[Step] | None, after_overlaps: Iterable[Step] = ()
) -> None:
    """Adds a profile: its steps before and after the overlaps are resolved.

    A built-in profile of the name gives way. None takes the profile away.
    """
    if before_overlaps is None:
        _profiles.pop(profile, None)
    else:
        _profiles[profile] = (list(before_overlaps), list(after_overlaps))


def _resolve_semantic_strategy_steps(
    profile: str, language: str | None = "en"
) -> tuple[list[Step], list[Step]]:
    """The steps of a profile before and after the overlaps are resolved."""
    steps = _profiles.get(profile)
    if steps is None:
        return _built_in_strategy_steps(profile, language)
    before_overlaps, after_overlaps = steps
    return list(before_overlaps), list(after_overlaps)


__all__ = [
    "StrategyStep",
    "_resolve_semantic_strategy_steps",
    "set_strategy_steps",
]
