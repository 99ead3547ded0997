"""What an application sets from Python."""

import pathlib
import sys

import pytest

from core import anonymization_core as core
from core.anonymization import avs_workgroup_party, strategy
from core.anonymization.rules import helpers, org_context


def test_known_parties():
    key = core.avs_workgroup_party_canonical_org_key_from_span_text
    for parties in ({"KEY": ["华信科技", "Huaxin Ltd"]}, [("KEY", ("华信科技", "Huaxin Ltd"))]):
        avs_workgroup_party.set_known_parties(parties)
        assert key("HUAXIN LTD") == "KEY"
        assert core._organization_identity_key("在华信科技处", 1, 5) == "KEY"
    avs_workgroup_party.set_known_parties({})
    assert key("华信科技") is None
    with pytest.raises(TypeError, match="Expected a list of str for variants, got str"):
        avs_workgroup_party.set_known_parties({"KEY": "华信"})


def test_country_setting_is_asked_at_each_call(word_analyzer, monkeypatch):
    def masked():
        return core.anonymize_with_numbered_placeholders("与美国签约", word_analyzer(美国="ORGANIZATION"),
                                                         "zh")

    assert masked() == "与[地址1]签约"
    org_context.set_mask_country_in_geo_background(False)
    assert masked() == "与[机构1]签约"
    org_context.set_mask_country_in_geo_background(True)
    ours = org_context._mask_country_in_geo_background_enabled
    monkeypatch.setattr(org_context, "_mask_country_in_geo_background_enabled", lambda: not ours())
    assert masked() == "与[机构1]签约"
    for broken in (lambda: 1 / 0, None):
        monkeypatch.setattr(org_context, "_mask_country_in_geo_background_enabled", broken)
        assert core._geo_country_mask_as_address_enabled() is True


def test_joiners_are_read_at_each_call(monkeypatch):
    assert core._strip_docx_joiner_sequences("甲§§乙") == "甲§§乙"
    monkeypatch.setattr(helpers, "_DOCX_PARA_JOINER_SEQUENCES", ["§§", ""])
    assert core._strip_docx_joiner_sequences("甲§§乙") == "甲乙"
    assert core._clip_replacements_at_embedded_docx_joiners([(0, 4, "x")], "甲§§乙") == [
        (0, 1, "x"), (3, 4, "x")]
    monkeypatch.setattr(helpers, "_DOCX_PARA_JOINER_SEQUENCES", None)
    with pytest.raises(TypeError):
        core._strip_docx_joiner_sequences("甲")


def test_strategy_steps(word_analyzer, monkeypatch):
    analyzer = word_analyzer(张伟="PERSON", 北京="LOCATION")
    seen = []

    def drop_places(text, analysis_text, results):
        seen.append((text, analysis_text, [r.entity_type for r in results]))
        return [r for r in results if r.entity_type != "LOCATION"]

    def add_word(text, analysis_text, results):
        return results + [core.RecognizerResult("PRODUCT", 4, 5, 0.9)]

    def masked(profile):
        return core.anonymize_with_numbered_placeholders("张伟北京酒__", analyzer, "zh", profile)

    strategy.set_strategy_steps("people", [drop_places], after_overlaps=(add_word,))
    assert masked("people") == "[NAME1]北京[PRODUCT1]__"
    assert seen[0] == ("张伟北京酒__", "张伟北京酒  ", ["PERSON", "LOCATION"])
    assert masked("strict") == "[NAME1][地址1]酒__"
    strategy.set_strategy_steps("people", None)
    with pytest.raises(ValueError, match="Unknown strategy profile"):
        masked("people")

    # Built-in steps may be called, and be part of other profiles.
    ours = strategy._resolve_semantic_strategy_steps
    (before, *rest), after = ours("identity", "zh")
    assert before("甲", "甲", []) == [] and len(rest) == 1 and after == []
    monkeypatch.setattr(strategy, "_resolve_semantic_strategy_steps",
                        lambda profile, language: (ours("strict", language)[0], [add_word]))
    assert masked("whatever") == "[NAME1][地址1][PRODUCT1]__"
    for wrong, error in [(lambda p, l: ([], [], []), ValueError), (lambda p, l: 1 / 0, ZeroDivisionError),
                         (lambda p, l: ([lambda *a: 1 / 0], []), ZeroDivisionError),
                         (lambda p, l: ([5], []), TypeError)]:
        monkeypatch.setattr(strategy, "_resolve_semantic_strategy_steps", wrong)
        with pytest.raises(error):
            masked("strict")


def test_alias_candidates_survive_python_steps(word_analyzer, monkeypatch):
    # What tells a candidate from a hit is carried through.
    ours = strategy._resolve_semantic_strategy_steps
    monkeypatch.setattr(
        strategy, "_resolve_semantic_strategy_steps",
        lambda profile, language: ([lambda t, a, r: list(reversed(r)), *ours(profile)[0]], []))
    text = "某某公司（以下简称“华信科技”）"
    assert core.anonymize_with_numbered_placeholders(text, word_analyzer(), "zh") == text
    assert core.anonymize_with_numbered_placeholders(
        text, word_analyzer(某某公司="ORGANIZATION"), "zh") == "[机构1]（以下简称“[机构2]”）"


def test_frozen_programs_find_models_beside_them(tmp_path, monkeypatch):
    assert core._frozen_app_dir() is None
    assert core.resolve_spacy_model_path("en", "en_core_web_lg") == "en_core_web_lg"
    model = tmp_path / "app" / "adv_util" / "en" / "some_model"
    model.mkdir(parents=True)
    (model / "meta.json").touch()
    assert not core._is_spacy_model_dir(str(model))
    assert core._resolve_nested_spacy_model_dir(model.parent) is None
    (model / "config.cfg").touch()
    assert core._is_spacy_model_dir(path=model)
    assert core._resolve_nested_spacy_model_dir(str(model.parent)) == model
    monkeypatch.setattr(sys, "frozen", True, raising=False)
    monkeypatch.setattr(sys, "executable", str(tmp_path / "app" / "program"))
    assert core._frozen_app_dir() == tmp_path / "app"
    assert core.resolve_app_root() == tmp_path / "app"
    assert core.resolve_adv_util_dir("/opt/app") == pathlib.Path("/opt/app/adv_util")
    assert core.resolve_spacy_model_path("en", "en_core_web_lg") == str(model)
    with pytest.raises(ValueError, match="spaCy model"):
        core.build_analyzer()
    monkeypatch.setattr(sys, "frozen", False)
    assert core._frozen_app_dir() is None
    monkeypatch.setenv("VEILDOC_SPACY_MODEL_EN", f" {model.parent} ")
    assert core.resolve_spacy_model_path(lang_code="en", default_package_name="x") == str(model)
