#include "core/nlp/vocabulary.hpp"

#include <algorithm>
#include <string>

#include "tools/lexicons/vocabulary_words.hpp"
#include <gtest/gtest.h>

#include "core/nlp/characters.hpp"
#include "core/nlp/vocabulary_data.hpp"
#include "core/text/utf8.hpp"

namespace {

using core::recognition::WordClass;

// In capitals where the class asks for one: "ltd" counts as "LTD".
std::u32string as_it_counts(const tools::VocabularyWord& word) {
  std::u32string text = word.spelling;
  if (core::nlp::case_of(word.word_class) == core::nlp::Case::CAPITAL) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char32_t c) { return c >= U'a' && c <= U'z' ? c - U'a' + U'A' : c; });
  }
  return text;
}

// Words that no text can hold: written otherwise than texts are folded (電話), or asked to
// begin with a capital and beginning with a sign (& Sons).
bool may_stand_in_text(const tools::VocabularyWord& word) {
  const bool capital = core::nlp::case_of(word.word_class) == core::nlp::Case::CAPITAL;
  const bool ascii =
      std::all_of(word.spelling.begin(), word.spelling.end(), [](char32_t c) { return c < 0x80; });
  return core::nlp::fold_width(word.spelling) == word.spelling &&
         (!capital || (ascii && core::nlp::is_latin_letter(word.spelling.front())));
}

// What the build compiled is what stands in data/: every word is found where it stands alone.
TEST(Vocabulary, FindsEveryWordOfTheLists) {
  const auto engine = core::nlp::make_embedded_nlp_engine();
  const auto words = tools::vocabulary_words(VEILDOC_DATA_DIR);
  EXPECT_GT(words.size(), 10000U);
  for (const auto& word : words) {
    if (!may_stand_in_text(word)) continue;
    const std::u32string text = as_it_counts(word);
    const auto artifacts = engine->process_text(text, "zh");
    const auto& hits = artifacts.of(word.word_class);
    const bool found = std::any_of(hits.begin(), hits.end(), [&](const auto& hit) {
      return hit.start == 0 && hit.end == text.size() && !hit.from_table;
    });
    EXPECT_TRUE(found) << core::text::encode_utf8(word.spelling) << " of class "
                       << static_cast<int>(word.word_class);
  }
}

struct CaseOfWords {
  const char* why;
  std::u32string text;
  WordClass word_class;
  std::size_t hits;
};

TEST(Vocabulary, KeepsTheLongestOfEachPlace) {
  const CaseOfWords CASES[] = {
      {"有限公司 holds 公司, another class", U"苏州澜迅有限公司", WordClass::COMPANY_FORM, 1},
      {"a word in letters is none within a longer one", U"the Delimited list",
       WordClass::EN_LEGAL_FORM, 0},
      {"and counts by itself", U"Delimon Limited", WordClass::EN_LEGAL_FORM, 1},
      {"the 证号 of 身份证号 labels no certificate", U"身份证号：", WordClass::QUAL_LABEL, 0},
      {"身份证号 is the label", U"身份证号：", WordClass::ID_CARD_LABEL, 1},
      {"two in a row", U"北京、北京", WordClass::PLACE, 2},
  };
  const auto engine = core::nlp::make_embedded_nlp_engine();
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(engine->process_text(row.text, "zh").of(row.word_class).size(), row.hits);
  }
}

}  // namespace
