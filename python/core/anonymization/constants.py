"""Tags, the language threshold, and the label patterns of contracts."""

from core.anonymization_core import (
    ENTITY_TO_TAG,
    _AUTO_LANG_CJK_RATIO,
    _RE_PARTY_LABELED_COMPANY,
    _RE_PARTY_LABELED_INSTITUTION,
    _RE_ZH_CONTRACT_FIELD_LABEL,
    _is_cn_generic_research_center_narrative,
)

__all__ = [
    "ENTITY_TO_TAG",
    "_AUTO_LANG_CJK_RATIO",
    "_RE_PARTY_LABELED_COMPANY",
    "_RE_PARTY_LABELED_INSTITUTION",
    "_RE_ZH_CONTRACT_FIELD_LABEL",
    "_is_cn_generic_research_center_narrative",
]
