#include "core/anonymization/country_names.hpp"

#include <algorithm>
#include <array>
#include <bitset>
#include <iterator>
#include <unordered_map>

#include <unicode/uloc.h>

#include "core/anonymization/location_surface.hpp"
#include "core/anonymization/rules/org_context.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/unicode.hpp"

namespace core::text::lexicon_data {
extern const std::string_view country_names;
}

namespace core::anonymization {
namespace {

// The languages that contracts name countries in. Mainland usage comes first:
// its name is the canonical one unless the list has another.
constexpr const char* NAME_LOCALES[] = {"zh", "zh_Hant", "zh_Hant_HK", "en"};

// "the United States" is "United States"; no name in the table begins with it.
constexpr std::u32string_view ARTICLE = U"the";

std::u32string name_key(std::u32string_view name) {
  return text::case_fold(_normalize_location_surface(name));
}

// The name that ICU has for a region code, in the language of `locale`.
std::u32string region_name(const char* region, const char* locale) {
  std::array<char16_t, 128> name{};
  UErrorCode status = U_ZERO_ERROR;
  const std::string id = std::string("und_") + region;
  const auto length = uloc_getDisplayCountry(id.c_str(), locale, name.data(),
                                             static_cast<int32_t>(name.size()), &status);
  if (U_FAILURE(status) != 0) return {};
  // Names of countries have no character outside the basic plane.
  return {name.begin(), name.begin() + length};
}

class CountryTable {
 public:
  CountryTable() {
    for (const auto& row : text::lexicon_rows(text::lexicon_data::country_names)) {
      for (const auto& name : row) add(name, row.front());
    }
    for (const char* const* region = uloc_getISOCountries(); *region != nullptr; ++region) {
      add_region(*region);
    }
  }

  // nullptr if `name` is no country's. The article may come without its blank:
  // callers hand in surfaces that have lost their white space.
  const std::u32string* find(std::u32string_view name) const {
    if (!may_begin_name(name) || is_too_long(name)) return nullptr;
    auto key = name_key(name);
    const auto* canonical = find_key(key);
    if (canonical != nullptr || !key.starts_with(ARTICLE)) return canonical;
    return find_key(key.erase(0, ARTICLE.size()));
  }

  const std::vector<std::u32string>& spellings() const { return spellings_; }

 private:
  const std::u32string* find_key(const std::u32string& key) const {
    const auto found = canonical_.find(key);
    return found == canonical_.end() ? nullptr : &found->second;
  }

  // Names that the table has already keep their country.
  void add(std::u32string_view name, const std::u32string& canonical) {
    auto key = name_key(name);
    if (key.empty()) return;
    longest_ = std::max(longest_, key.size());
    if (key.size() > 1) beginnings_.set(place_of(key[0], key[1]));
    if (canonical_.try_emplace(std::move(key), canonical).second) spellings_.emplace_back(name);
  }

  void add_region(const char* region) {
    std::array<std::u32string, std::size(NAME_LOCALES)> names;
    std::transform(std::begin(NAME_LOCALES), std::end(NAME_LOCALES), names.begin(),
                   [region](const char* locale) { return region_name(region, locale); });
    std::u32string canonical = _normalize_location_surface(names.front());
    for (const auto& name : names) {
      if (const auto* known = find(name)) {
        canonical = *known;
        break;
      }
    }
    for (const auto& name : names) add(name, canonical);
  }

  static std::size_t place_of(char32_t first, char32_t second) {
    return (first * 31 + second) % MOST_BEGINNINGS;
  }

  // Whether some name begins like this one. Of two ideographs the first two characters of
  // its key are these two; of anything else nothing is told.
  bool may_begin_name(std::u32string_view name) const {
    const bool told = name.size() > 1 && text::is_ideograph(name[0]) && text::is_ideograph(name[1]);
    return !told || beginnings_.test(place_of(name[0], name[1]));
  }

  // Most surfaces are; they are not worth a key. White space is not counted.
  bool is_too_long(std::u32string_view name) const {
    std::size_t length = 0;
    return std::any_of(name.begin(), name.end(), [&](char32_t c) {
      length += text::is_space(c) ? 0 : 1;
      return length > longest_ + ARTICLE.size();
    });
  }

  std::unordered_map<std::u32string, std::u32string> canonical_;
  std::vector<std::u32string> spellings_;
  std::size_t longest_ = 0;  // of all keys
  static constexpr std::size_t MOST_BEGINNINGS = 8192;
  std::bitset<MOST_BEGINNINGS> beginnings_;  // first two characters of keys, some fall together
};

const CountryTable& country_table() {
  static const CountryTable table;
  return table;
}

}  // namespace

std::u32string _canonical_geo_country_identity_fragment(std::u32string_view span) {
  const auto* canonical = country_table().find(span);
  return canonical == nullptr ? std::u32string() : *canonical;
}

const std::vector<std::u32string>& known_country_names() { return country_table().spellings(); }

bool _geo_country_mask_as_address_enabled() {
  try {
    return _mask_country_in_geo_background_enabled();
  } catch (...) {
    return true;  // the safe side
  }
}

bool _org_span_is_bare_geo_country(std::u32string_view span, std::u32string_view geo) {
  return !geo.empty() && _canonical_geo_country_identity_fragment(span) == geo;
}

}  // namespace core::anonymization
