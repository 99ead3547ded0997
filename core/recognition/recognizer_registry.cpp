#include "core/recognition/recognizer_registry.hpp"

#include <algorithm>

namespace core::recognition {

void RecognizerRegistry::add_recognizer(std::shared_ptr<const EntityRecognizer> recognizer) {
  recognizers_.push_back(std::move(recognizer));
}

void RecognizerRegistry::remove_recognizer(std::string_view name) {
  std::erase_if(recognizers_, [&](const auto& r) { return r->name() == name; });
}

std::vector<const EntityRecognizer*> RecognizerRegistry::get_recognizers(
    std::string_view language) const {
  std::vector<const EntityRecognizer*> out;
  for (const auto& r : recognizers_) {
    if (r->supported_language().empty() || r->supported_language() == language) {
      out.push_back(r.get());
    }
  }
  return out;
}

std::vector<std::string> RecognizerRegistry::get_supported_entities(
    std::string_view language) const {
  std::vector<std::string> out;
  for (const auto* r : get_recognizers(language)) {
    out.insert(out.end(), r->supported_entities().begin(), r->supported_entities().end());
  }
  std::sort(out.begin(), out.end());
  out.erase(std::unique(out.begin(), out.end()), out.end());
  return out;
}

}  // namespace core::recognition
