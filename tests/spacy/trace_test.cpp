// What is computed on the way to an answer, against the values that spaCy had.
#include <cmath>
#include <fstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "core/nlp/spacy/kernels.hpp"
#include "core/nlp/spacy/python_pattern.hpp"
#include "core/nlp/spacy/string_ids.hpp"
#include "core/nlp/spacy/suffix_search.hpp"
#include "core/nlp/spacy/tok2vec.hpp"
#include "core/nlp/spacy/token_types.hpp"
#include "core/text/regex.hpp"
#include "core/text/utf8.hpp"
#include "tests/spacy/parity.hpp"

namespace core::nlp::spacy {
namespace {

using nlohmann::json;

json trace() {
  std::ifstream file(test::small_models() / "trace.json");
  return json::parse(file);
}

Tokenizer tokenizer_of(const std::string& model) {
  return Tokenizer(read_tokenizer_rules(MappedFile(test::small_models() / model / "tokenizer")));
}

// The tokens of a text as one string, a bar between them.
std::string cut(const Tokenizer& tokenizer, const std::u32string& text) {
  std::u32string out;
  for (const auto& token : tokenizer.tokenize(text)) {
    if (!out.empty()) out += U"|";
    out += token.text(text);
  }
  return text::encode_utf8(out);
}

TEST(SpacyStringIds, AreThoseOfTheFileFormat) {
  EXPECT_EQ(string_id(U""), 0U);
  EXPECT_EQ(string_id(U"a"), 11901859001352538922U);
  EXPECT_EQ(string_id(U"abcdefgh"), 17751780907874141760U);
  EXPECT_EQ(string_id(U"abcdefghi"), 13885881106499164936U);
  EXPECT_EQ(string_id(U"张伟"), 8944303820649136803U);
  EXPECT_EQ(string_id(U"𠮷"), 9290575084641464184U);
  EXPECT_EQ(string_id(U"X"), 101U) << "reserved";
  EXPECT_EQ(string_id(U"ORG"), 383U) << "reserved";
  using Row = std::array<std::uint32_t, 4>;
  EXPECT_EQ(embedding_hash(0, 8), Row());
  EXPECT_EQ(embedding_hash(101, 11), (Row{1763378230, 3759297338, 627086936, 2342724702}));
  EXPECT_EQ(embedding_hash(3197928453018144401, 8),
            (Row{2399055680, 1118310852, 3598583520, 1677466278}));
}

TEST(SpacyTokenizer, PutsTornExceptionsTogether) {
  const auto tokenizer = tokenizer_of("en_small");
  const std::pair<std::u32string, const char*> cases[] = {{U"inter alia", "inter alia"},
                                                          {U"inter  alia", "inter| |alia"},
                                                          {U"and/or/and", "and/or|/|and"},
                                                          {U"x-and/or-y", "x|-|and/or|-|y"},
                                                          {U"(and/or)", "(|and/or|)"},
                                                          {U"US$5m", "US$|5|m"},
                                                          {U"sh'll's", "sh|'ll|'s"},
                                                          {U"Inc.).Next", "Inc.).Next"},
                                                          {U"(c)(c)", "(|c)(c|)"},
                                                          {U"", ""},
                                                          {U" a", " |a"},
                                                          {U"a  ", "a| "}};
  for (const auto& [text, tokens] : cases) EXPECT_EQ(cut(tokenizer, text), tokens);
}

TEST(SpacyPatterns, MeanWhatTheyMeanInPython) {
  struct Case {
    const char32_t* pattern;
    std::u32string text;
    bool found;
  };
  const Case cases[] = {{UR"(^\s$)", U"\x1C", true},
                        {UR"(^\s$)", U"\u180E", false},
                        {UR"(^[\S]$)", U"\u180E", true},
                        {UR"(^[^\s]$)", U"\u2003", false},
                        {UR"(^\S$)", U"\u3000", false},
                        {UR"([\u4e00-\u9fff])", U"本", true},
                        {UR"([\U00020000-\U0002FFFF])", U"𠮷", true},
                        {UR"(\u002e)", U"x", false},
                        {UR"([\u005d])", U"]", true},
                        {UR"((?u)^a{,2}$)", U"aa", true},
                        {UR"((?iu)ß)", U"ẞ", true},
                        {UR"(^[[:a]$)", U"[", true},
                        {UR"(^[]a]$)", U"]", true},
                        {UR"(a\Z)", U"a\n", false},
                        {UR"(a$)", U"a\n", true}};
  for (const auto& c : cases) {
    const text::Regex regex("case", from_python_pattern(c.pattern));
    EXPECT_EQ(regex.search(c.text).has_value(), c.found) << text::encode_utf8(c.pattern);
  }
  EXPECT_THROW(text::Regex("bad", from_python_pattern(UR"(\u12)")), RegexError);
}

TEST(SpacySuffixes, AreFoundAtTheEndOfLongTexts) {
  const auto search = [](const char32_t* pattern) {
    return SuffixSearch(std::make_unique<text::Regex>("case", pattern));
  };
  const auto windowed = search(UR"(\)$|\.\.+$|(?<=[0-9])km$|[\u4e00-\u9fff]{2,3}$|(?:[|$]a)$)");
  EXPECT_TRUE(windowed.is_windowed());
  const std::u32string front(3000, U'x');
  const std::pair<std::u32string, std::size_t> cases[] = {
      {front + U"))", 1},
      {front + std::u32string(2000, U'.'), 2000},
      {std::u32string(3000, U'.'), 3000},
      {front + U"5km", 2},
      {front + U"km", 0},
      {front + U"本本本本", 3},
      {front + U").\n", 0},
      {front + U")\n", 1},
      {U"", 0},
      {front, 0}};
  for (const auto& [text, length] : cases) EXPECT_EQ(windowed.match_length(text), length);
  // What may reach far back is searched everywhere.
  for (const auto* pattern :
       {UR"(x.*y$)", UR"((?<=a)\.+$)", UR"(a|b$)", UR"(ab+$)", UR"([a$])", UR"(a\$)"}) {
    EXPECT_FALSE(search(pattern).is_windowed()) << text::encode_utf8(pattern);
  }
  EXPECT_EQ(search(UR"(x.*y$)").match_length(front + U"y"), 3001U);
  EXPECT_EQ(SuffixSearch(nullptr).match_length(U"a"), 0U);
}

TEST(SpacyShapes, AreRunsOfAtMostFour) {
  const std::pair<const char32_t*, std::u32string> cases[] = {
      {U"aaaaaAAAAA11111.....", U"xxxxXXXXdddd...."},
      {U"2024-01-02", U"dddd-dd-dd"},
      {U"张伟", U"xx"},
      {U"ǅx", U"xx"},
      {U"³½", U"d½"},
      {U"", U""}};
  for (const auto& [word, shape] : cases) EXPECT_EQ(shape_of(word), shape);
  EXPECT_EQ(shape_of(std::u32string(99, U'a')), U"xxxx");
  EXPECT_EQ(shape_of(std::u32string(100, U'a')), U"LONG");
}

// The vectors of all tokens, also those whose windows reach beyond the text.
void check_vectors(const json& expected, const std::string& network, const TypedTokens& tokens) {
  constexpr double TOLERANCE = 1e-4;
  const MappedFile bytes(test::small_models() / "en_small" / network / "model");
  const NetworkFile file(bytes);
  const Tok2Vec tok2vec(file, nullptr);
  Tok2VecPass pass(tok2vec, tokens);
  TokenVectors vectors;
  ASSERT_TRUE(pass.next(vectors));
  const auto& rows = expected.at("output");
  ASSERT_EQ(vectors.row_of.size(), rows.size());
  for (std::size_t t = 0; t < rows.size(); ++t) {
    for (std::size_t i = 0; i < tok2vec.width(); ++i) {
      ASSERT_NEAR(vectors.rows[vectors.row_of[t] * tok2vec.width() + i], rows[t][i].get<double>(),
                  TOLERANCE);
    }
  }
  EXPECT_FALSE(pass.next(vectors));
}

TEST(SpacyTrace, AttributesAndVectors) {
  const auto expected = trace();
  const auto text = text::decode_utf8(expected.at("text").get<std::string>());
  const auto tokenizer = tokenizer_of("en_small");
  const NormTable norms(MappedFile(test::small_models() / "en_small/vocab/lookups.bin"));
  const auto tokens = type_tokens(text, tokenizer.tokenize(text), tokenizer, norms);
  const auto& part = expected.at("tok2vec");
  constexpr Attribute COLUMNS[] = {Attribute::NORM,  Attribute::PREFIX, Attribute::SUFFIX,
                                   Attribute::SHAPE, Attribute::SPACY,  Attribute::IS_SPACE};
  ASSERT_EQ(part.at("ids").size(), tokens.size());
  for (std::size_t t = 0; t < tokens.size(); ++t) {
    for (std::size_t c = 0; c < std::size(COLUMNS); ++c) {
      const auto value = tokens.types[tokens.type_of[t]].value(COLUMNS[c], tokens.space_after[t]);
      EXPECT_EQ(std::to_string(value), part["ids"][t][c].get<std::string>());
      const auto& rows = part["hash_rows"][part["columns"][c].get<std::string>()];
      const auto hash = embedding_hash(value, rows.at("seed").get<std::uint32_t>());
      for (std::size_t j = 0; j < hash.size(); ++j) {
        EXPECT_EQ(hash[j] % rows.at("nV").get<std::uint32_t>(),
                  rows["rows"][t][j].get<std::uint32_t>());
      }
    }
  }
  check_vectors(part, "tok2vec", tokens);
  check_vectors(expected.at("ner").at("tok2vec"), "ner", tokens);
}

// Longer than what is computed at once: the seams do not show.
TEST(SpacyTrace, VectorsDoNotDependOnStretches) {
  const auto tokenizer = tokenizer_of("en_small");
  std::u32string text;
  for (unsigned i = 0; i < 9000; ++i)
    text += i % 7 == 3 ? U"Corp. " : U"w" + std::u32string(1 + i % 5, U'a' + i % 23) + U" ";
  const auto all = tokenizer.tokenize(text);
  const auto tokens = type_tokens(text, all, tokenizer, {});
  const MappedFile bytes(test::small_models() / "en_small/ner/model");
  const NetworkFile file(bytes);
  const Tok2Vec tok2vec(file, nullptr);
  const auto vectors_of = [&](std::size_t first, std::size_t count) {
    TypedTokens part{tokens.types, {}, {}};
    for (auto t = first; t < first + count; ++t) {
      part.type_of.push_back(tokens.type_of[t]);
      part.space_after.push_back(tokens.space_after[t]);
    }
    std::vector<float> out;
    Tok2VecPass pass(tok2vec, part);
    for (TokenVectors v; pass.next(v);) {
      for (const auto row : v.row_of) {
        out.insert(out.end(), &v.rows[row * tok2vec.width()],
                   &v.rows[row * tok2vec.width()] + tok2vec.width());
      }
    }
    return out;
  };
  const auto whole = vectors_of(0, tokens.size());
  constexpr std::size_t FIRST = 3900;
  constexpr std::size_t COUNT = 400;
  const auto part = vectors_of(FIRST, COUNT);
  for (auto t = tok2vec.reach(); t < COUNT - tok2vec.reach(); ++t) {
    for (std::size_t i = 0; i < tok2vec.width(); ++i) {
      ASSERT_NEAR(whole[(FIRST + t) * tok2vec.width() + i], part[t * tok2vec.width() + i], 1e-4);
    }
  }
}

// 7 rows of 13 with 11 columns.
std::vector<float> plain_product(const std::vector<float>& a, const std::vector<float>& w,
                                 const std::vector<float>& bias) {
  std::vector<float> y;
  for (std::size_t r = 0; r < 7; ++r) {
    for (std::size_t c = 0; c < 11; ++c) {
      float sum = bias[c];
      for (std::size_t i = 0; i < 13; ++i) sum += a[r * 13 + i] * w[i * 11 + c];
      y.push_back(sum);
    }
  }
  return y;
}

// Both sets of kernels give the same, also for sizes that no processor likes.
TEST(SpacyKernels, AgreeWithPlainSums) {
  std::vector<float> a(7 * 13), w(13 * 11), bias(11), y(7 * 11);
  auto fill = [seed = 1U](std::vector<float>& v) mutable {
    for (auto& x : v) x = static_cast<float>((seed = seed * 1103515245 + 12345) >> 16 & 0xFF) / 64;
  };
  for (auto* v : {&a, &w, &bias}) fill(*v);
  const auto product = plain_product(a, w, bias);
  for (const auto* k : {&BASELINE_KERNELS, &kernels()}) {
    SCOPED_TRACE(k->name);
    k->multiply(a.data(), 7, 13, 13, w.data(), bias.data(), 11, y.data());
    for (std::size_t i = 0; i < product.size(); ++i) EXPECT_NEAR(y[i], product[i], 1e-3);
    k->affine(a.data(), 13, w.data(), bias.data(), 11, y.data() + 11);
    for (std::size_t c = 0; c < 11; ++c) EXPECT_NEAR(y[c], y[c + 11], 1e-3);
    const float* rows[] = {a.data(), a.data() + 13, a.data() + 26, a.data() + 39};
    for (std::size_t count = 1; count <= 4; ++count) {
      k->sum_rows(rows, count, 13, y.data());
      float sum = 0;
      for (std::size_t i = 0; i < count; ++i) sum += rows[i][12];
      EXPECT_NEAR(y[12], sum, 1e-3);
    }
    k->maxout(a.data(), 5, 3, y.data());
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(y[i], std::max({a[i], a[5 + i], a[10 + i]}));
  }
}

}  // namespace
}  // namespace core::nlp::spacy
