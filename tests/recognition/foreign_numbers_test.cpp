#include <gtest/gtest.h>

#include "tests/recognition/recognizing.hpp"

namespace test {
namespace {

TEST(Dates, OfOtherCountriesAndShortYears) {
  constexpr Case cases[] = {
      {"French", "avant le {DATE_TIME|31 décembre 2024}, le {DATE_TIME|1er octobre 2024}."},
      {"German", "am {DATE_TIME|15. März 2025} bzw. 3. Mai"},
      {"day first", "due on {DATE_TIME|31/05/24} and {DATE_TIME|30 June}."},
      {"a day of every year", "on 30 June of each year"},
      {"民国纪年", "自{DATE_TIME|民國113年8月1日}起至{DATE_TIME|113年7月25日}止"},
      {"两位数年份", "于{DATE_TIME|22年12月31日}前还清，每年6月30日付息"},
      {"星期与钟点", "{DATE_TIME|2024年2月26日（星期一）下午2点}"},
      {"期限", "2年3个月，30日内；clause 1.2.23"},
  };
  expect_found("DATE_TIME", cases);
}

TEST(Money, OfOtherCountries) {
  constexpr Case cases[] = {
      {"German figures", "{MONEY|87.500,00 EUR} ({MONEY|EUR 1.450,50}), {MONEY|€1.250.000,00}"},
      {"blanks between thousands", "{MONEY|125 000 €}; {MONEY|R 352 470.00}, {MONEY|R1,412,880}"},
      {"no rand", "R 2 and item R 15 of the list"},
      {"code behind a signed amount", "to {MONEY|$7,500.00 USD}."},
      {"口语里的万", "仅偿还{MONEY|5万}，余款未付，支付5万吨；{MONEY|3万元整}，支付5万吨"},
  };
  expect_found("MONEY", cases);
}

TEST(Contact, PhonesOfOtherCountries) {
  constexpr Case cases[] = {
      {"France", "Tél. : {PHONE_NUMBER|04 72 55 01 88};"},
      {"Germany", "Telefon {PHONE_NUMBER|089/5550-1420}"},
      {"Taiwan", "行動：{PHONE_NUMBER|0932-118-560}"},
      {"country code in brackets", "电话: {PHONE_NUMBER|(86-21) 6288 0911}"},
      {"Australia", "reported at once on {PHONE_NUMBER|1300 555 072} and"},
      {"India", "Vasanth Kumar Hegde, {PHONE_NUMBER|98450 55127}, x@y.in"},
      {"服务热线", "业务投诉：{PHONE_NUMBER|4006-028-551}"},
      {"no telephone", "98450 551270 units, 98450 55127% of 1300 555"},
  };
  expect_found("PHONE_NUMBER", cases);
}

TEST(Identity, CertificatesAndRegistersWithoutLabels) {
  constexpr Case cases[] = {
      {"证与号码",
       "健康证（编号{QUAL_CODE|沪健20230918007}）和上门服务证{QUAL_CODE|SH-JZ-0098213}。"},
      {"字第号", "经营权证号：{QUAL_CODE|豫（2018）杞县农村土地承包经营权第0012457号}"},
      {"a register", "CIPC reg. {QUAL_CODE|2014/118273/07} | x"},
      {"licence", "licence: {QUAL_CODE|UK/INS/2019-0457}."},
      {"with the verb", "the registration number is {QUAL_CODE|202501170046218}."},
      {"a register with its letters", "Amtsgericht Mannheim under {QUAL_CODE|HRB 718854}, VAT"},
      {"a number no house has", "Authority of India (No. {QUAL_CODE|11224334000817}) and No. 1205"},
      {"省份与八位数字", "《药品生产许可证》（编号{QUAL_CODE|黔20180047}）"},
      {"年份与条款不是证号", "该证书2024年到期，许可证第3条"},
  };
  expect_found("QUAL_CODE", cases);
  constexpr Case tickers[] = {
      {"market and symbol", "(NYSE American: {STOCK_TICKER|BXTR})"},
      {"代码前有交易所", "股票代码 {STOCK_TICKER|SH600887}，"},
  };
  expect_found("STOCK_TICKER", tickers);
}

}  // namespace
}  // namespace test
