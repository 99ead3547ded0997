#include <random>

#include <gtest/gtest.h>

#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/propagation/canonical_placeholders.hpp"
#include "core/anonymization/propagation/propagable_surfaces.hpp"
#include "core/anonymization/propagation/surface_spread.hpp"
#include "core/anonymization/propagation/surface_sync_pairs.hpp"
#include "core/anonymization/rules/helpers.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

using test::u32;
using test::u8;

TEST(PropagableOrgName, TellsNamesFromWords) {
  constexpr const char* names[] = {
      "北京某某科技有限公司", "Acme Trading Co", "Acme Ltd",        "AB-CD",
      "ACME INC (New York)",  "华信科技",        "华信 科技",       "华信（上海）",
      "某某·研究院",          "甲公司",          "Foo Bar Baz Qux", "S.p.A. L.L.C."};
  constexpr const char* words[] = {"",
                                   "与",
                                   "及/或",
                                   "甲司",
                                   "ABC",
                                   "X-Y",
                                   "其子公司",
                                   "关联公司",
                                   "其 关联公司",
                                   "合人民币",
                                   "指北京某某有限公司",
                                   "等用词应指甲公司",
                                   "深圳",
                                   "华信科",
                                   "华信、科技",
                                   "董事会CSR委员会",
                                   "Foo Ba",
                                   "lowercaseword"};
  for (const auto* name : names) EXPECT_TRUE(_looks_like_propagable_org_name(u32(name))) << name;
  for (const auto* word : words) EXPECT_FALSE(_looks_like_propagable_org_name(u32(word))) << word;
}

TEST(PropagableLocation, TellsPlacesFromWords) {
  constexpr const char* places[] = {"上海市浦东新区",
                                    "Springfield",
                                    "格鲁吉亚",
                                    "高加索以南地区",
                                    "中关村大街北段丰台地区办公室",
                                    "ABcd"};
  constexpr const char* words[] = {"",
                                   "京",
                                   "上海",
                                   "地址Address",
                                   "签署日期DATED",
                                   "某某大学东校区",
                                   "课程思政资源模块库",
                                   "政务云平台",
                                   "road",
                                   "里海沿岸各国铁路网联通的通道地区",
                                   "中关村1号",
                                   "北京，海淀",
                                   "一二三四五六七八九十一二三四五六七八九十一二三四五"};
  for (const auto* p : places) EXPECT_TRUE(_looks_like_propagable_location_surface(u32(p))) << p;
  for (const auto* w : words) EXPECT_FALSE(_looks_like_propagable_location_surface(u32(w))) << w;
}

TEST(ProjectTitle, SpansFortyCharactersOfOneLine) {
  EXPECT_TRUE(_looks_like_project_title(U"某某项目" + std::u32string(40, U'甲') + U"协议"));
  EXPECT_FALSE(_looks_like_project_title(U"某某项目" + std::u32string(41, U'甲') + U"协议"));
  EXPECT_FALSE(_looks_like_project_title(U"项目\n合同"));
  EXPECT_TRUE(_looks_like_project_title(U"厂房改造工程"));
}

struct SpreadCase {
  const char* why;
  const char* text;
  const char* name;
  const char* out;
};

TEST(ReplaceSafely, WritesOverSafeOccurrencesOnly) {
  constexpr SpreadCase cases[] = {
      {"英文名不分大小写，不取长词的一部分",
       "ACME LTD and AcmeLtdX, xAcme Ltd, Acme Ltd1; acme ltd", "Acme Ltd",
       "[P1] and AcmeLtdX, xAcme Ltd, Acme Ltd1; [P1]"},
      {"the Kelvin sign is a letter too", "\u212AAcme Acme", "Acme", "\u212AAcme [P1]"},
      {"a failed occurrence uses nothing up", "aa-aa-aab", "aa-aa", "[P1]-aab"},
      {"special characters are literal", "A.C (x) AxC", "a.c", "[P1] (x) AxC"},
      {"关联公司前有其字则保留", "其关联公司与关联公司", "关联公司", "其关联公司与[P1]"},
      {"中文名按字面且分大小写", "华信ABC与华信abc", "华信ABC", "[P1]与华信abc"},
      {"自左至右不重叠", "甲乙甲乙甲", "甲乙甲", "[P1]乙甲"},
      {"仲裁地保留", "在中国北京进行仲裁。北京分公司在北京。", "北京",
       "在中国北京进行仲裁。[P1]分公司在[P1]。"},
      {"前后文在六字与十字之内", "北京在中国北京进行仲裁", "北京", "北京在中国北京进行仲裁"},
      {"其他城市不受保护", "在中国苏州进行仲裁", "苏州", "在中国[P1]进行仲裁"},
      {"空名", "甲", "", "甲"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(u8(_replace_party_org_surface_safe(u32(c.text), u32(c.name), U"[P1]")), c.out);
  }
}

// The replacement as it reads, with a pattern for Latin names.
std::u32string replace_slowly(std::u32string_view text, std::u32string_view name,
                              std::u32string_view placeholder) {
  if (name.empty()) return std::u32string(text);
  if (!text::contains_ideograph(name)) {
    const auto pattern =
        U"(?i)(?<![A-Za-z0-9])" + text::escape_for_regex(name) + U"(?![A-Za-z0-9])";
    return text::Regex("name", pattern).replace_all(text, placeholder);
  }
  if (name == U"关联公司")
    return text::Regex("affiliate", U"(?<!其)关联公司").replace_all(text, placeholder);
  std::u32string out;
  std::size_t last = 0;
  const auto seat = U"在中国" + std::u32string(name) + U"进行仲裁";
  for (auto s = text.find(name); s != text.npos; s = text.find(name, s + name.size())) {
    const auto e = s + name.size();
    const auto context =
        text.substr(s < 6 ? 0 : s - 6, std::min(e + 10, text.size()) - (s < 6 ? 0 : s - 6));
    if (is_non_propagable_location_surface(name) && context.find(seat) != context.npos) continue;
    out.append(text, last, s - last);
    out.append(placeholder);
    last = e;
  }
  out.append(text, last);
  return out;
}

TEST(SpreadSurfaces, GivesWhatOnePairAfterTheOtherGives) {
  std::mt19937 random(17);
  const std::u32string_view pieces[] = {U"甲",
                                        U"乙",
                                        U"A",
                                        U"a",
                                        U"B",
                                        U"[",
                                        U"]",
                                        U"机构",
                                        U"1",
                                        U"-",
                                        U" ",
                                        U"北京",
                                        U"在中国北京进行仲裁",
                                        U"其",
                                        U"关联公司",
                                        U"\u212A"};
  const auto draw = [&](unsigned most) {
    std::u32string out;
    for (auto n = random() % (most + 1); n > 0; --n) out += pieces[random() % std::size(pieces)];
    return out;
  };
  for (int round = 0; round < 20'000; ++round) {
    const auto text = draw(30);
    std::vector<SurfacePlaceholder> pairs(random() % 6);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      pairs[i] = {draw(3),
                  format_numbered_placeholder("ORG", static_cast<std::int64_t>(random() % 3) + 1)};
    }
    std::u32string expected = text;
    for (const auto& p : pairs) expected = replace_slowly(expected, p.surface, p.placeholder);
    MaskedText out(text);
    spread_surfaces(out, pairs);
    std::string list;
    for (const auto& p : pairs) list += " " + u8(p.surface) + "=" + u8(p.placeholder);
    ASSERT_EQ(u8(out.text()), u8(expected)) << u8(text) << list;
  }
}

TEST(CanonicalPlaceholders, NumberIdentitiesByFirstAppearance) {
  const auto doc = test::parse_replacements(
      "{[机构3]|乙 公司}和{[机构9]|甲公司}，{[ORG1]|乙公司}在{[地址7]|北京}{[NAME1]|张三}{[CARD_****1234]|1234}");
  auto shuffled = doc.replacements;
  std::reverse(shuffled.begin(), shuffled.end());
  const auto orgs = build_okey_to_canonical_org_placeholders(doc.text, shuffled, "zh");
  EXPECT_EQ(orgs.size(), 2U);
  const auto canonical = [&](std::size_t i) {
    const auto& r = doc.replacements[i];
    return u8(canonical_org_placeholder_for_span(doc.text, r.start, r.end, r.placeholder, orgs));
  };
  EXPECT_EQ(canonical(0), "[机构1]");
  EXPECT_EQ(canonical(1), "[机构2]");
  EXPECT_EQ(canonical(2), "[机构1]");
  EXPECT_EQ(canonical(3), "[地址7]") << "another kind passes through";
  EXPECT_EQ(canonical(5), "[CARD_****1234]");
  const auto& person = doc.replacements[4];
  EXPECT_EQ(
      u8(canonical_org_placeholder_for_span(doc.text, person.start, person.end, U"[机构5]", orgs)),
      "[机构5]")
      << "a key that the map lacks";
  EXPECT_EQ(build_okey_to_canonical_location_placeholders(doc.text, shuffled, "").size(), 1U);
  EXPECT_TRUE(build_okey_to_canonical_org_placeholders(doc.text, {}, "").empty());
}

std::string pairs_of(std::string_view marked) {
  const auto doc = test::parse(marked);
  const test::ScriptedAnalyzer analyzer(doc.results);
  std::string out;
  for (const auto& p : collect_document_entity_surface_sync_pairs(doc.text, analyzer, "auto")) {
    out += u8(p.surface) + u8(p.placeholder) + " ";
  }
  return out;
}

TEST(SurfaceSyncPairs, CollectsSurfacesThatMayBeSpread) {
  struct Case {
    const char* why;
    const char* text;
    const char* pairs;
  };
  constexpr Case cases[] = {
      {"什么也没有", "普通文字", ""},
      {"长的在前，同长按出现",
       "{ORGANIZATION|甲科技公司}、{ORGANIZATION|乙有限公司}、{ORGANIZATION|丙公司}",
       "甲科技公司[机构1] 乙有限公司[机构2] 丙公司[机构3] "},
      {"不可传播的不收", "{ORGANIZATION|关联公司}、{LOCATION|上海}、{LOCATION|海淀区1号}", ""},
      {"空白去掉，大小写相同者只收一次", "{ORGANIZATION|ACME-LTD}与{ORGANIZATION|Acme -Ltd}",
       "ACME-LTD[机构1] "},
      {"地点与连词相连不收", "{LOCATION|运城与}{LOCATION|运城}{LOCATION|沈阳市和平在}",
       "沈阳市和平在[地址3] 运城[地址2] "},
      {"国名只传播规范名", "{LOCATION|美利坚合众国}与{LOCATION|美国}", "美国[地址1] "},
      {"位于某国", "位于格鲁吉国的{LOCATION|格鲁吉}", "格鲁吉国[地址1] 格鲁吉[地址1] "},
      {"以国结尾者不再加国", "位于泰国国的{LOCATION|泰国}", "泰国[地址1] "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(pairs_of(c.text), c.pairs);
  }
}

TEST(SurfaceSyncPairs, RegistersThePiecesOfAJoinedSpan) {
  const std::u32string text = U"甲科技公司¶乙公司；乙公司";
  const test::ScriptedAnalyzer analyzer({});
  const std::vector<Replacement> replacements = {{0, 9, U"[机构1]"}, {10, 13, U"[机构2]"}};
  const auto pairs =
      collect_document_entity_surface_sync_pairs(text, analyzer, "zh", &replacements, nullptr);
  ASSERT_EQ(pairs.size(), 2U);
  EXPECT_EQ(u8(pairs[0].surface), "甲科技公司乙公司");
  EXPECT_EQ(u8(pairs[1].surface + pairs[1].placeholder), "乙公司[机构2]");
}

TEST(SurfaceSyncPairs, ListsOrganizationsAloneOnDemand) {
  const auto doc = test::parse("{ORGANIZATION|甲科技公司}在{LOCATION|运城市}");
  const auto pairs = collect_document_org_name_placeholder_pairs(
      doc.text, test::ScriptedAnalyzer(doc.results), "zh");
  EXPECT_EQ(pairs, (std::vector<MappingEntry>{{U"[机构1]", U"甲科技公司"}}));
}

}  // namespace
}  // namespace core::anonymization
