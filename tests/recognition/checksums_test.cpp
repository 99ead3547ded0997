#include "core/recognition/checksums.hpp"

#include <gtest/gtest.h>

namespace core::recognition {
namespace {

struct ChecksumCase {
  const char* why;
  bool (*check)(std::u32string_view);
  std::u32string_view number;
  bool valid;
};

TEST(Checksums, AcceptTheRightDigitAndNoOther) {
  constexpr ChecksumCase cases[] = {
      {"Luhn", is_luhn_valid, U"4111111111111111", true},
      {"Luhn, in groups", is_luhn_valid, U"4111 1111-1111 1111", true},
      {"Luhn, two digits exchanged", is_luhn_valid, U"4111111111111112", false},
      {"Luhn, too short for a card", is_luhn_valid, U"18", false},
      {"居民身份证，末位为X", is_resident_identity_valid, U"11010519491231002X", true},
      {"小写x", is_resident_identity_valid, U"11010519491231002x", true},
      {"校验码错", is_resident_identity_valid, U"110105194912310021", false},
      {"校验码对而日期不存在", is_resident_identity_valid, U"110105199902300012", false},
      {"统一社会信用代码", is_credit_code_valid, U"91350100M000100Y43", true},
      {"末位错", is_credit_code_valid, U"91350100M000100Y44", false},
      {"不使用字母I", is_credit_code_valid, U"91350100I000100Y43", false},
      {"IBAN in groups", is_iban_valid, U"GB82 WEST 1234 5698 7654 32", true},
      {"IBAN, wrong check digits", is_iban_valid, U"GB83WEST12345698765432", false},
      {"IBAN, a sign inside", is_iban_valid, U"GB82WEST1234569876543/", false},
      {"no such province", is_resident_identity_valid, U"990105194912310020", false},
      {"IBAN, too long for its country", is_iban_valid, U"NO93860111179470", false},
      {"IBAN with letters", is_iban_valid, U"MT84MALT011000012345MTLCAST001S", true},
      {"Hong Kong", is_hong_kong_identity_valid, U"A123456(3)", true},
      {"Hong Kong, two letters", is_hong_kong_identity_valid, U"WX1234569", true},
      {"Hong Kong, wrong", is_hong_kong_identity_valid, U"A123456(4)", false},
      {"Taiwan", is_taiwan_identity_valid, U"A123456789", true},
      {"Taiwan, wrong", is_taiwan_identity_valid, U"A123456788", false},
      {"组织机构代码", is_organization_code_valid, U"55138508-2", true},
      {"组织机构代码错", is_organization_code_valid, U"55138508-3", false},
      {"container", is_container_number_valid, U"CSQU3054383", true},
      {"container, wrong", is_container_number_valid, U"CSQU3054384", false},
      {"vehicle", is_vehicle_identification_valid, U"1M8GDM9AXKP042788", true},
      {"vehicle, wrong", is_vehicle_identification_valid, U"1M8GDM9A1KP042788", false},
      {"legal entity", is_legal_entity_identifier_valid, U"5299000J2N45DDNE4Y28", true},
      {"security", is_securities_identification_valid, U"US0378331005", true},
      {"security, wrong", is_securities_identification_valid, U"US0378331006", false},
      {"bech32", is_bech32_valid, U"bc1qar0srrr7xfkvy5l643lydnw9re59gtzzwf5mdq", true},
      {"bech32, wrong", is_bech32_valid, U"bc1qar0srrr7xfkvy5l643lydnw9re59gtzzwf5mdp", false},
      {"Base58Check", is_base58check_valid, U"1A1zP1eP5QGefi2DMPTfTL5SLmv7DivfNa", true},
      {"Base58Check, wrong", is_base58check_valid, U"1A1zP1eP5QGefi2DMPTfTL5SLmv7DivfNb", false},
      {"Base58Check, no such letter", is_base58check_valid, U"1A1zP1eP5QGefi2DMPTfTL5SLmv7Div0Oa",
       false},
      {"ship", is_ship_number_valid, U"9074729", true},
      {"ship, wrong", is_ship_number_valid, U"9074728", false},
      {"ABN", is_australian_business_number_valid, U"51 824 753 556", true},
      {"ABN, wrong", is_australian_business_number_valid, U"51 824 753 557", false},
      {"routing number", is_aba_routing_valid, U"021000021", true},
      {"routing number, wrong", is_aba_routing_valid, U"021000022", false},
      {"zeros are no bank", is_aba_routing_valid, U"000000000", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(c.check(c.number), c.valid);
  }
}

}  // namespace
}  // namespace core::recognition
