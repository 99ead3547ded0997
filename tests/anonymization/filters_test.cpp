#include "core/anonymization/cleanup/filters.hpp"

#include <gtest/gtest.h>

#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

struct FilterCase {
  const char* why;
  const char* in;
  const char* kept;
};

template <class Filter, std::size_t N>
void check_filter(Filter filter, const FilterCase (&cases)[N]) {
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    auto doc = test::parse(c.in);
    doc.results = filter(doc.text, doc.results);
    EXPECT_EQ(test::render(doc), c.kept);
  }
}

TEST(NormalizeFillUnderscores, BlanksRunsAndKeepsOffsets) {
  EXPECT_EQ(test::u8(_normalize_fill_underscores_for_analysis(U"😀甲方：______ a_b__")),
            "😀甲方：       a_b  ");
}

TEST(DropBlankFill, KeepsWhatHoldsALetterOrDigit) {
  check_filter(
      _drop_blank_fill_results,
      {{"下划线与空白不是实体", "甲方：{ORGANIZATION|____}，{PERSON| 　}", "甲方：____， 　"},
       {"全角数字是内容", "共{QUANTITY|＿３＿}", "共{QUANTITY|＿３＿}"},
       {"other scripts and extension ideographs do not count", "{PERSON|𠀀}{PERSON|Ж}{PERSON|ª}",
        "𠀀Жª"}});
  EXPECT_TRUE(_drop_blank_fill_results(U"甲", {{"PERSON", 5, 9, 1}, {"PERSON", 1, 0, 1}}).empty());
}

TEST(DropStructuralSequence, KeepsEntitiesAndDropsNumbering) {
  check_filter(
      _drop_structural_sequence_results,
      {{"条款序号不是实体，不论类型", "{QUANTITY|第三条}{PERSON|第12款}{LOCATION|第十二个月}",
        "第三条第12款第十二个月"},
       {"光有序数也算", "{QUANTITY|第２}", "第２"},
       {"第三方不是序号", "{ORGANIZATION|第三方}", "{ORGANIZATION|第三方}"},
       {"前后空白不去", "{QUANTITY| 第三条}", "{QUANTITY| 第三条}"},
       {"a bare month is none", "{DATE_TIME|Months} {DATE_TIME|month}", "Months month"},
       {"12 months is a term", "{DATE_TIME|12 months}", "{DATE_TIME|12 months}"},
       {"章节号只对日期和数量生效", "{DATE_TIME|3.1.4} {DATE|1.2} {QUANTITY|12.10.1.2}",
        "3.1.4 1.2 12.10.1.2"},
       {"a phone number may look like one", "{PHONE_NUMBER|3.1.4}", "{PHONE_NUMBER|3.1.4}"},
       {"five levels are none", "{DATE_TIME|1.2.3.4.5}", "{DATE_TIME|1.2.3.4.5}"}});
}

TEST(DropGenericInstitutionNoun, KeepsNamesAndDropsNouns) {
  check_filter(
      _drop_generic_institution_noun_results,
      {{"泛称", "{ORGANIZATION|本公司} {PERSON|公司} {GPE| 项目 }", "本公司 公司  项目 "},
       {"带字号的公司保留", "{ORGANIZATION|某某有限公司}", "{ORGANIZATION|某某有限公司}"},
       {"其他类型不管", "{PRODUCT|公司}", "{PRODUCT|公司}"},
       {"纯数字", "{PERSON|3.2} {ORGANIZATION|（12）/5} {MONEY|12}", "3.2 （12）/5 {MONEY|12}"},
       {"方位词与基础设施只对地点生效", "{LOCATION|以北} {GPE|铁路} {ORGANIZATION|铁路}",
        "以北 铁路 {ORGANIZATION|铁路}"},
       {"云产品", "{LOCATION|政务 云平台} {LOCATION|云主机} {LOCATION|云主机厂}",
        "政务 云平台 云主机 {LOCATION|云主机厂}"},
       {"云后跟平台", "{LOCATION|云}平台 {LOCATION|云}南", "云平台 {LOCATION|云}南"},
       {"期次", "{LOCATION|二期} {ORGANIZATION|12期} {GPE|期} {PERSON|二期} {LOCATION|123期}",
        "二期 12期 期 {PERSON|二期} {LOCATION|123期}"},
       {"单字组织", "{ORGANIZATION|楼} {ORGANIZATION|京} {LOCATION|京} {ORGANIZATION|A}",
        "楼 京 {LOCATION|京} {ORGANIZATION|A}"}});
}

TEST(ItProductCompound, IsAtMostEightIdeographsAndTheProduct) {
  EXPECT_TRUE(_is_it_product_compound_not_address(U" 云 磁盘 "));
  EXPECT_TRUE(_is_it_product_compound_not_address(U"一二三四五六七八云服务"));
  EXPECT_FALSE(_is_it_product_compound_not_address(U"一二三四五六七八九云服务"));
  EXPECT_FALSE(_is_it_product_compound_not_address(U"A云服务"));
  EXPECT_FALSE(_is_it_product_compound_not_address(U""));
}

}  // namespace
}  // namespace core::anonymization
