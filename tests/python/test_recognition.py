"""Recognizers, registries and engines, ours and those written in Python."""

import pathlib

import pytest

from core import anonymization_core as core

TEXT = "甲方：北京华信科技有限公司，编号 HT-123456"


def kinds(results):
    return {(r.entity_type, r.start, r.end) for r in results}


class Codes:
    """A recognizer in the shape of Presidio's."""

    name = "codes"
    supported_entities = ["CODE"]
    supported_language = "zh"

    def analyze(self, text, entities, nlp_artifacts):
        assert entities == ["CODE"] and nlp_artifacts is None
        at = text.index("HT")
        return [core.RecognizerResult("CODE", at, at + 9, 0.9),
                core.RecognizerResult("CODE", -5, 2, 0.9), core.RecognizerResult("CODE", 90, 99, 1)]


def test_pattern_recognizer():
    class Pattern:  # of another library
        name, regex, score = "ht", r"ht-\d{6}", "0.6"

    for pattern in (core.Pattern("ht", r"HT-\d{6}", 0.6), Pattern()):
        recognizer = core.PatternRecognizer("CONTRACT_NO", [pattern], deny_list=["编号"],
                                            name="numbers", deny_list_score=0.7)
        assert (recognizer.name, recognizer.supported_entities, recognizer.supported_language) == (
            "numbers", ["CONTRACT_NO"], None)
        found = recognizer.analyze(TEXT)
        assert kinds(found) == {("CONTRACT_NO", 17, 26), ("CONTRACT_NO", 14, 16)}
        assert recognizer.analyze(TEXT, entities=["PERSON"], nlp_artifacts=None) == []
    for wrong, error in [
        (lambda: core.PatternRecognizer("X"), "neither patterns nor a deny_list"),
        (lambda: core.Pattern("x", "a", 1.5), "score must be a number from 0 to 1"),
        (lambda: core.PatternRecognizer("X", [core.Pattern("broken", "(", 1)]), "broken"),
    ]:
        with pytest.raises(ValueError, match=error):
            wrong()
    assert issubclass(core.RegexError, ValueError) and issubclass(core.ExternalError, OSError)


def test_recognizers_from_a_file(tmp_path):
    example = pathlib.Path(__file__).parents[2] / "examples" / "recognizers.yaml"
    assert all(isinstance(r, core.PatternRecognizer) for r in core.load_recognizers(str(example)))
    with pytest.raises(core.ExternalError, match="none.json: cannot be read"):
        core.load_recognizers(tmp_path / "none.json")


def test_registry_is_a_list_of_the_same_objects():
    codes, spacy = Codes(), core.SpacyRecognizer("en", ["PERSON"])
    registry = core.RecognizerRegistry([spacy])
    registry.add_recognizer(recognizer=codes)
    assert registry.recognizers == [spacy, codes] and registry.recognizers[1] is codes
    assert registry.get_recognizers("zh") == [codes]
    assert registry.get_supported_entities("zh") == ["CODE"]
    with pytest.raises(AttributeError):
        registry.add_recognizer(5)
    registry.remove_recognizer("codes")
    registry.recognizers.append(codes)
    assert registry.recognizers == [spacy, codes]


def test_swap_and_mainland_recognizers():
    class SpacyRecognizer:  # of another library
        name, supported_entities, supported_language = "spacy", ["PERSON"], "zh"

    class Registry:
        recognizers = []

    en, zh, last = core.SpacyRecognizer("en"), core.SpacyRecognizer("zh", ["PERSON"]), Codes()
    for chinese in (zh, SpacyRecognizer()):
        registry = Registry()
        registry.recognizers = [en, chinese, last]
        core._swap_zh_spacy_recognizer_for_hanlp(registry, zh_supported_entities=["PERSON"])
        first, hanlp, third = registry.recognizers
        assert first is en and third is last and type(hanlp) is core.HanlpRecognizer
        assert (hanlp.supported_language, hanlp.supported_entities) == ("zh", ["PERSON"])
    core._swap_zh_spacy_recognizer_for_hanlp(registry, [])
    assert [type(r) for r in registry.recognizers[-2:]] == [Codes, core.HanlpRecognizer]
    counts = []
    for lexicon in (False, True):
        registry = core.RecognizerRegistry()
        core._register_china_mobile_recognizers(registry, lexicon)
        counts.append(len(registry.recognizers))
    assert counts[1] == counts[0] + 1
    assert len(core.build_analyzer(False).registry.recognizers) + 1 == len(
        core.build_analyzer().registry.recognizers)


def test_engine_put_together_by_hand():
    nlp_engine = core.HybridRoutingNlpEngine(en_model_name="en_core_web_lg")
    assert nlp_engine.get_supported_entities("zh") == []
    nlp_engine.load()
    engine = core.AnalyzerEngine(nlp_engine=nlp_engine, supported_languages=["en", "zh"])
    names = [r.name for r in engine.registry.recognizers]
    assert names.count("SpacyRecognizer") == 2 and engine.supported_languages == ["en", "zh"]
    engine.registry.recognizers.append(Codes())
    found = kinds(engine.analyze(text=TEXT, language="zh"))
    assert {("ORGANIZATION", 3, 13), ("CODE", 17, 26), ("CODE", 0, 2)} <= found
    assert "CODE" not in {kind for kind, _, _ in kinds(engine.analyze(TEXT, "en"))}
    assert core.anonymize_with_numbered_placeholders(TEXT, engine, "zh") == (
        "[CODE1]：[机构1]，编号 [CODE2]")

    class Mine(core.AnalyzerEngine):
        def analyze(self, text, language):
            return [r for r in super().analyze(text, language) if r.entity_type != "CODE"]

    mine = Mine(registry=engine.registry, nlp_engine=nlp_engine)
    assert core.anonymize_with_numbered_placeholders(TEXT, mine, "zh").startswith("甲方：[机构1]")
    with pytest.raises(ValueError, match="unknown NLP model other"):
        core.HybridRoutingNlpEngine("other").load()


def test_spacy_model(tmp_path):
    models = pathlib.Path(__file__).parent.parent / "spacy" / "models"
    nlp_engine = core.HybridRoutingNlpEngine(en_model_name=str(models / "en_small"))
    nlp_engine.load()
    assert "MONEY" in nlp_engine.get_supported_entities("en")
    engine = core.AnalyzerEngine(nlp_engine=nlp_engine, supported_languages=["en", "zh"])
    text = "Cendrix Corp. paid US$ 3.5 million to Orrinde Ashgrovel on 8 May 2024."
    assert ("PERSON", 38, 55) in kinds(engine.analyze(text, "en"))
    with pytest.raises(ValueError, match="meta.json: No such file"):
        core.HybridRoutingNlpEngine(str(tmp_path)).load()


def test_analysis_requests(embedded):
    def analyze(**options):
        return embedded.analyze(TEXT, "zh", **options)

    assert kinds(analyze(entities=["ORGANIZATION"])) == {("ORGANIZATION", 3, 13)}
    assert analyze(entities=["ORGANIZATION"], allow_list=["北京华信科技有限公司"]) == []
    assert analyze(entities=["ORGANIZATION"], allow_list=["华信"], allow_list_match="regex") == []
    assert ("CODE", 17, 26) in kinds(analyze(ad_hoc_recognizers=[Codes()]))
    assert analyze(score_threshold=1, entities=["ORGANIZATION"]) == []
    explained = analyze(entities=["ORGANIZATION"], return_decision_process=True)
    assert explained[0].analysis_explanation.recognizer == "HanlpRecognizer"
    for options in ({"entities": ["NONE"]}, {"score_threshold": 2}, {"allow_list_match": "some"},
                    {"allow_list": ["("], "allow_list_match": "regex"}):
        with pytest.raises(ValueError):
            analyze(**options)
    with pytest.raises(ZeroDivisionError):
        class Failing(Codes):
            def analyze(self, text, entities, nlp_artifacts):
                return 1 / 0
        analyze(ad_hoc_recognizers=[Failing()])


def test_refining_any_analyzer(word_analyzer, embedded):
    class Once:
        def analyze(self, text, language):
            at = text.index("华信科技")
            return [core.RecognizerResult("ORGANIZATION", at, at + 4, 0.9)]

    text = "华信科技与乙方签约。华信科技付款。"
    refining = core.RefiningAnalyzer(analyzer=Once())
    assert {("ORGANIZATION", 0, 4), ("ORGANIZATION", 10, 14)} <= kinds(refining.analyze(text, "zh"))
    assert kinds(refining.refine(text, "zh", Once().analyze(text, "zh"))) == kinds(
        refining.analyze(text=text, language="zh"))
    assert core.anonymize_with_numbered_placeholders(text, refining, "zh") == (
        "[机构1]与乙方签约。[机构1]付款。")
    assert kinds(core.RefiningAnalyzer(embedded).analyze(TEXT, "zh")) >= {("ORGANIZATION", 3, 13)}
    with pytest.raises(AttributeError):
        core.RefiningAnalyzer(None).analyze(text, "zh")
