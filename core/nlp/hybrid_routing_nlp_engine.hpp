// The NLP engine of the application: one for each language, behind one front.
//
// Both languages go to the embedded finders. All of them read every text: a
// Chinese contract holds English names, and the other way round.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/recognition/entity_recognizer.hpp"

namespace core::nlp {

class HybridRoutingNlpEngine : public recognition::NlpEngine {
 public:
  // The name that stands for the embedded finders.
  static constexpr std::string_view EMBEDDED_MODEL = "en_core_web_lg";

  explicit HybridRoutingNlpEngine(std::string en_model_name);

  // Gets ready to process texts. Throws ValueError for any model but the
  // embedded one: neither the directory of a spaCy model nor a package is run.
  void load();

  // Throws ValueError before load(), and for a language that is not routed.
  recognition::NlpArtifacts process_text(std::u32string_view text,
                                         std::string_view language) const override;
  // Empty before load(), and for a language that is not routed.
  std::vector<std::string> get_supported_entities(std::string_view language) const override;

  // The names of the finders, in the order in which they run; empty before load().
  std::vector<std::string> finder_names() const;

  const std::string& en_model_name() const { return en_model_name_; }

 private:
  std::string en_model_name_;
  std::unique_ptr<const recognition::NlpEngine> vocabulary_;
  std::vector<std::unique_ptr<const recognition::EntityRecognizer>> finders_;
};

}  // namespace core::nlp
