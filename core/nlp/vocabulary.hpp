// The words that the embedded analyzer knows, and the pass that finds them all.
#pragma once

#include <memory>
#include <string_view>

#include "core/recognition/nlp_artifacts.hpp"

namespace core::nlp {

// Makes artifacts with the vocabulary compiled in from data/.
std::unique_ptr<const recognition::NlpEngine> make_embedded_nlp_engine();

// Whether `name` is a Chinese surname of one character or of several.
bool is_chinese_surname(std::u32string_view name);

// The text with full-width letters, digits and signs as ASCII ones, every kind of
// dash as "-" and every blank but line ends and tabs as " ". Same length.
std::u32string fold_width(std::u32string_view text);

}  // namespace core::nlp
