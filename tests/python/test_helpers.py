"""Every helper by position and by name, None, identity, malformed triples."""

import inspect

import pytest

from core import anonymization_core as core

R = core.RecognizerResult
ORG = [(3, 13, "[机构1]")]
TEXT = "甲方：北京华信科技有限公司"

CALLS = [
    ("infer_language_from_text", ["E-mail：x"], "zh"),
    ("resolve_analyze_language", [" ZH ", "abc"], "zh"),
    ("resolve_analyze_language", [None, "甲方：张伟"], "zh"),
    ("resolve_analyze_language", ["", "abc"], "en"),
    ("_document_text_entity_sync_locale", ["fr", "abc"], "zh"),
    ("_document_text_entity_sync_locale", ["mixed", "abc"], "en"),
    ("_normalize_fill_underscores_for_analysis", ["甲方：______"], "甲方：      "),
    ("_is_it_product_compound_not_address", [None], False),
    ("_is_it_product_compound_not_address", ["政务 云平台"], True),
    ("_overlap_entity_priority", ["GAME"], 101),
    ("_overlap_entity_priority", ["ELSE"], 50),
    ("_overlap_sort_key", [R("PERSON", 2, 5, 1)], (100, 1.0, 3)),
    ("_organization_identity_key", ["\U0001F600Acme Trading Pty Ltd", 1, 21], "acmetrading"),
    ("_organization_identity_key", ["abc", -5, 10**30], "abc"),
    ("_normalize_party_org_identity_fragment", [None], ""),
    ("_normalize_party_org_identity_fragment", ["北京 大学有限公司"], "北京大学"),
    ("_location_identity_key", ["在USA境内", 1, 4], "美国"),
    ("location_identity_key_from_surface", [None], ""),
    ("_normalize_location_surface", ["北京市，海淀区（西）"], "北京市海淀区(西)"),
    ("address_unification_keys_equivalent", ["北京市海淀区中关村", "北京市海淀区中关村大街"], True),
    ("address_unification_keys_equivalent", ["", ""], False),
    ("_canonical_geo_country_identity_fragment", ["USA"], "美国"),
    ("_canonical_geo_country_identity_fragment", ["华信"], None),
    ("_org_span_is_bare_geo_country", ["USA", "美国"], True),
    ("_org_span_is_bare_geo_country", ["华信", None], False),
    ("_geo_country_mask_as_address_enabled", [], True),
    ("_mask_country_in_geo_background_enabled", [], True),
    ("avs_workgroup_party_canonical_org_key_from_span_text", ["华信"], None),
    ("person_identity_key", ["甲 Mr. John Smith", 2, 16], "john smith"),
    ("person_span_to_placeholder_num", ["张伟李娜张 伟", [R("PERSON", 0, 2, 1), R("PERSON", 2, 4, 1),
                                                  R("PERSON", 4, 7, 1)]],
     {(0, 2): 1, (2, 4): 2, (4, 7): 1}),
    ("_datetime_identity_key", ["于2023年签", 1, 6], "2023"),
    ("_money_digit_run_span", ["合同总价1,000.50 元"], (4, 12)),
    ("_money_digit_run_span", ["元"], None),
    ("_money_replacement_phrase", ["人民币100,000元", "【MONEY1】"], "人民币[MONEY1]元"),
    ("_generic_entity_identity_key", ["MONEY", "约人民币1,000,000元", 0, 14], "1000000"),
    ("_global_placeholder_tag_and_key", ["MONEY", "付￥给", 1, 2], ("MONEY", "@1:2")),
    ("_global_placeholder_tag_and_key", ["ORG", "USA", 0, 3], ("ADDRESS", "美国")),
    ("_looks_like_project_title", ["某某工程施工合同"], True),
    ("_looks_like_propagable_org_name", [None], False),
    ("_looks_like_propagable_org_name", ["Acme Ltd"], True),
    ("_looks_like_propagable_location_surface", [None], False),
    ("_looks_like_propagable_location_surface", ["上海市浦东新区"], True),
    ("_replace_party_org_surface_safe", ["ACME LTD and AcmeLtdX", "Acme Ltd", "[机构1]"],
     "[机构1] and AcmeLtdX"),
    ("_is_cn_generic_research_center_narrative", ["该研究中心"], True),
    ("format_numbered_placeholder", ["ORG", 1], "[机构1]"),
    ("format_numbered_placeholder", ["ORG", 1, "en"], "[ORG1]"),
    ("parse_numbered_placeholder", ["[地址12]"], ("ADDRESS", 12)),
    ("parse_numbered_placeholder", ["[CARD_****1234]"], None),
    ("ensure_ascii_placeholder_brackets", ["［机构1］"], "[机构1]"),
    ("format_card_last4_placeholder", [" 12 34"], "[CARD_****1234]"),
    ("expand_span_to_absorb_wrapping_brackets", ["a[b]", 2, 3], (1, 4)),
    ("_strip_docx_joiner_sequences", ["甲\uE000¶\uE001乙\uE000" + "a" * 64 + "\uE001"], "甲乙"),
    ("_collect_party_labeled_org_names", [TEXT], ["北京华信科技有限公司"]),
    ("_expand_party_org_mentions", [TEXT + "。北京华信科技有限公司签字", ORG, {"北京华信科技有限公司": 1},
                                    1, "zh"],
     (ORG + [(14, 24, "[机构1]")], 1)),
    ("build_okey_to_canonical_org_placeholders", [TEXT, [(3, 13, "[机构7]")], None],
     {"北京华信科技有限公司": "[机构1]"}),
    ("build_okey_to_canonical_location_placeholders", ["在USA", [[1, 4, "[地址2]"]], "zh"],
     {"美国": "[地址1]"}),
    ("canonical_org_placeholder_for_span", [TEXT, 3, 13, "[机构7]", {"北京华信科技有限公司": "[机构1]"}],
     "[机构1]"),
    ("canonical_location_placeholder_for_span", ["在USA", 1, 4, "[地址7]", {}], "[地址7]"),
    ("apply_document_text_replacements", [TEXT, [(3, 13, "［机构7］")], {"北京华信科技有限公司": "[机构1]"}],
     "甲方：[机构1]"),
    ("mapping_entries_from_canonical_replacements", [TEXT, [(3, 13, "［机构7］")], {}, "zh"],
     [("[机构7]", "北京华信科技有限公司")]),
    ("mapping_entries_from_replacements", [TEXT, [(3, 13, "［机构7］"), (0, 2, "x")]],
     [("x", "甲方"), ("［机构7］", "北京华信科技有限公司")]),
    ("_apply_entity_surface_sync_to_text",
     ["甲方：[机构1]。北京华信科技有限公司签字", TEXT, None, "zh", ORG, {"北京华信科技有限公司": "[机构1]"}],
     "甲方：[机构1]。[机构1]签字"),
    ("collect_document_entity_surface_sync_pairs", [TEXT, None, None, ORG],
     [("北京华信科技有限公司", "[机构1]")]),
    ("collect_document_entity_surface_sync_pairs",
     [TEXT, None, "zh", ORG, {"北京华信科技有限公司": "[机构9]"}], [("北京华信科技有限公司", "[机构9]")]),
    ("apply_zh_nlp_cpu_throttle", [], None),
]


@pytest.mark.parametrize("name, arguments, expected", CALLS)
def test_by_position_and_by_name(name, arguments, expected):
    function = getattr(core, name)
    assert function(*arguments) == expected
    parameters = list(inspect.signature(function).parameters)
    assert function(**dict(zip(parameters, arguments))) == expected


def test_pairs_with_an_analyzer(word_analyzer):
    analyzer = word_analyzer(北京华信科技有限公司="ORGANIZATION")
    assert core.collect_document_entity_surface_sync_pairs(TEXT, analyzer, "zh") == [
        ("北京华信科技有限公司", "[机构1]")]
    assert core.collect_document_org_name_placeholder_pairs(TEXT, analyzer=analyzer,
                                                            language="zh") == [
        ("[机构1]", "北京华信科技有限公司")]
    alias, = core.scan_defined_alias_candidates("某某公司（以下简称“华信科技”）")
    assert (alias.entity_type, alias.start, alias.end) == ("ORGANIZATION", 10, 14)


def test_maps_keep_their_order():
    text = "乙公司、甲公司、丙公司"
    spans = [(8, 11, "[机构1]"), (4, 7, "[机构2]"), (0, 3, "[机构3]")]
    assert list(core.build_okey_to_canonical_org_placeholders(text, spans, "zh").items()) == [
        ("乙公司", "[机构1]"), ("甲公司", "[机构2]"), ("丙公司", "[机构3]")]


# --- The same objects ---

def test_results_come_back_themselves(hit):
    text = "北京市海淀区，本公司，第三条____"
    location, character, generic, ordinal, blank = results = [
        hit("LOCATION", 0, 6), hit("GPE", 1, 2), R("ORGANIZATION", 7, 10, 0.9),
        hit("QUANTITY", 11, 14, None), hit("PERSON", 14, 18, object())]
    for function, kept in [
        (core._drop_blank_fill_results, [location, character, generic, ordinal]),
        (core._drop_structural_sequence_results, [location, character, generic, blank]),
        (core._drop_generic_institution_noun_results, [location, character, ordinal, blank]),
    ]:
        assert list(map(id, function(text, results))) == list(map(id, kept))
    assert core._drop_single_char_entity_inside_long_entity(results) == [
        location, generic, ordinal, blank]
    short = [character, generic]
    assert core._drop_single_char_entity_inside_long_entity(short) is short
    phone, account = hit("PHONE_NUMBER", 0, 11, 0.9), hit("BANK_ACCOUNT", 0, 19, 0.4)
    later, twin = hit("LOCATION", 30, 32), hit("LOCATION", 30, 32)
    kept = core._resolve_overlaps([later, phone, account, twin])
    assert len(kept) == 2 and kept[0] is account and kept[1] is later
    with pytest.raises(TypeError):
        core._resolve_overlaps([phone, hit("PERSON", 0, 1, None)])


def test_triples_and_lists_come_back_themselves():
    text = "甲公司¶与2023年"
    company, connective, year = triples = [
        (0, 3, "[机构1]"), (4, 5, "[机构2]"), (5, 10, "[NAME1]")]
    kept = core._filter_weak_org_replacements(triples, text)
    assert len(kept) == 2 and kept[0] is company and kept[1] is year
    assert core._split_replacements_at_joiner(triples, text, "") is triples
    assert core._split_replacements_at_joiner([(0, 5, "x")], text, "¶") == [(0, 3, "x"), (4, 5, "x")]
    assert core._clip_replacements_at_embedded_docx_joiners(triples, text) is triples
    assert core._clip_replacements_at_embedded_docx_joiners([[0, 5, "x"]], "甲\uE000¶\uE001乙") == [
        (0, 1, "x"), (4, 5, "x")]
    text = "以下简称“甲公司”）与"
    trimmed = core._trim_org_replacement_spans_at_defined_alias_closers(
        [(5, 10, "[机构1]"), company, [0, 1, "x"]], text)
    assert trimmed == [(5, 8, "[机构1]"), company, (0, 1, "x")]
    assert trimmed[1] is company
    placeholder = "[机构" + "1]"
    assert core.canonical_org_placeholder_for_span(text, 0, 1, placeholder, {}) is placeholder
    assert core._replace_party_org_surface_safe(text, None, "x") is text


@pytest.mark.parametrize("element, error, message", [
    ((0, 1), ValueError, r"not enough values to unpack \(expected 3, got 2\)"),
    ((0, 1, "x", 2), ValueError, r"too many values to unpack \(expected 3\)"),
    (5, TypeError, "cannot unpack non-iterable int object"),
    (("0", 1, "x"), TypeError, "'str' object cannot be interpreted as an integer"),
    ((0, 1.0, "x"), TypeError, "'float' object cannot be interpreted as an integer"),
    ((0, 1, None), TypeError, "Expected str for placeholder, got NoneType"),
])
def test_malformed_triples_fail(element, error, message):
    for call in [
        lambda: core._filter_weak_org_replacements([(0, 1, "x"), element], "甲"),
        lambda: core._split_replacements_at_joiner([element], "甲¶", "¶"),
        lambda: core._clip_replacements_at_embedded_docx_joiners([element], "\uE000¶\uE001"),
        lambda: core._trim_org_replacement_spans_at_defined_alias_closers([element], "甲"),
        lambda: core.apply_document_text_replacements("甲", [element], {}),
        lambda: core.mapping_entries_from_canonical_replacements("甲", [element], {}),
        lambda: core.mapping_entries_from_replacements("甲", [element]),
        lambda: core.build_okey_to_canonical_org_placeholders("甲", [element], "zh"),
        lambda: core.collect_document_entity_surface_sync_pairs("甲", None, "zh", [element]),
    ]:
        with pytest.raises(error, match=message):
            call()


@pytest.mark.parametrize("call, message", [
    (lambda: core._organization_identity_key(5, 0, 1), "Expected str for text, got int"),
    (lambda: core._global_placeholder_tag_and_key("ORG", b"", 0, 1),
     "Expected str for para_text, got bytes"),
    (lambda: core.apply_document_text_replacements("甲", [], None),
     "Expected dict for org_by_okey, got NoneType"),
    (lambda: core.anonymize_with_numbered_placeholders("甲", None, 5),
     "Expected str for language, got int"),
    (lambda: core._drop_generic_institution_noun_results(b"", []), "^Expected str, got bytes$"),
    (lambda: core._drop_blank_fill_results("甲"), "incompatible function arguments"),
])
def test_wrong_arguments_are_named(call, message):
    with pytest.raises(TypeError, match=message):
        call()
