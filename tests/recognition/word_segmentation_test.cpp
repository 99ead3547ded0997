#include "core/nlp/word_segmentation.hpp"

#include <string>

#include <gtest/gtest.h>

#include "core/nlp/chinese_lexicon.hpp"
#include "core/text/utf8.hpp"

namespace {

using namespace core::nlp;  // NOLINT(google-build-using-namespace): what is tested
using core::recognition::ChineseWordClass;
using core::text::decode_utf8;
using core::text::encode_utf8;

// The words with blanks between them; unknown ones in brackets.
std::string cut(const std::string& utf8) {
  const std::u32string text = decode_utf8(utf8);
  std::string out;
  for (const auto& word : segment_words(text)) {
    if (!out.empty()) out += ' ';
    const std::string surface =
        encode_utf8(std::u32string_view(text).substr(word.start, word.length()));
    out += word.known() ? surface : "[" + surface + "]";
  }
  return out;
}

TEST(WordSegmentation, CutsTextIntoWords) {
  struct Row {
    const char* why;
    const char* text;
    const char* words;
  };
  const Row rows[] = {
      {"everyday words", "甲方应当按照合同约定支付货款", "甲方 应当 按照 合同 约定 支付 货款"},
      {"字号不是词", "由鑫璟宸有限公司承担", "由 [鑫] [璟] [宸] 有限公司 承担"},
      {"歧义由词频决定", "研究生命的起源", "研究 生命 的 起源"},
      {"行政区划", "位于深圳市南山区粤海街道", "位于 深圳市 南山区 粤海街道"},
      {"标点与其他文字断开", "合同A合同。😀𠀀合同", "合同 合同 [𠀀] 合同"},
      {"no Chinese", "Agreement 2024", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(cut(row.text), row.words);
  }
}

TEST(WordSegmentation, AnswersByPosition) {
  const std::u32string text = U"甲方：由鑫璟宸承担费用";
  const auto words = segment_words(text);
  EXPECT_FALSE(is_word_boundary(words, 1));
  EXPECT_TRUE(is_word_boundary(words, 2));
  EXPECT_EQ(word_at(words, 2), nullptr);
  EXPECT_EQ(word_at(words, 1)->end, 2U);
  EXPECT_EQ(word_at(words, text.size()), nullptr);
  for (std::size_t position : {4U, 5U, 6U}) {
    const TextRange run = unknown_run(words, position);
    EXPECT_EQ(run.start, 4U);
    EXPECT_EQ(run.end, 7U);
  }
  EXPECT_EQ(unknown_run(words, 7).end, 7U);
  EXPECT_TRUE(are_ordinary_words(words, 7, 11));
  EXPECT_FALSE(are_ordinary_words(words, 8, 11)) << "begins within a word";
  EXPECT_FALSE(are_ordinary_words(words, 6, 11)) << "an unknown one";
  EXPECT_FALSE(are_ordinary_words(words, 2, 4)) << "not a word";
}

TEST(ChineseLexicon, KnowsWhatAWordIs) {
  EXPECT_TRUE(is_ordinary_word(U"合同"));
  EXPECT_FALSE(is_ordinary_word(U"合同", 40));
  EXPECT_FALSE(is_ordinary_word(U"鑫"));
  EXPECT_FALSE(is_ordinary_word(U"苏州市"));
  const auto district = chinese_word(U"南山区");
  ASSERT_TRUE(district.has_value());
  EXPECT_EQ(district->division, Division::COUNTY);
  EXPECT_FALSE(district->bare_division);
  EXPECT_EQ(district->word_class, ChineseWordClass::PLACE);
  const auto peace = chinese_word(U"和平");
  ASSERT_TRUE(peace.has_value());
  EXPECT_TRUE(peace->bare_division && peace->ambiguous_division);
  EXPECT_EQ(chinese_word(U"粤海街道")->division, Division::TOWN);
  EXPECT_EQ(chinese_word(U"鑫璟宸"), std::nullopt);
}

TEST(ChineseLexicon, WeighsCharactersOfNames) {
  for (const auto* name : {U"伟", U"志强", U"雨欣", U"婷"}) {
    EXPECT_GT(given_name_score(name), 8) << encode_utf8(name);
  }
  for (const auto* word : {U"合同", U"公司", U"的", U"支付", U"规定", U"A"}) {
    EXPECT_LE(given_name_score(word), 4) << encode_utf8(word);
  }
  EXPECT_GT(name_character(U'王').surname, 20);
}

}  // namespace
