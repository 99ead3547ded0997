// The recognizers of an analyzer.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/recognition/entity_recognizer.hpp"

namespace core::recognition {

using RecognizerList = std::vector<std::shared_ptr<const EntityRecognizer>>;

class RecognizerRegistry {
 public:
  void add_recognizer(std::shared_ptr<const EntityRecognizer> recognizer);
  // Removes all recognizers of the name.
  void remove_recognizer(std::string_view name);

  const RecognizerList& recognizers() const { return recognizers_; }
  // To be reordered, exchanged or replaced.
  RecognizerList& recognizers() { return recognizers_; }
  // Those that read texts of the language, in the order in which they were added.
  std::vector<const EntityRecognizer*> get_recognizers(std::string_view language) const;
  // Sorted, each once.
  std::vector<std::string> get_supported_entities(std::string_view language) const;

 private:
  RecognizerList recognizers_;
};

}  // namespace core::recognition
