"""Numbered replacements."""
