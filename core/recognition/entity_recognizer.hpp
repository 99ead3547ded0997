// One finder of one or more kinds of entities.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/result.hpp"
#include "core/recognition/explanation.hpp"
#include "core/recognition/nlp_artifacts.hpp"

namespace core::recognition {

using anonymization::RecognizerResult;

class EntityRecognizer {
 public:
  EntityRecognizer(std::string name, std::vector<std::string> supported_entities,
                   std::string supported_language = {})
      : name_(std::move(name)),
        supported_entities_(std::move(supported_entities)),
        supported_language_(std::move(supported_language)) {}
  virtual ~EntityRecognizer() = default;
  EntityRecognizer(const EntityRecognizer&) = delete;
  EntityRecognizer& operator=(const EntityRecognizer&) = delete;

  const std::string& name() const { return name_; }
  const std::vector<std::string>& supported_entities() const { return supported_entities_; }
  // "zh" or "en"; empty for a recognizer that reads every text.
  const std::string& supported_language() const { return supported_language_; }

  // Of one that goes by patterns, for people who ask what it does.
  virtual std::vector<std::string> pattern_names() const { return {}; }

  // The hits in any order. May be called from any thread.
  virtual std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const = 0;
  // The same hits, each with its explanation.
  virtual std::vector<ExplainedResult> explain(const NlpArtifacts& artifacts) const {
    std::vector<ExplainedResult> out;
    for (auto& r : analyze(artifacts)) {
      const double score = r.score;
      out.push_back({std::move(r), {name_, {}, score, score}});
    }
    return out;
  }

 private:
  std::string name_;
  std::vector<std::string> supported_entities_;
  std::string supported_language_;
};

}  // namespace core::recognition
