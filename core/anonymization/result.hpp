// The plain records that every room of the core exchanges.
//
// Offsets count code points of the analysed text; start is in, end is out.
// Records may come from outside (an analyzer, a caller's list), so nothing is
// promised about them: a span may be empty, inverted, or lie outside the text.
// Whoever reads a surface uses text::slice, which clamps.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace core::anonymization {

using Offset = std::ptrdiff_t;

// Sum and difference that stop at the ends of the range: a record from outside
// may hold any offset.
constexpr Offset saturating_add(Offset a, Offset b) {
  constexpr Offset LEAST = std::numeric_limits<Offset>::min();
  constexpr Offset MOST = std::numeric_limits<Offset>::max();
  if (b > 0 && a > MOST - b) return MOST;
  if (b < 0 && a < LEAST - b) return LEAST;
  return a + b;
}
constexpr Offset saturating_subtract(Offset a, Offset b) {
  constexpr Offset LEAST = std::numeric_limits<Offset>::min();
  return b == LEAST ? saturating_add(saturating_add(a, std::numeric_limits<Offset>::max()), 1)
                    : saturating_add(a, -b);
}

// One hit of an analyzer.
struct RecognizerResult {
  std::string entity_type;  // UTF-8, one of entity_type:: or any other name
  Offset start = 0;
  Offset end = 0;
  double score = 0;

  // Of a candidate that doc_alias_scan found: where its definition clause
  // begins. NOT_AN_ALIAS for every hit of an analyzer.
  static constexpr Offset NOT_AN_ALIAS = -1;
  Offset defined_at = NOT_AN_ALIAS;

  bool operator==(const RecognizerResult&) const = default;
};

// A span of the text and what is written in its place: a placeholder, or the
// wording of an amount around one.
struct Replacement {
  Offset start = 0;
  Offset end = 0;
  std::u32string placeholder;

  bool operator==(const Replacement&) const = default;
};

// A placeholder and one surface that it stands for.
struct MappingEntry {
  std::u32string placeholder;
  std::u32string surface;

  bool operator==(const MappingEntry&) const = default;
};

// A surface to look for in a document, and the placeholder to write over it.
struct SurfacePlaceholder {
  std::u32string surface;
  std::u32string placeholder;

  bool operator==(const SurfacePlaceholder&) const = default;
};

// Identity keys and their placeholders, in the order in which the keys came.
class PlaceholderByKey {
 public:
  // False, and nothing changes, if the key is there already.
  bool insert(std::u32string key, std::u32string placeholder);
  // The placeholder of a key; nullptr if there is none.
  const std::u32string* find(const std::u32string& key) const;

  bool contains(const std::u32string& key) const { return find(key) != nullptr; }
  std::size_t size() const { return entries_.size(); }
  bool empty() const { return entries_.empty(); }
  auto begin() const { return entries_.begin(); }
  auto end() const { return entries_.end(); }

 private:
  std::vector<std::pair<std::u32string, std::u32string>> entries_;
  std::unordered_map<std::u32string, std::size_t> index_;
};

// Names of entity types. An analyzer may report others.
namespace entity_type {
inline constexpr std::string_view PERSON = "PERSON";
inline constexpr std::string_view ORGANIZATION = "ORGANIZATION";
inline constexpr std::string_view LOCATION = "LOCATION";
inline constexpr std::string_view GPE = "GPE";
inline constexpr std::string_view NRP = "NRP";
inline constexpr std::string_view ADDRESS = "ADDRESS";
inline constexpr std::string_view DATE_TIME = "DATE_TIME";
inline constexpr std::string_view DATE = "DATE";
inline constexpr std::string_view YEAR = "YEAR";
inline constexpr std::string_view MONEY = "MONEY";
inline constexpr std::string_view PERCENT = "PERCENT";
inline constexpr std::string_view QUANTITY = "QUANTITY";
inline constexpr std::string_view PRODUCT = "PRODUCT";
inline constexpr std::string_view PHONE_NUMBER = "PHONE_NUMBER";
inline constexpr std::string_view EMAIL_ADDRESS = "EMAIL_ADDRESS";
inline constexpr std::string_view URL = "URL";
inline constexpr std::string_view IP_ADDRESS = "IP_ADDRESS";
inline constexpr std::string_view BANK_ACCOUNT = "BANK_ACCOUNT";
inline constexpr std::string_view CREDIT_CARD = "CREDIT_CARD";
inline constexpr std::string_view CARD_LAST4 = "CARD_LAST4";
inline constexpr std::string_view CHINA_USCC = "CHINA_USCC";
inline constexpr std::string_view CHINA_ID_CARD = "CHINA_ID_CARD";
inline constexpr std::string_view PASSPORT_NUMBER = "PASSPORT_NUMBER";
inline constexpr std::string_view VEHICLE_PLATE = "VEHICLE_PLATE";
inline constexpr std::string_view SWIFT_CODE = "SWIFT_CODE";
inline constexpr std::string_view IBAN_CODE = "IBAN_CODE";
inline constexpr std::string_view US_BANK_NUMBER = "US_BANK_NUMBER";
inline constexpr std::string_view US_SSN = "US_SSN";
inline constexpr std::string_view US_PASSPORT = "US_PASSPORT";
inline constexpr std::string_view US_DRIVER_LICENSE = "US_DRIVER_LICENSE";
inline constexpr std::string_view US_ITIN = "US_ITIN";
inline constexpr std::string_view STOCK_TICKER = "STOCK_TICKER";
inline constexpr std::string_view QUAL_CODE = "QUAL_CODE";
inline constexpr std::string_view SOCIAL_ACCOUNT = "SOCIAL_ACCOUNT";
inline constexpr std::string_view IT_PROTOCOL = "IT_PROTOCOL";
inline constexpr std::string_view GAME = "GAME";
inline constexpr std::string_view GENERIC_INSTITUTION_NOUN = "GENERIC_INSTITUTION_NOUN";
}  // namespace entity_type

// Placeholder tags that decide numbering and propagation.
namespace tag {
inline constexpr std::string_view ORG = "ORG";
inline constexpr std::string_view NAME = "NAME";
inline constexpr std::string_view ADDRESS = "ADDRESS";
inline constexpr std::string_view DATE = "DATE";
inline constexpr std::string_view MONEY = "MONEY";
}  // namespace tag

}  // namespace core::anonymization
