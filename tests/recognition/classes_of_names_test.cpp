// Classes of names, layouts and numbers that contracts have and that no single rule covers.
// All names are invented.
#include <gtest/gtest.h>

#include "core/anonymization/result.hpp"
#include "tests/recognition/recognizing.hpp"

namespace {

using test::Case;
namespace entity_type = core::anonymization::entity_type;

TEST(ClassesOfNames, ChinesePersons) {
  const Case cases[] = {
      {"藏族姓名的音节", "由牧民{PERSON|索旦才让}反映，{PERSON|拉毛旦}与{PERSON|宫保东珠}到场。"},
      {"傣族、拉祜族姓名",
       "理事长：{PERSON|岩温香}\n由甲方派驻质检员{PERSON|娜妥}、{PERSON|扎约}现场取样。"},
      {"部门后的姓名", "收货人：设备科 {PERSON|阿卜杜热合曼·吐尔逊}，电话0998-2836001"},
      {"称谓不属于音译名", "由其总经理{PERSON|玛格丽特·霍夫曼}博士代表。"},
      {"标签后的常用词是姓名",
       "联系人：{PERSON|常乐}\n司机{PERSON|高兴}，手机13800138000\n"
       "法定代表人：{PERSON|石磊}　　统一社会信用代码："},
      {"表格用语不是姓名", "联系人：项目经理\n经办人：签字\n结果：成功\n"},
      {"名单末尾的人数", "由{PERSON|缑志强}、{PERSON|亓立国}、{PERSON|逄海燕}三人组成小组。"},
      {"人名前的由", "本担保书由{PERSON|宫本正雄}（护照TR2938471）出具。"},
      {"时间不是姓名", "样品于周三寄出，双人验收，敬启者："}};
  test::expect_found(entity_type::PERSON, cases);
}

TEST(ClassesOfNames, ChineseOrganizations) {
  const Case cases[] = {
      {"养殖场与作坊",
       "供应商为{ORGANIZATION|镶黄旗草原金驹种羊场}和{ORGANIZATION|诸城市密州街道福满豆腐坊}。"},
      {"公司的门店", "居间方：{ORGANIZATION|大连市宜居家房地产经纪有限公司中山港湾店}"},
      {"出厂不是厂名", "货损按出厂价赔偿，送货至店，进厂检验。"},
      {"办事的地方与任何一家", "派往上海张江办公室工作，提交近三个月内三甲医院的体检报告。"},
      {"当事人标签紧接名称", "保险人{ORGANIZATION|瀛海财产保险股份有限公司烟台市分公司}承保。"},
      {"产业引导基金", "有限合伙人{ORGANIZATION|赣州市章江产业引导基金中心（有限合伙）}已同意。"},
      {"日本的组织形式在前", "{ORGANIZATION|株式会社北斗精工}向乙方供货。"},
      {"局的派出所站", "由{ORGANIZATION|海盐县自然资源和规划局澉浦所}出具证明。"},
      {"简称后面的动词",
       "{ORGANIZATION|威海远冰达供应链管理有限公司}承运，{ORGANIZATION|远冰达}应保证时限。"},
      {"泛指不是简称", "{ORGANIZATION|温州霞浦泵业控股有限公司}（“贵公司”），贵公司须提供资料。"}};
  test::expect_found(entity_type::ORGANIZATION, cases);
}

TEST(ClassesOfNames, ChinesePlaces) {
  const Case cases[] = {
      {"线路的两端", "线路：{LOCATION|诸城}—{LOCATION|广州}，运费另计"},
      {"与地名并列的常用词",
       "卸货港为{LOCATION|连云港}或{LOCATION|日照}。本合同在{LOCATION|白银}签署。"},
      {"常用词", "以白银计价，享受日照。"},
      {"没有地名的门牌", "原{LOCATION|兆麟大街158号}东侧，生产线路3号"},
      {"自治县的简称", "送至{LOCATION|孟连县}和{LOCATION|海西州}"},
      {"街名里的介词", "位于{LOCATION|通榆县开通镇向海大街}的厂房"},
      {"高速公路", "经{LOCATION|G42沪蓉高速公路}运输"}};
  test::expect_found(entity_type::LOCATION, cases);
}

TEST(ClassesOfNames, LatinPlaces) {
  const Case cases[] = {
      {"a town and its country are two places",
       "the port of {LOCATION|Piraeus}, {LOCATION|Greece}."},
      {"a town and its state are one", "a firm in {LOCATION|Wilmington, Delaware}."},
      {"an address ends behind the country",
       "{LOCATION|Pradler Straße 61, 6020 Innsbruck, Austria}, FN 418274 k"},
      {"post box with its code",
       "{LOCATION|P.O. Box 80418 – 80100, Mombasa, Kenya}, PIN of the firm"},
      {"street shortened, quarter of the town",
       "notices to {LOCATION|1741 Alder Bluff Dr. SE, Rochester, MN 55904}."},
      {"terms of delivery", "Terms: CFR {LOCATION|Pasir Gudang}, Incoterms 2020."},
      {"things named after places", "China clay residues are excluded."}};
  test::expect_found(entity_type::LOCATION, cases);
}

TEST(ClassesOfNames, LatinPersonsAndOrganizations) {
  const Case persons[] = {
      {"Malay and Tamil particles",
       "Manager: {PERSON|Siti Aminah binte Yusof}, and {PERSON|Ravindran s/o Govindasamy}."},
      {"a bank is no person", "Payments shall be made to: Neckar-Alb Volksbank eG, IBAN"},
      {"a role of two words is none", "{PERSON|Ornella Brambilla}, Amministratore Delegato"}};
  test::expect_found(entity_type::PERSON, persons);
  const Case organizations[] = {
      {"brand behind a title", "a lease by {ORGANIZATION|Mr. Price Group Limited} was signed."},
      {"capitals of a compound",
       "{ORGANIZATION|Ingenieurgesellschaft Karwendel mbH} (\"{ORGANIZATION|IGK}\") delivers. The fee of {ORGANIZATION|IGK} is due."},
      {"class societies and regulators",
       "class {ORGANIZATION|Korean Register}, approved by {ORGANIZATION|PMDA}"},
      {"partners behind an ampersand",
       "escrow account of {ORGANIZATION|Watson Farley & Kreuger}."}};
  test::expect_found(entity_type::ORGANIZATION, organizations);
}

TEST(ClassesOfNames, Numbers) {
  const Case cases[] = {
      {"register of professionals",
       "一级建造师 {QUAL_CODE|贵1522016201703399}，安考证 {QUAL_CODE|渝建安C(2022)0046199}"},
      {"no number of a certificate", "保证人手机15149276604，新三板证券代码874327"},
      {"patents abroad", "under {QUAL_CODE|GB 2571905} and {QUAL_CODE|US 10,946,584 B2}"},
      {"trials", "registered as {QUAL_CODE|jRCT2031240199} and {QUAL_CODE|NCT04512345}"},
      {"licences", "holds licence {QUAL_CODE|AXR264}."},
      {"ship", "MV Astral, IMO No. {QUAL_CODE|9321483}"}};
  test::expect_found(entity_type::QUAL_CODE, cases);
  const Case dates[] = {{"season", "（{DATE_TIME|2024}/{DATE_TIME|2025}产季）"}};
  test::expect_found(entity_type::DATE_TIME, dates);
  const Case money[] = {{"fractions of a currency", "均价超过每磅{MONEY|250美分}时"}};
  test::expect_found(entity_type::MONEY, money);
}

}  // namespace
