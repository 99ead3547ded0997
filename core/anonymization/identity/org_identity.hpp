// When two organization mentions are one party.
//
// The key folds away how a company name is written: blanks, bracket width,
// where 集团 stands around the legal form, 有限公司 behind an institution noun,
// English Pty Ltd and Limited. Nothing more: two companies never share a key
// because their names are alike. Offsets count code points.
#pragma once

#include <string>
#include <string_view>

#include "core/anonymization/result.hpp"
#include "core/text/regex.hpp"

namespace core::anonymization {

// A joiner or marker character of the document reader inside a name.
extern const text::Regex RE_JOINER_FRAGMENT_IN_ORG_SPAN;
bool is_joiner_fragment(char32_t c);

// The identity key of the span: that of a known party as it stands, else the
// normalised name in folded case. Empty for an empty span.
//
//   北京 大学有限公司 = 北京大学     Acme Pty Ltd = ACME LIMITED
std::u32string _organization_identity_key(std::u32string_view text, Offset start, Offset end);

// The normalised name, letter case kept.
std::u32string _normalize_party_org_identity_fragment(std::u32string_view fragment);

}  // namespace core::anonymization
