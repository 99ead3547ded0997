// Which parts of a model have a say in its entities.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/nlp/spacy/model_config.hpp"

namespace core::nlp::spacy {

// The names of components are those of their folders.
struct PipelinePlan {
  std::vector<std::string> pipeline;  // what runs in spaCy, in its order
  std::string ner;
  std::optional<std::string> parser;   // one that runs before ner
  std::optional<std::string> tok2vec;  // one that ner or parser listen to
  bool ner_listens = false;
  bool parser_listens = false;
};

// Throws ModelError, naming the component, for what would change the entities and is
// not supported, and for a pipeline without ner.
PipelinePlan plan_pipeline(const ModelConfig& config);

}  // namespace core::nlp::spacy
