// What a caller may ask of an analyzer beyond a text and its language.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/recognition/entity_recognizer.hpp"

namespace core::recognition {

enum class AllowListMatch {
  EXACT,  // the hit is one of the entries
  REGEX   // an entry, a regular expression, matches somewhere in the hit; either case
};

struct AnalysisRequest {
  std::u32string_view text = {};  // outlives the call
  std::string language = {};
  std::vector<std::string> entities = {};      // only these kinds; empty: all
  std::optional<double> score_threshold = {};  // instead of the engine's
  // For this text only, behind those of the registry.
  std::vector<std::shared_ptr<const EntityRecognizer>> ad_hoc_recognizers = {};
  std::vector<std::u32string> allow_list = {};  // surfaces that are not reported
  AllowListMatch allow_list_match = AllowListMatch::EXACT;
  // Words that stand near every hit, as if they were in the text: the head of the
  // column, the name of the field.
  std::vector<std::u32string> context = {};
  bool return_decision_process = false;
};

struct AnalysisResult {
  std::vector<RecognizerResult> results;
  // One for each result, in their order, if they were asked for.
  std::vector<AnalysisExplanation> explanations = {};
  // What was found and is not among the results, in the order in which it was
  // lost, if explanations were asked for.
  std::vector<LostResult> lost = {};
};

}  // namespace core::recognition
