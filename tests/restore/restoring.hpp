// What the tests of the way back share.
#pragma once

#include <string>
#include <string_view>

#include "core/restore/restore.hpp"

namespace test {

// "甲方：{[机构1]|某某公司}": the document, what is written for it, and the way back.
struct MaskedDocument {
  std::string original;
  std::string masked;
  core::restore::Mapping mapping;
};
MaskedDocument mask(std::string_view marked);

// The text with what the mapping holds put in its place.
std::string restored(std::string_view edited, const core::restore::Mapping& mapping);

// One letter a finding: R restored, O by order, F first surface, U unknown,
// A ambiguous, B without brackets.
std::string outcomes(std::string_view edited, const core::restore::Mapping& mapping);

}  // namespace test
