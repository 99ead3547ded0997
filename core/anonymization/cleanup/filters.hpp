// False-positive filters over analyzer results.
//
// Contracts are full of text that an analyzer mistakes for entities: blanks to
// fill in, clause numbers, generic nouns such as 本公司. Each filter takes the
// text and the results over it, and returns those it keeps, in their order.
//
// Offsets count code points. A result whose offsets lie outside the text is
// read as the shorter (or empty) surface; it is not an error.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

// Blanks every run of two or more underscores, so that a fill-in line does not
// glue its neighbours together. The length, and so every offset, is unchanged.
//
//   U"甲方：______"  ->  U"甲方：      "        U"a_b"  ->  U"a_b"
std::u32string _normalize_fill_underscores_for_analysis(std::u32string_view text);

// Drops results without an ideograph, a Latin letter or a digit (ASCII or full
// width): blanks, underscores, punctuation.
std::vector<RecognizerResult> _drop_blank_fill_results(std::u32string_view text,
                                                       std::vector<RecognizerResult> results);

// Drops results whose surface is an ordinal (第三条), a bare month word, or, for
// dates and quantities, a dotted section number (3.1.4).
std::vector<RecognizerResult> _drop_structural_sequence_results(
    std::u32string_view text, std::vector<RecognizerResult> results);

// Drops names and places that are generic nouns (本公司), numbers, directions
// (以北), infrastructure (铁路), phases (二期), product words (云平台), or a single
// ideograph reported as an organization.
std::vector<RecognizerResult> _drop_generic_institution_noun_results(
    std::u32string_view text, std::vector<RecognizerResult> results);

// Whether the compact surface is a cloud product (云主机, 政务云平台), not a place.
bool _is_it_product_compound_not_address(std::u32string_view surf);

}  // namespace core::anonymization
