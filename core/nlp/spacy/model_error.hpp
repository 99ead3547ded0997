// What is wrong with a model on disk.
#pragma once

#include <string>
#include <string_view>

#include "core/errors.hpp"

namespace core::nlp::spacy {

// A directory that is no model, is damaged, or asks for something that is not
// supported. The message names the file and the place in it: a node of the
// network, a component, a key. The only error that loading a model throws,
// besides std::bad_alloc.
class ModelError : public ValueError {
 public:
  ModelError(const std::string& file, std::string_view place, std::string_view reason)
      : ValueError("spaCy model " + file + (place.empty() ? "" : ": " + std::string(place)) + ": " +
                   std::string(reason)) {}
};

}  // namespace core::nlp::spacy
