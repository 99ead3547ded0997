import doctest
import pathlib


def test_sessions_of_the_documentation_run_as_they_stand():
    page = pathlib.Path(__file__).parents[2] / "docs" / "python.md"
    outcome = doctest.testfile(str(page), module_relative=False, encoding="utf-8")
    assert outcome.attempted > 20 and outcome.failed == 0
