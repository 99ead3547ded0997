// Which spellings name one person.
//
// Offsets count code points of the document.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core {

// The spelling of a name in which its variants are equal: in folded case,
// "SMITH, John" as "john smith", without the spaces inside a Chinese name and the
// middle dots of a transliterated one, without titles and honorifics (先生, 女士,
// Mr., Dr.) where more remains than a surname, or a surname with initials. Empty
// if the span holds no name at all. Reads nothing but the span.
//
//   张 伟 = 张伟     Mr. John A. Smith = JOHN A. SMITH     王先生 and 王女士 differ
std::u32string person_identity_key(std::u32string_view text, anonymization::Offset start,
                                   anonymization::Offset end);

// The number of each PERSON span (start, end) among `persons`, counted from 1
// in order of first appearance, dense; spellings of one person share it. A span
// whose key is empty has no number. Initials are bridged (John Smith and John
// A. Smith, J. Smith and John Smith) only where a single person that they may
// stand for is among `persons`.
std::map<std::pair<anonymization::Offset, anonymization::Offset>, std::int64_t>
person_span_to_placeholder_num(std::u32string_view text,
                               const std::vector<anonymization::RecognizerResult>& persons);

}  // namespace core
