"""Names, constants, stubs and docstrings of the package."""

import ast
import importlib
import inspect
import pathlib
import pickle
import pkgutil

import pytest

import core
from core import anonymization_core

PACKAGE = pathlib.Path(core.__path__[0])
# Names by which a caller imports, and one function or constant of each.
SIBLINGS = {
    "core.anonymization.placeholders": "parse_numbered_placeholder",
    "core.anonymization.constants": "_RE_PARTY_LABELED_COMPANY",
    "core.anonymization.strategy": "_resolve_semantic_strategy_steps",
    "core.anonymization.doc_alias_scan": "scan_defined_alias_candidates",
    "core.anonymization.avs_workgroup_party":
        "avs_workgroup_party_canonical_org_key_from_span_text",
    "core.anonymization.recognizers": "_register_china_mobile_recognizers",
    "core.anonymization.rules.helpers": "_DOCX_PARA_JOINER_SEQUENCES",
    "core.anonymization.rules.org_context": "_mask_country_in_geo_background_enabled",
    "core.anonymization.llm_decider": "filter_replacement_spans",
    "core.person_clustering": "person_span_to_placeholder_num",
    "core.app_paths": "resolve_adv_util_dir",
    "core.nlp.cpu_throttle": "apply_zh_nlp_cpu_throttle",
    "core.nlp.hybrid_routing_nlp_engine": "HybridRoutingNlpEngine",
    "core.nlp.hanlp_recognizer": "HanlpRecognizer",
}


def public_names(module):
    return {name for name in vars(module) if not name.startswith("__")}


def test_modules_are_thin():
    seen = set()
    for info in pkgutil.walk_packages(core.__path__, "core."):
        module = importlib.import_module(info.name)
        assert module.__doc__, info.name
        if module is anonymization_core:
            continue
        for name in getattr(module, "__all__", []):
            seen.add(name)
            ours = getattr(anonymization_core, name, None)
            if inspect.isfunction(getattr(module, name)):  # what a module adds in Python
                assert getattr(module, name).__doc__, name
            else:
                assert getattr(module, name) is ours, name
    for module, name in SIBLINGS.items():
        assert hasattr(importlib.import_module(module), name), module
    entry = {"anonymize_with_numbered_placeholders", "anonymize_document", "AnonymizedDocument",
             "anonymize_with_numbered_placeholders_and_mapping", "with_labels", "Match", "Regex"}
    assert public_names(anonymization_core) - seen == entry


def stub_functions(tree):
    return {node.name: [a.arg for a in node.args.args] for node in tree.body
            if isinstance(node, ast.FunctionDef)}


def test_stubs_tell_what_is_there():
    assert (PACKAGE / "py.typed").exists()
    tree = ast.parse((PACKAGE / "anonymization_core.pyi").read_text(encoding="utf-8"))
    functions = stub_functions(tree)
    classes = {node.name: node for node in tree.body if isinstance(node, ast.ClassDef)}
    constants = {node.target.id for node in tree.body if isinstance(node, ast.AnnAssign)}
    protocols = {"_Hit", "_Analyzer", "_RecognizerList"}
    assert set(functions) | (set(classes) - protocols) | constants == public_names(
        anonymization_core)
    for name, parameters in functions.items():
        function = getattr(anonymization_core, name)
        assert list(inspect.signature(function).parameters) == parameters, name
        assert inspect.getdoc(function), name
    for name in set(classes) - protocols:
        members = {m.name for m in classes[name].body if isinstance(m, ast.FunctionDef)}
        assert members <= set(dir(getattr(anonymization_core, name))), name


def test_defaults():
    def defaults(name):
        return {p.name: p.default for p in inspect.signature(
            getattr(anonymization_core, name)).parameters.values()
            if p.default is not inspect.Parameter.empty}

    entry = {"language": "en", "strategy_profile": "contract_default"}
    assert defaults("anonymize_with_numbered_placeholders") == entry
    assert defaults("anonymize_with_numbered_placeholders_and_mapping") == entry
    assert defaults("build_numbered_replacements") == entry
    assert defaults("prepare_document_text_replacements") == {
        "strategy_profile": "contract_default", "joiner": ""}
    assert defaults("apply_document_text_replacements") == {"language": "zh"}
    assert defaults("mapping_entries_from_canonical_replacements") == {"language": "zh"}
    assert defaults("collect_document_entity_surface_sync_pairs") == {
        "replacements": None, "okey_to_org": None}
    assert defaults("build_analyzer") == {"include_zh_supplement_country_lexicon": True}


def test_constants_are_python_values():
    c = anonymization_core
    assert len(c._ENTITY_OVERLAP_PRIORITY) == 29
    assert list(c._ENTITY_OVERLAP_PRIORITY.items())[0] == ("GAME", 101)
    assert c.ENTITY_TO_TAG["ORGANIZATION"] == "ORG"
    assert 0 < c._AUTO_LANG_CJK_RATIO < 1
    assert c._CN_ADDRESS_TAIL_CHAR_NOT_ORG == frozenset("室号栋座层楼巷弄")
    assert len(c.GENERIC_INSTITUTION_NOUN) == 31
    assert len(c._NON_PROPAGABLE_LOCATION_SURFACE) == 49
    assert c._CONTIGUOUS_ENTITY_TYPES_FOR_NESTED_GUARD == {
        "PERSON", "ORGANIZATION", "LOCATION", "GPE"}
    assert all(isinstance(j, str) for j in c._DOCX_PARA_JOINER_SEQUENCES)


def test_patterns_match_as_those_of_re_do():
    closer = anonymization_core._RE_DEFINED_ALIAS_ORG_TRAILING_CLOSER
    match = closer.match("甲公司”）")
    assert (match.group("body"), match.span("close"), match.start(), match.end(2)) == (
        "甲公司", (3, 5), 0, 5)
    run = anonymization_core._RE_FILL_UNDERSCORE_RUN
    assert run.pattern == "_{2,}"
    assert [m.span() for m in run.finditer("\U0001F600__a_b___")] == [(1, 3), (6, 9)]
    assert run.sub("-", "a__b") == "a-b"
    assert run.fullmatch("__a") is None and run.search("a") is None
    for wrong in (99, "none"):
        with pytest.raises((IndexError, ValueError)):
            match.group(wrong)


def test_results_are_values():
    result = anonymization_core.RecognizerResult("PERSON", start=0, end=2, score=1)
    assert result == pickle.loads(pickle.dumps(result)) and len({result, result}) == 1
    assert result != anonymization_core.RecognizerResult("PERSON", 0, 3, 1) and result != 5
    assert result.to_dict() == {"entity_type": "PERSON", "start": 0, "end": 2, "score": 1.0}
    assert eval(repr(result), {"RecognizerResult": type(result)}) == result
    with pytest.raises(AttributeError):
        result.start = 5
