"""Whole texts: the three ways in, any analyzer, offsets, errors, threads."""

import os
import pathlib
import subprocess
import sys
import threading
import traceback

import pytest

from core import anonymization_core as core
from core.anonymization import llm_decider

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"


def output_of(command, text):
    return subprocess.run(command, input=text.encode(), stdout=subprocess.PIPE, check=True).stdout


@pytest.mark.parametrize("name, language", [
    ("zh-equipment-purchase", "zh"),
    ("en-services-agreement", "en"),
    ("mixed-distribution-agreement", "zh"),
])
def test_same_bytes_from_cpp_python_and_the_command(embedded, name, language):
    text = "\U0001F600\U00020000\n" + (EXAMPLES / f"{name}.txt").read_text(encoding="utf-8")
    masked = core.anonymize_with_numbered_placeholders(text, embedded, language)
    command = [os.environ["VEILDOC_COMMAND"], "anonymize", "-l", language, "--labels", "core",
               "--aliases", "separate"]
    assert masked != text
    assert output_of(command, text) == masked.encode()
    assert output_of([os.environ["VEILDOC_CPP"], language], text) == masked.encode()


def test_arguments_by_position_and_by_name(embedded):
    text = "甲方：北京华信科技有限公司，2025年3月1日"
    pair = core.anonymize_with_numbered_placeholders_and_mapping(text, embedded)
    assert pair == ("甲方：[机构1]，[DATE1]", [("[机构1]", "北京华信科技有限公司"), ("[DATE1]", "2025年3月1日")])
    for how in ([text, embedded, "zh", "contract_default"], [text, embedded]):
        assert core.anonymize_with_numbered_placeholders(*how) == pair[0]
    assert core.anonymize_with_numbered_placeholders(
        strategy_profile="identity", language="auto", analyzer=embedded, text=text
    ) == "甲方：[机构1]，2025年3月1日"
    assert core.anonymize_with_numbered_placeholders(text, embedded, None) == pair[0]


def test_document_with_aliases_and_labels(embedded):
    text = "甲方：北京华信科技有限公司（以下简称“华信科技”）\n华信科技应付款。"
    one = core.anonymize_document(text, embedded, "auto", aliases="one")
    assert one.language == "zh"
    assert one.text == "甲方：[机构1]（以下简称“[机构1]”）\n[机构1]应付款。"
    assert [text[s:e] for s, e, _ in one.replacements] == [surface for _, surface in one.mapping]
    assert {surface for _, _, surface in one.placements} == {"北京华信科技有限公司", "华信科技"}
    assert core.with_labels(one, "en").text.startswith("甲方：[ORG1]")
    with pytest.raises(ValueError, match='aliases must be "separate" or "one", not "two"'):
        core.anonymize_document(text, embedded, aliases="two")


def test_offsets_are_those_of_the_str(word_analyzer):
    analyzer = word_analyzer(张伟="PERSON", 李="PERSON")
    text = "\U0001F600\U00020000张伟\U0001F468\u200d\U0001F469李____ab"
    masked, mapping = core.anonymize_with_numbered_placeholders_and_mapping(text, analyzer, "zh")
    assert masked == "\U0001F600\U00020000[NAME1]\U0001F468\u200d\U0001F469[NAME2]____ab"
    assert mapping == [("[NAME1]", "张伟"), ("[NAME2]", "李")]
    assert analyzer.asked[0] == (text.replace("____", "    "), "zh")
    assert core.build_numbered_replacements(text, analyzer)[0] == (2, 4, "[NAME1]")


def test_lone_surrogates_pass(word_analyzer, embedded):
    text = "\ud800张伟\udfff"
    assert core.anonymize_with_numbered_placeholders(text, word_analyzer(张伟="PERSON")) == (
        "\ud800[NAME1]\udfff")
    assert core.anonymize_with_numbered_placeholders(text, embedded, "zh").startswith("\ud800")


@pytest.mark.parametrize("value, name", [(5, "int"), (None, "NoneType"), (b"x", "bytes")])
def test_a_text_that_is_no_str(embedded, value, name):
    for function in (core.anonymize_with_numbered_placeholders,
                     core.anonymize_with_numbered_placeholders_and_mapping,
                     core.build_numbered_replacements,
                     core.collect_document_org_name_placeholder_pairs):
        for language in ("en", "auto"):
            with pytest.raises(TypeError) as caught:
                function(value, embedded, language)
            assert str(caught.value) == f"Expected str for anonymization text, got {name}"


def test_unknown_profile_and_unusable_hits(embedded, hit):
    with pytest.raises(ValueError, match="known profiles: contract_default, identity, strict"):
        core.anonymize_with_numbered_placeholders("甲", embedded, "zh", "none")

    class Fixed:
        def __init__(self, hits):
            self.analyze = lambda text, language: hits

    for hits, error in [
        (None, TypeError), (5, TypeError), ([5], AttributeError),
        ([hit(5, 0, 1)], TypeError), ([hit("PERSON", "0", 1)], TypeError),
        ([hit("PERSON", 0, 1, "much")], ValueError), ([hit("PERSON", 0, 1, None)], TypeError),
        ([hit("PERSON", 0, 1, float("nan"))], ValueError),
    ]:
        with pytest.raises(error):
            core.anonymize_with_numbered_placeholders("甲乙", Fixed(hits), "zh")
    for hits in ([hit("PERSON", -5, 10**30)], [hit("PERSON", 9, 3)], (hit("X", 0, 1, "0.5"),)):
        core.anonymize_with_numbered_placeholders("甲乙", Fixed(hits), "zh")
    with pytest.raises(AttributeError, match="'int' object has no attribute 'analyze'"):
        core.anonymize_with_numbered_placeholders("甲乙", 5)


def test_exceptions_of_the_analyzer_come_through():
    class Trouble(Exception):
        pass

    trouble = Trouble("out of order")

    class Failing:
        def analyze(self, text, language):
            raise trouble

    for analyzer in (Failing(), core.RefiningAnalyzer(Failing())):
        with pytest.raises(Trouble) as caught:
            core.anonymize_with_numbered_placeholders("甲方", analyzer)
        assert caught.value is trouble
        assert traceback.extract_tb(trouble.__traceback__)[-1].line == "raise trouble"


def test_empty_and_unsynced_texts(word_analyzer):
    empty = word_analyzer()
    assert core.anonymize_with_numbered_placeholders_and_mapping("", empty) == ("", [])
    assert core.prepare_document_text_replacements("甲¶乙", word_analyzer(**{"甲¶乙": "PRODUCT"}),
                                                   "zh", joiner="¶") == (
        [(0, 1, "[PRODUCT1]"), (2, 3, "[PRODUCT1]")], {})


# --- Threads ---

def test_threads_share_an_engine_whose_registry_changes(embedded):
    text = (EXAMPLES / "zh-equipment-purchase.txt").read_text(encoding="utf-8")
    expected = core.anonymize_with_numbered_placeholders(text, embedded, "zh")
    results = []
    threads = [
        threading.Thread(target=lambda: results.append(
            core.anonymize_with_numbered_placeholders(text, embedded, "zh")))
        for _ in range(4)
    ]
    for thread in threads:
        thread.start()
    while any(thread.is_alive() for thread in threads):
        # An analysis works on what the registry held when it began.
        embedded.registry.add_recognizer(core.PatternRecognizer("GAME", deny_list=["合同编号"]))
        embedded.registry.remove_recognizer("PatternRecognizer")
    for thread in threads:
        thread.join()
    assert len(results) == 4
    assert expected in results


def test_an_analyzer_may_use_another_thread(embedded):
    # From the core into Python, from there on another thread into the core.
    class Elsewhere:
        def analyze(self, text, language):
            hits = []
            thread = threading.Thread(
                target=lambda: hits.extend(embedded.analyze(text=text, language=language)))
            thread.start()
            thread.join()
            return hits

    text = "甲方：北京华信科技有限公司"
    assert core.anonymize_with_numbered_placeholders(text, Elsewhere(), "zh") == "甲方：[机构1]"


def test_the_program_may_end_while_the_core_works():
    # A daemon thread is in the core, on its way in or on its way out.
    program = """
import threading
from core import anonymization_core as core
analyzer, begun = core.build_analyzer(), threading.Event()

class Python:
    def analyze(self, text, language):
        begun.set()
        return analyzer.analyze(text, language)

def work(analyzer):
    while True:
        core.anonymize_with_numbered_placeholders("甲方：北京华信科技有限公司", analyzer, "zh")

for argument in (analyzer, Python(), Python()):
    threading.Thread(target=work, args=(argument,), daemon=True).start()
begun.wait()
"""
    for _ in range(3):
        subprocess.run([sys.executable, "-c", program], check=True, timeout=60)


# --- The decider ---

def test_decider_is_looked_up_at_each_call(word_analyzer, monkeypatch):
    analyzer = word_analyzer(张伟="PERSON", 李娜="PERSON")
    text = "张伟和李娜"

    def masked():
        return core.anonymize_with_numbered_placeholders(text, analyzer, "zh")

    assert masked() == "[NAME1]和[NAME2]"
    with pytest.raises(core.Error, match="no keep/mask decider is set"):
        llm_decider.filter_replacement_spans(text, [])
    offered = []

    def keep_last(text, spans):
        offered.append((text, spans))
        return spans[1:]

    monkeypatch.setattr(llm_decider, "filter_replacement_spans", keep_last)
    assert masked() == "张伟和[NAME2]"
    assert offered == [(text, [(0, 2, "[NAME1]"), (3, 5, "[NAME2]")])]
    for useless in (None, lambda t, s: 1 / 0, lambda t, s: None, lambda t, s: [(1, 2)]):
        monkeypatch.setattr(llm_decider, "filter_replacement_spans", useless)
        assert masked() == "[NAME1]和[NAME2]", "whatever goes wrong, all is masked"
    monkeypatch.delattr(llm_decider, "filter_replacement_spans")
    assert masked() == "[NAME1]和[NAME2]"
    monkeypatch.undo()
    llm_decider.set_replacement_span_filter(keep_last)
    assert masked() == "张伟和[NAME2]"
    llm_decider.set_replacement_span_filter(None)
    assert masked() == "[NAME1]和[NAME2]"


def test_a_decider_cannot_swallow_the_end_of_the_program(word_analyzer, monkeypatch):
    def interrupt(text, spans):
        raise KeyboardInterrupt

    monkeypatch.setattr(llm_decider, "filter_replacement_spans", interrupt)
    with pytest.raises(KeyboardInterrupt):
        core.anonymize_with_numbered_placeholders("张伟", word_analyzer(张伟="PERSON"))
    with pytest.raises(KeyboardInterrupt):
        core._apply_llm_keep_mask_decision("张伟", [])


def test_the_step_alone_passes_its_spans_on(monkeypatch):
    spans = [[0, 1, "[NAME1]"]]
    assert core._apply_llm_keep_mask_decision("甲", spans) is spans
    answer = object()
    monkeypatch.setattr(llm_decider, "filter_replacement_spans", lambda text, spans: answer)
    assert core._apply_llm_keep_mask_decision(text="甲", filtered=spans) is answer
