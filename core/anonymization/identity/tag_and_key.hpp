// The identity pair of a span: a placeholder tag, and a key within it. Spans
// with equal pairs share a placeholder number.
//
// Offsets count code points.
#pragma once

#include <string>
#include <string_view>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

struct TagAndKey {
  std::string tag;
  std::u32string key;

  bool operator==(const TagAndKey&) const = default;
};

// The pair of a span that has the placeholder tag `tag`. A bare country tagged
// ORG becomes an ADDRESS; an amount without content keys by its position.
TagAndKey _global_placeholder_tag_and_key(std::string_view tag, std::u32string_view para_text,
                                          Offset start, Offset end);

// The key of a span of a type that has no rules of its own, of MONEY,
// DATE_TIME and PERSON. Amounts lose currency and one unit but are never
// multiplied out:
//
//   约人民币1,000,000元 = RMB1000000     100万元 is another amount
std::u32string _generic_entity_identity_key(std::string_view entity_type, std::u32string_view text,
                                            Offset start, Offset end);

}  // namespace core::anonymization
