#include "core/nlp/latin_lexicon.hpp"

#include <string_view>

#include <gtest/gtest.h>

#include "core/text/utf8.hpp"

namespace {

using namespace core::nlp;  // NOLINT(google-build-using-namespace): what is tested
using core::text::encode_utf8;

TEST(LatinLexicon, TellsWordsFromNames) {
  for (const auto* word : {U"Agreement", U"HEREBY", U"indemnify", U"lessee", U"the", U"Résumé"}) {
    EXPECT_TRUE(is_common_english_word(word, 2)) << encode_utf8(word);
    EXPECT_EQ(latin_name_class(word), LatinNameClass::NONE) << encode_utf8(word);
  }
  for (const auto* name : {U"Okonkwo", U"Xiaoming", U"Ramaswamy", U"Ng", U"zzyzx", U""}) {
    EXPECT_EQ(english_word_frequency(name), 0U) << encode_utf8(name);
  }
  EXPECT_GT(english_word_frequency(U"the"), english_word_frequency(U"agreement"));
  EXPECT_LE(english_word_frequency(U"smith"), 2U) << "mostly a name";
}

TEST(LatinLexicon, KnowsNamesInEverySpelling) {
  struct Row {
    std::u32string_view name;
    LatinNameClass name_class;
    bool common;
  };
  const Row rows[] = {
      {U"Müller", LatinNameClass::SURNAME, false},
      {U"Mu\u0308ller", LatinNameClass::SURNAME, false},  // decomposed
      {U"MUELLER", LatinNameClass::SURNAME, false},
      {U"Nguyễn", LatinNameClass::SURNAME, false},
      {U"O’Brien", LatinNameClass::SURNAME, false},
      {U"Łukasz", LatinNameClass::GIVEN, false},
      {U"Weiguo", LatinNameClass::GIVEN, false},
      {U"Stone", LatinNameClass::BOTH, true},
      {U"Agreement", LatinNameClass::NONE, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(encode_utf8(row.name));
    EXPECT_EQ(latin_word(row.name).name_class, row.name_class);
    EXPECT_EQ(latin_word(row.name).name_is_common_word, row.common);
  }
}

TEST(LatinLexicon, KnowsCities) {
  EXPECT_EQ(latin_word(U"London").city, WorldCity::LARGE);
  EXPECT_TRUE(is_world_city(U"São Paulo"));
  EXPECT_TRUE(is_world_city(U"Suzhou"));
  EXPECT_TRUE(latin_word(U"Reading").city_is_common_word);
  EXPECT_TRUE(latin_word(U"Washington").city_is_person_name);
  EXPECT_FALSE(is_world_city(U"Agreement"));
  EXPECT_EQ(world_city_length(U"Los Angeles, California"), 11U);
  EXPECT_EQ(world_city_length(U"Londoners"), 0U) << "goes on";
  EXPECT_EQ(world_city_length(U""), 0U);
}

}  // namespace
