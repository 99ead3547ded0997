#include <random>

#include <gtest/gtest.h>

#include "core/anonymization/llm_decider.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/rules/helpers.hpp"
#include "core/anonymization_core.hpp"
#include "core/document_text.hpp"
#include "core/entity_sync.hpp"
#include "core/errors.hpp"
#include "core/mapping_entries.hpp"
#include "core/text/unicode.hpp"
#include "tests/support/notation.hpp"

namespace core::anonymization {
namespace {

using test::u32;
using test::u8;

const test::ScriptedAnalyzer FINDS_NOTHING({});

TEST(DocumentText, WritesCanonicalPlaceholdersInAsciiBrackets) {
  const auto doc =
      test::parse_replacements("{［机构7］|乙公司}与{[机构3]|乙 公司}在{【地址5】|运城}{[X2]|y}");
  PlaceholderByKey orgs;
  orgs.insert(U"乙公司", U"［机构1］");
  EXPECT_EQ(u8(apply_document_text_replacements(doc.text, doc.replacements, orgs)),
            "[机构1]与[机构1]在[地址1][X2]");
  const auto mapping =
      mapping_entries_from_canonical_replacements(doc.text, doc.replacements, orgs);
  ASSERT_EQ(mapping.size(), 4U);
  EXPECT_EQ(mapping[1], (MappingEntry{U"[机构1]", U"乙 公司"}));
  auto reversed = doc.replacements;
  std::reverse(reversed.begin(), reversed.end());
  const auto plain = mapping_entries_from_replacements(doc.text, reversed);
  EXPECT_EQ(plain[0], (MappingEntry{U"［机构7］", U"乙公司"})) << "as it stands, in text order";
  EXPECT_EQ(u8(apply_document_text_replacements(doc.text, {}, orgs)), u8(doc.text));
}

TEST(DocumentText, SplitsAtTheJoinerOfTheCaller) {
  const auto doc = test::parse("{ORGANIZATION|甲公司##乙公司}");
  const test::ScriptedAnalyzer analyzer(doc.results);
  EXPECT_EQ(prepare_document_text_replacements(doc.text, analyzer, "zh", "contract_default", U"##")
                .filtered.size(),
            2U);
  EXPECT_EQ(prepare_document_text_replacements(doc.text, analyzer, "zh").filtered.size(), 1U);
}

TEST(DocumentText, AsksTheDeciderAndSurvivesIt) {
  const auto doc = test::parse("{ORGANIZATION|甲公司}与{ORGANIZATION|乙公司}");
  const test::ScriptedAnalyzer analyzer(doc.results);
  set_replacement_span_filter([](auto, const auto& spans) {
    return std::vector<Replacement>(spans.begin() + 1, spans.end());
  });
  EXPECT_EQ(u8(anonymize_with_numbered_placeholders(doc.text, analyzer)), "甲公司与[机构1]");
  set_replacement_span_filter([](auto, const auto&) -> std::vector<Replacement> { throw 1; });
  EXPECT_EQ(u8(anonymize_with_numbered_placeholders(doc.text, analyzer)), "[机构1]与[机构2]");
  set_replacement_span_filter({});
}

TEST(SyncLocale, IsChineseFromTheFirstIdeograph) {
  EXPECT_EQ(_document_text_entity_sync_locale("mixed", U"plain"), "en");
  EXPECT_EQ(_document_text_entity_sync_locale("mixed", U"one 字"), "zh");
  EXPECT_EQ(_document_text_entity_sync_locale("en", U"one 字"), "zh");
  EXPECT_EQ(_document_text_entity_sync_locale("en", U"plain"), "en");
  EXPECT_EQ(_document_text_entity_sync_locale("zh", U"plain"), "zh");
  EXPECT_EQ(_document_text_entity_sync_locale("fr", U"plain"), "zh");
}

TEST(EntitySync, SpreadsNamesButNoCityReportedAsAPlace) {
  const auto sync = [](const char* marked, const char* out) {
    const auto doc = test::parse_replacements(marked);
    const auto prepared = doc.replacements;
    PlaceholderByKey orgs;
    orgs.insert(U"丝绸之路", U"[机构1]");
    return u8(_apply_entity_surface_sync_to_text(u32(out), doc.text, FINDS_NOTHING, "zh", prepared,
                                                 orgs));
  };
  EXPECT_EQ(sync("{[机构1]|丝绸之路}", "[机构1]、丝绸之路"), "[机构1]、[机构1]");
  EXPECT_EQ(sync("{[地址1]|丝绸之路}", "[地址1]、丝绸之路"), "[地址1]、丝绸之路");
  EXPECT_EQ(sync("无", "无"), "无");
}

TEST(EntryPoints, MaskSpreadMapAndStrip) {
  const auto doc = test::parse(
      "关于{ORGANIZATION|甲科技公司}"
      "的通知。ACME-LTD、甲科技公司与{ORGANIZATION|acme-Ltd}。");
  const test::ScriptedAnalyzer analyzer(doc.results);
  const auto [text, mapping] =
      anonymize_with_numbered_placeholders_and_mapping(doc.text, analyzer, "auto");
  EXPECT_EQ(u8(text), "关于[机构1]的通知。[机构2]、[机构1]与[机构2]。");
  EXPECT_EQ(mapping,
            (std::vector<MappingEntry>{{U"[机构1]", U"甲科技公司"}, {U"[机构2]", U"acme-Ltd"}}));
  EXPECT_EQ(anonymize_with_numbered_placeholders(doc.text, analyzer, "auto"), text);
  EXPECT_EQ(anonymize_with_numbered_placeholders(u8(doc.text), analyzer, "auto"), u8(text));

  const auto joined = U"甲" + std::u32string(PARAGRAPH_JOINER) + U"乙";
  EXPECT_EQ(u8(anonymize_with_numbered_placeholders(joined, FINDS_NOTHING)), "甲乙");
  EXPECT_EQ(anonymize_with_numbered_placeholders("", FINDS_NOTHING), "");
}

TEST(EntryPoints, RefuseBytesThatAreNoText) {
  for (const char* language : {"en", "zh", "auto"}) {
    try {
      anonymize_with_numbered_placeholders(std::string_view("\xFF"), FINDS_NOTHING, language);
      ADD_FAILURE() << "accepted";
    } catch (const TypeError& e) {
      EXPECT_STREQ(e.what(), "Expected str for anonymization text, got bytes");
    }
  }
}

TEST(Document, TellsWhereEachPlaceholderStands) {
  const auto doc =
      test::parse("😀{ORGANIZATION|甲科技公司}付{MONEY|人民币5元}，甲科技公司收[机构1]");
  const auto out =
      with_labels(anonymize_document(doc.text, test::ScriptedAnalyzer(doc.results), "zh"), "en");
  EXPECT_EQ(u8(out.text), "😀[ORG1]付人民币[MONEY1]元，[ORG1]收[机构1]")
      << "the document's own text stays";
  std::string placements;
  for (const auto& p : out.placements) {
    placements += u8(text::slice(out.text, p.start, p.end)) + "=" + u8(p.surface) + " ";
  }
  EXPECT_EQ(placements, "[ORG1]=甲科技公司 人民币[MONEY1]元=人民币5元 [ORG1]=甲科技公司 ");
  EXPECT_EQ(u8(out.mapping[0].placeholder), "[ORG1]");
  EXPECT_EQ(u8(out.replacements[0].placeholder), "[ORG1]");
  EXPECT_EQ(out.language, "zh");
}

// A text of pieces, with disjoint hits over some of them.
test::Marked random_document(std::mt19937& random) {
  const char* pieces[] = {"甲方：{ORGANIZATION|北京华信科技有限公司}（以下简称“华信科技”）",
                          "华信科技",
                          "{PERSON|张 伟}",
                          "{PERSON|JOHN A. SMITH}",
                          "，{MONEY|人民币1,000元（one thousand yuan）}",
                          "{LOCATION|山西省运城市}",
                          "运城市山西省",
                          "{DATE_TIME|2023年}",
                          "在中国北京进行仲裁",
                          "{ORGANIZATION|Acme Ltd}",
                          " ACME LTD ",
                          "【{LOCATION|北京}】",
                          "\uE000¶\uE001",
                          "{CARD_LAST4|1234}",
                          "{EMAIL_ADDRESS|a@b.cn}",
                          "😀𠀀\n",
                          "[机构1]",
                          "{GPE|上海}",
                          "{ORGANIZATION|美国}",
                          "中国和美国两国之间",
                          "______",
                          "第三条 "};
  std::string marked;
  for (auto n = random() % 25; n > 0; --n) marked += pieces[random() % std::size(pieces)];
  return test::parse(marked);
}

TEST(Properties, HoldForAnyDisjointHits) {
  std::mt19937 random(23);
  for (int round = 0; round < 1500; ++round) {
    const auto doc = random_document(random);
    const test::ScriptedAnalyzer analyzer(doc.results);
    const auto out = anonymize_document(doc.text, analyzer, "auto");
    SCOPED_TRACE(test::render(doc));

    // Spans are sorted, disjoint and inside.
    Offset last = 0;
    std::u32string put_back;
    for (const auto& r : out.replacements) {
      ASSERT_LE(last, r.start);
      ASSERT_LT(r.start, r.end);
      last = r.end;
    }
    ASSERT_LE(last, static_cast<Offset>(doc.text.size()));

    // The same input gives the same output.
    const auto again = anonymize_document(doc.text, analyzer, "auto");
    ASSERT_EQ(again.text, out.text);
    ASSERT_EQ(again.placements, out.placements);

    // Putting the surfaces back in order gives the text, but for its joiners.
    last = 0;
    for (const auto& p : out.placements) {
      put_back += text::slice(out.text, last, p.start);
      put_back += p.surface;
      last = p.end;
    }
    put_back += text::slice(out.text, last, static_cast<Offset>(out.text.size()));
    const auto plain = text::replace_all(doc.text, PARAGRAPH_JOINER, U"");
    ASSERT_EQ(u8(text::replace_all(put_back, PARAGRAPH_JOINER, U"")), u8(plain));

    // Every placeholder that was written is in the mapping.
    for (const auto& p : out.placements) {
      const auto written = text::slice(out.text, p.start, p.end);
      ASSERT_TRUE(std::any_of(out.mapping.begin(), out.mapping.end(), [&](const auto& m) {
        return m.placeholder == written;
      })) << u8(written);
    }
  }
}

}  // namespace
}  // namespace core::anonymization
