#include "core/nlp/hanlp_recognizer.hpp"

#include <utility>

namespace core::nlp {

HanlpRecognizer::HanlpRecognizer(std::string supported_language,
                                 std::vector<std::string> supported_entities)
    : NlpEntityRecognizer("HanlpRecognizer", std::move(supported_entities),
                          std::move(supported_language)) {}

}  // namespace core::nlp
