// How reading or writing a document ends early. A message names the part of the
// document that is wrong and never quotes its text.
#pragma once

#include "core/errors.hpp"

namespace documents {

// The bytes are no document that can be read: of another kind, damaged, or made
// to exhaust the machine.
class DocumentError : public core::ValueError {
  using core::ValueError::ValueError;
};

// Something that was masked can still be read in what would be written.
class LeftoverError : public core::Error {
  using core::Error::Error;
};

}  // namespace documents
