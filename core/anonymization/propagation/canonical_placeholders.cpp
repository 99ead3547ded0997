#include "core/anonymization/propagation/canonical_placeholders.hpp"

#include <algorithm>

#include "core/anonymization/identity/location_identity.hpp"
#include "core/anonymization/identity/org_identity.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

// A tag, and the key that tells its entities apart.
struct Family {
  std::string_view tag;
  std::u32string (*key)(std::u32string_view text, Offset start, Offset end);
};
constexpr Family ORGANIZATIONS = {tag::ORG, _organization_identity_key};
constexpr Family LOCATIONS = {tag::ADDRESS, _location_identity_key};

PlaceholderByKey canonical_placeholders(std::u32string_view text,
                                        const std::vector<Replacement>& replacements,
                                        const Family& family) {
  std::vector<const Replacement*> in_order;
  for (const auto& r : replacements) {
    if (is_numbered_placeholder_of(r.placeholder, family.tag)) in_order.push_back(&r);
  }
  const auto begins_first = [](const auto* a, const auto* b) { return a->start < b->start; };
  if (!std::is_sorted(in_order.begin(), in_order.end(), begins_first)) {
    std::stable_sort(in_order.begin(), in_order.end(), begins_first);
  }
  PlaceholderByKey by_key;
  text::MetWords surfaces;  // whose keys are there
  for (const auto* r : in_order) {
    if (!surfaces.insert(text::slice(text, r->start, r->end))) continue;
    auto key = family.key(text, r->start, r->end);
    if (by_key.contains(key)) continue;
    const auto number = static_cast<std::int64_t>(by_key.size()) + 1;
    by_key.insert(std::move(key), format_numbered_placeholder(family.tag, number));
  }
  return by_key;
}

// A span of the text and the placeholder that it has.
struct NumberedSpan {
  Offset start;
  Offset end;
  std::u32string_view placeholder;
};

std::u32string canonical_placeholder(std::u32string_view text, const NumberedSpan& span,
                                     const Family& family, const PlaceholderByKey& by_key) {
  if (is_numbered_placeholder_of(span.placeholder, family.tag)) {
    if (const auto* found = by_key.find(family.key(text, span.start, span.end))) return *found;
  }
  return std::u32string(span.placeholder);
}

}  // namespace

PlaceholderByKey build_okey_to_canonical_org_placeholders(
    std::u32string_view text, const std::vector<Replacement>& replacements,
    std::string_view /*language*/) {
  return canonical_placeholders(text, replacements, ORGANIZATIONS);
}

PlaceholderByKey build_okey_to_canonical_location_placeholders(
    std::u32string_view text, const std::vector<Replacement>& replacements,
    std::string_view /*language*/) {
  return canonical_placeholders(text, replacements, LOCATIONS);
}

std::u32string canonical_org_placeholder_for_span(std::u32string_view text, Offset start,
                                                  Offset end, std::u32string_view placeholder,
                                                  const PlaceholderByKey& okey_to_ph) {
  return canonical_placeholder(text, {start, end, placeholder}, ORGANIZATIONS, okey_to_ph);
}

std::u32string canonical_location_placeholder_for_span(std::u32string_view text, Offset start,
                                                       Offset end, std::u32string_view placeholder,
                                                       const PlaceholderByKey& okey_to_ph) {
  return canonical_placeholder(text, {start, end, placeholder}, LOCATIONS, okey_to_ph);
}

void CanonicalPlaceholders::write_to(Replacement& span) {
  const auto write = [&](const Family& family, const PlaceholderByKey& by_key, BySurface& known) {
    if (!is_numbered_placeholder_of(span.placeholder, family.tag)) return;
    auto& found = known.add(text::slice(text_, span.start, span.end)).first.value;
    if (!found) found = by_key.find(family.key(text_, span.start, span.end));
    if (*found != nullptr) span.placeholder = **found;
  };
  write(ORGANIZATIONS, orgs_, org_by_surface_);
  write(LOCATIONS, locations_, location_by_surface_);
}

}  // namespace core::anonymization
