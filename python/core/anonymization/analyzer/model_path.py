"""Which model analyses a language."""

from core.anonymization_core import (
    _frozen_app_dir,
    _is_spacy_model_dir,
    _resolve_nested_spacy_model_dir,
    resolve_spacy_model_path,
)

__all__ = [
    "_frozen_app_dir",
    "_is_spacy_model_dir",
    "_resolve_nested_spacy_model_dir",
    "resolve_spacy_model_path",
]
