#include <gtest/gtest.h>

#include "tests/recognition/recognizing.hpp"

namespace test {
namespace {

TEST(ProsePersons, ChineseNamesWithoutLabels) {
  constexpr Case cases[] = {
      {"裁判文书的叙述",
       "原告{PERSON|罗嘉禾}诉被告{PERSON|邬振邦}、第三人{PERSON|谭晓玲}民间借贷纠纷一案"},
      {"句首与介词之后", "{PERSON|谭晓玲}辩称，她与{PERSON|邬振邦}系同事关系"},
      {"动词之后", "会议选举{PERSON|汤玉兰}为执行董事，聘任{PERSON|江一鸣}担任总经理"},
      {"发言人", "{PERSON|陆建平}：今天主要讨论三件事。"},
      {"日常词语不是姓名",
       "双方应当明确时间、方式、金额，严格遵守，高级保洁另行计价，全部费用按月结算"},
      {"职务后接动词", "主任应指定其他律师，经理于当日向公司提交"},
      {"逐字空开的签名", "审 判 员　{PERSON|万 春 生}\n书 记 员　{PERSON|付　敏}"},
      {"逐字空开的普通文字", "土 地 承 包 经 营 权 流 转 合 同"},
      {"繁体", "承租人 {PERSON|許雅婷}（以下簡稱乙方）"},
  };
  expect_found("PERSON", cases);
}

// The words on both sides tell where a name begins and ends.
TEST(ProsePersons, ChineseNamesAmongWords) {
  constexpr Case cases[] = {
      {"职务与动词之间", "由仓库管理员{PERSON|潘永福}清点验收，信号工{PERSON|徐启航}须持证上岗"},
      {"两字名与三字名", "{PERSON|程芳}应按月向{PERSON|崔旭}支付利息，{PERSON|刘敏}负责"},
      {"名字本身是词语", "未经同意转租给{PERSON|郑光明}或者第三人，由{PERSON|叶胜利}代为办理"},
      {"姓氏与前后的字成词", "由{PERSON|罗文博}和{PERSON|丁佳怡}组成，注册会计师{PERSON|谢强}完成"},
      {"生僻姓", "供方负责人{PERSON|訾承志}；委托{PERSON|厍静怡}代收"},
      {"部门之后", "甲方设备科{PERSON|吴嘉欣}配合"},
      {"前面的职务不属于姓名", "投入人员：架构师{PERSON|韩景明}、后端{PERSON|林海涛}"},
      {"姓与职务", "项目经理{PERSON|郑琳}到场。{PERSON|郑经理}同意，{PERSON|郑工}复核"},
      {"没有这个姓的人", "老板、小时、经理、总工由双方另行协商，高工到场"},
      {"以人字结尾的标签", "在场人：{PERSON|谭明}\n交底人：{PERSON|薛亮}\n收件人：另行通知"},
      {"合同用语不是姓名",
       "甲方应向乙方支付货款，任何一方不得从事与目标公司相竞争的业务，更换项目经理须提前30日通知"
       "甲方；第五章第三条所列事项，向有管辖权的法院起诉，经双方协商，由承租方承担，于收到之日起"
       "时效中断，方可提货，单位公章，能源费用，全部权利义务，温度与湿度，项目组施工方案，授权方保证"},
  };
  expect_found("PERSON", cases);
}

TEST(ProsePersons, ListsCarryNamesOfOtherForms) {
  constexpr Case cases[] = {
      {"名单里的少数民族姓名与日本姓名",
       "出席：{PERSON|陆建平}、{PERSON|汤玉兰}、{PERSON|阿依古丽·买买提}、{PERSON|扎西次仁}、"
       "{PERSON|佐藤健一}"},
      {"名单里的单位不是人", "出席：{PERSON|陆建平}、{PERSON|汤玉兰}、财务部"},
      {"普通名单", "包括水泥、钢材、木材、石材"},
      {"a committee",
       "Committee: {PERSON|Søren Kjeldsen}, {PERSON|Ikram Benali}; {PERSON|Tanaka Hiroshi}"},
      {"remarks between names",
       "Students: {PERSON|Lin Xiaoyu} (Grade 1), {PERSON|Camille Dupont} (Grade 2)"},
  };
  expect_found("PERSON", cases);
}

TEST(ProsePersons, LettersAndSignatures) {
  constexpr Case cases[] = {
      {"surname first", "To: \"{PERSON|Botha, Johannes}\" <x@example.com>"},
      {"a city and a person", "in London, {PERSON|John} said"},
      {"header and close of a mail",
       "From: {PERSON|Thandiwe Nkosi} <t@example.com>\n\nHi {PERSON|Johannes},\n\nKind "
       "regards,\n{PERSON|Thandiwe}\n"},
      {"greeting of a role", "Dear Shareholders,\nHello Team,"},
      {"a line above a role", "{PERSON|Aoife Brennan}\nChief People Officer"},
      {"role before", "our Chief Operating Officer {PERSON|Naledi van Wyk} signed"},
      {"a line of capitals",
       "WHEREAS, {PERSON|MARGARET T. HOLLOWAY} HAS RESIGNED AS CHIEF FINANCIAL OFFICER"},
      {"headings in capitals", "RESOLVED FURTHER, THAT THE BOARD OF DIRECTORS; GENERAL AUTHORITY"},
      {"given name later on", "{PERSON|Ravi Menon} joins. {PERSON|Ravi} sits there"},
  };
  expect_found("PERSON", cases);
}

TEST(LatinProsePersons, NamesOfAllKinds) {
  constexpr Case cases[] = {
      {"by the lists", "signed by {PERSON|Hugo Marchetti} and {PERSON|Adaobi Nwankwo} today"},
      {"initials",
       "Sole arbitrator is {PERSON|H.-P. Keller}; {PERSON|D. R. Price} and {PERSON|Qian W.J.} agreed"},
      {"particles",
       "we thank {PERSON|Joost van der Velde}, {PERSON|Siti binti Rahman} and {PERSON|Maria de la Cruz}"},
      {"everyday words with a name",
       "paid to {PERSON|Grace Lindqvist}, {PERSON|Mark Okafor} and {PERSON|Hugh Stone}"},
      {"romanized", "paid to {PERSON|Shen Yifan} and {PERSON|Park Jun-seo} in cash"},
      {"generation", "sold to {PERSON|Raymond Keller, Jr.} and {PERSON|Paul Keller III}, MD"},
      {"a title before an everyday word", "seen by Ms {PERSON|Price} and Sheikh {PERSON|Hamdan}"},
      {"surname first", "2. Rev. {PERSON|Young, Aloysius J.}, parish house"},
      {"kin", "to my nephew {PERSON|Donnchadh} and his wife {PERSON|Grace}, of Cork"},
      {"a list of first names",
       "to each of {PERSON|Tadhg}, {PERSON|Saoirse} and {PERSON|Mark}, in shares"},
      {"signatures in one line", "________ {PERSON|A. Law}    ________ {PERSON|T. Keller}"},
      {"nickname", "Broker: {PERSON|Darryl \"Dazza\" Nguyen}, licence 20"},
      {"a greeting in another script", "{PERSON|Dear Иван}, hello"},
      {"a greeting", "Dear {PERSON|Quan You},\n\nDear Valued Customer,\n\nDear Sir,\n"},
      {"紧贴汉字", "提名{PERSON|Jörg Brandt}为董事"},
  };
  expect_found("PERSON", cases);
}

TEST(LatinProsePersons, FurtherMentions) {
  constexpr Case cases[] = {
      {"surname and first name that are words",
       "Present: {PERSON|Colin Page}, {PERSON|Ella Stone}. Moved {PERSON|Page}, seconded {PERSON|Stone}. See Page 3."},
      {"a sentence begins", "{PERSON|Mark Okafor} came. {PERSON|Mark} was late. Mark the box."},
      {"in small letters",
       "{PERSON|Cem Yildirim} wrote. pls ask {PERSON|cem} for it, ask {PERSON|yildirim}"},
      {"behind an article", "{PERSON|Hugh Price} sets the Price. The Price is due."},
      {"a firm of that name",
       "{PERSON|Torben Halvorsen} signs. Halvorsen Maritime ASA pays. Halvorsen agrees."},
  };
  expect_found("PERSON", cases);
}

TEST(LatinProsePersons, CapitalsThatAreNoNames) {
  constexpr Case cases[] = {
      {"terms",
       "Grace Period, Good Reason, Change in Control, Base Salary, Grant Date, Bill of Lading"},
      {"modal verbs", "Will the Buyer pay? May the Seller deliver? Mark the box."},
      {"rules", "the Geneva Convention, Basel III, Hague Rules, Incoterms 2020"},
      {"counted",
       "Schedule A. Price, Section B. Stone, Class A Shares\nA. Deliverables\nB. Acceptance"},
      {"days", "Christmas Day, Good Friday and Easter Monday, Jan. 5"},
      {"places", "Victoria Park, Charlotte Court, Madison Avenue"},
      {"a determined word", "the Jordan plant, a Carter valve, each Sterling payment"},
  };
  expect_found("PERSON", cases);
}

}  // namespace
}  // namespace test
