// The option --spacy-model, and the command that shows models.
#include <cstdlib>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/cli/support.hpp"

namespace {

using test::run;

const std::string MODEL = MODELS_DIR "/en_small";
constexpr auto AGREEMENT = "Cendrix Corp. paid US$ 3.5 million to Orrinde Ashgrovel on 8 May 2024.";

TEST(SpacyModelOption, AddsWhatTheModelFinds) {
  EXPECT_NE(run({"anonymize", "--spacy-model", MODEL}, AGREEMENT).out.find("to [NAME1] on"),
            std::string::npos);
  EXPECT_EQ(run({"anonymize"}, AGREEMENT).out.find("to [NAME1] on"), std::string::npos);
}

TEST(SpacyModelOption, TellsWhatIsWrong) {
  const test::Folder folder;
  auto ran = run({"anonymize", "--spacy-model", folder.path("")}, AGREEMENT);
  EXPECT_EQ(ran.code, cli::EXIT_INPUT);
  EXPECT_NE(ran.err.find("no spaCy model in"), std::string::npos);

  std::filesystem::copy(MODEL, folder.path("model"), std::filesystem::copy_options::recursive);
  std::filesystem::resize_file(folder.path("model/ner/model"), 1000);
  ran = run({"anonymize", "--spacy-model", folder.path("")}, AGREEMENT);  // one level below
  EXPECT_EQ(ran.code, cli::EXIT_ANALYZER);
  EXPECT_NE(ran.err.find("model/ner/model: nodes: ends early"), std::string::npos) << ran.err;
  EXPECT_TRUE(ran.out.empty());

  EXPECT_EQ(
      run({"analyze", "--analyzer", "presidio=http://localhost:1", "--spacy-model", MODEL}).code,
      cli::EXIT_USAGE);
}

TEST(Models, ShowsWhatWasFoundAndWhere) {
  auto ran = run({"models"});
  EXPECT_EQ(ran.code, cli::EXIT_DONE);
  EXPECT_NE(ran.out.find("none"), std::string::npos);

  ran = run({"models", "--json", "--spacy-model", MODEL});
  const auto model = nlohmann::json::parse(ran.out).at("models").at(1);
  EXPECT_EQ(model.at("name"), "en_small");
  EXPECT_EQ(model.at("folder"), MODEL);
  EXPECT_EQ(model.at("pipeline"), (std::vector<std::string>{"tok2vec", "parser", "ner"}));
  EXPECT_EQ(model.at("labels").at("GPE"), "LOCATION");
  EXPECT_EQ(model.at("runs"), true);

  ::setenv("VEILDOC_SPACY_MODEL_EN", MODEL.c_str(), 1);
  ran = run({"models"});
  EXPECT_NE(ran.out.find("named by   VEILDOC_SPACY_MODEL_EN"), std::string::npos) << ran.out;
  EXPECT_NE(ran.out.find("ORG as ORGANIZATION"), std::string::npos);
  const test::Folder empty;
  ::setenv("VEILDOC_SPACY_MODEL_EN", empty.path("").c_str(), 1);
  ran = run({"models"});
  EXPECT_NE(ran.err.find("it is passed over"), std::string::npos);
  ::unsetenv("VEILDOC_SPACY_MODEL_EN");

  std::filesystem::copy(MODEL, empty.path("model"), std::filesystem::copy_options::recursive);
  std::filesystem::remove(empty.path("model/tokenizer"));
  ran = run({"models", "--spacy-model", empty.path("model")});
  EXPECT_EQ(ran.code, cli::EXIT_ANALYZER);
  EXPECT_NE(ran.out.find("runs       no"), std::string::npos) << ran.out;
  EXPECT_NE(ran.err.find("tokenizer: No such file or directory"), std::string::npos);
}

}  // namespace
