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
      {"工程分期不是地址", "{LOCATION|云南省普洱市景谷县}供水二期工程"},
      {"繁体字", "工廠位於{LOCATION|彰化縣鹿港鎮鹿工路8之3號}；"},
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
      {"a law", "under Massachusetts General Laws"},
  };
  test::expect_found(entity_type::LOCATION, cases);
}

}  // namespace
