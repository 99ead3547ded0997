// The NLP engine of the application: one for each language, behind one front.
//
// Both languages go to the embedded finders. All of them read every text: a
// Chinese contract holds English names, and the other way round. English texts
// also go to a model of spaCy if there is one.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/recognition/entity_recognizer.hpp"

namespace core::nlp {

namespace spacy {
class SpacyPipeline;
}

class HybridRoutingNlpEngine : public recognition::NlpEngine {
 public:
  // The name that stands for the embedded finders alone.
  static constexpr std::string_view EMBEDDED_MODEL = "en_core_web_lg";
  // What an entity of a spaCy model scores: the model itself does not say how sure it is.
  static constexpr double SPACY_SCORE = 0.85;

  // `en_model_name` is EMBEDDED_MODEL or the folder of a spaCy model.
  explicit HybridRoutingNlpEngine(std::string en_model_name);
  ~HybridRoutingNlpEngine() override;

  // Gets ready to process texts. Throws ValueError for an unknown name and, naming
  // the file and the reason, for a model that is damaged or not supported.
  void load();

  // Throws ValueError before load(), and for a language that is not routed.
  recognition::NlpArtifacts process_text(std::u32string_view text,
                                         std::string_view language) const override;
  // Empty before load(), and for a language that is not routed.
  std::vector<std::string> get_supported_entities(std::string_view language) const override;

  // The names of the finders, in the order in which they run; empty before load().
  std::vector<std::string> finder_names() const;

  const std::string& en_model_name() const { return en_model_name_; }
  // The model of spaCy; nullptr if there is none, and before load().
  const spacy::SpacyPipeline* spacy_pipeline() const { return spacy_.get(); }

 private:
  void add_spacy_entities(recognition::NlpArtifacts& artifacts) const;

  std::string en_model_name_;
  std::unique_ptr<const recognition::NlpEngine> vocabulary_;
  std::vector<std::unique_ptr<const recognition::EntityRecognizer>> finders_;
  std::shared_ptr<const spacy::SpacyPipeline> spacy_;
  std::string spacy_name_;
};

}  // namespace core::nlp
