"""Placeholders and surfaces of a whole document."""
