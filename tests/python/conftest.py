import pytest

from core import anonymization_core


@pytest.fixture(scope="session")
def embedded():
    return anonymization_core.build_analyzer()


class Hit:
    """A hit as another library has it."""

    def __init__(self, entity_type, start, end, score=0.85):
        self.entity_type = entity_type
        self.start = start
        self.end = end
        self.score = score


class WordAnalyzer:
    """Reports every occurrence of some words; notes what it was asked."""

    def __init__(self, **types_by_word):
        self.types_by_word = types_by_word
        self.asked = []

    def analyze(self, *, text, language):
        self.asked.append((text, language))
        for word, entity_type in self.types_by_word.items():
            start = text.find(word)
            while start >= 0:
                yield Hit(entity_type, start, start + len(word))
                start = text.find(word, start + 1)


@pytest.fixture
def hit():
    return Hit


@pytest.fixture
def word_analyzer():
    return WordAnalyzer
