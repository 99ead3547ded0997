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
