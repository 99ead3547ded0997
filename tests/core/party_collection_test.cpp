// Which names of a document are taken for one party, and which never.
#include <chrono>
#include <map>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "core/anonymization/avs_workgroup_party.hpp"
#include "core/anonymization_core.hpp"
#include "core/parties/organization_parties.hpp"
#include "core/parties/person_parties.hpp"
#include "core/person_clustering.hpp"
#include "tests/support/notation.hpp"

namespace core::parties {
namespace {

using anonymization::Aliases;
using anonymization::anonymize_document;

// The document with {O|..} for organizations and {P|..} for persons, masked.
std::string masked(std::string marked, Aliases aliases = Aliases::ONE) {
  const std::map<std::string, std::string> types = {{"{O|", "{ORGANIZATION|"}, {"{P|", "{PERSON|"}};
  for (const auto& [mark, type] : types) {
    for (auto at = marked.find(mark); at != marked.npos; at = marked.find(mark, at + 1)) {
      marked.replace(at, mark.size(), type);
    }
  }
  const auto doc = test::parse(marked);
  const test::ScriptedAnalyzer analyzer(doc.results);
  return test::u8(anonymize_document(doc.text, analyzer, "zh", "contract_default", aliases).text);
}

// The numbers (of one digit) of the placeholders in the masked document, in text order.
std::string numbers(const std::string& marked) {
  const auto text = masked(marked);
  std::string out;
  for (auto at = text.find(']'); at != text.npos; at = text.find(']', at + 1)) out += text[at - 1];
  return out;
}

struct Row {
  const char* why;
  const char* marked;
  const char* expected;
};

void check(const std::vector<Row>& rows) {
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(numbers(row.marked), row.expected) << masked(row.marked);
  }
}

TEST(OneParty, ByDefinition) {
  check({
      {"以下简称", "甲方：{O|北京华信科技有限公司}（以下简称“{O|蓝鲸}”）。{O|蓝鲸}负责。", "111"},
      {"译名作简称", "{O|Tamarack Bulk Carriers Inc.}（以下简称“{O|塔玛拉克公司}”）", "11"},
      {"an address between", "{O|Baiyu Retail Ltd}, of 3 Elm Road, USCC 91320 (\"{O|Baiyu}\")",
       "11"},
      {"behind the name in the other language",
       "{O|武汉瑾樘生物制药股份有限公司}（{O|Wuhan Jintang Co., Ltd.}，以下称“{O|瑾樘生物}”）",
       "111"},
      {"acronym", "the {O|London Maritime Arbitrators Association} (\"{O|LMAA}\")", "11"},
      {"它是谁的子公司，定义就是谁的",
       "{O|Acme Trading Ltd}, a subsidiary of {O|Beta Inc.} (\"{O|Acme}\")", "121"},
      {"两家都像，不合并",
       "{O|上海叠嶂投资管理有限公司}，其合伙人为{O|叠嶂创业投资（深圳）有限公司}（“{O|叠嶂投资}”）",
       "123"},
      {"谁也不像，且有从属关系", "{O|Alpha Ltd}, owned by {O|Beta Inc.} (\"{O|Newton}\")", "123"},
      {"一个简称定义了两次",
       "{O|北京东方科技有限公司}（以下简称“{O|远航}”）。{O|上海西方贸易有限公司}（以下简称“{O|远航}”）。",
       "1232"},
      {"句号之后另起", "{O|北京华信科技有限公司}。以下简称“{O|蓝鲸}”的", "12"},
  });
}

TEST(OneParty, InTwoLanguages) {
  check({
      {"括号", "{O|山东岱岳有限公司}（{O|Daiyue Co., Ltd.}）", "11"},
      {"the other way", "{O|Acme Ltd}（中文译名：{O|艾克美有限公司}）及{O|艾克美有限公司}", "111"},
      {"英文名称", "{O|山东岱岳有限公司}，英文名称：{O|Daiyue Co., Ltd.}", "11"},
      {"斜线", "{O|岱岳控股有限公司} / {O|Daiyue Holdings Ltd}\t甲", "11"},
      {"缩写", "{O|深圳国际仲裁院}（{O|SCIA}）", "11"},
      {"括号内的简称", "提交{O|中国国际经济贸易仲裁委员会}（{O|贸仲委}）仲裁", "11"},
      {"两个名称", "提交{O|海南国际仲裁院}（{O|海南仲裁委员会}）仲裁", "11"},
      {"定义之后的译名",
       "{O|Cyberspace Administration of China} (\"{O|CAC}\", {O|国家互联网信息办公室})", "111"},
      {"并列的两家", "{O|山东岱岳有限公司}、{O|Daiyue Co., Ltd.}", "12"},
      {"括号里不只是名称", "{O|山东岱岳有限公司}（{O|Acme Ltd}的子公司）", "12"},
      {"括号里有两家", "{O|山东岱岳有限公司}（{O|Acme Ltd}，{O|Beta Ltd}）", "123"},
      {"一串名称", "{O|山东岱岳有限公司} / {O|Acme Ltd} / {O|北京华信有限公司}", "123"},
      {"两处译名不同",
       "{O|山东岱岳有限公司}（{O|Acme Ltd}）；{O|山东岱岳有限公司}（{O|Beta Inc.}）", "1213"},
      {"公司与分公司", "{O|岱岳银行股份有限公司}（{O|Daiyue Bank, London Branch}）", "12"},
  });
}

TEST(OneParty, ByShortForm) {
  check({
      {"字号加行业", "{O|北京华信信息科技有限公司}与{O|华信科技}", "11"},
      {"字号加公司", "{O|无锡锐霁轴承制造有限公司}、{O|锐霁轴承}、{O|锐霁公司}", "111"},
      {"地名加字号", "{O|绍兴市纺澄进出口有限公司}、{O|绍兴纺澄}", "11"},
      {"省略地名", "{O|北京华信科技有限公司}、{O|华信科技有限公司}", "11"},
      {"集团", "{O|山东岳砺建设集团有限公司}、{O|岳砺建设集团}、{O|岳砺建设}", "111"},
      {"像地名的字号", "{O|北京衡山羽数据软件有限公司}、{O|衡山羽软件}、{O|衡山羽}", "111"},
      {"医院与律所",
       "{O|黑河市北屿中心医院}、{O|北屿中心医院}、{O|浙江稽山元律师事务所}、{O|稽山元律所}",
       "1122"},
      {"first word", "{O|Nordvik Havbruk AS}, {O|Nordvik}, {O|NORDVIK HAVBRUK AS}", "111"},
      {"behind the place", "{O|Suzhou Baiyu Retail Co., Ltd.} {O|Baiyu Retail} {O|Baiyu}", "111"},
      {"legal forms", "{O|Acme Corp.} {O|Acme Corporation} {O|Acme}", "111"},
      {"punctuation",
       "{O|Smith & Roe Co., Ltd.} {O|Smith and Roe Co. Ltd} {O|SMITH & ROE CO.,LTD.}", "111"},
      {"分公司的简称",
       "{O|重庆驭川物流有限公司}、{O|重庆驭川物流有限公司遵义分公司}、{O|驭川遵义分公司}、{O|驭川}",
       "1221"},
      {"支行", "{O|湘沅银行股份有限公司长沙岳麓支行}、{O|湘沅银行岳麓支行}", "11"},
  });
}

TEST(OneParty, NeverByShortForm) {
  check({
      {"两家公司共一个字号", "{O|北京华信科技有限公司}、{O|上海华信贸易有限公司}、{O|华信公司}",
       "123"},
      {"两地的公司", "{O|北京华信科技有限公司}、{O|上海华信科技有限公司}、{O|华信科技}", "123"},
      {"另一家的一部分", "{O|北京华信科技有限公司}、{O|北京华信科技发展有限公司}、{O|华信科技}",
       "123"},
      {"他地", "{O|北京华信科技有限公司}、{O|上海华信}", "12"},
      {"集团与公司", "{O|华信集团}、{O|华信科技有限公司}、{O|华信}", "123"},
      {"组织形式不同", "{O|华信科技有限公司}、{O|北京华信科技股份有限公司}", "12"},
      {"括号里的地名", "{O|晋泓国际（香港）有限公司}、{O|晋泓国际}", "12"},
      {"分公司", "{O|华信科技有限公司}、{O|华信科技有限公司上海分公司}", "12"},
      {"两地的支行", "{O|湘沅银行长沙岳麓支行}、{O|湘沅银行长沙天心支行}", "12"},
      {"银行", "{O|北京岱岳银行股份有限公司}、{O|岱岳银行}", "12"},
      {"法院", "{O|上海市高级人民法院}、{O|高级人民法院}", "12"},
      {"行业不是字号", "{O|北京科技有限公司}、{O|科技公司}", "12"},
      {"没有全称", "{O|华信科技}、{O|华信公司}", "12"},
      {"holding and subsidiary", "{O|ABC Holdings} {O|ABC Holdings (Asia) Ltd}", "12"},
      {"by place", "{O|Acme Trading} {O|Acme Trading Singapore Pte Ltd}", "12"},
      {"two of one house", "{O|Acme Trading Ltd} {O|Acme Foods Ltd} {O|Acme}", "123"},
      {"a sister", "{O|Acme Trading Inc.} {O|Acme Trading LLC}", "12"},
      {"branch", "{O|Acme Bank plc} {O|Acme Bank plc, London Branch}", "12"},
      {"a common word", "{O|United Grain Ltd} {O|United}", "12"},
      {"two letters", "{O|AB Trading Ltd} {O|AB}", "12"},
  });
}

TEST(OnePerson, WhereASingleOneFits) {
  check({
      {"surname", "{P|Katarzyna M. Wolanski} ... {P|Wolanski} ... Ms. {P|Wolanski}", "111"},
      {"surname of two words", "{P|Marieke van Oostrum}; {P|van Oostrum}", "11"},
      {"titles", "{P|Katarzyna Wolanski}; {P|Ms. Wolanski}", "11"},
      {"first name", "{P|Tobias Okonkwo}; {P|Tobias}; {P|T. Okonkwo}", "111"},
      {"several initials", "{P|Johannes Petrus van der Byl}; {P|J.P. van der Byl}; {P|van der Byl}",
       "111"},
      {"initials behind", "{P|Qian Weijun}, signed {P|QIAN W.}", "11"},
      {"职务", "{P|王建国}任总经理，{P|王经理}", "11"},
      {"职务二", "{P|王建国}，{P|王总}；{P|王先生}", "111"},
      {"称呼", "{P|王建国}，{P|王工}；{P|老王}，{P|王师傅}", "1111"},
      {"中英文", "{P|应雪瑶} ({P|Ying Xueyao}). Ms. {P|Ying}", "111"},
      {"译名", "{P|Friedhelm Osterkamp}（{P|弗里德海姆·奥斯特坎普}），{P|Osterkamp先生}", "111"},
      {"译名的一部分", "{P|伊万·彼得罗维奇·索科洛夫}与{P|索科洛夫}", "11"},
      {"拼音", "{P|欧阳静}到场。{P|OUYANG Jing} signs. {P|吕丽华}。{P|Lihua Lyu} pays", "1122"},
      {"多音字", "{P|单亚男}到场。{P|Shan Yanan} signs", "11"},
      {"without the middle name", "{P|Graham Tobias Ellerby}. {P|Graham Ellerby}", "11"},
      {"a surname in the middle", "{P|Alvin Cheung Ho Yin}; {P|Cheung}", "11"},
      {"日本姓氏", "{P|佐藤健一}到场，{P|佐藤}签字", "11"},
  });
}

TEST(OnePerson, NeverInDoubt) {
  check({
      {"two of one surname", "{P|Jan Wolanski}, {P|Ewa Wolanski}, {P|Wolanski}", "123"},
      {"two of one first name", "{P|Jan Wolanski}, {P|Jan Novak}, {P|Jan}", "123"},
      {"two of the same initials", "{P|Jan Piet Roos}, {P|Jon Paul Roos}, {P|J.P. Roos}", "123"},
      {"a double surname", "{P|Nomvula Dlamini}, {P|Thandeka Dlamini-Botha}, {P|T. Dlamini-Botha}",
       "122"},
      {"a name over two lines",
       "{P|Margaret Sullivan} and what follows goes to my brother {P|Cornelius}\n{P|Sullivan}, of Cork",
       "123"},
      {"two titles", "{P|Robin Wolanski}, {P|Mr. Wolanski}, {P|Ms. Wolanski}", "123"},
      {"同姓两人", "{P|王建国}、{P|王小明}、{P|王经理}", "123"},
      {"同姓两人的称呼", "{P|王建国}、{P|王小明}、{P|王工}", "123"},
      {"两种职务", "{P|王建国}、{P|王经理}、{P|王律师}", "123"},
      {"一男一女", "{P|王建国}、{P|王先生}、{P|王女士}", "123"},
      {"没有称谓的姓", "{P|王建国}、{P|王}", "12"},
      {"a company's name", "{O|Morandelli S.r.l.}; {P|Chiara Morandelli}; {P|Morandelli}", "112"},
      {"并列的两人", "{P|应雪瑶}、{P|Ying Xueyao}", "12"},
      {"拼音相同的两人", "{P|刘洋}、{P|刘扬}。{P|Liu Yang} signs", "123"},
      {"two middle names", "{P|Jan Piet Roos}, {P|Jan Paul Roos}, {P|Jan Roos}", "123"},
      {"two in one bracket", "{P|应雪瑶} ({P|John Roe}, {P|Mary Roe})", "123"},
  });
}

TEST(Aliases, AreSeparateUnlessAskedFor) {
  const std::string marked = "{O|北京华信科技有限公司}与{O|华信科技}及{O|华信公司}";
  EXPECT_EQ(masked(marked), "[机构1]与[机构1]及[机构1]");
  EXPECT_EQ(masked(marked, Aliases::SEPARATE), "[机构1]与[机构2]及[机构3]");
  EXPECT_EQ(masked("{O|北京华信科技有限公司}与{O|华信科技}；北京华信科技有限公司"),
            "[机构1]与[机构1]；[机构1]")
      << "the full name is spread as ever";
}

TEST(Scopes, NestAndEnd) {
  using Parties = std::vector<anonymization::KnownParty>;
  const auto org = anonymization::avs_workgroup_party_canonical_org_key_from_span_text;
  const auto person = [](std::u32string_view name) { return person_identity_key(name, 0, 9); };
  anonymization::set_known_parties({{U"list", {U"华信", U"岱岳"}}});
  try {
    const anonymization::KnownPartiesScope outer(Parties{{U"outer", {U"华信", U"Acme Ltd"}}});
    const KnownPersonsScope persons(
        std::vector<KnownPerson>{{U"王建国", {U"王经理", U""}}, {U"", {U"李总"}}});
    EXPECT_EQ(person(U"王经理"), U"王建国");
    EXPECT_EQ(person(U"李总"), U"李总");
    {
      const anonymization::KnownPartiesScope inner(Parties{{U"inner", {U"华 信"}}});
      EXPECT_EQ(org(U"华信"), U"inner");
      EXPECT_EQ(org(U"ACME ltd"), U"outer");
      EXPECT_EQ(org(U"岱岳"), U"list");
    }
    EXPECT_EQ(org(U"华信"), U"outer");
    std::thread([&] {
      EXPECT_EQ(org(U"华信"), U"list") << "a scope is one thread's";
      const anonymization::KnownPartiesScope other(Parties{{U"other", {U"华信"}}});
      EXPECT_EQ(org(U"华信"), U"other");
      EXPECT_EQ(person(U"王经理"), U"王经理");
    }).join();
    EXPECT_EQ(org(U"华信"), U"outer");
    throw std::runtime_error("out");
  } catch (const std::runtime_error&) {
  }
  EXPECT_EQ(org(U"华信"), U"list");
  EXPECT_EQ(person(U"王经理"), U"王经理");
  anonymization::set_known_parties({});
  EXPECT_EQ(org(U"华信"), U"");
}

TEST(Scopes, EndWhereTheAnalyzerFails) {
  struct Failing : anonymization::Analyzer {
    std::vector<anonymization::RecognizerResult> analyze(std::u32string_view,
                                                         std::string_view) const override {
      throw std::runtime_error("out of order");
    }
  };
  EXPECT_THROW(anonymize_document(U"甲", Failing(), "zh", "contract_default", Aliases::ONE),
               std::runtime_error);
  EXPECT_EQ(anonymization::KnownPartiesScope::innermost(), nullptr);
  EXPECT_EQ(KnownPersonsScope::innermost(), nullptr);
}

// Twice the names take twice the time, whether they begin alike or not.
TEST(Parties, AreCollectedInLinearTime) {
  const auto seconds = [](std::size_t count, bool alike) {
    std::u32string text;
    std::vector<anonymization::RecognizerResult> hits;
    for (std::size_t i = 0; i < count; ++i) {
      std::u32string name = alike ? U"华信" : std::u32string();
      for (std::size_t n = i + 5000, k = 0; k < 4; ++k, n /= 30) {
        name += static_cast<char32_t>(U'一' + n % 30 * 100 + k);
      }
      for (const auto* form : {U"科技有限公司", U"", U"科技", U"科技有限公司上海分公司"}) {
        const auto start = static_cast<anonymization::Offset>(text.size());
        text += name + form;
        hits.push_back(
            {"ORGANIZATION", start, static_cast<anonymization::Offset>(text.size()), 0.9});
        text += U"、";
      }
    }
    const auto begin = std::chrono::steady_clock::now();
    collect_organizations(text, hits);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  };
  for (const bool alike : {false, true}) {
    seconds(100, alike);
    EXPECT_LT(seconds(8000, alike), 16 * seconds(2000, alike) + 0.1) << alike;
  }
}

}  // namespace
}  // namespace core::parties
