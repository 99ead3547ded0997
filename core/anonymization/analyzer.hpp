// What the core asks of an entity analyzer.
#pragma once

#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

class Analyzer {
 public:
  virtual ~Analyzer() = default;

  // The entities of `text`, in any order; they may overlap. `language` is "en"
  // or "zh". Offsets count code points. One analyzer serves many texts, also
  // from several threads at once; what it throws ends the call that asked.
  virtual std::vector<RecognizerResult> analyze(std::u32string_view text,
                                                std::string_view language) const = 0;
};

}  // namespace core::anonymization
