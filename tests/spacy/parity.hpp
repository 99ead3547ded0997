// Compares what a pipeline says with what spaCy said.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "core/nlp/spacy/spacy_pipeline.hpp"

namespace test {

// Where the models of the tests are.
std::filesystem::path small_models();
// Where larger ones are; empty if there are none on this machine.
std::filesystem::path large_models();

struct Parity {
  std::size_t texts = 0;
  std::size_t tokens = 0;
  std::size_t sentences = 0;
  std::size_t entities = 0;
  // Texts that differ.
  std::size_t token_differences = 0;
  std::size_t tree_differences = 0;
  std::size_t sentence_differences = 0;
  std::size_t entity_differences = 0;
  std::string first_difference;  // where, for people

  std::string row() const;
};

// `expected` has a text and its answers a line.
Parity compare(const core::nlp::spacy::SpacyPipeline& pipeline,
               const std::filesystem::path& expected);

}  // namespace test
