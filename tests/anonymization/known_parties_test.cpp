// What an application may set: known parties, the decider, the country switch.
#include <gtest/gtest.h>

#include "core/anonymization/avs_workgroup_party.hpp"
#include "core/anonymization/country_names.hpp"
#include "core/anonymization/llm_decider.hpp"
#include "core/anonymization/rules/org_context.hpp"
#include "core/errors.hpp"

namespace core::anonymization {
namespace {

TEST(KnownParties, EveryVariantLeadsToTheKey) {
  const auto key = avs_workgroup_party_canonical_org_key_from_span_text;
  EXPECT_EQ(key(U"北京华信"), U"") << "empty until loaded";
  set_known_parties({{U"KEY-A", {U"北京华信（集团）", U"Huaxin Ltd", U" "}},
                     {U"Key-B", {U"huaxin LTD", U"华信二部"}},
                     {U"", {U"无键"}}});
  EXPECT_EQ(key(U"北京 华信(集团)"), U"KEY-A");
  EXPECT_EQ(key(U"HUAXIN LTD"), U"KEY-A") << "of a variant that stands twice the first party wins";
  EXPECT_EQ(key(U"华信二部"), U"Key-B");
  for (const auto* none : {U"北京华信", U"", U"无键"}) EXPECT_EQ(key(none), U"");

  set_known_parties({{U"KEY-C", {U"华信二部"}}});
  EXPECT_EQ(key(U"华信二部"), U"KEY-C");
  EXPECT_EQ(key(U"Huaxin Ltd"), U"") << "the list is replaced";
  set_known_parties({});
  EXPECT_EQ(key(U"华信二部"), U"");
}

TEST(Decider, IsAskedWhenItIsThere) {
  const std::vector<Replacement> spans = {{0, 1, U"[机构1]"}, {1, 2, U"[机构2]"}};
  EXPECT_THROW(filter_replacement_spans(U"甲乙", spans), Error);
  set_replacement_span_filter([](std::u32string_view text, const auto& offered) {
    if (text.empty()) throw ExternalError("out of order");
    return std::vector<Replacement>(offered.begin() + 1, offered.end());
  });
  EXPECT_EQ(filter_replacement_spans(U"甲乙", spans), std::vector<Replacement>{spans[1]});
  EXPECT_THROW(filter_replacement_spans(U"", spans), ExternalError);
  set_replacement_span_filter({});
  EXPECT_THROW(filter_replacement_spans(U"甲乙", spans), Error);
}

TEST(CountrySwitch, IsOnAndReadAtEachCall) {
  EXPECT_TRUE(_geo_country_mask_as_address_enabled());
  set_mask_country_in_geo_background(false);
  EXPECT_FALSE(_geo_country_mask_as_address_enabled());
  set_mask_country_in_geo_background(true);
  EXPECT_TRUE(_geo_country_mask_as_address_enabled());
}

TEST(CountrySwitch, GivesWayToTheApplicationsSetting) {
  std::optional<bool> answer = false;
  bool fails = false;
  set_country_setting([&] {
    if (fails) throw ExternalError("no settings");
    return answer;
  });
  EXPECT_FALSE(_geo_country_mask_as_address_enabled());
  fails = true;
  EXPECT_TRUE(_geo_country_mask_as_address_enabled()) << "what cannot be told is masked";
  fails = false;
  answer.reset();
  EXPECT_TRUE(_geo_country_mask_as_address_enabled());
  set_country_setting({});
}

}  // namespace
}  // namespace core::anonymization
