// Originals put back into texts that were left alone, and into edited ones.
#include <gtest/gtest.h>

#include "core/text/unicode.hpp"
#include "tests/restore/restoring.hpp"
#include "tests/support/notation.hpp"

namespace {

using test::mask;
using test::outcomes;
using test::restored;

TEST(Restore, AnUntouchedTextComesBackAsItWas) {
  const char* const documents[] = {
      "没有占位符",
      "甲方：{[机构1]|北京华信科技有限公司}（以下简称“{[机构1]|华信科技}”），{[机构1]|华信科技}应付款。",
      // 每处写法相同、上下文也相同，只有次序能分清。
      "{[机构1]|华信科技}{[机构1]|北京华信科技有限公司}{[机构1]|华信科技}",
      // 文本自己就有像占位符的字样。
      "[机构1]即{[机构1]|甲公司}，见【机构 1】、[DATE7]、[附件1]，{[机构1]|乙公司}",
      // Of an amount the wording stays.
      "付{人民币[MONEY1]元|人民币1,000元}，即{人民币[MONEY1]元|人民币1000元}",
      "card {[CARD_****1234]|4111 1111 1111 1234} or {[CARD_****1234]|1234}",
      "{[ORG1]|Acme\nLtd}\r\n{[ORG1]|ACME LTD}",
      // A surface that looks like another placeholder is not read again.
      "{[ORG1]|[ORG2]} and {[ORG2]|Acme}",
  };
  for (const char* document : documents) {
    SCOPED_TRACE(document);
    const auto masked = mask(document);
    EXPECT_EQ(restored(masked.masked, masked.mapping), masked.original);
    const auto told = outcomes(masked.masked, masked.mapping);
    EXPECT_EQ(told, std::string(told.size(), 'R'));
  }
}

TEST(Restore, EditedTexts) {
  constexpr auto DOCUMENT =
      "买方：{[机构1]|北京华信科技有限公司}，卖方：{[机构2]|青岛海潮贸易有限公司}，"
      "签于{[DATE1]|2024年3月1日}，电话{[PHONE1]|010-88886666}。";
  struct Case {
    const char* why;
    const char* edited;
    const char* restored;
    const char* outcomes;
  };
  const Case cases[] = {
      {"移动、重复、引用", "[机构2]致“[机构1]”：[机构2]已收到。",
       "青岛海潮贸易有限公司致“北京华信科技有限公司”：青岛海潮贸易有限公司已收到。", "RRR"},
      {"换了写法", "【机构１】与〔 机构 2 〕于［date1］签约",
       "北京华信科技有限公司与青岛海潮贸易有限公司于2024年3月1日签约", "RRR"},
      {"译成英文", "[Org 1] and [ORG2], dated [Date 1]",
       "北京华信科技有限公司 and 青岛海潮贸易有限公司, dated 2024年3月1日", "RRR"},
      {"不在映射里的留下并报告", "[机构3]与[机构1]，[DATE9]",
       "[机构3]与北京华信科技有限公司，[DATE9]", "URU"},
      {"不是占位符的方括号不报告", "见[附件1]、[1]、【注2】", "见[附件1]、[1]、【注2】", ""},
      {"丢了括号的留下并报告", "机构1与机构12、PHONE1、XPHONE1、phone1",
       "机构1与机构12、PHONE1、XPHONE1、phone1", "BBB"},
      {"并写在一对括号里的留下并报告", "[机构1、机构2]", "[机构1、机构2]", "BB"},
  };
  const auto masked = mask(DOCUMENT);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(restored(c.edited, masked.mapping), c.restored);
    EXPECT_EQ(outcomes(c.edited, masked.mapping), c.outcomes);
  }
}

// One name in full and in short, which share a placeholder.
TEST(Restore, WhichSurfaceOfSeveral) {
  constexpr auto DOCUMENT =
      "本合同由甲方{[机构1]|华信科技有限公司}与乙方签订并生效。\n"
      "第一条 付款应当由{[机构1]|华信}在收到发票后三十日内完成。\n"
      "第二条 交货地点由{[机构1]|华信}指定，并承担全部运输费用。\n"
      "甲方盖章处：{[机构1]|华信科技有限公司}（公章）日期见下。";
  struct Case {
    const char* why;
    const char* edited;
    const char* restored;
    const char* outcomes;
  };
  const Case cases[] = {
      {"条款换了次序，随上下文走",
       "第二条 交货地点由[机构1]指定，并承担全部运输费用。\n"
       "本合同由甲方[机构1]与乙方签订并生效。",
       "第二条 交货地点由华信指定，并承担全部运输费用。\n"
       "本合同由甲方华信科技有限公司与乙方签订并生效。",
       "RR"},
      {"同一条抄了两遍",
       "甲方盖章处：[机构1]（公章）日期见下。甲方盖章处：[机构1]（公章）日期见下。",
       "甲方盖章处：华信科技有限公司（公章）日期见下。甲方盖章处：华信科技有限公司（公章）日期见下。",
       "RR"},
      {"一侧改写，另一侧未动", "第一条 付款应当由[机构1]于次月月底之前以银行转账方式付清。",
       "第一条 付款应当由华信于次月月底之前以银行转账方式付清。", "R"},
      {"只有近处未动", "此笔货款应当由[机构1]在收到发货单之后支付。",
       "此笔货款应当由华信在收到发货单之后支付。", "R"},
      {"连近处也改了", "改写过的开头，货款由[机构1]在收到款项之后发货。",
       "改写过的开头，货款由华信科技有限公司在收到款项之后发货。", "F"},
      {"排版改动不算改动", "第一条　付款应当由 [机构1] 在收到\n发票后三十日内完成。",
       "第一条　付款应当由 华信 在收到\n发票后三十日内完成。", "R"},
      {"全文改写，处数未变，按次序", "A [机构1] B [机构1] C [机构1] D [机构1] E",
       "A 华信科技有限公司 B 华信 C 华信 D 华信科技有限公司 E", "OOOO"},
      {"全文改写，处数变了，取第一种写法", "A [机构1] B [机构1] C",
       "A 华信科技有限公司 B 华信科技有限公司 C", "FF"},
      {"两处认得，其间的按次序",
       "本合同由甲方[机构1]与乙方签订并生效。某处[机构1]某处。某地[机构1]某地。\n"
       "甲方盖章处：[机构1]（公章）日期见下。",
       "本合同由甲方华信科技有限公司与乙方签订并生效。某处华信某处。某地华信某地。\n"
       "甲方盖章处：华信科技有限公司（公章）日期见下。",
       "ROOR"},
  };
  const auto masked = mask(DOCUMENT);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(restored(c.edited, masked.mapping), c.restored);
    EXPECT_EQ(outcomes(c.edited, masked.mapping), c.outcomes);
  }
}

// Lines that went somewhere else, too short to be known by one side.
TEST(Restore, WhichSurfaceGoesByItsLine) {
  const auto masked = mask(
      "甲方名称：{[机构1]|华信科技有限公司}\n"
      "经办单位：{[机构1]|华信}\n"
      "收款单位：{[机构1]|华信}\n");
  const auto* edited =
      "新增的一行文字。\r\n经办单位：[机构1]\r\n\r\n甲方名称：[机构1]\r\n又一行文字。";
  EXPECT_EQ(restored(edited, masked.mapping),
            "新增的一行文字。\r\n经办单位：华信\r\n\r\n甲方名称：华信科技有限公司\r\n又一行文字。");
  EXPECT_EQ(outcomes(edited, masked.mapping), "RR");
}

// Kinds of a user's own, that differ in letter case only.
TEST(Restore, WhatTwoPlaceholdersCouldBeIsLeft) {
  const auto masked = mask("{[Ab1]|x} {[AB1]|y}");
  EXPECT_EQ(restored("[Ab1] [AB1] [ab1]", masked.mapping), "x y [ab1]");
  EXPECT_EQ(outcomes("[Ab1] [AB1] [ab1]", masked.mapping), "RRA");
}

// A table of a thousand rows that look alike, one of them taken out.
TEST(Restore, ManyAlikeCostLittle) {
  std::string document;
  for (int i = 0; i < 20000; ++i) document += i % 3 == 0 ? "{[ORG1]|Acme}|\n" : "{[ORG1]|ACME}|\n";
  const auto masked = mask(document);
  EXPECT_EQ(restored(masked.masked, masked.mapping), masked.original);
  const auto fewer = masked.masked.substr(masked.masked.find('\n') + 1);
  EXPECT_EQ(restored(fewer, masked.mapping).find('['), std::string::npos);
}

}  // namespace
