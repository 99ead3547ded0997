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
      {"a city and a person", "in London, John said"},
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

}  // namespace
}  // namespace test
