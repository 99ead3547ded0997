"""The frame for recognizers, and those that go by shape."""

from core.anonymization_core import (
    AnalysisExplanation,
    AnalyzerEngine,
    EntityRecognizer,
    Pattern,
    PatternRecognizer,
    RecognizerRegistry,
    RecognizerResult,
    SpacyRecognizer,
    load_recognizers,
)

__all__ = [
    "AnalysisExplanation",
    "AnalyzerEngine",
    "EntityRecognizer",
    "Pattern",
    "PatternRecognizer",
    "RecognizerRegistry",
    "RecognizerResult",
    "SpacyRecognizer",
    "load_recognizers",
]
