#include <string>

#include <gtest/gtest.h>

#include "core/anonymization/result.hpp"
#include "tests/recognition/recognizing.hpp"

namespace {

using test::Case;
namespace entity_type = core::anonymization::entity_type;

TEST(OrganizationsByForm, Chinese) {
  const Case cases[] = {
      {"合伙企业与特殊普通合伙",
       "转让方：{ORGANIZATION|珠海横琴启岳股权投资基金（有限合伙）}，审计由{ORGANIZATION|天衡会计师事务所（特殊普通合伙）四川"
       "分所}完成。"},
      {"关系词不属于名称", "由甲方及其全资子公司{ORGANIZATION|青禾（香港）国际有限公司}持有。"},
      {"不在词表的县、镇、村",
       "甲方： {ORGANIZATION|柳林村村民委员会}，见证： {ORGANIZATION|江店孜镇经济联合社}"},
      {"无地名的字号须占满整个短语",
       "保證人：{ORGANIZATION|瑞泰企業社}、{ORGANIZATION|永豐隆商行}。双方可另设合作社。"},
      {"繁体字",
       "由{ORGANIZATION|第一商業銀行西屯分行}開立，以{ORGANIZATION|臺灣臺中地方法院}為管轄法院。"},
      {"大学与其学院", "参加单位包括{ORGANIZATION|西陵理工大学机械与动力学院}。"},
      {"引号的各种形式",
       "{ORGANIZATION|海宁市橙鹿影视文化工作室}（以下称‘{ORGANIZATION|橙鹿工作室}’）"},
      {"左边界：动词、介词、职务名词不属于名称",
       "款项缴到{ORGANIZATION|湾区银行前海支行}，先还{ORGANIZATION|六盘山村镇银行}；经{ORGANIZATION|甘州区市场监管局}核查，"
       "货物供应商{ORGANIZATION|苏州澜迅机械有限公司}"},
      {"字号里的常用字",
       "{ORGANIZATION|锡汇农村商业银行}、{ORGANIZATION|和泰建设有限公司}，与{ORGANIZATION|和泰有限公司}"},
      {"民族自治县", "向{ORGANIZATION|关岭布依族苗族自治县人民法院}起诉"},
      {"个体工商户",
       "{ORGANIZATION|昆明市盘龙区兴旺五金店}、{ORGANIZATION|安仁镇阿兴小炒店}；由{ORGANIZATION|顺捷货运部}承运"},
      {"没有组织形式的商号",
       "报价单位：{ORGANIZATION|昆山恒牛五金}、{ORGANIZATION|捷泓报关}（由其代理）"},
      {"泛称",
       "投资总额与注册资本；上海仓库、苏州门店、直营店，进行验收，某医院，贵厂，由王建国设计"},
      {"分支机构前的商号",
       "由{ORGANIZATION|平安产险大连分公司}承保，委托{ORGANIZATION|中国检验认证集团辽宁有限公司}检验"},
      {"机关的简称", "由{ORGANIZATION|张掖市甘州区教育局}委托，经{ORGANIZATION|区教育局}核查"},
      {"研究院不是院落",
       "由{ORGANIZATION|中国矿业大学徐州研究院}和{ORGANIZATION|江苏省建筑科学研究院}完成"},
      {"没有定义的简称",
       "{ORGANIZATION|宁波沐恒创业投资有限公司}出资，{ORGANIZATION|沐恒创投}承诺，{ORGANIZATION|渭川电子科技大学}与{ORGANIZATION|渭川电科大}共有。"},
      {"地名后用常用词作字号",
       "由{ORGANIZATION|三亚鹿小姐文化传播有限公司}执行，{ORGANIZATION|海口海之声会展服务有限公司}与{ORGANIZATION|宁波放心吃食品有限公司}；"
       "上海客户委派{ORGANIZATION|鑫澜机械有限公司}到场，在深圳成立贸易有限公司"},
      {"标签后占满一栏的全称",
       "设计单位：{ORGANIZATION|我家我设计装饰工程有限公司}\n企业类型：其他有限责任公司\n"},
      {"机关名称中的连词", "由{ORGANIZATION|江西省护理与静脉治疗学会}推荐，报教育局与财政局备案"},
      {"主体类别不属于名称",
       "前经纪公司{ORGANIZATION|上海小满星途演艺经纪有限公司}，主要食材供应商{ORGANIZATION|四川农鲜达供应链有限公司}"},
      {"部门不是部委", "甲方商务部确认；财务部、商务部会签"},
      {"店铺的字号",
       "{ORGANIZATION|老李面馆}和{ORGANIZATION|王记烧烤店}供货，到店、驻店、大型连锁超市"},
      {"动词不是行业", "由{ORGANIZATION|绥芬河市春风彩印厂}印刷"},
      {"海关", "由{ORGANIZATION|大连海关}监管，办理海关监管手续"},
      {"定义为泛称的不是简称",
       "{ORGANIZATION|重庆老地方餐饮管理有限公司}（以下简称“总部”），总部承诺"},
      {"国家机关不带前面的连词", "如{ORGANIZATION|国家市场监督管理总局}要求申报"},
  };
  test::expect_found(entity_type::ORGANIZATION, cases);
}

TEST(OrganizationsByForm, Latin) {
  const Case cases[] = {
      {"forms with dots in lower case",
       "1) {ORGANIZATION|Obuvi Horák s.r.o.}, 2) {ORGANIZATION|Jadranka Trgovina d.o.o.}"},
      {"the form first",
       "to {ORGANIZATION|UAB Gintaro Prekyba} and {ORGANIZATION|OÜ Rannamäe Kaubandus}"},
      {"the kind first",
       "项目由{ORGANIZATION|Bundesministerium für Bildung und Forschung}与{ORGANIZATION|Université de Clairval}支持"},
      {"one for each founder", "and {ORGANIZATION|Oakes, Trumbull & Hart LLP} is retained"},
      {"two names",
       "with {ORGANIZATION|Vantage Cell Therapeutics} and the {ORGANIZATION|University of Wisconsin-Madison}."},
      {"a person before", "Professor Tang Weiguo of the School of Mechanical Engineering"},
      {"set in capitals",
       "THE BOARD OF DIRECTORS OF {ORGANIZATION|BLACKTHORN RIDGE HOLDINGS, INC.}, A NEVADA CORPORATION, ENTERS "
       "INTO THE CREDIT AGREEMENT WITH {ORGANIZATION|FIRST PRAIRIE NATIONAL BANK} AND A GUARANTY"},
      {"courts in and for a place",
       "the {ORGANIZATION|District Court in Katowice} and the {ORGANIZATION|Superior Court of Washington for Pierce "
       "County} agree"},
      {"two letters behind a brand", "with {ORGANIZATION|Medikon Handels AG} and others"},
      {"two brands", "are {ORGANIZATION|Snowdrift Analytics} and {ORGANIZATION|Datakern OÜ}."},
      {"public bodies by rank", "before the {ORGANIZATION|National Tax Agency} only"},
      {"behind a label",
       "BROKER: {ORGANIZATION|Fjordmegling} (comm 1.25 pct)\nDeliverables Owner: Second Party"},
      {"broken over a line",
       "THIS REINSURANCE AGREEMENT is made by and between {ORGANIZATION|Corrib}\n{ORGANIZATION|Specialty Insurance DAC}, a "
       "company"},
  };
  test::expect_found(entity_type::ORGANIZATION, cases);
}

TEST(Addresses, Chinese) {
  const Case cases[] = {
      {"路口", "住所地{LOCATION|洛阳市涧西区丽春路与西苑路交叉口东北角}。"},
      {"词表以外的乡镇街道与村组",
       "现住{LOCATION|龙泉市剑池街道华楼街216号2单元602室}，前往{LOCATION|静宁县李店镇王家沟}"},
      {"没有号数的地块", "地点：{LOCATION|青岛市崂山区株洲路以北、深圳路以东}。"},
      {"路口之后还有",
       "{LOCATION|常州市新北区罗溪镇黄河西路与龙城大道交叉口西北角汽配城C区07-09号}"},
      {"带字母的房号",
       "{LOCATION|大连市高新园区黄浦路541号网络产业大厦1703A}，{LOCATION|深圳市坪山区锦绣东路22号雷柏大厦7F}"},
      {"四至", "东至{LOCATION|打邦河}，南至{LOCATION|海通大道}，北接渔业队宿舍"},
      {"工程分期不是地址", "{LOCATION|云南省普洱市景谷县}供水二期工程"},
      {"繁体字", "工廠位於{LOCATION|彰化縣鹿港鎮鹿工路8之3號}；"},
      {"房号、库号、楼层之后",
       "住所：{LOCATION|江苏省昆山市玉山镇城北路1289号7号房}，{LOCATION|厦门市思明区软件园二期观日路44号三楼之一}；货到{LOCATION|南昌市昌东镇东新路}仓库"},
      {"地址中的括号",
       "{LOCATION|天津自贸试验区（东疆综合保税区）亚洲路6975号1栋}，{LOCATION|无锡市洛社镇}（含税）"},
      {"两个地方不是一个",
       "在{LOCATION|高酿镇}和{LOCATION|石洞镇}设点，向{LOCATION|秦州区}市场监督管理局和{LOCATION|秦州区}提交"},
      {"句中的村、园区、车站与道路",
       "位于{LOCATION|土塘村}的宿舍，毗邻{LOCATION|联山工业园}，自{LOCATION|五常站}经{LOCATION|哈大高速}；到农村、到各乡镇，在现代工业园"},
      {"兼作普通词的县名", "带队到{LOCATION|天柱}调查，在和平的环境下"},
      {"村组", "地址： {LOCATION|柳林村三组27号}"},
  };
  test::expect_found(entity_type::LOCATION, cases);
}

TEST(Addresses, Latin) {
  const Case cases[] = {
      {"street words in lower case",
       "at {LOCATION|ul. Marszałkowska 84/92 m. 12, 00-514 Warszawa, Poland}\nat {LOCATION|Pärnu mnt 105, 11312 "
       "Tallinn, Estonia}"},
      {"behind a company",
       "Tolland Brokers Limited of {LOCATION|30 Fenchurch Avenue, London EC3M 5AD}. The"},
      {"town that is not known",
       "travel to {LOCATION|Research Triangle Park, North Carolina} as required"},
      {"city in the next line",
       "{LOCATION|4500 Great America Parkway, Suite 200}\n{LOCATION|Santa Clara, CA 95054}\n"},
      {"capitals around it",
       "A SUBSIDIARY LOCATED AT {LOCATION|2200 INDUSTRIAL PARKWAY, RENO, NEVADA 89502}, SHALL GUARANTEE"},
      {"a law", "under Massachusetts General Laws and the York-Antwerp Rules"},
      {"street and number in one word",
       "at {LOCATION|Keizersgracht 555, 1017 DR Amsterdam} and {LOCATION|Sveavägen 44, 111 34 Stockholm, Sweden}"},
      {"the kind of street first",
       "office at {LOCATION|C/ Duque de Alba 9, 28012 Madrid}; plant at {LOCATION|Via dell'Industria, 27, 23900 "
       "Lecco (LC), Italy}"},
      {"post boxes",
       "Write to {LOCATION|Private Bag X04, Durban} or {LOCATION|P.O. Box 94 Nordnes, 5838 Bergen, Norway}."},
      {"a company's form in the name of a street",
       "at {LOCATION|Suite B14, Dolphin Plaza, Corporation Drive, Ikoyi, Lagos}."},
      {"no number", "the shop in {LOCATION|North Main Street} is let; the Access Road is not"},
      {"lines below",
       "Send to:\n{LOCATION|14 Harcourt Terrace}\n{LOCATION|Dublin 2}\n{LOCATION|D02 AF30}\nRegards"},
      {"a year is no postal code", "On 2 May, 2023 Marlinspike filed suit"},
      {"a sentence begins", "of {LOCATION|12 Harbour Street, Leeds LS10 1AB}\nThe premises"},
  };
  test::expect_found(entity_type::LOCATION, cases);
}

}  // namespace
