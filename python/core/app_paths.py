"""Where the application is installed."""

from core.anonymization_core import (
    resolve_adv_util_dir,
    resolve_app_root,
)

__all__ = [
    "resolve_adv_util_dir",
    "resolve_app_root",
]
