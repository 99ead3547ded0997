// Names in other scripts than Latin and the common ideographs: Cyrillic, Greek, kana,
// hangul, Arabic, the rare ideographs beyond U+9FFF.
//
// A hit without one letter A-Z, digit or ideograph U+4E00..U+9FFF is taken for a
// blank to fill in and never masked. So such a name is joined with what is written so
// of it or its title; where there is nothing, somebody has to be told.
#pragma once

#include <string_view>
#include <vector>

#include "core/recognition/entity_recognizer.hpp"

namespace core::nlp {

// Adds the names, as far as label, title, form of company, capitals or brackets behind
// another name show that they are names. A hit spans the letters and ideographs of the
// same name beside it and takes the place of hits on these:
//
//   ООО «Ромашка» Co., Ltd.    Mr. Иванов    株式会社ソニー    Ivan Petrov (Иван Петров)
std::vector<recognition::RecognizerResult> add_names_in_other_scripts(
    const recognition::NlpArtifacts& artifacts, std::vector<recognition::RecognizerResult> results);

// Those of the hits that hold a letter and will not be masked all the same.
std::vector<recognition::RecognizerResult> unmaskable_names(
    std::u32string_view text, const std::vector<recognition::RecognizerResult>& results);

}  // namespace core::nlp
