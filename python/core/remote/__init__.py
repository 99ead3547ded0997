"""Analyzers that ask a service."""
