"""Rules that several steps share."""
