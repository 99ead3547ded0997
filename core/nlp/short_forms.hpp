// The shorter forms by which a document goes on to call a name.
#pragma once

#include <string>
#include <vector>

#include "core/recognition/entity_recognizer.hpp"

namespace core::nlp {

// A spelling to look for, in the folded form of the text.
struct ShortForm {
  std::u32string surface;
  std::string entity_type;
  bool single_word = false;  // one Latin word, which might be an everyday word
  bool at_edge = false;      // counts only where no ideograph stands directly before
};

// The forms that follow from the name itself.
//
//   苏州澜迅精密机械有限公司      ->  澜迅精密, 澜迅精密机械, 澜迅公司, 苏州澜迅 ...
//   Bramblewick Robotics, Inc.  ->  Bramblewick Robotics, Bramblewick
//   Marguerite L. Desrosiers    ->  Desrosiers
std::vector<ShortForm> short_forms_of(const recognition::NlpArtifacts& artifacts,
                                      const recognition::RecognizerResult& result);

// The names that stand in quotes and brackets behind an organization, or behind
// 简称, and are short for one of the organizations before them:
//
//   渭川电子科技大学（以下简称“渭川电科大”）     ... Association (the "AAA")
std::vector<ShortForm> defined_short_forms(
    const recognition::NlpArtifacts& artifacts,
    const std::vector<recognition::RecognizerResult>& results);

// Grace, Price: a word of everyday language. Where it names a person is told by its
// surroundings, which latin_prose_persons reads.
bool is_everyday_name(std::u32string_view word);

}  // namespace core::nlp
