// Overlapping results: which of them stays.
//
// A priority of the entity type decides first, then the score, then the
// length. The loser is dropped whole. Results may be empty, inverted or
// duplicate; n log n in their number.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <tuple>
#include <vector>

#include "core/anonymization/result.hpp"
#include "core/text/word_set.hpp"

namespace core::anonymization {

struct TypePriority {
  std::string_view entity_type;
  int priority;
};

// Larger wins. A type that is not listed has DEFAULT_OVERLAP_PRIORITY.
std::span<const TypePriority> entity_overlap_priorities();
inline constexpr int DEFAULT_OVERLAP_PRIORITY = 50;

// Kinds whose hits of six or more characters protect their inside from hits of one.
inline constexpr auto CONTIGUOUS_ENTITY_TYPES_FOR_NESTED_GUARD =
    text::type_names({"PERSON", "ORGANIZATION", "LOCATION", "GPE"});

bool is_long_entity(const RecognizerResult& r);  // whether it is such a hit

int _overlap_entity_priority(std::string_view entity_type);

// (priority, score, length); the larger key wins. Throws ValueError if the
// score is NaN, which has no place in an order.
std::tuple<int, double, Offset> _overlap_sort_key(const RecognizerResult& r);

// Without the names and places of one character that lie within another of six
// or more, such as 京 within 北京市海淀区. The rest keeps its order.
std::vector<RecognizerResult> _drop_single_char_entity_inside_long_entity(
    std::vector<RecognizerResult> results);

// No two results of the output overlap; touching is not overlapping. Sorted by
// start. On a full tie the result that came first stays.
std::vector<RecognizerResult> _resolve_overlaps(std::vector<RecognizerResult> results);

// The same two for a caller that holds the results elsewhere: the positions of
// those that stay, in the order of the output.
std::vector<std::size_t> positions_outside_long_entities(
    const std::vector<RecognizerResult>& results);
std::vector<std::size_t> positions_without_overlaps(const std::vector<RecognizerResult>& results);

}  // namespace core::anonymization
