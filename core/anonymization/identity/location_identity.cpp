#include "core/anonymization/identity/location_identity.hpp"

#include <algorithm>
#include <optional>

#include "core/anonymization/country_names.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

constexpr std::size_t MIN_TRUNCATED_KEY = 8;
constexpr std::size_t MIN_STREET_PART = 10;

// A key taken apart as street, house number and the rest from 号 on.
struct AddressShape {
  std::u32string_view prefix;
  std::u32string_view number;
  std::u32string_view tail;
};

// ^(.+?)(\d+)(号.*)?$ by hand: keys may hold thousands of digits, on which the
// pattern is quadratic. The prefix is the shortest one, so the first run of
// digits that ends the key or stands before 号 decides; a key that begins with
// its only run lends the first digit to the prefix.
std::optional<AddressShape> address_shape(std::u32string_view key) {
  if (!key.empty() && key.back() == U'\n') key.remove_suffix(1);
  if (key.find(U'\n') != std::u32string_view::npos) return std::nullopt;
  for (std::size_t i = 0; i < key.size();) {
    if (!text::is_decimal_digit(key[i])) {
      ++i;
      continue;
    }
    const std::size_t first = std::max<std::size_t>(i, 1);
    while (i < key.size() && text::is_decimal_digit(key[i])) ++i;
    const bool ends_well = i == key.size() || key[i] == U'号';
    if (first < i && ends_well) {
      return AddressShape{key.substr(0, first), key.substr(first, i - first), key.substr(i)};
    }
  }
  return std::nullopt;
}

}  // namespace

std::u32string location_identity_key_from_surface(std::u32string_view surface) {
  const auto t = _normalize_location_surface(surface);
  if (t.empty()) return {};
  const auto country = _canonical_geo_country_identity_fragment(t);
  return text::case_fold(country.empty() ? t : country);
}

std::u32string _location_identity_key(std::u32string_view text, Offset start, Offset end) {
  return location_identity_key_from_surface(text::slice(text, start, end));
}

bool address_unification_keys_equivalent(std::u32string_view a, std::u32string_view b) {
  if (a.empty() || b.empty()) return false;
  if (a == b) return true;
  const auto shorter = a.size() <= b.size() ? a : b;
  const auto longer = a.size() <= b.size() ? b : a;
  if (shorter.size() >= MIN_TRUNCATED_KEY && longer.starts_with(shorter)) return true;
  const auto x = address_shape(a);
  const auto y = address_shape(b);
  if (!x || !y || x->prefix != y->prefix || x->tail != y->tail) return false;
  if (x->prefix.size() < MIN_STREET_PART) return false;
  return x->number.starts_with(y->number) || y->number.starts_with(x->number);
}

}  // namespace core::anonymization
