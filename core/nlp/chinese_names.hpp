// Reading a Chinese name of a person at a place where one is expected.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/recognition/nlp_artifacts.hpp"

namespace core::nlp {

// How sure the context makes it that a name stands here.
enum class NameContext : std::uint8_t {
  LABEL,  // behind a colon or in a table: names without a known surname count as well
  PROSE   // in a sentence: the surname must be known
};

// The end of the name that begins at `at`; `at` if none does.
std::size_t chinese_name_end(const recognition::NlpArtifacts& artifacts, std::size_t at,
                             NameContext context);

// The start of the name that ends at `end`; `end` if none does. Where the
// sentence runs on to the left without a mark, the surname decides.
std::size_t chinese_name_start(const recognition::NlpArtifacts& artifacts, std::size_t end);

// Whether start..end is a name and a word before or behind it: 交警彭德胜, 丁大伟参加.
bool is_name_with_words(const recognition::NlpArtifacts& artifacts, std::size_t start,
                        std::size_t end);

// Whether a word that looks like a name is an everyday word (项目, 应付).
bool is_everyday_word(std::u32string_view word);

// Whether an everyday word is a name of persons as well (高山, 常青).
bool is_word_as_name(std::u32string_view word);

}  // namespace core::nlp
