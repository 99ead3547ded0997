// A model of spaCy v3, run without Python: tokens, sentences and entities of a text.
//
// The model is a folder as spaCy writes it (nlp.to_disk, or a published package
// unpacked). Weights are read once and shared by all threads; tables stay in their
// files as far as possible, which must not be changed in place meanwhile.
//
// Offsets count code points; start is in, end is out.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/nlp/spacy/dependency_parser.hpp"
#include "core/nlp/spacy/tokenizer.hpp"

namespace core::nlp::spacy {

// What meta.json and config.cfg say of a model. Whatever is missing is empty.
struct ModelDescription {
  std::filesystem::path directory;
  std::string language;
  std::string name;           // "core_web_lg"
  std::string version;        // of the model
  std::string spacy_version;  // of the spaCy that it was made for, a range
  std::vector<std::string> pipeline;
  std::vector<std::string> labels;  // of its entities, sorted
  std::uintmax_t bytes = 0;         // on disk
  std::size_t vectors = 0;          // words with a vector

  // "en_core_web_lg"
  std::string full_name() const { return language + (name.empty() ? "" : "_" + name); }
};

struct SpacyEntity {
  std::size_t start = 0;
  std::size_t end = 0;
  std::string_view label;  // lives as long as the pipeline
};

// What the model says of a text.
struct SpacyAnalysis {
  std::vector<Token> tokens;
  // Empty if the model has no parser before its ner.
  DependencyTrees trees;
  std::vector<SpacyEntity> entities;  // in the order of the text, none overlaps another
};

class SpacyPipeline {
 public:
  // Throws ModelError for a folder that is no model, a damaged one, and one that
  // needs what is not supported.
  explicit SpacyPipeline(const std::filesystem::path& directory);
  ~SpacyPipeline();
  SpacyPipeline(const SpacyPipeline&) = delete;
  SpacyPipeline& operator=(const SpacyPipeline&) = delete;

  const ModelDescription& description() const { return description_; }

  // May be called from any thread. Takes memory for the tokens and about 300 bytes
  // for each, and some tens of megabytes, however long the text is. Throws ValueError
  // for a text of 2^31 code points or more, and RegexError if a pattern of the
  // tokenizer gives up.
  SpacyAnalysis analyze(std::u32string_view text) const;

 private:
  struct Parts;

  ModelDescription description_;
  std::unique_ptr<const Parts> parts_;
};

// The pipeline of a folder; the same for all who have it at a time. May be called
// from any thread. Throws what the constructor throws.
std::shared_ptr<const SpacyPipeline> shared_spacy_pipeline(const std::filesystem::path& directory);

// Only what the files say of it; the model may be one that cannot be run. Throws ModelError.
ModelDescription describe_model(const std::filesystem::path& directory);

}  // namespace core::nlp::spacy
