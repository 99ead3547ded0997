// What a user keeps or masks, whatever the analyzer says.
#include <gtest/gtest.h>

#include "core/anonymization_core.hpp"
#include "core/recognition/surface_list.hpp"
#include "tests/support/notation.hpp"

namespace {

using core::anonymization::Aliases;
using core::anonymization::anonymize_document;
using core::anonymization::AnonymizedDocument;
using core::anonymization::Stretches;

Stretches stretches(std::string_view list, std::u32string_view text) {
  return core::recognition::SurfaceList(test::u32(list), "list").find(text).stretches;
}

AnonymizedDocument masked(std::string_view marked, std::string_view keep, std::string_view mask,
                          std::string_view profile) {
  const auto doc = test::parse(marked);
  return anonymize_document(doc.text, test::ScriptedAnalyzer(doc.results), "zh", profile,
                            Aliases::SEPARATE,
                            {stretches(keep, doc.text), stretches(mask, doc.text)});
}

TEST(Overrides, KeepAndMask) {
  constexpr auto PLAIN = "contract_default";
  struct Case {
    const char* why;
    const char* in;
    const char* keep;
    const char* mask;
    const char* profile;
    const char* out;
  };
  const Case cases[] = {
      // Keep.
      {"保留的不占编号",
       "甲方：{ORGANIZATION|北京华信科技有限公司}，乙方：{ORGANIZATION|青岛海潮贸易有限公司}",
       "北京华信科技有限公司", "", PLAIN, "甲方：北京华信科技有限公司，乙方：[机构1]"},
      {"超出保留范围的仍要遮", "甲方：{ORGANIZATION|北京华信科技有限公司}", "北京华信", "", PLAIN,
       "甲方：[机构1]"},
      {"同一名称只在书名号里保留，传播也不得盖过",
       "甲方：{ORGANIZATION|北京华信科技有限公司}，见《北京华信科技有限公司章程》，北京华信科技有限公司盖章",
       "《北京华信科技有限公司章程》", "", PLAIN,
       "甲方：[机构1]，见《北京华信科技有限公司章程》，[机构1]盖章"},
      // Mask.
      {"没人识别的", "项目代号蓝鲸，蓝鲸项目启动", "", "蓝鲸", PLAIN,
       "项目代号[MASKED1]，[MASKED1]项目启动"},
      {"已经整个遮住的照旧", "甲方：{ORGANIZATION|北京华信科技有限公司}", "", "华信", PLAIN,
       "甲方：[机构1]"},
      {"规则会当成误报的也遮", "按{QUANTITY|第三条}办", "", "第三条", PLAIN, "按[MASKED1]办"},
      {"方案不遮的也遮", "签于{DATE_TIME|2024年3月1日}", "", "2024年3月1日", "identity",
       "签于[MASKED1]"},
      {"方案不遮的，整个遮", "签于{DATE_TIME|2024年3月1日}", "", "3月", "identity",
       "签于2024年[MASKED1]1日"},
      {"部分重叠的，其余照旧", "致{PERSON|林向东}经理室", "", "向东经理", PLAIN,
       "致[NAME1][MASKED1]室"},
      {"编号之后才丢掉的也遮", "于{ORGANIZATION|2024}年", "", "2024", PLAIN, "于[MASKED1]年"},
      {"其他文字", "Иван подписал", "", "иван", PLAIN, "[MASKED1] подписал"},
      // Both.
      {"保留优先", "蓝鲸计划与蓝鲸", "蓝鲸计划", "蓝鲸", PLAIN, "蓝鲸计划与[MASKED1]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto out = masked(c.in, c.keep, c.mask, c.profile);
    EXPECT_EQ(test::u8(out.text), c.out);
    EXPECT_EQ(out.replacements.size(), out.mapping.size());
    // What stands in the masked text is known, and leads back.
    std::u32string back = out.text;
    for (auto p = out.placements.rbegin(); p != out.placements.rend(); ++p) {
      back.replace(static_cast<std::size_t>(p->start), static_cast<std::size_t>(p->end - p->start),
                   p->surface);
    }
    EXPECT_EQ(test::u8(back), test::u8(test::parse(c.in).text));
  }
}

TEST(Overrides, EndWithTheirCall) {
  masked("蓝鲸", "", "蓝鲸", "contract_default");
  const auto out = anonymize_document(U"蓝鲸", test::ScriptedAnalyzer({}), "zh");
  EXPECT_EQ(test::u8(out.text), "蓝鲸");
}

TEST(SurfaceList, FindsSurfacesAndPatterns) {
  struct Case {
    const char* why;
    const char* list;
    const char* text;
    const char* found;
  };
  const Case cases[] = {
      {"comments and blank lines", "# Orca\n\n  Orca \r\n", "# the Orca", "Orca;"},
      {"letter case and width", "orca", "ORCA Ｏｒｃａ", "ORCA;Ｏｒｃａ;"},
      {"not within a longer word", "Orca", "Orcas, Orca-1", "Orca;"},
      {"中文没有词界", "蓝鲸", "大蓝鲸计划", "蓝鲸;"},
      {"a pattern", R"(/HT-\d+/)", "HT-12, ht-3", "HT-12;ht-3;"},
      {"重叠的连成一处", "北京华信\n华信科技", "北京华信科技", "北京华信科技;"},
      {"one slash is a surface", "/", "a / b", "/;"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto text = test::u32(c.text);
    std::string found;
    for (const auto& [start, end] : stretches(c.list, text)) {
      found += test::u8(text.substr(static_cast<std::size_t>(start),
                                    static_cast<std::size_t>(end - start))) +
               ";";
    }
    EXPECT_EQ(found, c.found);
  }
  const core::recognition::SurfaceList list(U"a\n#\nb\n/c/\n/d/", "list");
  EXPECT_EQ(list.find(U"a d").unused_lines, (std::vector<std::size_t>{3, 4}));
}

}  // namespace
