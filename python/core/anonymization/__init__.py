"""The steps of an anonymization, by topic."""
