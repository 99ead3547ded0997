#include <gtest/gtest.h>

#include "tests/recognition/recognizing.hpp"

namespace test {
namespace {

TEST(ChineseOrganizations, EdgesOfCompanies) {
  constexpr Case cases[] = {
      {"标签后", "甲方：{ORGANIZATION|苏州澜迅精密机械有限公司}"},
      {"正文中由动词引出", "乙方委托{ORGANIZATION|北方泰吉检验认证（天津）有限公司}检验"},
      {"介词", "款项存于{ORGANIZATION|湘沅银行岳麓支行}。"},
      {"角色词紧贴名称", "承包人应在{ORGANIZATION|胶海银行股份有限公司}开户"},
      {"名称里有像介词的字", "{ORGANIZATION|深圳市华为技术有限公司}"},
      {"和字开头的字号", "供应商：{ORGANIZATION|和平建设有限公司}"},
      {"盖章二字", "甲方（盖章）{ORGANIZATION|西安阡陌航电技术有限公司}"},
      {"空格排版", "{ORGANIZATION|山东岳砺建设集团 有限公司}　　乙方"},
      {"分支机构", "{ORGANIZATION|江澜银行股份有限公司苏州吴中支行}账户"},
      {"有限合伙", "{ORGANIZATION|上海叠嶂投资管理合伙企业（有限合伙）}，"},
      {"泛称", "该公司、其全资子公司、本公司、合资公司、有限责任公司、双方的开户银行"},
  };
  expect_found("ORGANIZATION", cases);
}

TEST(ChineseOrganizations, PublicBodiesBeginWithAPlace) {
  constexpr Case cases[] = {
      {"法院", "提交{ORGANIZATION|苏州市吴中区人民法院}诉讼解决"},
      {"词表之外的市", "向{ORGANIZATION|景洪市人民法院}起诉"},
      {"国家机关", "由{ORGANIZATION|国家知识产权局}授权"},
      {"缩写", "提交{ORGANIZATION|贸仲委}仲裁，{ORGANIZATION|SIAC} Rules"},
      {"没有地名的泛称", "有管辖权的人民法院、仲裁委员会、当地市场监督管理局"},
  };
  expect_found("ORGANIZATION", cases);
}

TEST(ChineseOrganizations, ShortForms) {
  constexpr Case cases[] = {
      {"定义过的简称",
       "{ORGANIZATION|渭川电子科技大学}（以下简称“{ORGANIZATION|渭川电科大}”）。"
       "{ORGANIZATION|渭川电科大}可以"},
      {"未定义的简称",
       "{ORGANIZATION|重庆驭川供应链管理有限公司}。（一）{ORGANIZATION|驭川}迟延，"
       "{ORGANIZATION|驭川供应链}和{ORGANIZATION|驭川公司}"},
      {"角色不是简称", "{ORGANIZATION|苏州澜迅精密机械有限公司}（以下简称“买方”）。买方应"},
  };
  expect_found("ORGANIZATION", cases);
}

TEST(ChinesePersons, LabelsTitlesAndProse) {
  constexpr Case cases[] = {
      {"标签后", "法定代表人：{PERSON|欧阳明岚}　联系人{PERSON|顾砚秋}，电话"},
      {"标签后直接接正文", "总经理由{PERSON|陈德馨}担任"},
      {"标签后是句子", "负责人应当到场，联系人和电话，法定代表人于2024年变更"},
      {"姓与名之间的空格", "负责人：{PERSON|闻人　蔚}"},
      {"少数民族姓名", "法定代表人：{PERSON|迪丽努尔·艾合买提}（"},
      {"词表之外的姓", "驾驶员\t电话\n{PERSON|阿木尔古}\t13800001111"},
      {"表头的一列", "序号\t联系人\t电话\n1\t{PERSON|沈柏川}\t0512-66283917"},
      {"第一格是标签", "联系人\t{PERSON|赵丽娜}\t{PERSON|窦景明}"},
      {"表头不是姓名", "股东\t比例\t期限\n甲\t1\t2"},
      {"律师", "由{PERSON|章亦舟}律师担任"},
      {"项目经理不是姓项", "由项目经理签字"},
      {"复姓", "{PERSON|尉迟敬之}就交期达成"},
      {"音译姓名", "专家{PERSON|伊万·彼得罗维奇·索科洛夫}提供支持，{PERSON|索科洛夫}每季度"},
      {"品牌中的间隔号", "沁屿·石梅度假村"},
      {"当事人是自然人", "保证人二：{PERSON|田小妹}（土家族）"},
      {"电话前", "{PERSON|陶然}, 0512-8817 6042"},
      {"成词的姓名", "法定代表人：{PERSON|幸福来}"},
      {"标签后的女名", "联系人{PERSON|冯晓娟}，0898-6533 7091；联系人变更，经理负责"},
      {"没有姓的姓名",
       "配偶{PERSON|尼玛卓嘎}（藏族），歌手{PERSON|其其格玛}演出，{PERSON|苏和巴雅尔}"},
      {"同样的词是地名", "巴彦淖尔市、呼和浩特市、乌兰察布市、巴图路"},
      {"部门与音译姓名", "代表为工程部{PERSON|库尔班江·吐尔逊}，译者{PERSON|佟加·庆夫}。"},
      {"又一次出现", "联系人：{PERSON|顾砚秋}。{PERSON|顾砚秋}曾赴"},
  };
  expect_found("PERSON", cases);
  EXPECT_EQ(found("由张三律师事务所办理", "PERSON"), "由张三律师事务所办理");
}

TEST(ChinesePlaces, OneHitAnAddress) {
  constexpr Case cases[] = {
      {"从省到门牌", "住所：{LOCATION|浙江省台州市黄岩区澄江街道桥头王村3组18号}，电话"},
      {"楼号与房号", "位于{LOCATION|广东省深圳市前海深港合作区桂湾五路128号B7栋306}的房屋"},
      {"单独的城市", "自{LOCATION|无锡}发运，改走铁路"},
      {"港口", "{LOCATION|遵义}—{LOCATION|重庆果园港}"},
      {"目的港是泛称", "目的港、装运港、3号仓库"},
      {"标签不属于地址", "地址：{LOCATION|上海市静安区南京西路1788号39层3902室}\n开户行"},
      {"不跨行", "{LOCATION|江苏省苏州市}\n{LOCATION|北京}"},
      {"法律名称", "《中华人民共和国民法典》和《联合国国际货物销售合同公约》"},
      {"时区", "北京时间9:00"},
      {"币种", "100瑞士法郎"},
      {"分期不是地址", "在{LOCATION|宁波}、{LOCATION|台州}短期出差"},
  };
  expect_found("LOCATION", cases);
}

}  // namespace
}  // namespace test
