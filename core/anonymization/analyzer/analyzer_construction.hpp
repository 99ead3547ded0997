// Puts the entity analyzer of the application together.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/recognition/analyzer_engine.hpp"

namespace core::anonymization {

// The analyzer for "en" and "zh". Build it once and use it for many texts; its
// registry may be changed before. With the country lexicon it finds countries
// that the name finders do not know. `en_model` is the folder of a spaCy model for
// English texts; if it is empty, resolve_spacy_model_path names the model. Throws
// ValueError, naming the file and the reason, if the model cannot be used.
std::unique_ptr<recognition::AnalyzerEngine> build_analyzer(
    bool include_zh_supplement_country_lexicon = true, const std::string& en_model = {});

// Exchanges every Chinese SpacyRecognizer, in its place, for a HanlpRecognizer of
// these kinds; where there is none, adds one at the end.
void _swap_zh_spacy_recognizer_for_hanlp(recognition::RecognizerRegistry& registry,
                                         const std::vector<std::string>& zh_supported_entities);

}  // namespace core::anonymization
