#include "core/anonymization/country_names.hpp"

#include <array>
#include <set>

#include <gtest/gtest.h>
#include <unicode/uloc.h>

#include "core/anonymization/location_surface.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/unicode.hpp"
#include "tests/support/notation.hpp"

namespace core::text::lexicon_data {
extern const std::string_view country_names;
}

namespace core::anonymization {
namespace {

std::string canonical(std::string_view name) {
  return test::u8(_canonical_geo_country_identity_fragment(test::u32(name)));
}

TEST(LocationSurface, FoldsBlanksPunctuationAndBrackets) {
  const auto surface = [](const char* s) {
    return test::u8(_normalize_location_surface(test::u32(s)));
  };
  EXPECT_EQ(surface(" 北京市，海淀区,（西）;；。 、a\u3000b"), "北京市海淀区(西)ab");
  EXPECT_EQ(surface("格 鲁吉亚"), "格鲁吉亚国");
  EXPECT_EQ(surface("在格鲁吉亚"), "在格鲁吉亚");
  EXPECT_EQ(surface("A.B"), "A.B") << "the ASCII full stop stays";
}

TEST(CountryNames, LeadToOneCanonicalName) {
  struct {
    const char* name;
    std::vector<const char*> spellings;
  } const rows[] = {
      {"美国",
       {"美国", "美 国", "美國", "美利坚合众国", "USA", "usa", "U.S.", "U. S. A.", "US",
        "United States", "UNITED STATES OF AMERICA", "the United States of America", "the US",
        "TheUnitedStates"}},
      {"中国",
       {"中国", "中國", "中华人民共和国", "PRC", "P.R.C.", "P. R. China", "China",
        "the People's Republic of China", "People’s Republic of China"}},
      {"香港",
       {"香港", "中国香港", "香港特别行政区", "Hong Kong", "HK", "Hong Kong SAR",
        "Hong Kong, China", "中华人民共和国香港特别行政区"}},
      {"澳门", {"澳門", "Macau", "Macao", "Macao SAR"}},
      {"台湾", {"台灣", "臺灣", "台湾地区", "Taiwan", "Taiwan, Province of China"}},
      {"英国", {"UK", "U.K.", "联合王国", "Great Britain"}},
      {"韩国", {"大韩民国", "南韓", "Republic of Korea", "Korea", "ROK"}},
      {"朝鲜", {"DPRK", "北朝鲜", "Democratic People's Republic of Korea"}},
      {"格鲁吉亚国", {"格鲁吉亚", "格鲁吉亚国", "Georgia", "喬治亞"}},
      {"刚果(金)", {"刚果（金）", "刚果(金)", "刚果民主共和国", "扎伊尔", "DR Congo"}},
      {"刚果(布)", {"刚果（布）", "刚果共和国", "Republic of the Congo"}},
      {"阿联酋", {"阿联酋", "阿拉伯联合酋长国", "UAE", "the United Arab Emirates"}},
      {"英属维尔京群岛", {"British Virgin Islands", "the BVI"}},
      {"缅甸", {"Burma", "Myanmar", "缅甸联邦"}},
      {"土耳其", {"Turkey", "Türkiye", "TURKIYE", "TÜRKİYE"}},
      {"科特迪瓦", {"Côte d'Ivoire", "Cote d’Ivoire", "Ivory Coast", "象牙海岸"}},
      {"",
       {"", " ", "the", "中", "美", "北京", "刚果", "Congo", "美国人", "中国银行", "Unite", "欧洲",
        "the the US"}},
  };
  for (const auto& row : rows) {
    for (const char* spelling : row.spellings) EXPECT_EQ(canonical(spelling), row.name) << spelling;
  }
  EXPECT_EQ(_canonical_geo_country_identity_fragment(std::u32string(100'000, U'国')), U"");
}

// Every region of ISO 3166-1 is reached from all names that ICU has for it.
TEST(CountryNames, CoverEveryRegionOfIcu) {
  std::set<std::string> seen;
  for (const char* const* region = uloc_getISOCountries(); *region != nullptr; ++region) {
    std::set<std::string> found;
    for (const char* locale : {"zh", "zh_Hant", "en"}) {
      std::array<char16_t, 128> name{};
      UErrorCode status = U_ZERO_ERROR;
      uloc_getDisplayCountry((std::string("und_") + *region).c_str(), locale, name.data(), 128,
                             &status);
      const std::u16string_view units(name.data());
      found.insert(test::u8(
          _canonical_geo_country_identity_fragment(std::u32string(units.begin(), units.end()))));
    }
    ASSERT_EQ(found.size(), 1U) << *region;
    EXPECT_NE(*found.begin(), "") << *region;
    EXPECT_EQ(canonical(*found.begin()), *found.begin()) << *region;
    EXPECT_TRUE(seen.insert(*found.begin()).second) << "two regions share " << *found.begin();
  }
}

TEST(CountryNames, ListNamesEveryNameOnce) {
  std::set<std::u32string> names;
  for (const auto& row : text::lexicon_rows(text::lexicon_data::country_names)) {
    for (const auto& name : row) {
      EXPECT_TRUE(names.insert(text::case_fold(_normalize_location_surface(name))).second)
          << test::u8(name);
      EXPECT_EQ(_canonical_geo_country_identity_fragment(name), row.front()) << test::u8(name);
    }
  }
}

TEST(CountryNames, BareCountryIsTheCountryAlone) {
  EXPECT_TRUE(_org_span_is_bare_geo_country(U"美 国", U"美国"));
  EXPECT_TRUE(_org_span_is_bare_geo_country(U"USA", U"美国"));
  EXPECT_FALSE(_org_span_is_bare_geo_country(U"美国银行", U"美国"));
  EXPECT_FALSE(_org_span_is_bare_geo_country(U"英国", U"美国"));
  EXPECT_FALSE(_org_span_is_bare_geo_country(U"北京", U""));
}

}  // namespace
}  // namespace core::anonymization
