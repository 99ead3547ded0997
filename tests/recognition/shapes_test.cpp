#include <gtest/gtest.h>

#include "core/recognition/phone_numbers.hpp"
#include "tests/recognition/recognizing.hpp"

namespace test {
namespace {

TEST(Shapes, DocumentNumbers) {
  constexpr Case cases[] = {
      {"case", "依据{QUAL_CODE|(2023)沪0105民初4567号}民事判决书"},
      {"case with an addition", "案号：{QUAL_CODE|（2024）粤03执保88号之一}"},
      {"notary", "公证书（{QUAL_CODE|（2024）京长安内经证字第12345号}）"},
      {"approval of an office", "取得{QUAL_CODE|京建房字〔2024〕第12号}文件"},
      {"appraisal, behind a word that leads to it",
       "审计报告{QUAL_CODE|信会师报字[2024]第ZA12345号}"},
      {"property", "{QUAL_CODE|京(2024)朝不动产权第0012345号}"},
      {"copyright", "{QUAL_CODE|软著登字第1234567号}"},
      {"planning permit", "{QUAL_CODE|建字第310115202400123号}"},
      {"device", "𠮷{QUAL_CODE|国械注准20233010123}😀"},
      {"police", "{QUAL_CODE|京公网安备11010502030143号}"},
      {"court abroad", "Case No. {QUAL_CODE|1:24-CV-00123}"},
      {"rules that everybody may look up", "《关于促进发展的意见》（国办发〔2023〕12号）"},
      {"tax notice", "根据财税〔2016〕36号文"},
      {"judicial interpretation", "法释〔2020〕17号"},
      {"order", "（国务院令第279号）"},
      {"house", "第12号楼，第3号"},
  };
  expect_found("QUAL_CODE", cases);
}

TEST(Shapes, NumbersBehindAnyLabel) {
  constexpr Case codes[] = {
      {"invoice", "发票号码：{QUAL_CODE|12345678}"},
      {"policy", "Policy No. {QUAL_CODE|B0509MARCW2400123}"},
      {"bill of lading", "提单号：{QUAL_CODE|COSU6123456780}"},
      {"a label of nobody's list", "拼箱委托号：{QUAL_CODE|PX-2024-8812}"},
      {"an English one", "Docking slot number: {QUAL_CODE|HO-123456-7}"},
      {"whose number", "The registration number of the Supplier is {QUAL_CODE|ZB274518}."},
      {"patent in groups", "专利号：{QUAL_CODE|ZL 2018 1 0123456.5}"},
      {"trade mark", "注册商标（第{QUAL_CODE|12345678}号，第9类）"},
      {"container by its check digit", "柜 {QUAL_CODE|MSCU1234566}"},
      {"short name of a register", "Trust (RC {QUAL_CODE|1448203}), Suite"},
      {"models", "型号：XK-2000A12，规格型号：DN150-60000"},
      {"standards", "GB/T 19001-2016、ISO 27001、GB 50300-2013"},
      {"clauses", "Section 4.2, clause no. 12.3.4, 第3.2条，No. 3.1.4"},
      {"a house in an address", "No. 1205 Harbor Road; NJ 07302, USA"},
      {"goods", "HS Code: 84713000，邮政编码：100080"},
  };
  expect_found("QUAL_CODE", codes);
  constexpr Case contracts[] = {{"合同编号", "合同编号：{CONTRACT_NO|HX-CG-2024-0315}"}};
  expect_found("CONTRACT_NO", contracts);
}

TEST(Shapes, IdentityNumbersHaveTheirOwnKind) {
  constexpr Case identities[] = {
      {"wrong check digit", "（身份证号：{CHINA_ID_CARD|110105199003072339}）"},
      {"groups of four", "身份证：{CHINA_ID_CARD|1101 0519 9003 0723 38}"},
      {"full width", "身份证号码：{CHINA_ID_CARD|１１０１０５１９９００３０７２３３８}"},
      {"Hong Kong, by its check digit", "{CHINA_ID_CARD|C668668(9)}，C668668(8)"},
      {"Macau", "澳门居民身份证：{CHINA_ID_CARD|1234567(8)}"},
      {"Taiwan", "國民身分證統一編號：{CHINA_ID_CARD|A123456789}"},
      {"province that does not exist", "991105199003072338"},
  };
  expect_found("CHINA_ID_CARD", identities);
  EXPECT_EQ(found("身份证号：110105199003072339", "BANK_ACCOUNT"), "身份证号：110105199003072339");
  constexpr Case passports[] = {
      {"any document", "证件号码：{PASSPORT_NUMBER|H01234567}"},
      {"bracket", "护照（号码{PASSPORT_NUMBER|G12345678}）"},
      {"Taiwan", "台胞证号：{PASSPORT_NUMBER|01234567}"},
  };
  expect_found("PASSPORT_NUMBER", passports);
  constexpr Case plates[] = {
      {"Hong Kong", "{VEHICLE_PLATE|粤Z·1234港}"},
      {"trailer", "挂车{VEHICLE_PLATE|鲁H1234挂}"},
      {"blanks", "{VEHICLE_PLATE|京 A 12345}"},
      {"embassy", "车辆，{VEHICLE_PLATE|使014578}"},
  };
  expect_found("VEHICLE_PLATE", plates);
  constexpr Case codes[] = {{"organization", "组织机构代码：{CHINA_USCC|55138508-2}"}};
  expect_found("CHINA_USCC", codes);
}

TEST(Shapes, PhonesByTheirPlans) {
  constexpr Case cases[] = {
      {"Taiwan", "{PHONE_NUMBER|(02)2345-6789#123}；{PHONE_NUMBER|02-2345-6789}"},
      {"Japan", "{PHONE_NUMBER|03-1234-5678}"},
      {"from abroad", "{PHONE_NUMBER|0044 20 7946 0312}"},
      {"United States",
       "call {PHONE_NUMBER|2125550147} now, {PHONE_NUMBER|1-800-555-0147 ext. 22}"},
      {"the next number", "电话{PHONE_NUMBER|021-52987410}，{PHONE_NUMBER|52987411}"},
      {"five digits", "客服热线：{PHONE_NUMBER|95588}"},
      {"no phones", "订单 2125550147；1234-5678；01-02-2024；100-200-300；020-2024年"},
  };
  expect_found("PHONE_NUMBER", cases);
  EXPECT_TRUE(core::recognition::is_phone_number(U"+852 2793 6481"));
  EXPECT_FALSE(core::recognition::is_phone_number(U"转"));
}

TEST(Shapes, NetworkAndWallets) {
  constexpr Case mails[] = {
      {"written",
       "{EMAIL_ADDRESS|zhang(at)example(dot)com}, {EMAIL_ADDRESS|li at example dot com}"},
      {"no address", "10 kg @ 3.50"},
  };
  expect_found("EMAIL_ADDRESS", mails);
  constexpr Case urls[] = {
      {"database", "{URL|mysql://10.1.2.3:3306/db}"},
      {"names in it", "见{URL|https://shanghai.example.com/beijing}。"},
      {"platforms", "ASP.NET, Vue.js, e.g. this"},
  };
  expect_found("URL", urls);
  constexpr Case macs[] = {
      {"forms", "{MAC_ADDRESS|00:1A:2B:3C:4D:5E} {MAC_ADDRESS|001A.2B3C.4D5E}"},
      {"a time", "10:20:30:40"}};
  expect_found("MAC_ADDRESS", macs);
  constexpr Case wallets[] = {
      {"bech32", "钱包{CRYPTO|bc1qar0srrr7xfkvy5l643lydnw9re59gtzzwf5mdq}。"},
      {"one letter changed", "bc1qar0srrr7xfkvy5l643lydnw9re59gtzzwf5mda"},
      {"TRON", "{CRYPTO|TJRyWwFs9wTFGZg3JbrVriFbNfCug5tDeC}"},
  };
  expect_found("CRYPTO", wallets);
  constexpr Case addresses[] = {{"IPv6", "{IP_ADDRESS|fe80::1%eth0}、{IP_ADDRESS|::1}"},
                                {"network", "{IP_ADDRESS|10.0.0.0}/16"}};
  expect_found("IP_ADDRESS", addresses);
  constexpr Case games[] = {{"context", "手机游戏《{GAME|北境长歌}》"},
                            {"a contract", "《游戏运营合作协议》"}};
  expect_found("GAME", games);
}

TEST(Shapes, DatesInRangesAndWords) {
  constexpr Case cases[] = {
      {"range", "{DATE_TIME|2024/3/15}-{DATE_TIME|2024/4/15}"},
      {"last day", "{DATE_TIME|2024年3月15}-{DATE_TIME|25日}"},
      {"months", "{DATE_TIME|2011.09}—{DATE_TIME|2015.06}"},
      {"years", "({DATE_TIME|2016}–{DATE_TIME|2021})"},
      {"weekday and time", "Held {DATE_TIME|Tuesday 18 March 2025, 9.30am}."},
      {"words", "this {DATE_TIME|14th day of November, Two Thousand and Twenty-Four}."},
      {"capital numerals", "{DATE_TIME|贰零贰肆年叁月壹拾伍日}"},
      {"lunar", "{DATE_TIME|2023年农历腊月二十三}前"},
      {"label alone", "日期：{DATE_TIME|20240315}"},
      {"short", "{DATE_TIME|15-Mar-24}, {DATE_TIME|Mar-25}, {DATE_TIME|Oct. 3}"},
      {"no dates", "第 3.2-3.5 条，page 3-5, 2024 units, Companies Act 2006, 24/7, 12345678"},
      {"terms", "每月10日，30日内，3个月"},
  };
  expect_found("DATE_TIME", cases);
  // Of a DATE_TIME the core would think a section.
  constexpr Case years[] = {{"dotted", "bzw. {YEAR|30.09.25}"}};
  expect_found("YEAR", years);
}

TEST(Shapes, AmountsInRangesWordsAndTables) {
  constexpr Case cases[] = {
      {"currency first", "{MONEY|USD 1,000} to {MONEY|2,000}; {MONEY|EUR 85}-{MONEY|95k}."},
      {"spoken", "合同价{MONEY|16.8万}，起码{MONEY|2万3}，定金{MONEY|5000块}，"},
      {"capital numerals alone", "先给{MONEY|贰万}，剩下"},
      {"a column", "名称\t单价（元）\t数量\n钢管\t{MONEY|3,450.00}\t20\n"},
      {"behind a word", "合计：{MONEY|69,000.00}"},
      {"full width", "{MONEY|￥１，２８０，０００．００}"},
      {"cheque", "Say {MONEY|US Dollars One Million Only}"},
      {"no amounts", "RS-485，60块\t支付5万吨，5万平方米，3元件，Section R 15"},
  };
  expect_found("MONEY", cases);
}

}  // namespace
}  // namespace test
