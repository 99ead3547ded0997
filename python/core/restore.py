"""The way back: mapping files, and the originals put back into a masked text."""

from core.anonymization_core import (
    PlaceholderMapping,
    find_listed,
    find_restorable,
    make_mapping,
    open_sealed_mapping,
    read_mapping,
    restore,
    seal_mapping,
    write_mapping,
)

__all__ = [
    "PlaceholderMapping",
    "find_listed",
    "find_restorable",
    "make_mapping",
    "open_sealed_mapping",
    "read_mapping",
    "restore",
    "seal_mapping",
    "write_mapping",
]
