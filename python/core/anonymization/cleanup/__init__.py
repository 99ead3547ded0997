"""False hits and overlapping hits."""
