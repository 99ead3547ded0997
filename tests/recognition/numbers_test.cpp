#include <gtest/gtest.h>

#include "tests/recognition/recognizing.hpp"

namespace test {
namespace {

TEST(Contact, Phones) {
  constexpr Case cases[] = {
      {"手机号紧贴汉字", "手机{PHONE_NUMBER|13951208846}，"},
      {"括号里的号码，括号留下",
       "张三（{PHONE_NUMBER|13951208846}）、({PHONE_NUMBER|0512-66283917})"},
      {"分组书写", "电话 {PHONE_NUMBER|137 5718 0426}"},
      {"全角数字与全角连接号", "电话：{PHONE_NUMBER|０５１２－６６２８３９１７}"},
      {"分机属于号码", "电话：{PHONE_NUMBER|0311-66107924转803}。"},
      {"两个号码用顿号分开", "电话{PHONE_NUMBER|023-6718 4402}、{PHONE_NUMBER|023-6718 4403}"},
      {"国家码", "{PHONE_NUMBER|+86-22-6598 1120}；{PHONE_NUMBER|+852 2793 6481}。"},
      {"a bracket around the number stays outside", "(tel {PHONE_NUMBER|+44 20 7946 0312})"},
      {"area code in brackets behind a label", "tel. {PHONE_NUMBER|(201) 555-0138}, x"},
      {"end of a sentence", "fax {PHONE_NUMBER|0113 496 0458}."},
      {"合同编号不是电话", "合同编号：LX-CG-2024-0315"},
      {"日期不是电话", "2024-03-15签订"},
  };
  expect_found("PHONE_NUMBER", cases);
}

TEST(Contact, NetworkAddresses) {
  constexpr Case mails[] = {
      {"紧贴汉字", "邮箱{EMAIL_ADDRESS|yuchijz@ruiji.com.cn}；"},
      {"full stop behind", "to {EMAIL_ADDRESS|dpo@a-b.co.uk}."},
  };
  expect_found("EMAIL_ADDRESS", mails);
  constexpr Case urls[] = {
      {"port, path and query", "{URL|https://m.a-b.cn:8443/w24?src=dy} 。"},
      {"no scheme", "通过 {URL|sftp.alpenrose.ch}（见附件）"},
      {"the domain of an address", "a@alpenrose.ch"},
      {"abbreviations", "e.g. this, i.e. that"},
  };
  expect_found("URL", urls);
  constexpr Case addresses[] = {
      {"前缀长度留在外面", "网段为{IP_ADDRESS|172.20.8.0}/22"},
      {"条款号", "见12.10.1.2和GCC 1.1.2.2"},
      {"small numbers count behind a word", "IP {IP_ADDRESS|10.1.2.3}"},
      {"IPv6地址紧贴汉字", "地址{IP_ADDRESS|2001:db8:4f0:2::15}；"},
      {"a time", "12:30:45"},
  };
  expect_found("IP_ADDRESS", addresses);
  constexpr Case accounts[] = {
      {"微信号", "微信号：{SOCIAL_ACCOUNT|zgwq_0822}通知"},
      {"QQ群", "QQ群 {SOCIAL_ACCOUNT|782046619}。"},
      {"handle", "Telegram {SOCIAL_ACCOUNT|@rdcsantillan}"},
      {"the end of a sentence", "微信 {SOCIAL_ACCOUNT|cenlx-sec}."},
      {"mail address", "a.b@example.com"},
  };
  expect_found("SOCIAL_ACCOUNT", accounts);
}

TEST(Identity, PersonsAndCompanies) {
  constexpr Case identities[] = {
      {"校验码正确则无需标签", "王大勇 {CHINA_ID_CARD|11010519491231002X}"},
      {"校验码错误，有标签仍然遮盖", "身份证号：{CHINA_ID_CARD|110105194912310021}"},
      {"校验码错误，没有标签", "流水110105194912310021"},
  };
  expect_found("CHINA_ID_CARD", identities);
  constexpr Case codes[] = {
      {"校验码正确", "（{CHINA_USCC|91350100M000100Y43}）"},
      {"纳税人识别号", "纳税人识别号：{CHINA_USCC|91350100M000100Y44}"},
      {"表格中的一列", "项目\t信用代码\t地址\n甲\t{CHINA_USCC|91350100M000100Y44}\t北京"},
      {"标签后的另一个信用代码",
       "项目\t存货人\t保管人\n信用代码\t{CHINA_USCC|91350100M000100Y44}\t"
       "{CHINA_USCC|91350100M000100Y45}"},
  };
  expect_found("CHINA_USCC", codes);
  constexpr Case passports[] = {
      {"护照号码", "护照号码：{PASSPORT_NUMBER|TR4820916}，"},
      {"a remark before the number", "passport, currently no. {PASSPORT_NUMBER|19FV04418}, x"},
      {"no label", "model TR4820916"},
  };
  expect_found("PASSPORT_NUMBER", passports);
  constexpr Case plates[] = {
      {"间隔点", "车牌：{VEHICLE_PLATE|浙L·6Q90F}"},
      {"无标签", "{VEHICLE_PLATE|渝BF62108}\t18吨"},
      {"电信许可证不是车牌", "京B2-20200011"},
  };
  expect_found("VEHICLE_PLATE", plates);
  constexpr Case numbers[] = {{"SSN", "(SSN: {US_SSN|751-40-9926})"},
                              {"an order number", "No. 000-40-9926"}};
  expect_found("US_SSN", numbers);
}

TEST(Identity, LicencesAndCertificates) {
  constexpr Case cases[] = {
      {"汉字是号码的一部分", "许可证号{QUAL_CODE|渝交运管许可字500112013476号}（"},
      {"括号开头", "许可证编号：{QUAL_CODE|（鲁）JZ安许证字〔2021〕010637}"},
      {"括注里的号码", "（执业证号：{QUAL_CODE|14420201811476652}）"},
      {"groups", "org. no. {QUAL_CODE|918 552 758}, x"},
      {"专利号", "专利{QUAL_CODE|ZL201888390504.6}；"},
      {"身份证号不是证号", "身份证号：11010519491231002X"},
      {"标签后是句子", "许可证由甲方于2024年办理"},
      {"空白待填", "建设用地规划许可证：____号"},
      {"标准号", "GB/T 307.1-2017"},
  };
  expect_found("QUAL_CODE", cases);
  constexpr Case tickers[] = {
      {"股票代码", "（股票代码：{STOCK_TICKER|301999.SZ}）"},
      {"exchange and ticker", "NYSE: {STOCK_TICKER|QXVL})"},
      {"a word behind the label", "ticker symbol of the issuer"},
  };
  expect_found("STOCK_TICKER", tickers);
}

TEST(Banking, AccountsAndCards) {
  constexpr Case accounts[] = {
      {"账号分组", "账　　号：{BANK_ACCOUNT|1220 0146 0800 5523 017}"},
      {"开户行后直接写账号", "营业部，{BANK_ACCOUNT|3100 0860 4091 0000 276}。"},
      {"hyphens", "account {BANK_ACCOUNT|072-904417-3}, SWIFT"},
      {"五位一组", "账户：威海羊亭支行，{BANK_ACCOUNT|81782 20014 21003 965}。"},
      {"支付卡不再算作账号", "卡 4111 1111 1111 1111，"},
      {"金额", "账户余额为1,280,000.00元"},
  };
  expect_found("BANK_ACCOUNT", accounts);
  constexpr Case ibans[] = {
      {"groups", "IBAN {IBAN_CODE|GB82 WEST 1234 5698 7654 32}, BIC"},
      {"checksum fails, label holds", "IBAN: {IBAN_CODE|GB83WEST12345698765432}"},
      {"checksum fails", "ref GB83WEST12345698765432"},
  };
  expect_found("IBAN_CODE", ibans);
  EXPECT_EQ(found("IBAN DE73 5006 0700 0012 3456 73", "PHONE_NUMBER"),
            "IBAN DE73 5006 0700 0012 3456 73");
  constexpr Case swift[] = {{"BIC of 11", "（SWIFT：{SWIFT_CODE|JLBKCNBJYTA}）"},
                            {"a heading", "SWIFT MESSAGE"}};
  expect_found("SWIFT_CODE", swift);
  constexpr Case last4[] = {{"尾号", "尾号为{CARD_LAST4|9052}，"},
                            {"ending in", "card ending in {CARD_LAST4|8812}"},
                            {"五位", "尾号90521"}};
  expect_found("CARD_LAST4", last4);
}

TEST(Dates, CalendarDatesOnly) {
  constexpr Case cases[] = {
      {"紧贴汉字", "自{DATE_TIME|2024年3月15日}起"},
      {"数字间有空格", "{DATE_TIME|2024 年 4 月 12 日}"},
      {"时刻属于日期", "{DATE_TIME|2024年7月16日上午9时30分}，"},
      {"年度只取年", "{DATE_TIME|2024年}度审计"},
      {"日未填", "{DATE_TIME|2023年12月}__日"},
      {"汉字日期", "{DATE_TIME|二〇二四年五月二十八日}"},
      {"起止日期之间的连接号", "{DATE_TIME|2023.11.01}–{DATE_TIME|2024.04.30}"},
      {"day of", "{DATE_TIME|18th day of June, 2024}"},
      {"month first", "on {DATE_TIME|March 4, 2024} (x)"},
      {"month alone is a verb", "it may 2 times; in May"},
      {"year in a sentence", "accounts for {DATE_TIME|2024} within"},
      {"year of an act", "Companies Act 2006"},
      {"期限", "30日内，三个工作日，第2年"},
      {"章节号", "见3.1.4"},
      {"法规名称里的年份", "依《1994年约克—安特卫普规则》"},
  };
  expect_found("DATE_TIME", cases);
}

TEST(Money, OneHitAnAmount) {
  constexpr Case cases[] = {
      {"币种和单位", "为{MONEY|人民币831,000.00元}（大写：{MONEY|捌拾叁万壹仟元整}）"},
      {"大写标签不是金额", "人民币（大写）：{MONEY|壹佰元整}"},
      {"每吨留在外面", "{MONEY|人民币128元}/吨"},
      {"区间的两端", "罚款{MONEY|100}-{MONEY|200元}"},
      {"code with a unit", "{MONEY|NOK 96.5 million} of"},
      {"state in the sign", "cap of {MONEY|US$1.5 million} (or"},
      {"国名在币种里", "不超过{MONEY|1,000万瑞士法郎}。"},
      {"number words", "({MONEY|one million one hundred and fifty thousand US dollars})"},
      {"a verb like a code", "try 3 times, all 5"},
      {"单位说明", "单位：万元，人民币（大写）"},
      {"少见的币种", "付{MONEY|5000坚戈}，{MONEY|800比索}，{MONEY|300雷亚尔}"},
      {"元件", "3元件"},
  };
  expect_found("MONEY", cases);
}

TEST(Quantities, FiguresWithUnits) {
  constexpr Case percents[] = {{"百分号", "{PERCENT|13%}增值税，{PERCENT|0.5‰}"},
                               {"per cent", "at {PERCENT|2.35 per cent} p.a."}};
  expect_found("PERCENT", percents);
  constexpr Case quantities[] = {{"台套", "共{QUANTITY|240套}"}, {"期限", "3个月，5个工作日"}};
  expect_found("QUANTITY", quantities);
}

}  // namespace
}  // namespace test
