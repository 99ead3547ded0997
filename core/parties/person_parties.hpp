// Which names of persons in a document are one person.
#pragma once

#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"
#include "core/person_clustering.hpp"

namespace core::parties {

// The persons that go by names which do not show it by themselves: a surname
// alone or with a title (Ms. Wolanski and Katarzyna M. Wolanski, 王经理 and
// 王建国), part of a transliterated name, a name in two languages beside each
// other (应雪瑶 (Ying Xueyao)). Only where a single person of the document fits.
//
// `hits` are those of an analyzer, of any type and in any order. Linear in the
// text; in the number of names linear up to logarithms.
std::vector<KnownPerson> collect_persons(std::u32string_view text,
                                         const std::vector<anonymization::RecognizerResult>& hits);

}  // namespace core::parties
