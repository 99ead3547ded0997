// The application's own recognizers.
#pragma once

#include "core/recognition/recognizer_registry.hpp"

namespace core::anonymization {

// Adds the recognizers for identifiers of mainland China at the end of the list
// and, if asked for, the one of country names.
void _register_china_mobile_recognizers(recognition::RecognizerRegistry& registry,
                                        bool include_zh_supplement_country_lexicon);

}  // namespace core::anonymization
