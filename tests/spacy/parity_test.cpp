// The same answers as spaCy's, to the last token.
#include "tests/spacy/parity.hpp"

#include <iostream>

#include <gtest/gtest.h>

namespace {

using core::nlp::spacy::SpacyPipeline;

struct ParityCase {
  const char* model;
  const char* expected;
  std::size_t texts;
  std::size_t tokens;
  std::size_t sentences;
  std::size_t entities;
};

void check_parity(const std::filesystem::path& folder, const ParityCase& c) {
  SCOPED_TRACE(std::string(c.model) + ", " + c.expected);
  const SpacyPipeline pipeline(folder / c.model);
  const auto found = test::compare(pipeline, folder / c.expected);
  std::cout << c.model << ", " << c.expected << ": " << found.row() << "\n";
  EXPECT_EQ(found.texts, c.texts);
  EXPECT_EQ(found.tokens, c.tokens);
  EXPECT_EQ(found.sentences, c.sentences);
  EXPECT_EQ(found.entities, c.entities);
  EXPECT_EQ(found.token_differences + found.tree_differences + found.sentence_differences +
                found.entity_differences,
            0U)
      << found.first_difference;
}

TEST(SpacyParity, SmallModels) {
  const ParityCase cases[] = {{"en_small", "en_small.expected.jsonl", 150, 8272, 415, 1028},
                              // word vectors, crossing arcs, token_match, faster_heuristics off
                              {"en_small_vec", "en_small_vec.expected.jsonl", 150, 7721, 497, 941}};
  for (const auto& c : cases) check_parity(test::small_models(), c);
}

TEST(SpacyParity, LargeModels) {
  const auto folder = test::large_models();
  if (folder.empty()) GTEST_SKIP() << "VEILDOC_SPACY_MODELS names no folder";
  const ParityCase cases[] = {// the tokenizer of the published English models; no parser
                              {"tiny_en", "tiny_en_expected.jsonl", 200, 4469, 0, 628},
                              {"tiny_en", "tiny_en_stress_expected.jsonl", 420, 32316, 0, 4047},
                              // their sizes
                              {"lgshape", "lgshape_expected.jsonl", 620, 36785, 3475, 3287}};
  for (const auto& c : cases) check_parity(folder, c);
}

}  // namespace
