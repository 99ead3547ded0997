"""Mapping files and the way back; what a caller keeps or masks."""

import pytest

from core.anonymization_core import anonymize_document, build_analyzer
from core.restore import (find_listed, find_restorable, make_mapping, open_sealed_mapping,
                          read_mapping, restore, seal_mapping, write_mapping)

TEXT = "\U00020000甲方：北京华信科技有限公司（以下简称“华信科技”）。华信科技应付款，联系人张伟民。"


@pytest.fixture(scope="module")
def analyzer():
    return build_analyzer()


@pytest.fixture(scope="module")
def document(analyzer):
    return anonymize_document(TEXT, analyzer, "zh", aliases="one")


def test_a_text_comes_back_through_a_file(document):
    mapping = read_mapping(write_mapping(make_mapping(document)))
    assert document.text != TEXT
    assert restore(document.text, mapping) == TEXT
    assert mapping.language == "zh"
    assert mapping.entries[0] == ("[机构1]", ["北京华信科技有限公司", "华信科技"])
    assert restore("【机构１】", mapping) == "北京华信科技有限公司"


def test_findings_tell_what_is_left(document):
    mapping = make_mapping(document)
    assert find_restorable("\U00020000[NAME1]、[NAME7]", mapping) == [
        (1, 8, "restored", "张伟民"), (9, 16, "unknown", None)]


def test_a_sealed_file_takes_its_passphrase(document):
    file = write_mapping(make_mapping(document))
    sealed = seal_mapping(file, "correct horse")
    assert "华信" not in sealed
    assert open_sealed_mapping(sealed, "correct horse") == file
    with pytest.raises(ValueError):
        open_sealed_mapping(sealed, "wrong")
    for bad in (sealed, "{}", "no JSON"):
        with pytest.raises(ValueError):
            read_mapping(bad)


def test_a_caller_keeps_and_masks(analyzer):
    text = "\U00020000联系人张伟民，项目蓝鲸计划。"
    assert find_listed(text, "蓝鲸计划\n") == [(10, 14)]
    masked = anonymize_document(text, analyzer, "zh", keep=find_listed(text, "张伟民"),
                                mask=find_listed(text, "/蓝鲸../"))
    assert masked.text == "\U00020000联系人张伟民，项目[MASKED1]。"
    # In any order, empty ones and doubles: as they are meant.
    again = anonymize_document(text, analyzer, "zh", mask=[(12, 14), (3, 3), (10, 13)],
                               keep=[(4, 7)])
    assert again.text == masked.text
    for bad in ([1], [("a", 2)], 5):
        with pytest.raises(TypeError):
            anonymize_document(text, analyzer, "zh", keep=bad)
    with pytest.raises(ValueError):
        anonymize_document(text, analyzer, "zh", mask=[(5, 999)])
