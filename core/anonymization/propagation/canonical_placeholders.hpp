// One placeholder for each organization and each address of a document.
//
// The builder numbers spans as it meets them; here they are numbered anew by
// identity, 1, 2, 3 in the order in which each identity first appears. The
// number that a span had plays no part. Offsets count code points.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"
#include "core/text/view_map.hpp"

namespace core::anonymization {

// Identity key to placeholder, of the spans that have an ORG (or an ADDRESS)
// placeholder. `language` is accepted for the callers' sake; keys do not depend on it.
PlaceholderByKey build_okey_to_canonical_org_placeholders(
    std::u32string_view text, const std::vector<Replacement>& replacements,
    std::string_view language);
PlaceholderByKey build_okey_to_canonical_location_placeholders(
    std::u32string_view text, const std::vector<Replacement>& replacements,
    std::string_view language);

// The placeholder that the map holds for the span's identity; `placeholder`
// itself if it is of another kind or the map lacks the key.
std::u32string canonical_org_placeholder_for_span(std::u32string_view text, Offset start,
                                                  Offset end, std::u32string_view placeholder,
                                                  const PlaceholderByKey& okey_to_ph);
std::u32string canonical_location_placeholder_for_span(std::u32string_view text, Offset start,
                                                       Offset end, std::u32string_view placeholder,
                                                       const PlaceholderByKey& okey_to_ph);

// The same two, one behind the other, for many spans of one text: each surface is looked
// up once. What it is made of outlives it.
class CanonicalPlaceholders {
 public:
  CanonicalPlaceholders(std::u32string_view text, const PlaceholderByKey& orgs,
                        const PlaceholderByKey& locations)
      : text_(text), orgs_(orgs), locations_(locations) {}

  // Gives the span the placeholder that is canonical for it.
  void write_to(Replacement& span);

 private:
  // The placeholders that the maps hold for surfaces; nullptr for none.
  using BySurface = text::ViewMap<std::optional<const std::u32string*>>;

  std::u32string_view text_;
  const PlaceholderByKey& orgs_;
  const PlaceholderByKey& locations_;
  BySurface org_by_surface_;
  BySurface location_by_surface_;
};

}  // namespace core::anonymization
