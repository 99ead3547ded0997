// The recognizers by shape that an analyzer has from the start, in two parts.
//
// Together they are all families of predefined.hpp except that of quantities.
#pragma once

#include "core/recognition/recognizer_registry.hpp"

namespace core::recognition {

// Those of kinds that are used everywhere, such as mail addresses and dates.
void load_predefined_recognizers(RecognizerRegistry& registry);

// Those of kinds that the documents of mainland China bring along: identity and
// credit codes, accounts, plates, licences, securities.
void load_mainland_recognizers(RecognizerRegistry& registry);

}  // namespace core::recognition
