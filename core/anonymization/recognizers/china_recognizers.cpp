#include "core/anonymization/recognizers/china_recognizers.hpp"

#include <memory>

#include "core/anonymization/recognizers/country_recognizer.hpp"
#include "core/recognition/predefined/selection.hpp"

namespace core::anonymization {

void _register_china_mobile_recognizers(recognition::RecognizerRegistry& registry,
                                        bool include_zh_supplement_country_lexicon) {
  recognition::load_mainland_recognizers(registry);
  if (include_zh_supplement_country_lexicon) {
    registry.add_recognizer(std::make_shared<CountryRecognizer>());
  }
}

}  // namespace core::anonymization
