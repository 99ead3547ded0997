// What the embedded analyzer finds, in the notation of the tests.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace test {

// The expected hits are the marks; whatever the analyzer finds of the types
// asked about must be marked, hits of other types are not looked at.
struct Case {
  const char* why;
  const char* marked;
};

// The text of `marked` with the hits of `type` that the analyzer reports. A hit
// within another one of the type is left out.
std::string found(std::string_view marked, std::string_view type);

// Checks every row for one type.
void expect_found(std::string_view type, std::span<const Case> cases);

}  // namespace test
