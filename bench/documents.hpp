// Generated contracts to measure on: text, and the hits of an analyzer over it.
#pragma once

#include <string>
#include <vector>

#include "core/anonymization/analyzer.hpp"

namespace bench {

// Reports the hits that it was made with.
class ScriptedAnalyzer : public core::anonymization::Analyzer {
 public:
  std::vector<core::anonymization::RecognizerResult> hits;

  std::vector<core::anonymization::RecognizerResult> analyze(std::u32string_view,
                                                             std::string_view) const override {
    return hits;
  }
};

struct Document {
  std::u32string text;
  ScriptedAnalyzer analyzer;
};

struct Shape {
  std::size_t characters = 100'000;
  std::size_t characters_per_entity = 40;
  std::size_t characters_per_paragraph = 200;  // between paragraph joiners; 0 for none
  double share_of_repeats = 0.5;               // mentions of an entity that was named before
};

// The same document for the same shape, on every machine.
Document make_contract(const Shape& shape);

}  // namespace bench
