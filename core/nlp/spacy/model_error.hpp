// What is wrong with a model on disk.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "core/errors.hpp"

namespace core::nlp::spacy {

// A name from a file, fit for a message: not too long, and without what a terminal
// would obey.
inline std::string printable(std::string_view name) {
  constexpr std::size_t LONGEST = 200;
  std::string out(name.substr(0, LONGEST));
  std::replace_if(
      out.begin(), out.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, '?');
  return out;
}

// A folder that is no model, is damaged, or asks for something that is not supported.
// The message names the file and the place in it: a node of the network, a component,
// a key. The only error that loading a model throws, besides std::bad_alloc.
class ModelError : public ValueError {
 public:
  ModelError(const std::string& file, std::string_view place, std::string_view reason)
      : ValueError("spaCy model " + file + (place.empty() ? "" : ": " + printable(place)) + ": " +
                   printable(reason)) {}
};

}  // namespace core::nlp::spacy
