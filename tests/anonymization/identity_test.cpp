#include <gtest/gtest.h>

#include "core/anonymization/identity/date_money.hpp"
#include "core/anonymization/identity/location_identity.hpp"
#include "core/anonymization/identity/org_identity.hpp"
#include "core/anonymization/identity/tag_and_key.hpp"
#include "core/anonymization/rules/org_context.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

using test::u32;
using test::u8;

std::string org_key(const char* surface) {
  const auto text = U"😀𠀀" + u32(surface);
  return u8(_organization_identity_key(text, 2, static_cast<Offset>(text.size())));
}

TEST(OrganizationKey, FoldsTheSpellingsOfOneParty) {
  struct Case {
    const char* surface;
    const char* key;
  };
  constexpr Case cases[] = {
      // English forms
      {"Acme Trading Pty Ltd", "acmetrading"},
      {"ACME TRADING  PTY LTD.", "acmetrading"},
      {"Acme Trading Limited", "acmetrading"},
      {"Foo Not Limited", "foonotlimited"},
      {"A B Limited", "ab"},
      {"9 Lives Limited", "9liveslimited"},
      // 空白、括号与连接符
      {" 北京 华信\u3000科技有限公司\n", "北京华信科技有限公司"},
      {"华信（中国）有限公司", "华信(中国)有限公司"},
      {"（甲方公司）", "甲方公司"},
      {"（甲方公司）（乙", "(甲方公司)(乙"},
      {"(甲)(乙)", "(甲)(乙)"},
      {"华\uE000¶\uE001信公司", "华信公司"},
      // 集团的位置
      {"中化集团有限公司", "中化集团有限"},
      {"中化公司集团", "中化公司"},
      {"中化有限公司集团", "中化有限公司"},
      {"中化集团公司集团", "中化集团公司"},
      // 机构名后的法律形式
      {"北京大学有限公司", "北京大学"},
      {"某某研究院有限责任公司", "某某研究院"},
      {"某某贸易有限公司", "某某贸易有限公司"},
      {"医院有限公司", "医院有限公司"},
      {"东医院股份有限公司", "东医院股份有限公司"},
      // 专名
      {"成都印钞厂有限公司保卫处", "成都印钞厂"},
      {"英美烟草", "英美烟草集团公司"},
      {"英美烟草集团公司", "英美烟草集团公司"},
      {"英美烟草有限", "英美烟草有限"},
      {"", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.surface);
    EXPECT_EQ(org_key(c.surface), c.key);
  }
  const std::string longest(61, 'a');
  EXPECT_EQ(org_key((longest + " Limited").c_str()), longest);
  EXPECT_EQ(org_key((longest + "a Limited").c_str()), longest + "alimited");
}

TEST(LocationKey, FoldsBlanksPunctuationAndCountries) {
  const std::pair<const char*, const char*> same[] = {
      {"北京市，海淀区（西）", " 北京市 海淀区(西)。"},
      {"格鲁吉亚", "格鲁吉亚国"},
      {"USA", "美国"},
      {"No. 5 Main St, Springfield", "no.5mainst springfield"},
  };
  for (const auto& [a, b] : same) {
    EXPECT_EQ(location_identity_key_from_surface(u32(a)),
              location_identity_key_from_surface(u32(b)))
        << a;
  }
  EXPECT_NE(location_identity_key_from_surface(U"海淀区1号"),
            location_identity_key_from_surface(U"海淀区11号"));
  EXPECT_EQ(location_identity_key_from_surface(U" ，。"), U"");
  EXPECT_EQ(u8(_location_identity_key(U"😀在 北京市", 2, 99)), "北京市");
}

TEST(AddressUnification, NeedsEightCharactersOrALongStreet) {
  struct Case {
    const char* why;
    const char* a;
    const char* b;
    bool same;
  };
  constexpr Case cases[] = {
      {"空键不合并", "", "", false},
      {"相等的短键", "北京", "北京", true},
      {"八字前缀", "北京市海淀区中关", "北京市海淀区中关村大街", true},
      {"七字前缀不够", "北京市海淀区中", "北京市海淀区中关村大街", false},
      {"同街，号码互为前缀", "北京市海淀区中关村大街12", "北京市海淀区中关村大街123", true},
      {"同街，号码不同", "北京市海淀区中关村大街12", "北京市海淀区中关村大街13", false},
      {"尾部不同", "北京市海淀区中关村大街12号A座", "北京市海淀区中关村大街123号B座", false},
      {"尾部相同", "北京市海淀区中关村大街12号A座", "北京市海淀区中关村大街123号A座", true},
      {"街道部分不足十字", "海淀区中关村大街北1号", "海淀区中关村大街北12号", false},
      {"街道部分正好十字", "海淀区中关村大街北段1号", "海淀区中关村大街北段12号", true},
      {"号码之后另有文字", "北京市海淀区中关村大街12室", "北京市海淀区中关村大街123室", false},
      {"不同街道", "北京市海淀区中关村大街12号", "北京市海淀区中关村北街12号", false},
      {"首位数字归前缀", "1234567890123", "1234567890124", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(address_unification_keys_equivalent(u32(c.a), u32(c.b)), c.same);
    EXPECT_EQ(address_unification_keys_equivalent(u32(c.b), u32(c.a)), c.same);
  }
}

TEST(AddressUnification, TakesThousandsOfDigits) {
  const std::u32string street = U"北京市海淀区中关村大街", digits(200'000, U'7');
  EXPECT_TRUE(
      address_unification_keys_equivalent(street + digits + U"号甲", street + digits + U"7号甲"));
  EXPECT_FALSE(
      address_unification_keys_equivalent(street + digits + U"室", street + digits + U"7室"));
}

TEST(DateKey, IgnoresBlanksAndTheWordForYear) {
  EXPECT_EQ(u8(_datetime_identity_key(U" 2023 年 ", 0, 99)), "2023");
  EXPECT_EQ(u8(_datetime_identity_key(U"March （3）, 2024", 0, 99)), "march(3),2024");
  EXPECT_EQ(u8(_datetime_identity_key(U"2023年度", 0, 99)), "2023年度");
  EXPECT_EQ(u8(_datetime_identity_key(U"二〇二三年", 0, 99)), "二〇二三年");
}

TEST(MoneyPhrase, ReplacesTheFigureAndKeepsTheWords) {
  struct Case {
    const char* why;
    const char* frag;
    const char* phrase;
  };
  constexpr Case cases[] = {
      {"币种与单位保留", "人民币100,000元", "人民币[MONEY1]元"},
      {"单独的数字", "1,000.50", "[MONEY1]"},
      {"中文数字整体替换", "壹拾万元（100,000元）", "[MONEY1]"},
      {"万也是中文数字", "【100】万元", "[MONEY1]"},
      {"没有数字", "若干元", "[MONEY1]"},
      {"only a digit that is no decimal", "²元", "[MONEY1]"},
      {"符号与括号随数字", "（-500）元", "[MONEY1]）元"},
      {"先符号后括号，各一次", "((−5元", "([MONEY1]元"},
      {"括号在前符号在后不连取", "-(5元", "-[MONEY1]元"},
      {"角分随数字", "¥5 角钱整", "¥[MONEY1]整"},
      {"元后的角不动", "100元5角", "[MONEY1]元5角"},
      {"分之保留", "共5分之一", "[MONEY1]"},
      {"5分之", "5分之内", "[MONEY1]分之内"},
      {"方括号脱去", "【100】元", "[MONEY1]元"},
      {"全角方括号", "人民币［100］元", "人民币[MONEY1]元"},
      {"ASCII brackets stay", "[100] USD", "[[MONEY1]] USD"},
      {"blanks join digits", "USD 1 000\u00A0000 net", "USD [MONEY1] net"},
      {"a separator at the end does not", "100，元", "[MONEY1]，元"},
      {"only the first figure", "100-200 yuan", "[MONEY1]-200 yuan"},
      {"the written amount goes", "EUR 12,000 (twelve thousand euros)", "EUR [MONEY1]"},
      {"another remark stays", "EUR 12,000 (excluding VAT)", "EUR [MONEY1] (excluding VAT)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(u8(_money_replacement_phrase(u32(c.frag), U"[MONEY1]")), c.phrase);
  }
  EXPECT_EQ(u8(_money_replacement_phrase(U"5元", U"［MONEY1］")), "[MONEY1]元");
  EXPECT_EQ(u8(_money_replacement_phrase(U"五元", U"［MONEY1］")), "［MONEY1］")
      << "as it was given";
  EXPECT_EQ(_money_digit_run_span(U"元"), std::nullopt);
  EXPECT_EQ(_money_digit_run_span(U"😀1,000.50 元"), (std::pair<std::size_t, std::size_t>(1, 9)));
}

TEST(GenericKey, StripsAmountsToTheFigure) {
  const auto key = [](const char* type, const char* s) {
    return u8(_generic_entity_identity_key(type, u32(s), 0, 999));
  };
  for (const char* s : {"约人民币1,000,000元", "1000000元", "RMB1000000", "US$ 1，000，000",
                        "-1000000 usd", "大概约1000000圆", "人民币¥1000000"}) {
    EXPECT_EQ(key("MONEY", s), "1000000") << s;
  }
  EXPECT_EQ(key("MONEY", "100万元"), "100") << "units are not multiplied out";
  EXPECT_EQ(key("MONEY", "100万元整"), "100万元整");
  EXPECT_EQ(key("MONEY", "￥"), "");
  EXPECT_EQ(key("DATE_TIME", "2023 年"), "2023");
  EXPECT_EQ(key("PHONE_NUMBER", " 138 0000\u30000000 "), "13800000000");
  EXPECT_EQ(key("X", "（北京）AB"), "(北京)ab");
}

TEST(TagAndKey, ChoosesTheKeyByTag) {
  const std::u32string text = U"美国 2023年 ￥ 张 伟";
  const auto pair = [&](const char* tag, Offset start, Offset end) {
    const auto p = _global_placeholder_tag_and_key(tag, text, start, end);
    return p.tag + " " + u8(p.key);
  };
  EXPECT_EQ(pair("ORG", 0, 2), "ADDRESS 美国");
  set_mask_country_in_geo_background(false);
  EXPECT_EQ(pair("ORG", 0, 2), "ORG 美国");
  set_mask_country_in_geo_background(true);
  EXPECT_EQ(pair("ADDRESS", 0, 2), "ADDRESS 美国");
  EXPECT_EQ(pair("DATE", 3, 8), "DATE 2023");
  EXPECT_EQ(pair("MONEY", 9, 10), "MONEY @9:10") << "an amount without content is its own";
  EXPECT_EQ(pair("NAME", 11, 14), "NAME 张伟");
  EXPECT_EQ(pair("PHONE", 3, 8), "PHONE 2023年");
}

}  // namespace
}  // namespace core::anonymization
