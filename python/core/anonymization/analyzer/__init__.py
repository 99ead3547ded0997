"""The analyzer and the language of a text."""
