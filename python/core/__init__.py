"""The anonymization core of veildoc."""
