// Constants that several rooms share: tags, the language threshold, and the
// label patterns of contracts.
#pragma once

#include <string>
#include <string_view>

#include "core/text/regex.hpp"

namespace core::anonymization {

// Share of Chinese characters and punctuation from which a text is analysed as Chinese.
inline constexpr double AUTO_LANG_CJK_RATIO = 0.15;

// One row of ENTITY_TO_TAG.
struct EntityTag {
  std::string_view entity_type;
  std::string_view tag;
};

// Entity type to placeholder tag.
class EntityToTag {
 public:
  // nullptr-like: empty for a type that is not in the table.
  std::string_view find(std::string_view entity_type) const;
  const EntityTag* begin() const;
  const EntityTag* end() const;
};
inline constexpr EntityToTag ENTITY_TO_TAG;

// The tag of any type: of one that the table lacks, the type itself with every
// blank as an underscore.
std::string tag_of_entity_type(std::string_view entity_type);

// A Chinese field label with its colon, anywhere in the text: 甲方：, 联系地址:, 开户行（盖章）：
extern const text::Regex RE_ZH_CONTRACT_FIELD_LABEL;

// The label alone, with its colon and the blanks up to the name.
extern const text::Regex RE_PARTY_LABEL;
// False if no party label can end in the colon that stands behind `text`: most colons are
// told by the ideograph before them.
bool may_end_party_label(std::u32string_view text);
// A party label and the name behind it, to the end of the name; group "name" is
// the name. Companies: 甲方（委托方）：北京…有限公司, Party A: Acme Ltd.
extern const text::Regex RE_PARTY_LABELED_COMPANY;
// Institutions: 开户银行：…银行…支行, 委托人：…大学, 建设单位：…局
extern const text::Regex RE_PARTY_LABELED_INSTITUTION;

// Whether a compact Chinese surface speaks of research centres in general
// (某某研究中心建设, 各类研究中心, 该研究中心) instead of naming one.
bool _is_cn_generic_research_center_narrative(std::u32string_view surface);

}  // namespace core::anonymization
