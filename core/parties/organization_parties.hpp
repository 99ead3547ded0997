// Which names of organizations in a document are one party.
//
// Offsets count code points.
#pragma once

#include <string_view>
#include <vector>

#include "core/anonymization/avs_workgroup_party.hpp"
#include "core/anonymization/result.hpp"

namespace core::parties {

// The parties that go by more than one name, in the order in which they come:
// their full name's identity key and every spelling of theirs that has another
// key. Names are one party by definition (以下简称“华信科技”), in two languages
// beside each other (山东岱岳有限公司（Daiyue Co., Ltd.）), or because the one is a
// shorter form of the other and of no other name in the document. In doubt they
// stay apart, and branches always stay apart from their company.
//
// `hits` are those of an analyzer, of any type and in any order. Linear in the
// text; in the number of names linear up to logarithms.
std::vector<anonymization::KnownParty> collect_organizations(
    std::u32string_view text, const std::vector<anonymization::RecognizerResult>& hits);

}  // namespace core::parties
